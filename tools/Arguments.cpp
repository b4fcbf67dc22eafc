#include "Arguments.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <limits>
#include <optional>
#include <sstream>

#include "Camera.h"
#include "Failure.h"

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

/// Reads a number that may begin with a plus.
std::optional<double> NumberOf(const std::string& text) {
    const bool hasPlus = text.size() > 1 && text[0] == '+' && text[1] != '-';
    return WholeTextAs<double>(hasPlus ? text.substr(1) : text);
}

std::optional<Size> ParsedSize(const std::string& text) {
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

}  // namespace

CLI::Validator NumberIn(double low, double high) {
    std::ostringstream range;
    range << "from " << low << " to " << high;
    const auto check = [low, high, words = range.str()](std::string& text) {
        const auto number = NumberOf(text);
        const bool isInside = number && *number >= low && *number <= high;
        return isInside ? std::string() : "'" + text + "' is not a number " + words;
    };
    return {check, range.str()};
}

CLI::Validator FiniteNumber() {
    const auto check = [](std::string& text) {
        const auto number = NumberOf(text);
        const bool isFinite =
            number && std::abs(*number) <= double{std::numeric_limits<float>::max()};
        return isFinite ? std::string() : "'" + text + "' is not a finite number";
    };
    return {check, ""};
}

CLI::Validator SizeText() {
    const auto check = [](std::string& text) {
        const std::optional<Size> size = ParsedSize(text);
        if (!size) {
            return "'" + text + "' is not a size such as 1024x768 with sides from 1 to " +
                   std::to_string(kMaximumSide);
        }
        const bool isTooLarge = std::uint64_t{size->width} * size->height > kMaximumPixels;
        return isTooLarge ? "'" + text + "' is too large: a picture has at most " +
                                std::to_string(kMaximumPixels) + " pixels"
                          : std::string();
    };
    return {check, ""};
}

Size SizeOfText(const std::string& text) {
    return ParsedSize(text).value();
}

CLI::Option* AddMount(CLI::App* command, std::string* mount) {
    return command->add_option("--mount", *mount, "Where the camera hangs")
        ->check(CLI::IsMember(MountNames()));
}

CLI::Option* AddSize(CLI::App* command, std::string* size, const std::string& description) {
    return command->add_option("--size", *size, description)
        ->check(SizeText())
        ->type_name("WIDTHxHEIGHT");
}

void AddLensOptions(CLI::App* command, KivFisheyeLib::DewarpParams* lens) {
    command
        ->add_option("--radius-x", lens->radiusX,
                     "Horizontal semi-axis of the lens image, of the width")
        ->check(NumberIn(0.0, 1.0));
    command
        ->add_option("--radius-y", lens->radiusY,
                     "Vertical semi-axis of the lens image, of the height")
        ->check(NumberIn(0.0, 1.0));
    command
        ->add_option("--wall-view-angle", lens->wallViewAngle,
                     "Wall panorama: reach above and below the horizon, in degrees")
        ->check(NumberIn(10.0, 90.0));
    command
        ->add_option("--inner-radius", lens->innerRadiusRatio,
                     "Ceiling and table panoramas: part of the radius left out around the centre")
        ->check(NumberIn(0.0, 0.8));
}

void CheckOutput(const std::string& output, const std::vector<std::string>& inputs) {
    CheckPictureEnding(output);
    for (const std::string& input : inputs) {
        std::error_code ignored;
        if (std::filesystem::equivalent(output, input, ignored)) {
            throw UsageError("the output would replace the input " + input);
        }
    }
}

}  // namespace KivFisheyeTools
