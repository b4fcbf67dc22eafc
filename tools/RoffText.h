#ifndef KIVFISHEYE_TOOLS_ROFF_TEXT_H
#define KIVFISHEYE_TOOLS_ROFF_TEXT_H

#include <string>

/// Texts of a manual page, in which no letter is taken for an instruction.
namespace KivFisheyeTools {

/// Prose: a dash between letters is a hyphen, any other one a minus. Options are bold.
std::string RoffProse(const std::string& text);

/// What is typed: every dash is a minus and every quote straight.
std::string RoffCode(const std::string& text);

std::string RoffBold(const std::string& code);
std::string RoffItalic(const std::string& code);

}  // namespace KivFisheyeTools

#endif
