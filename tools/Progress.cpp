#include "Progress.h"

#include <unistd.h>

#include <chrono>
#include <iostream>

namespace KivFisheyeTools {

namespace {

constexpr const char* kWipeLine = "\r\033[K";

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
