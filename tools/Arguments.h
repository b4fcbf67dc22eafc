#ifndef KIVFISHEYE_TOOLS_ARGUMENTS_H
#define KIVFISHEYE_TOOLS_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "ViewArguments.h"

namespace KivFisheyeTools {

/// Accepts a finite number from `low` to `high`.
CLI::Validator NumberIn(double low, double high);

/// Accepts a whole number from `low` to `high` in decimal digits. For `CLI::Option::transform`.
CLI::Validator WholeNumberIn(std::uint32_t low, std::uint32_t high);

/// Accepts any number that a float can hold.
CLI::Validator FiniteNumber();

/// Accepts a size such as 1024x768 that a picture may have.
CLI::Validator SizeText();

/// Accepts `count` finite numbers with commas between them.
CLI::Validator FiniteNumbers(std::size_t count);

/// Add an option that several commands have.
CLI::Option* AddMount(CLI::App* command, std::string* mount);
CLI::Option* AddSize(CLI::App* command, std::string* size, const std::string& description);

/// What the options of the lens's radii mean.
constexpr const char* kRadiusXHelp =
    "Horizontal semi-axis of the lens image as a fraction of the frame's width; for a round lens "
    "as "
    "high as the frame it is 0.5 * height / width";
constexpr const char* kRadiusYHelp =
    "Vertical semi-axis of the lens image as a fraction of the frame's height; for a round lens as "
    "wide as the frame it is 0.5 * width / height";

/// Adds the options of everything that `lens` holds.
void AddLensOptions(CLI::App* command, KivFisheyeLib::DewarpParams* lens);

/// Adds the options of `ViewArguments`, all but `--view`.
void AddViewOptions(CLI::App* command, ViewArguments* arguments);

/// Throws `UsageError` when the output is one of the inputs.
void CheckIsNoInput(const std::string& output, const std::vector<std::string>& inputs);

}  // namespace KivFisheyeTools

#endif
