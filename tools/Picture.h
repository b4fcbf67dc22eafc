#ifndef KIVFISHEYE_TOOLS_PICTURE_H
#define KIVFISHEYE_TOOLS_PICTURE_H

#include <cstdint>
#include <string>
#include <vector>

namespace KivFisheyeTools {

/// A picture in memory: red, green and blue bytes from the top left, with a spare fourth byte when
/// a pixel has 4. A row takes its pixels' bytes rounded up to a multiple of 4.
struct Picture {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t bytesPerPixel;
    std::uint32_t stride;
    std::vector<std::uint8_t> pixels;

    /// A black picture. Throws as `CheckPictureSize`.
    Picture(std::uint32_t pictureWidth, std::uint32_t pictureHeight, std::uint32_t pixelBytes);

    std::uint8_t* Row(std::uint32_t row) { return pixels.data() + RowOffset(row); }
    const std::uint8_t* Row(std::uint32_t row) const { return pixels.data() + RowOffset(row); }

private:
    std::size_t RowOffset(std::uint32_t row) const { return std::size_t{stride} * row; }
};

/// The longest side of a picture, and the most pixels it may have.
constexpr std::uint32_t kMaximumSide = 65535;
constexpr std::uint64_t kMaximumPixels = 1U << 27U;

/// Throws `Failure` for a side of 0 or a size beyond all reason.
void CheckPictureSize(std::uint64_t width, std::uint64_t height);

/// Reads a picture file, or the first picture of a film. Throws `Failure` with the reason when it
/// cannot be read whole.
Picture ReadPicture(const std::string& path, std::uint32_t bytesPerPixel);

constexpr std::uint32_t kBestQuality = 100;

/// Writes a PNG or JPEG file, as the path's ending says. The file appears under its name only when
/// it is complete; on `Failure` nothing is left behind. A symbolic link stays, and its target is
/// written. Throws `UsageError` when the ending is another. `quality` is for JPEG alone, from 1,
/// the smallest file, to the best.
void WritePicture(const std::string& path, const Picture& picture,
                  std::uint32_t quality = kBestQuality);

/// The endings that the names of picture files have.
const std::vector<std::string>& PictureEndings();

/// The picture at another size, smoothly filtered.
Picture Resized(const Picture& picture, std::uint32_t width, std::uint32_t height);

}  // namespace KivFisheyeTools

#endif
