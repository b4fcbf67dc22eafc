#include "WrappedText.h"

#include <sstream>

namespace KivFisheyeTools {

std::string WrappedText(const std::string& text, std::size_t width) {
    std::istringstream words(text);
    std::string wrapped;
    std::size_t length = 0;
    for (std::string word; words >> word;) {
        const bool fits = length + 1 + word.size() <= width;
        if (length > 0) {
            wrapped += fits ? ' ' : '\n';
        }
        length = length > 0 && fits ? length + 1 + word.size() : word.size();
        wrapped += word;
    }
    return wrapped;
}

}  // namespace KivFisheyeTools
