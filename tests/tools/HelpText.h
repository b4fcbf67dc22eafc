#ifndef KIVFISHEYE_TESTS_HELP_TEXT_H
#define KIVFISHEYE_TESTS_HELP_TEXT_H

#include <vector>

#include "TemporaryFolder.h"

/// What the help tells, taken apart.

/// The lines of a text without their ends.
std::vector<std::string> Lines(const std::string& text);

/// What stands between white space.
std::vector<std::string> Words(const std::string& text);

/// The text with single spaces where there is any white space.
std::string OneLine(const std::string& text);

/// What `kivfisheye help` lists.
std::vector<std::string> CommandsInHelp(const TemporaryFolder& folder);

/// All options of a command with their dashes.
std::vector<std::string> OptionsInHelp(const std::string& help);

/// What a command takes without dashes.
std::vector<std::string> PositionalsInHelp(const std::string& help);

/// The command lines of the examples.
std::vector<std::string> ExamplesInHelp(const std::string& help);

/// What the help says of an option, as far as the next one, in one line.
std::string HelpOn(const std::string& option, const std::string& help);

#endif
