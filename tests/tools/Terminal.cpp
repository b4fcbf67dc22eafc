#include "Terminal.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

Terminal::Terminal() : m_screen(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    grantpt(m_screen);
    unlockpt(m_screen);
    m_line = open(ptsname(m_screen), O_RDWR | O_NOCTTY | O_CLOEXEC);
}

Terminal::~Terminal() {
    close(m_line);
    close(m_screen);
}

const std::string& Terminal::WrittenUntil(const std::string& text, int milliseconds) {
    pollfd waiting{m_screen, POLLIN, 0};
    while (m_written.find(text) == std::string::npos && poll(&waiting, 1, milliseconds) > 0) {
        std::array<char, 256> bytes{};
        const ssize_t count = read(m_screen, bytes.data(), bytes.size());
        if (count <= 0) {
            break;
        }
        m_written.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return m_written;
}
