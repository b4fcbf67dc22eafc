#ifndef KIVFISHEYE_TOOLS_TEXT_FILE_H
#define KIVFISHEYE_TOOLS_TEXT_FILE_H

#include <cstdint>
#include <string>
#include <string_view>

#include "OutputFile.h"

namespace KivFisheyeTools {

/// The shortest digits that read back as the same number, whatever the language of the system.
std::string DigitsOf(float number);

/// A text that appears under its name only when it is complete.
class TextFile {
public:
    /// Throws `Failure` when it can never be written.
    explicit TextFile(const std::string& path) : m_file(path) {}

    TextFile& operator<<(std::string_view text);
    TextFile& operator<<(float number) { return *this << DigitsOf(number); }
    TextFile& operator<<(std::uint32_t number) { return *this << std::to_string(number); }
    void Finish();

private:
    void WriteBuffer();

    OutputFile m_file;
    std::string m_buffer;
};

}  // namespace KivFisheyeTools

#endif
