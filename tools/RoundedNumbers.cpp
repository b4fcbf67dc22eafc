#include "RoundedNumbers.h"

#include <array>
#include <cmath>
#include <iomanip>
#include <sstream>

namespace KivFisheyeTools {

std::string Rounded(double number, int decimals) {
    const double unit = std::pow(10.0, decimals);
    std::ostringstream text;
    // A number that rounds to 0 has no sign.
    text << std::setprecision(12) << std::round(number * unit) / unit + 0.0;
    return text.str();
}

std::string Percentage(std::uint64_t part, std::uint64_t whole) {
    const double percents = 100.0 * static_cast<double>(part) / static_cast<double>(whole);
    if (part > 0 && percents < 1.0) {
        return "less than 1%";
    }
    if (part < whole && percents > 99.0) {
        return "more than 99%";
    }
    return Rounded(percents, 0) + '%';
}

std::string DirectionName(double degrees) {
    constexpr std::array<const char*, 8> kNames = {"top",    "upper right", "right", "lower right",
                                                   "bottom", "lower left",  "left",  "upper left"};
    constexpr double kStep = 45.0;
    return kNames.at(static_cast<std::size_t>(std::lround(degrees / kStep)) % kNames.size());
}

}  // namespace KivFisheyeTools
