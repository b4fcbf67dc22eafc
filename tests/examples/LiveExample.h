#ifndef KIVFISHEYE_TESTS_LIVE_EXAMPLE_H
#define KIVFISHEYE_TESTS_LIVE_EXAMPLE_H

#include <sys/types.h>
#include <termios.h>

#include <string>
#include <vector>

#include "Screen.h"
#include "tools/TemporaryFolder.h"

/// An example at work in a terminal of its own, with a user before it.
class LiveExample {
public:
    LiveExample(const std::string& name, const std::vector<std::string>& arguments, int columns,
                int rows);
    /// A program by its path, and its arguments.
    LiveExample(const std::vector<std::string>& words, int columns, int rows);
    ~LiveExample();
    LiveExample(const LiveExample&) = delete;
    LiveExample& operator=(const LiveExample&) = delete;

    void Type(const std::string& keys) const;
    void Send(int signal) const;
    void Resize(int columns, int rows);
    /// Takes the terminal away.
    void HangUp();

    /// Expects that a row of the screen comes to begin with this text.
    void ExpectRow(int row, const std::string& text);
    /// Its status, -1 when it did not end by itself; to be called once.
    int Wait();

    const Screen& Shown() const { return m_screen; }
    std::string Errors() const { return ContentOf(m_streams.File("errors")); }
    termios Mode() const;
    /// Whether the terminal has the mode that it had before the example began.
    bool HasFirstMode() const;

private:
    /// Whether something came in time.
    bool Read();

    TemporaryFolder m_streams;
    Screen m_screen;
    int m_user;  // the two ends of the terminal
    int m_line;
    termios m_firstMode{};
    pid_t m_child = 0;
};

#endif
