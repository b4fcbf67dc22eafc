#include "Progress.h"

#include <unistd.h>

#include <iostream>

namespace KivFisheyeTools {

namespace {

constexpr const char* kWipeLine = "\r\033[K";

}  // namespace

Progress::Progress()
    : m_isTerminal(isatty(STDERR_FILENO) != 0), m_start(std::chrono::steady_clock::now()) {}

Progress::~Progress() {
    if (m_hasShown) {
        std::cerr << kWipeLine << std::flush;
    }
}

void Progress::Show(const std::string& text) {
    const auto elapsed = std::chrono::steady_clock::now() - m_start;
    if (m_isTerminal && elapsed > std::chrono::seconds(1)) {
        std::cerr << kWipeLine << text << std::flush;
        m_hasShown = true;
    }
}

void Progress::ShowPart(const std::string& text, double part) {
    Show(text + ' ' + std::to_string(static_cast<int>(part * 100.0)) + '%');
}

}  // namespace KivFisheyeTools
