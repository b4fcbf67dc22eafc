#ifndef KIVFISHEYE_PANORAMA_JOB_H
#define KIVFISHEYE_PANORAMA_JOB_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// A panorama that is measured: the best output size for a source of so many pixels a side, and a
/// converter between the two.
struct PanoramaView {
    using Frame = std::function<void(const unsigned char* src, unsigned char* dst)>;
    struct Conversions {
        std::function<void()> init;  // builds the table
        Frame convert;
        Frame convertTurned;  // empty for a wall, which does not turn
    };

    std::string name;
    std::function<void(int side, int& width, int& height)> bestFit;
    std::function<Conversions(int side, int srcStride, int dstWidth, int dstHeight, int dstStride,
                              int bitsPerPixel)>
        conversions;
};

/// The full panorama and the dual panorama of a table camera, and the panorama of a wall camera.
std::vector<PanoramaView> PanoramaViews();

/// One source frame, its panorama, and the table between them.
struct PanoramaJob {
    PanoramaJob(const PanoramaView& view, int side, int bits);

    void Convert() { conversions.convert(src.data(), dst.data()); }
    std::size_t Pixels() const {
        return static_cast<std::size_t>(dstWidth) * static_cast<std::size_t>(dstHeight);
    }

    int side;
    int bitsPerPixel;
    int bytesPerPixel;
    int srcStride;
    int dstWidth = 0;
    int dstHeight = 0;
    int dstStride = 0;
    std::vector<unsigned char> src;
    std::vector<unsigned char> dst;
    std::vector<unsigned char> expected;  // what every contestant must make
    PanoramaView::Conversions conversions;
    std::vector<int> table;  // the byte offset of each output pixel's source pixel, or -1

private:
    void ReadTable();
};

#endif
