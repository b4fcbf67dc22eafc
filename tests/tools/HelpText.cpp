#include "HelpText.h"

#include <sstream>

#include "GoodRun.h"

namespace {

/// The lines below a title as far as the next empty one.
std::vector<std::string> LinesBelow(const std::string& title, const std::string& help) {
    std::vector<std::string> below;
    bool isBelow = false;
    for (const std::string& line : Lines(help)) {
        isBelow = (isBelow && !line.empty()) || line == title;
        if (isBelow && line != title) {
            below.push_back(line);
        }
    }
    return below;
}

/// The first words of the lines that are indented by two spaces.
std::vector<std::string> ItemsBelow(const std::string& title, const std::string& help) {
    std::vector<std::string> items;
    for (const std::string& line : LinesBelow(title, help)) {
        if (line.size() > 2 && line[2] != ' ') {
            items.push_back(line.substr(2, line.find(' ', 2) - 2));
        }
    }
    return items;
}

}  // namespace

std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> Words(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

std::string OneLine(const std::string& text) {
    std::string line;
    for (const std::string& word : Words(text)) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

std::vector<std::string> CommandsInHelp(const TemporaryFolder& folder) {
    return ItemsBelow("Subcommands:", OutputOfGoodRun(folder, {"help"}));
}

std::vector<std::string> OptionsInHelp(const std::string& help) {
    std::vector<std::string> options;
    for (const std::string& item : ItemsBelow("Options:", help)) {
        const std::size_t comma = item.find(',');
        options.push_back(item.substr(0, comma));
        if (comma != std::string::npos) {
            options.push_back(item.substr(comma + 1));
        }
    }
    return options;
}

std::vector<std::string> PositionalsInHelp(const std::string& help) {
    return ItemsBelow("Positionals:", help);
}

std::vector<std::string> ExamplesInHelp(const std::string& help) {
    std::vector<std::string> examples;
    for (const std::string& line : LinesBelow("Examples:", help)) {
        if (line.rfind("    kivfisheye ", 0) == 0) {
            examples.push_back(line.substr(4));
        }
    }
    return examples;
}

std::string HelpOn(const std::string& option, const std::string& help) {
    const std::size_t start = help.find("\n  " + option + ' ');
    return start == std::string::npos
               ? ""
               : OneLine(help.substr(start, help.find("\n  -", start + 1) - start));
}
