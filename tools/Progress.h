#ifndef KIVFISHEYE_TOOLS_PROGRESS_H
#define KIVFISHEYE_TOOLS_PROGRESS_H

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

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
    void ShowAfterFirstSecond();
    /// Called with the lock held.
    void PrintLine() const;

    const bool m_isTerminal;
    std::mutex m_lock;
    std::condition_variable m_end;
    std::string m_text;
    bool m_isVisible = false;
    bool m_hasEnded = false;
    std::thread m_timer;
};

}  // namespace KivFisheyeTools

#endif
