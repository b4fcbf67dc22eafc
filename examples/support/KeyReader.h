#ifndef EXAMPLES_KEY_READER_H
#define EXAMPLES_KEY_READER_H

#include <array>
#include <csignal>
#include <cstddef>
#include <optional>

/// What the user did.
struct Key {
    enum class Kind { Character, Up, Down, Left, Right, Click, End };

    Kind kind;
    char character = 0;  // of `Character`
    int column = 0;      // of `Click`: the cell, from 0
    int row = 0;
};

/// Reads keys and mouse clicks from standard input. Ctrl-C, Ctrl-D, the end of the input, and the
/// signals that ask a program to stop are all an `End`.
class KeyReader {
public:
    KeyReader();
    ~KeyReader();
    KeyReader(const KeyReader&) = delete;
    KeyReader& operator=(const KeyReader&) = delete;

    /// Waits for the next one. What it does not know it leaves out.
    Key Next();

private:
    std::optional<unsigned char> NextByte();
    std::optional<Key> AfterEscape();

    std::array<unsigned char, 256> m_bytes{};
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    sigset_t m_maskBefore{};
    std::array<struct sigaction, 3> m_actionsBefore{};
};

#endif
