#include "Numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "Picture.h"

namespace KivFisheyeTools {

namespace {

template <typename Number>
std::optional<Number> WholeTextAs(const std::string& text) {
    Number number{};
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) {
        return std::nullopt;
    }
    return number;
}

std::string WithoutPlus(const std::string& text) {
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return hasPlus ? text.substr(1) : text;
}

}  // namespace

std::optional<double> NumberOf(const std::string& text) {
    return WholeTextAs<double>(WithoutPlus(text));
}

std::optional<std::uint32_t> WholeNumberOf(const std::string& text) {
    return WholeTextAs<std::uint32_t>(WithoutPlus(text));
}

bool IsFinite(double number) {
    return std::abs(number) <= double{std::numeric_limits<float>::max()};
}

std::optional<Size> SizeOfText(const std::string& text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos) {
        return std::nullopt;
    }
    const auto width = WholeTextAs<std::uint32_t>(text.substr(0, cross));
    const auto height = WholeTextAs<std::uint32_t>(text.substr(cross + 1));
    const auto isSide = [](const std::optional<std::uint32_t>& side) {
        return side && *side >= 1 && *side <= kMaximumSide;
    };
    if (!isSide(width) || !isSide(height)) {
        return std::nullopt;
    }
    return Size{*width, *height};
}

std::string WordsFor(const Size& size) {
    return std::to_string(size.width) + "x" + std::to_string(size.height);
}

std::vector<std::string> SplitAtCommas(const std::string& text) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        const std::size_t comma = text.find(',', start);
        parts.push_back(text.substr(start, comma - start));
        if (comma == std::string::npos) {
            return parts;
        }
        start = comma + 1;
    }
}

std::string Listed(const std::vector<std::string>& words, const std::string& conjunction) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const bool isLast = i + 1 == words.size();
        const std::string separator = isLast ? " " + conjunction + " " : ", ";
        text += (i == 0 ? "" : separator) + words[i];
    }
    return text;
}

std::vector<double> NumbersOfText(const std::string& text) {
    std::vector<double> numbers;
    for (const std::string& part : SplitAtCommas(text)) {
        numbers.push_back(NumberOf(part).value_or(std::nan("")));
    }
    return numbers;
}

}  // namespace KivFisheyeTools
