#include "PlainPicture.h"

#include "Picture.h"

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
