#ifndef KIVFISHEYE_TOOLS_COMMAND_TEXTS_H
#define KIVFISHEYE_TOOLS_COMMAND_TEXTS_H

#include <string>
#include <vector>

/// What the help and the manual pages tell beside the options.
namespace KivFisheyeTools {

/// A command line that works, and what comes of it.
struct Example {
    std::string purpose;
    std::string line;
};

struct CommandText {
    /// Paragraphs about what the options leave open.
    std::vector<std::string> notes;
    std::vector<Example> examples;
};

/// The text of a command; that of the program stands under its own name.
const CommandText& TextOf(const std::string& command);

struct ExitStatus {
    std::string number;
    std::string meaning;
};

const std::vector<ExitStatus>& ExitStatuses();

}  // namespace KivFisheyeTools

#endif
