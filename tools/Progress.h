#ifndef KIVFISHEYE_TOOLS_PROGRESS_H
#define KIVFISHEYE_TOOLS_PROGRESS_H

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
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
    /// Shows the text with the number of frames done. With the number of all frames it tells the
    /// percentage and the time left too, without it (0) the time since the first call.
    /// It may be called for every frame, and shows some of them.
    void ShowFrames(const std::string& text, std::uint64_t done, std::uint64_t all);

    /// Prints a sentence that stays.
    void Say(const std::string& sentence);

private:
    using Clock = std::chrono::steady_clock;

    void ShowAfterFirstSecond();
    /// Called with the lock held.
    void PrintLine() const;

    const bool m_isTerminal;
    std::mutex m_lock;
    std::condition_variable m_end;
    std::string m_text;
    std::optional<Clock::time_point> m_framesStart;
    Clock::time_point m_framesShown;
    bool m_isVisible = false;
    bool m_hasEnded = false;
    std::thread m_timer;
};

}  // namespace KivFisheyeTools

#endif
