#include "Png.h"

#include <png.h>

#include <cstdio>
#include <stdexcept>

namespace {

/// Gives back what libpng keeps between the calls, also when memory runs out on the way.
struct Image : png_image {
    Image() : png_image{} { version = PNG_IMAGE_VERSION; }
    ~Image() { png_image_free(this); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
};

}  // namespace

Picture ReadPng(const std::string& path) {
    Image image;
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
    Image image;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, path.c_str(), 0, picture.pixels.data(), 0, nullptr) == 0) {
        std::remove(path.c_str());
        throw std::runtime_error("cannot write " + path + ": " + image.message);
    }
}
