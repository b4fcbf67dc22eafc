#include "LiveExample.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "ExampleFolder.h"

namespace {

constexpr std::chrono::seconds kPatience{60};

int OpenTerminal() {
    const int user = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (user < 0 || grantpt(user) != 0 || unlockpt(user) != 0) {
        throw std::runtime_error("there is no terminal");
    }
    return user;
}

std::vector<std::string> Joined(std::vector<std::string> words,
                                const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

/// Starts a program in a terminal, which loses its mode when its leader ends: so this is none.
pid_t StartIn(const char* terminal, const std::string& errors, std::vector<std::string> words) {
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t streams;
    posix_spawn_file_actions_init(&streams);
    posix_spawn_file_actions_addopen(&streams, STDIN_FILENO, terminal, O_RDWR, 0);
    posix_spawn_file_actions_adddup2(&streams, STDIN_FILENO, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&streams, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT,
                                     0600);
    pid_t child = 0;
    const int error = posix_spawn(&child, pointers[0], &streams, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&streams);
    if (error != 0) {
        throw std::runtime_error(words[0] + " cannot be started");
    }
    return child;
}

}  // namespace

LiveExample::LiveExample(const std::string& name, const std::vector<std::string>& arguments,
                         int columns, int rows)
    : LiveExample(Joined({PathOfExample(name)}, arguments), columns, rows) {}

LiveExample::LiveExample(const std::vector<std::string>& words, int columns, int rows)
    : m_screen(columns, rows),
      m_user(OpenTerminal()),
      m_line(open(ptsname(m_user), O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    Resize(columns, rows);
    m_firstMode = Mode();
    m_child = StartIn(ptsname(m_user), m_streams.File("errors"), words);
}

LiveExample::~LiveExample() {
    if (m_child != 0) {
        kill(m_child, SIGKILL);
        waitpid(m_child, nullptr, 0);
    }
    HangUp();
    close(m_line);
}

void LiveExample::Type(const std::string& keys) const {
    EXPECT_EQ(write(m_user, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
}

void LiveExample::Send(int signal) const {
    kill(m_child, signal);
}

void LiveExample::Resize(int columns, int rows) {
    const winsize size{static_cast<unsigned short>(rows), static_cast<unsigned short>(columns), 0,
                       0};
    EXPECT_EQ(ioctl(m_user, TIOCSWINSZ, &size), 0);
    m_screen = Screen(columns, rows);
}

void LiveExample::HangUp() {
    if (m_user >= 0) {
        close(m_user);
    }
    m_user = -1;
}

bool LiveExample::Read() {
    pollfd waiting{m_user, POLLIN, 0};
    if (m_user < 0 || poll(&waiting, 1, 20) <= 0) {
        return false;
    }
    std::array<char, 65536> bytes{};
    const ssize_t count = read(m_user, bytes.data(), bytes.size());
    if (count > 0) {
        m_screen.Write({bytes.data(), static_cast<std::size_t>(count)});
    }
    return count > 0;
}

void LiveExample::ExpectRow(int row, const std::string& text) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (m_screen.Row(row).rfind(text, 0) != 0) {
        if (std::chrono::steady_clock::now() > end) {
            FAIL() << "row " << row << " is " << m_screen.Row(row) << "; " << Errors();
        }
        Read();
    }
}

int LiveExample::Wait() {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    int status = 0;
    while (waitpid(m_child, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > end) {
            ADD_FAILURE() << "the program does not end";
            return -1;
        }
        if (!Read()) {
            usleep(1000);
        }
    }
    m_child = 0;
    while (Read()) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

termios LiveExample::Mode() const {
    termios mode{};
    EXPECT_EQ(tcgetattr(m_line, &mode), 0);
    return mode;
}

bool LiveExample::HasFirstMode() const {
    const termios mode = Mode();
    return mode.c_iflag == m_firstMode.c_iflag && mode.c_oflag == m_firstMode.c_oflag &&
           mode.c_cflag == m_firstMode.c_cflag && mode.c_lflag == m_firstMode.c_lflag &&
           std::memcmp(mode.c_cc, m_firstMode.c_cc, sizeof mode.c_cc) == 0;
}
