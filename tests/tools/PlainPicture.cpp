#include "PlainPicture.h"

using KivFisheyeTools::Picture;

void WritePlain(const TemporaryFolder& folder, const std::string& name, std::uint32_t width,
                std::uint32_t height, std::uint8_t red) {
    Picture picture(width, height, 3);
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column) {
            picture.Row(row)[std::size_t{3} * column] = red;
        }
    }
    KivFisheyeTools::WritePicture(folder.File(name), picture);
}

Picture Slopes() {
    constexpr std::uint32_t kSide = 256;
    Picture picture(kSide, kSide, 3);
    for (std::uint32_t row = 0; row < kSide; ++row) {
        for (std::uint32_t column = 0; column < kSide; ++column) {
            std::uint8_t* pixel = picture.Row(row) + std::size_t{3} * column;
            pixel[0] = static_cast<std::uint8_t>(column);
            pixel[1] = static_cast<std::uint8_t>(row);
            pixel[2] = 255;
        }
    }
    return picture;
}
