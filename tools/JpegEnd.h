#ifndef KIVFISHEYE_TOOLS_JPEG_END_H
#define KIVFISHEYE_TOOLS_JPEG_END_H

#include <cstddef>
#include <cstdint>

namespace KivFisheyeTools {

/// Whether the bytes run as far as the marker that ends a JPEG picture. The decoder makes up what
/// is missing of a file that was cut off without a word.
bool HasJpegEnd(const std::uint8_t* bytes, std::size_t size);

}  // namespace KivFisheyeTools

#endif
