#include "Screen.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr char kEscape = '\033';

bool IsLast(char character) {
    return character >= '@' && character <= '~';
}

}  // namespace

Screen::Screen(int columns, int rows)
    : m_columns(columns),
      m_rows(rows),
      m_cells(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows)) {}

void Screen::Write(const std::string& bytes) {
    m_incomplete += bytes;
    for (std::size_t size = SizeOfNext(m_incomplete); size > 0; size = SizeOfNext(m_incomplete)) {
        Take(m_incomplete.substr(0, size));
        m_incomplete.erase(0, size);
    }
}

/// Of a character or a sequence, in bytes; 0 for one whose end is not there yet.
std::size_t Screen::SizeOfNext(const std::string& bytes) const {
    if (bytes.empty()) {
        return 0;
    }
    const auto first = static_cast<unsigned char>(bytes.front());
    if (bytes.front() == kEscape) {
        for (std::size_t at = 2; at < bytes.size(); ++at) {
            if (IsLast(bytes[at])) {
                return at + 1;
            }
        }
        return 0;
    }
    const std::size_t size = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    return bytes.size() < size ? 0 : size;
}

void Screen::Take(const std::string& token) {
    if (token.front() != kEscape) {
        Put(token);
        return;
    }
    const bool isPrivate = token.size() > 2 && token[2] == '?';
    std::vector<int> numbers;
    std::istringstream list(token.substr(isPrivate ? 3 : 2, token.size() - (isPrivate ? 4 : 3)));
    for (std::string number; std::getline(list, number, ';');) {
        numbers.push_back(std::stoi(number));
    }
    const std::size_t before = m_surprises.size();
    TakeSequence(numbers, isPrivate, token.back());
    if (token[1] != '[' || m_surprises.size() != before) {
        m_surprises.push_back(token.substr(1));
    }
}

void Screen::TakeSequence(const std::vector<int>& numbers, bool isPrivate, char last) {
    if (isPrivate && last == 'h') {
        m_modes.insert(numbers.begin(), numbers.end());
    } else if (isPrivate && last == 'l') {
        for (const int number : numbers) {
            m_modes.erase(number);
        }
    } else if (last == 'H' && numbers.size() == 2) {
        m_row = numbers[0] - 1;
        m_column = numbers[1] - 1;
    } else if (last == 'J' && numbers == std::vector<int>{2}) {
        m_cells.assign(m_cells.size(), Cell{});
    } else if (last == 'K' && numbers.empty()) {
        for (int column = m_column; column < m_columns; ++column) {
            Place(column, m_row) = Cell{};
        }
    } else if (last == 'm') {
        SetColors(numbers);
    } else {
        m_surprises.emplace_back("unknown");
    }
}

void Screen::SetColors(const std::vector<int>& numbers) {
    if (numbers == std::vector<int>{0}) {
        m_pen = Cell{};
    } else if (numbers.size() == 10 && numbers[0] == 38 && numbers[1] == 2 && numbers[5] == 48 &&
               numbers[6] == 2) {
        m_pen.front = {numbers[2], numbers[3], numbers[4]};
        m_pen.back = {numbers[7], numbers[8], numbers[9]};
    } else {
        m_surprises.emplace_back("colours");
    }
}

void Screen::Put(const std::string& glyph) {
    m_pen.glyph = glyph;
    Place(m_column, m_row) = m_pen;
    ++m_column;
}

Screen::Cell& Screen::Place(int column, int row) {
    if (column < 0 || column >= m_columns || row < 0 || row >= m_rows) {
        m_surprises.push_back("beside the screen: " + std::to_string(column) + ", " +
                              std::to_string(row));
        column = 0;
        row = 0;
    }
    return m_cells[static_cast<std::size_t>(row * m_columns + column)];
}

const Screen::Cell& Screen::At(int column, int row) const {
    return m_cells.at(static_cast<std::size_t>(row * m_columns + column));
}

std::string Screen::Row(int row) const {
    std::string text;
    for (int column = 0; column < m_columns; ++column) {
        text += At(column, row).glyph;
    }
    return text;
}

void Screen::ExpectPicture(const Picture& picture, int column) const {
    for (std::uint32_t y = 0; y < picture.height; ++y) {
        for (std::uint32_t x = 0; x < picture.width; ++x) {
            const Cell& cell = At(column + static_cast<int>(x), static_cast<int>(y / 2));
            ASSERT_EQ(cell.glyph, "\u2580") << "at " << x << ", " << y;
            ASSERT_EQ(y % 2 == 0 ? cell.front : cell.back, ColorAt(picture, x, y))
                << "at " << x << ", " << y;
        }
    }
}
