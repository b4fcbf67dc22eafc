#include "Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>

namespace {

const std::string kOtherScreen = "\033[?1049h";
const std::string kFormerScreen = "\033[?1049l";
const std::string kHideCursor = "\033[?25l";
const std::string kShowCursor = "\033[?25h";
// Clicks, told in numbers.
const std::string kUseMouse = "\033[?1000h\033[?1006h";
const std::string kLeaveMouse = "\033[?1006l\033[?1000l";
const std::string kClearScreen = "\033[2J";
const std::string kPlainColors = "\033[0m";
const std::string kClearRest = "\033[K";
const std::string kUpperHalf = "\u2580";

std::string GoTo(std::uint32_t row, std::uint32_t column) {
    return "\033[" + std::to_string(row + 1) + ';' + std::to_string(column + 1) + 'H';
}

std::string ColorOf(const unsigned char* pixel) {
    return "2;" + std::to_string(pixel[0]) + ';' + std::to_string(pixel[1]) + ';' +
           std::to_string(pixel[2]);
}

bool SendAll(const std::string& text) {
    for (std::size_t sent = 0; sent < text.size();) {
        const ssize_t count = write(STDOUT_FILENO, text.data() + sent, text.size() - sent);
        if (count < 0 && errno != EINTR) {
            return false;
        }
        sent += count < 0 ? 0 : static_cast<std::size_t>(count);
    }
    return true;
}

}  // namespace

Terminal::Terminal(Mouse mouse) : m_mouse(mouse) {
    if (isatty(STDOUT_FILENO) == 0) {
        throw std::runtime_error("standard output is not a terminal");
    }
    termios mode{};
    if (tcgetattr(STDIN_FILENO, &mode) == 0) {
        m_modeBefore = mode;
        // Keys come at once and are not shown. Ctrl-C comes as one, and Ctrl-Z would leave the
        // shell with this screen.
        mode.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO | ISIG);
        tcsetattr(STDIN_FILENO, TCSANOW, &mode);
    }
    SendAll(kOtherScreen + kHideCursor + (mouse == Mouse::Used ? kUseMouse : ""));
}

Terminal::~Terminal() {
    SendAll((m_mouse == Mouse::Used ? kLeaveMouse : "") + kShowCursor + kFormerScreen);
    if (m_modeBefore) {
        // Keys that nobody waited for are not the shell's.
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &*m_modeBefore);
    }
}

Terminal::Size Terminal::PresentSize() {
    winsize window{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &window) != 0 || window.ws_col == 0 ||
        window.ws_row == 0) {
        return {80, 24};
    }
    return {window.ws_col, window.ws_row};
}

void Terminal::Clear() {
    m_unsent += kClearScreen;
}

void Terminal::Draw(const Picture& picture, std::uint32_t column) {
    for (std::uint32_t row = 0; row < picture.height / 2; ++row) {
        m_unsent += GoTo(row, column);
        std::string before;
        for (std::uint32_t x = 0; x < picture.width; ++x) {
            const std::string colors = "\033[38;" + ColorOf(picture.At(x, 2 * row)) + ";48;" +
                                       ColorOf(picture.At(x, 2 * row + 1)) + 'm';
            m_unsent += (colors == before ? "" : colors) + kUpperHalf;
            before = colors;
        }
        m_unsent += kPlainColors;
    }
}

void Terminal::Write(std::uint32_t row, const std::string& text) {
    m_unsent += GoTo(row, 0) + kClearRest + text.substr(0, PresentSize().columns);
}

void Terminal::Show() {
    if (!SendAll(m_unsent)) {
        throw std::runtime_error("the terminal takes no more pictures");
    }
    m_unsent.clear();
}
