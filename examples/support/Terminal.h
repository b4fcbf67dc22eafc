#ifndef EXAMPLES_TERMINAL_H
#define EXAMPLES_TERMINAL_H

#include <termios.h>

#include <cstdint>
#include <optional>
#include <string>

#include "KeyReader.h"
#include "Picture.h"

/// The terminal on standard input and output, which shows pictures in 24-bit colours. A cell shows
/// two pixels, one above the other. When this goes, the terminal is as it was.
class Terminal {
public:
    enum class Mouse { Unused, Used };

    /// Throws `std::runtime_error` when standard output is no terminal. Keys may come from anywhere.
    explicit Terminal(Mouse mouse = Mouse::Unused);
    ~Terminal();
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    /// In cells, as the window is now; 80 by 24 where that is unknown.
    struct Size {
        std::uint32_t columns;
        std::uint32_t rows;
    };
    static Size PresentSize();

    // These are seen with the next `Show`. Rows and columns count from 0.
    void Clear();
    void Draw(const Picture& picture, std::uint32_t column);
    /// As much of a text in ASCII as fits in a row.
    void Write(std::uint32_t row, const std::string& text);

    /// Throws `std::runtime_error` when the terminal takes nothing more.
    void Show();

    Key WaitForKey() { return m_keys.Next(); }

private:
    // First, so that signals are caught until the terminal is put back.
    KeyReader m_keys;
    Mouse m_mouse;
    std::optional<termios> m_modeBefore;  // none where the input is no terminal
    std::string m_unsent;
};

#endif
