#ifndef KIVFISHEYE_TOOLS_WRAPPED_TEXT_H
#define KIVFISHEYE_TOOLS_WRAPPED_TEXT_H

#include <string>

namespace KivFisheyeTools {

/// The text with line breaks instead of spaces, so that no line is longer than `width` unless a
/// single word is.
std::string WrappedText(const std::string& text, std::size_t width);

}  // namespace KivFisheyeTools

#endif
