#include "Png.h"

#include <png.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

/// Gives back what libpng keeps between the calls, also when memory runs out on the way.
struct Image : png_image {
    Image() : png_image{} { version = PNG_IMAGE_VERSION; }
    ~Image() { png_image_free(this); }
    Image(const Image&) = delete;
    Image& operator=(const Image&) = delete;
};

std::vector<char> Encoded(const Picture& picture) {
    Image image;
    image.width = picture.width;
    image.height = picture.height;
    image.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::vector<char> file(size);
    if (png_image_write_to_memory(&image, file.data(), &size, 0, picture.pixels.data(), 0,
                                  nullptr) == 0) {
        throw std::runtime_error(std::string("cannot make a PNG picture: ") + image.message);
    }
    file.resize(size);
    return file;
}

}  // namespace

Picture ReadPng(const std::string& path) {
    Image image;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        throw std::runtime_error("cannot read " + path + ": " + image.message);
    }
    image.format = PNG_FORMAT_RGBA;
    Picture picture(image.width, image.height);
    if (png_image_finish_read(&image, nullptr, picture.pixels.data(), 0, nullptr) == 0) {
        throw std::runtime_error("cannot read " + path + ": " + image.message);
    }
    return picture;
}

void WritePng(const std::string& path, const Picture& picture) {
    const std::vector<char> content = Encoded(picture);
    std::ofstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot write " + path + ": " + std::strerror(errno));
    }
    file.write(content.data(), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file) {
        const std::string reason = std::strerror(errno);
        if (std::filesystem::is_regular_file(path)) {
            std::filesystem::remove(path);
        }
        throw std::runtime_error("cannot write " + path + ": " + reason);
    }
}
