#include "JpegEnd.h"

namespace KivFisheyeTools {

bool HasJpegEnd(const std::uint8_t* bytes, std::size_t size) {
    constexpr std::uint8_t kScan = 0xDA;
    constexpr std::uint8_t kEnd = 0xD9;
    bool isInScan = false;
    for (std::size_t i = 2; i + 1 < size;) {
        const std::uint8_t marker = bytes[i + 1];
        const bool isData = marker == 0x00 || (marker >= 0xD0 && marker <= 0xD7);
        if (bytes[i] != 0xFF || marker == 0xFF || (isInScan && isData)) {
            ++i;
            continue;
        }
        if (marker == kEnd) {
            return true;
        }
        isInScan = marker == kScan;
        if (i + 3 >= size) {
            return false;
        }
        i += 2 + (std::size_t{bytes[i + 2]} << 8U) + bytes[i + 3];
    }
    return false;
}

}  // namespace KivFisheyeTools
