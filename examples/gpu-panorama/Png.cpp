#include "Png.h"

#include <png.h>

#include <cstdio>
#include <stdexcept>

namespace {

png_image NewImage() {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    return image;
}

}  // namespace

Picture ReadPng(const std::string& path) {
    png_image image = NewImage();
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        throw std::runtime_error("cannot read " + path + ": " + image.message);
    }
    image.format = PNG_FORMAT_RGB;
    Picture picture{static_cast<int>(image.width), static_cast<int>(image.height),
                    std::vector<unsigned char>(PNG_IMAGE_SIZE(image))};
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0) {
        throw std::runtime_error("cannot read " + path + ": " + image.message);
    }
    return picture;
}

void WritePng(const std::string& path, const Picture& picture) {
    png_image image = NewImage();
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.pixels.data(), 0, nullptr) == 0) {
        std::remove(path.c_str());
        throw std::runtime_error("cannot write " + path + ": " + image.message);
    }
}
