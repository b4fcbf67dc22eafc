#ifndef KIVFISHEYE_TOOLS_MANUAL_PAGES_H
#define KIVFISHEYE_TOOLS_MANUAL_PAGES_H

#include <CLI/CLI.hpp>
#include <string>

namespace KivFisheyeTools {

/// The manual page of the program, with the list of its commands.
std::string ProgramPage(const CLI::App& program);

/// The manual page of a command.
std::string CommandPage(const CLI::App& program, const CLI::App& command);

/// What the manual page of a command is called; that of the program has the program's name.
std::string PageName(const CLI::App& program, const CLI::App& command);

}  // namespace KivFisheyeTools

#endif
