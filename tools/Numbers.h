#ifndef KIVFISHEYE_TOOLS_NUMBERS_H
#define KIVFISHEYE_TOOLS_NUMBERS_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Numbers and lists as they are written on the command line.
namespace KivFisheyeTools {

struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

/// Reads a number that may begin with a plus.
std::optional<double> NumberOf(const std::string& text);

/// Reads a whole number of decimal digits, which may begin with a plus.
std::optional<std::uint32_t> WholeNumberOf(const std::string& text);

/// Whether a float can hold the number.
bool IsFinite(double number);

std::vector<std::string> SplitAtCommas(const std::string& text);

/// The words with commas between them, and `conjunction` before the last.
std::string Listed(const std::vector<std::string>& words, const std::string& conjunction);

/// Reads numbers with commas between them; what is none becomes NaN.
std::vector<double> NumbersOfText(const std::string& text);

/// Writes a size as it is read.
std::string WordsFor(const Size& size);

/// Reads a size such as 1024x768, with sides that a picture may have.
std::optional<Size> SizeOfText(const std::string& text);

}  // namespace KivFisheyeTools

#endif
