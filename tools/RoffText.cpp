#include "RoffText.h"

#include <cctype>
#include <sstream>

namespace KivFisheyeTools {

namespace {

bool IsLetter(char letter) {
    return std::isalpha(static_cast<unsigned char>(letter)) != 0;
}

std::string Escaped(char letter, bool isMinus) {
    switch (letter) {
        case '\\':
            return "\\(rs";
        case '-':
            return isMinus ? "\\-" : "-";
        case '\'':
            return "\\(aq";
        case '"':
            return "\\(dq";
        case '`':
            return "\\(ga";
        case '^':
            return "\\(ha";
        case '~':
            return "\\(ti";
        default:
            return {letter};
    }
}

/// A line that begins with a dot or a quote would be an instruction.
std::string Guarded(const std::string& line) {
    return !line.empty() && (line[0] == '.' || line[0] == '\'') ? "\\&" + line : line;
}

std::string ProseWord(const std::string& word) {
    const std::size_t bare = word.find_last_not_of(".,;:");
    if (word.rfind("--", 0) == 0 && bare != std::string::npos) {
        return RoffBold(word.substr(0, bare + 1)) + word.substr(bare + 1);
    }
    std::string escaped;
    bool isMinus = false;
    for (std::size_t i = 0; i < word.size(); ++i) {
        isMinus = isMinus || (word[i] == '-' && (i == 0 || !IsLetter(word[i - 1])));
        escaped += Escaped(word[i], isMinus);
    }
    return escaped;
}

}  // namespace

std::string RoffProse(const std::string& text) {
    std::istringstream words(text);
    std::string prose;
    for (std::string word; words >> word;) {
        prose += (prose.empty() ? "" : " ") + ProseWord(word);
    }
    return Guarded(prose);
}

std::string RoffCode(const std::string& text) {
    std::string code;
    for (const char letter : text) {
        code += Escaped(letter, true);
    }
    return Guarded(code);
}

std::string RoffBold(const std::string& code) {
    return "\\fB" + RoffCode(code) + "\\fR";
}

std::string RoffItalic(const std::string& code) {
    return "\\fI" + RoffCode(code) + "\\fR";
}

}  // namespace KivFisheyeTools
