#ifndef KIVFISHEYE_TOOLS_COMMAND_LINE_H
#define KIVFISHEYE_TOOLS_COMMAND_LINE_H

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace KivFisheyeTools {

/// The whole command line: the program with its commands, their options and their help.
class CommandLine : public CLI::App {
public:
    CommandLine();
};

/// All commands, in the order of the help.
std::vector<const CLI::App*> CommandsOf(const CLI::App& program);
std::vector<std::string> CommandNames(const CLI::App& program);

}  // namespace KivFisheyeTools

#endif
