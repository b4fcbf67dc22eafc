#include "TextFile.h"

#include <array>
#include <charconv>

namespace KivFisheyeTools {

std::string DigitsOf(float number) {
    std::array<char, 64> digits{};
    const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    return {digits.data(), result.ptr};
}

TextFile& TextFile::operator<<(std::string_view text) {
    constexpr std::size_t kBufferSize = 1 << 16;
    m_buffer += text;
    if (m_buffer.size() >= kBufferSize) {
        WriteBuffer();
    }
    return *this;
}

void TextFile::Finish() {
    WriteBuffer();
    m_file.MoveToTarget();
}

void TextFile::WriteBuffer() {
    m_file.Write(reinterpret_cast<const std::uint8_t*>(m_buffer.data()), m_buffer.size());
    m_buffer.clear();
}

}  // namespace KivFisheyeTools
