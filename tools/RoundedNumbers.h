#ifndef KIVFISHEYE_TOOLS_ROUNDED_NUMBERS_H
#define KIVFISHEYE_TOOLS_ROUNDED_NUMBERS_H

#include <cstdint>
#include <string>

/// Numbers as people want to read them.
namespace KivFisheyeTools {

/// At most so many decimals, without zeros at the end.
std::string Rounded(double number, int decimals);

/// Whole percents, but "less than 1%" and "more than 99%" where those would be 0 or 100. `whole` is
/// not 0.
std::string Percentage(std::uint64_t part, std::uint64_t whole);

/// A direction in a picture such as "right" or "lower left", from its degrees clockwise from the
/// top.
std::string DirectionName(double degrees);

}  // namespace KivFisheyeTools

#endif
