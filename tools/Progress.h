#ifndef KIVFISHEYE_TOOLS_PROGRESS_H
#define KIVFISHEYE_TOOLS_PROGRESS_H

#include <chrono>
#include <string>

namespace KivFisheyeTools {

/// A line on standard error that says what is being done. It shows only on a terminal, only after
/// the first second, and is wiped away at the end.
class Progress {
public:
    Progress();
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Show(const std::string& text);
    /// Shows the text with a percentage; `part` runs from 0 to 1.
    void ShowPart(const std::string& text, double part);

private:
    bool m_isTerminal;
    bool m_hasShown = false;
    std::chrono::steady_clock::time_point m_start;
};

}  // namespace KivFisheyeTools

#endif
