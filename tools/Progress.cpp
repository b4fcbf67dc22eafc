#include "Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iostream>

namespace KivFisheyeTools {

namespace {

constexpr const char* kWipeLine = "\r\033[K";

std::string WordsForSeconds(double seconds) {
    const auto whole = static_cast<std::uint64_t>(std::ceil(seconds));
    constexpr std::uint64_t kMinute = 60;
    return whole < 2 * kMinute ? std::to_string(whole) + " s"
                               : std::to_string(whole / kMinute) + " min";
}

}  // namespace

Progress::Progress() : m_isTerminal(isatty(STDERR_FILENO) != 0) {
    if (m_isTerminal) {
        m_timer = std::thread([this] { ShowAfterFirstSecond(); });
    }
}

Progress::~Progress() {
    if (!m_isTerminal) {
        return;
    }
    {
        const std::lock_guard<std::mutex> guard(m_lock);
        m_hasEnded = true;
    }
    m_end.notify_one();
    m_timer.join();
    if (m_isVisible) {
        std::cerr << kWipeLine << std::flush;
    }
}

void Progress::Show(const std::string& text) {
    const std::lock_guard<std::mutex> guard(m_lock);
    if (text == m_text) {
        return;
    }
    m_text = text;
    if (m_isVisible) {
        PrintLine();
    }
}

void Progress::ShowPart(const std::string& text, double part) {
    Show(text + ' ' + std::to_string(static_cast<int>(part * 100.0)) + '%');
}

void Progress::ShowFrames(const std::string& text, std::uint64_t done, std::uint64_t all) {
    constexpr std::chrono::milliseconds kPause(100);
    const Clock::time_point now = Clock::now();
    if (!m_isTerminal || (m_framesStart && now < m_framesShown + kPause)) {
        return;
    }
    m_framesShown = now;
    const double seconds = std::chrono::duration<double>(now - m_framesStart.value_or(now)).count();
    m_framesStart = m_framesStart.value_or(now);
    std::string line = text + " frame " + std::to_string(done);
    if (all == 0) {
        Show(line + ", " + WordsForSeconds(seconds));
        return;
    }
    // The number of all frames may be an estimate.
    const double part = std::min(1.0, static_cast<double>(done) / static_cast<double>(all));
    line += " of " + std::to_string(std::max(done, all)) + ", " +
            std::to_string(static_cast<int>(part * 100.0)) + '%';
    const bool isMeasured = done > 1;
    Show(isMeasured ? line + ", " + WordsForSeconds(seconds * (1.0 - part) / part) + " left"
                    : line);
}

void Progress::Say(const std::string& sentence) {
    const std::lock_guard<std::mutex> guard(m_lock);
    std::cerr << (m_isVisible ? kWipeLine : "") << "kivfisheye: " << sentence << '\n';
    if (m_isVisible) {
        PrintLine();
    }
}

void Progress::ShowAfterFirstSecond() {
    std::unique_lock<std::mutex> guard(m_lock);
    if (!m_end.wait_for(guard, std::chrono::seconds(1), [this] { return m_hasEnded; })) {
        m_isVisible = true;
        PrintLine();
    }
}

void Progress::PrintLine() const {
    std::cerr << kWipeLine << m_text << std::flush;
}

}  // namespace KivFisheyeTools
