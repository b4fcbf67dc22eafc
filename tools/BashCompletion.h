#ifndef KIVFISHEYE_TOOLS_BASH_COMPLETION_H
#define KIVFISHEYE_TOOLS_BASH_COMPLETION_H

#include <CLI/CLI.hpp>
#include <string>

namespace KivFisheyeTools {

/// A script that teaches bash to complete the program's command lines.
std::string BashCompletion(const CLI::App& program);

}  // namespace KivFisheyeTools

#endif
