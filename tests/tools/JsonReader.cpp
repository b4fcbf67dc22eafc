#include "JsonReader.h"

#include <cctype>
#include <cstdlib>
#include <stdexcept>

namespace {

class Reader {
public:
    explicit Reader(const std::string& text) : m_text(text) {}

    Json ReadAll() {
        Json value = ReadValue();
        if (Next() != '\0') {
            Fail();
        }
        return value;
    }

private:
    [[noreturn]] void Fail() const {
        throw std::runtime_error("no JSON at " + std::to_string(m_place) + ": " +
                                 m_text.substr(m_place, 40));
    }

    /// The next letter that is no space; 0 at the end.
    char Next() {
        while (m_place < m_text.size() && std::isspace(m_text[m_place]) != 0) {
            ++m_place;
        }
        return m_place < m_text.size() ? m_text[m_place] : '\0';
    }

    void Take(char letter) {
        if (Next() != letter) {
            Fail();
        }
        ++m_place;
    }

    Json ReadValue() {
        Json value;
        switch (Next()) {
            case '{':
                ReadSeries('{', '}', [&] {
                    const std::string name = ReadText();
                    Take(':');
                    if (!value.members.emplace(name, ReadValue()).second) {
                        Fail();
                    }
                });
                break;
            case '[':
                ReadSeries('[', ']', [&] { value.list.push_back(ReadValue()); });
                break;
            case '"':
                value.text = ReadText();
                break;
            default:
                value.number = ReadNumber();
        }
        return value;
    }

    template <class ReadItem>
    void ReadSeries(char start, char end, ReadItem readItem) {
        Take(start);
        if (Next() != end) {
            readItem();
            while (Next() == ',') {
                Take(',');
                readItem();
            }
        }
        Take(end);
    }

    std::string ReadText() {
        Take('"');
        const std::size_t end = m_text.find_first_of("\"\\", m_place);
        if (end == std::string::npos || m_text[end] != '"') {
            Fail();
        }
        const std::string text = m_text.substr(m_place, end - m_place);
        m_place = end + 1;
        return text;
    }

    float ReadNumber() {
        const char first = Next();
        const std::size_t end = m_text.find_first_not_of("+-.0123456789e", m_place);
        const std::string digits = m_text.substr(m_place, end - m_place);
        char* stop = nullptr;
        const float number = std::strtof(digits.c_str(), &stop);
        const bool isNumber = first == '-' || std::isdigit(first) != 0;
        if (!isNumber || stop != digits.c_str() + digits.size()) {
            Fail();
        }
        m_place += digits.size();
        return number;
    }

    const std::string& m_text;
    std::size_t m_place = 0;
};

}  // namespace

std::vector<std::pair<float, float>> Json::Pairs() const {
    std::vector<std::pair<float, float>> pairs;
    for (const Json& pair : list) {
        if (pair.list.size() != 2) {
            throw std::runtime_error("no pair");
        }
        pairs.emplace_back(pair.list[0].number, pair.list[1].number);
    }
    return pairs;
}

Json ReadJson(const std::string& text) {
    return Reader(text).ReadAll();
}
