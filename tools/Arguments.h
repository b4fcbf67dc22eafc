#ifndef KIVFISHEYE_TOOLS_ARGUMENTS_H
#define KIVFISHEYE_TOOLS_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

namespace KivFisheyeTools {

struct Size {
    std::uint32_t width;
    std::uint32_t height;
};

/// Accepts a finite number from `low` to `high`.
CLI::Validator NumberIn(double low, double high);

/// Accepts any number that a float can hold.
CLI::Validator FiniteNumber();

/// Accepts a size such as 1024x768.
CLI::Validator SizeText();

/// Reads what `SizeText` accepted.
Size SizeOfText(const std::string& text);

/// Add an option that several commands have.
CLI::Option* AddMount(CLI::App* command, std::string* mount);
CLI::Option* AddSize(CLI::App* command, std::string* size, const std::string& description);

}  // namespace KivFisheyeTools

#endif
