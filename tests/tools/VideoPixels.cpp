#include "VideoPixels.h"

extern "C" {
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <cmath>

namespace VideoFile {

namespace {

/// The share of red and blue in the brightness.
struct Weights {
    double red;
    double blue;
};

Weights WeightsOf(AVColorSpace matrix) {
    return matrix == AVCOL_SPC_BT709 ? Weights{0.2126, 0.0722} : Weights{0.299, 0.114};
}

/// Where the values lie in a byte.
struct Scale {
    double black;
    double luma;
    double chroma;
};

Scale ScaleOf(AVColorRange range) {
    return range == AVCOL_RANGE_JPEG ? Scale{0.0, 255.0, 255.0} : Scale{16.0, 219.0, 224.0};
}

std::uint8_t ByteOf(double value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

std::uint8_t* At(const AVFrame& frame, int plane, int column, int row) {
    return frame.data[plane] + static_cast<std::ptrdiff_t>(row) * frame.linesize[plane] + column;
}

struct Yuv {
    double luma;
    double blue;
    double red;
};

Yuv YuvOf(const std::uint8_t* pixel, const Weights& weights) {
    const double red = pixel[0] / 255.0;
    const double green = pixel[1] / 255.0;
    const double blue = pixel[2] / 255.0;
    const double luma =
        weights.red * red + (1.0 - weights.red - weights.blue) * green + weights.blue * blue;
    return {luma, (blue - luma) / (2.0 - 2.0 * weights.blue),
            (red - luma) / (2.0 - 2.0 * weights.red)};
}

struct ChromaShift {
    int column;
    int row;
};

ChromaShift ShiftOf(const AVFrame& frame) {
    const AVPixFmtDescriptor* kind = av_pix_fmt_desc_get(static_cast<AVPixelFormat>(frame.format));
    return {kind->log2_chroma_w, kind->log2_chroma_h};
}

}  // namespace

void FillFrame(const Picture& picture, const Meaning& meaning, AVFrame* frame) {
    const Weights weights = WeightsOf(meaning.matrix);
    const Scale scale = ScaleOf(meaning.range);
    const ChromaShift shift = ShiftOf(*frame);
    for (int row = 0; row < frame->height; ++row) {
        for (int column = 0; column < frame->width; ++column) {
            const std::uint8_t* pixel =
                picture.Row(static_cast<std::uint32_t>(row)) + std::ptrdiff_t{3} * column;
            const Yuv color = YuvOf(pixel, weights);
            *At(*frame, 0, column, row) = ByteOf(scale.black + scale.luma * color.luma);
            const int chromaColumn = column >> shift.column;
            const int chromaRow = row >> shift.row;
            *At(*frame, 1, chromaColumn, chromaRow) = ByteOf(128.0 + scale.chroma * color.blue);
            *At(*frame, 2, chromaColumn, chromaRow) = ByteOf(128.0 + scale.chroma * color.red);
        }
    }
}

Picture PictureOf(const AVFrame& frame, const Meaning& meaning) {
    const Weights weights = WeightsOf(meaning.matrix);
    const Scale scale = ScaleOf(meaning.range);
    const ChromaShift shift = ShiftOf(frame);
    Picture picture(static_cast<std::uint32_t>(frame.width),
                    static_cast<std::uint32_t>(frame.height), 3);
    for (int row = 0; row < frame.height; ++row) {
        for (int column = 0; column < frame.width; ++column) {
            const int chromaColumn = column >> shift.column;
            const int chromaRow = row >> shift.row;
            const double luma = (*At(frame, 0, column, row) - scale.black) / scale.luma;
            const double blue = (*At(frame, 1, chromaColumn, chromaRow) - 128.0) / scale.chroma;
            const double red = (*At(frame, 2, chromaColumn, chromaRow) - 128.0) / scale.chroma;
            const double r = luma + (2.0 - 2.0 * weights.red) * red;
            const double b = luma + (2.0 - 2.0 * weights.blue) * blue;
            const double g =
                (luma - weights.red * r - weights.blue * b) / (1.0 - weights.red - weights.blue);
            std::uint8_t* pixel =
                picture.Row(static_cast<std::uint32_t>(row)) + std::ptrdiff_t{3} * column;
            pixel[0] = ByteOf(255.0 * r);
            pixel[1] = ByteOf(255.0 * g);
            pixel[2] = ByteOf(255.0 * b);
        }
    }
    return picture;
}

Picture Waves(std::uint32_t width, std::uint32_t height, int number) {
    Picture picture(width, height, 3);
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column) {
            std::uint8_t* pixel = picture.Row(row) + std::size_t{3} * column;
            const double across = 4.0 * column / width;
            const double down = 3.0 * row / height;
            pixel[0] = ByteOf(128.0 + 90.0 * std::sin(across + 1.3 * number));
            pixel[1] = ByteOf(128.0 + 90.0 * std::cos(down - 0.9 * number));
            pixel[2] = ByteOf(128.0 + 90.0 * std::sin(across - down + 2.1 * number));
        }
    }
    return picture;
}

double MeanDifference(const Picture& a, const Picture& b) {
    if (a.width != b.width || a.height != b.height) {
        return 255.0;
    }
    double sum = 0.0;
    for (std::uint32_t row = 0; row < a.height; ++row) {
        for (std::uint32_t column = 0; column < a.width; ++column) {
            for (std::uint32_t channel = 0; channel < 3; ++channel) {
                sum += std::abs(a.Row(row)[std::size_t{a.bytesPerPixel} * column + channel] -
                                b.Row(row)[std::size_t{b.bytesPerPixel} * column + channel]);
            }
        }
    }
    return sum / (3.0 * a.width * a.height);
}

}  // namespace VideoFile
