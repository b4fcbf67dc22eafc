#ifndef KIVFISHEYE_TOOLS_OPTION_FACTS_H
#define KIVFISHEYE_TOOLS_OPTION_FACTS_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

/// What documents want to know of a command's options.
namespace KivFisheyeTools {

std::vector<const CLI::Option*> PositionalsOf(const CLI::App& command);
std::vector<const CLI::Option*> OptionsOf(const CLI::App& command);

/// All names with their dashes, the short ones first.
std::vector<std::string> NamesOf(const CLI::Option& option);

bool TakesValue(const CLI::Option& option);

/// Whether it takes as many values as are given.
bool IsRepeated(const CLI::Option& option);

/// What its value is called, such as "MOUNT".
std::string ValueName(const CLI::Option& option);

/// What holds of its value, such as "from 0 to 1" or "{wall,ceiling,table}", or nothing.
std::string LimitsOf(const CLI::Option& option);

/// The words that stand in braces in the limits. Those that begin with a dot are endings of files.
std::vector<std::string> ChoicesOf(const CLI::Option& option);

/// Whether the value is the name of a file.
bool IsFile(const CLI::Option& option);

}  // namespace KivFisheyeTools

#endif
