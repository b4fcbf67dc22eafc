#ifndef KIVFISHEYE_TOOLS_COMMANDS_H
#define KIVFISHEYE_TOOLS_COMMANDS_H

#include <CLI/CLI.hpp>

namespace KivFisheyeTools {

/// Each adds a subcommand that does its work while the command line is parsed, and throws
/// `Failure` or `UsageError` when it cannot.
void AddAimCommand(CLI::App* app);
void AddDewarpCommand(CLI::App* app);
void AddHelpCommand(CLI::App* app);
void AddInfoCommand(CLI::App* app);
void AddMeshCommand(CLI::App* app);
void AddOutlineCommand(CLI::App* app);
void AddSceneCommand(CLI::App* app);
void AddSheetCommand(CLI::App* app);
void AddSnapshotCommand(CLI::App* app);
void AddSweepCommand(CLI::App* app);

}  // namespace KivFisheyeTools

#endif
