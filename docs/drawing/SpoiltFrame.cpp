// Makes the frames of usual mistakes, for pictures that show what comes of them:
//   SpoiltFrame flipped IN.png OUT.png   rows from the bottom, handed over as if from the top
//   SpoiltFrame padded IN.png OUT.png    rows padded to 64 bytes, handed over as if they were not

#include <png.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

constexpr png_uint_32 kBytesPerPixel = 4;

struct Frame {
    png_image header{};
    std::vector<unsigned char> pixels;
};

[[noreturn]] void Fail(const std::string& sentence) {
    std::fprintf(stderr, "SpoiltFrame: %s\n", sentence.c_str());
    std::exit(1);
}

Frame Read(const char* path) {
    Frame frame;
    frame.header.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&frame.header, path) == 0) {
        Fail(std::string(path) + ": " + frame.header.message);
    }
    frame.header.format = PNG_FORMAT_RGBA;
    frame.pixels.resize(PNG_IMAGE_SIZE(frame.header));
    if (png_image_finish_read(&frame.header, nullptr, frame.pixels.data(), 0, nullptr) == 0) {
        Fail(std::string(path) + ": " + frame.header.message);
    }
    return frame;
}

/// The bytes of a frame whose rows begin `pitch` bytes apart, room for the longest one included.
std::vector<unsigned char> Padded(const Frame& frame, std::size_t pitch) {
    const std::size_t rowBytes = std::size_t{frame.header.width} * kBytesPerPixel;
    std::vector<unsigned char> padded(pitch * frame.header.height, 0);
    for (std::size_t row = 0; row < frame.header.height; ++row) {
        std::memcpy(padded.data() + row * pitch, frame.pixels.data() + row * rowBytes, rowBytes);
    }
    return padded;
}

void Spoil(const std::string& how, Frame& frame) {
    const std::size_t rowBytes = std::size_t{frame.header.width} * kBytesPerPixel;
    if (how == "padded") {
        frame.pixels = Padded(frame, (rowBytes + 63) / 64 * 64);
    } else if (how == "flipped") {
        const std::vector<unsigned char> upright = frame.pixels;
        for (std::size_t row = 0; row < frame.header.height; ++row) {
            std::memcpy(frame.pixels.data() + (frame.header.height - 1 - row) * rowBytes,
                        upright.data() + row * rowBytes, rowBytes);
        }
    } else {
        Fail("no such mistake: " + how);
    }
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 4) {
        std::fputs("usage: SpoiltFrame flipped|padded IN.png OUT.png\n", stderr);
        return 2;
    }
    Frame frame = Read(arguments[2]);
    Spoil(arguments[1], frame);
    // A padded frame is longer than what is written of it.
    frame.header.format = PNG_FORMAT_RGBA;
    if (png_image_write_to_file(&frame.header, arguments[3], 0, frame.pixels.data(), 0, nullptr) ==
        0) {
        Fail(std::string(arguments[3]) + ": " + frame.header.message);
    }
    return 0;
}
