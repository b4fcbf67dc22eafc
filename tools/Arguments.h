#ifndef KIVFISHEYE_TOOLS_ARGUMENTS_H
#define KIVFISHEYE_TOOLS_ARGUMENTS_H

#include <KivFisheyeLib.h>

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

namespace KivFisheyeTools {

struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

/// Accepts a finite number from `low` to `high`.
CLI::Validator NumberIn(double low, double high);

/// Accepts any number that a float can hold.
CLI::Validator FiniteNumber();

/// Accepts a size such as 1024x768 that a picture may have.
CLI::Validator SizeText();

/// Reads what `SizeText` accepted.
Size SizeOfText(const std::string& text);

/// Add an option that several commands have.
CLI::Option* AddMount(CLI::App* command, std::string* mount);
CLI::Option* AddSize(CLI::App* command, std::string* size, const std::string& description);

/// A lens that touches the frame's edges.
constexpr KivFisheyeLib::DewarpParams kUsualLens{0.5F, 0.5F, 45.0F, 0.0F};

/// Adds the options of everything that `lens` holds.
void AddLensOptions(CLI::App* command, KivFisheyeLib::DewarpParams* lens);

/// Throws `UsageError` when the output is no PNG or JPEG file by its name, or is one of the inputs.
void CheckOutput(const std::string& output, const std::vector<std::string>& inputs);

}  // namespace KivFisheyeTools

#endif
