#ifndef KIVFISHEYE_TESTS_TERMINAL_H
#define KIVFISHEYE_TESTS_TERMINAL_H

#include <string>

/// A terminal that remembers what is written on it.
class Terminal {
public:
    Terminal();
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// The descriptor for programs.
    int Line() const { return m_line; }

    /// All that was written until a text came, or until nothing came for so long.
    const std::string& WrittenUntil(const std::string& text, int milliseconds);

private:
    int m_screen;
    int m_line;
    std::string m_written;
};

#endif
