#include "PanoramaJob.h"

#include <memory>
#include <random>

#include "FrontwardFisheyeAlgo.h"
#include "UpwardFisheyeAlgo.h"

namespace {

constexpr float kRadius = 0.5F;
constexpr float kInnerRadiusRatio = 0.0F;
constexpr float kWallViewAngle = 45.0F;

/// Calls `CvtRGB24` or `CvtRGB32`, with a pan or without.
template <class Converter, class... Pan>
PanoramaView::Frame Conversion(const std::shared_ptr<Converter>& converter, int bitsPerPixel,
                               Pan... pan) {
    return [=](const unsigned char* src, unsigned char* dst) {
        if (bitsPerPixel == 24) {
            converter->CvtRGB24(pan..., src, dst);
        } else {
            converter->CvtRGB32(pan..., src, dst);
        }
    };
}

/// `pan` for the converters that turn.
template <class Converter, class... Pan>
auto ConversionsBy(float shape, Pan... pan) {
    return [=](int side, int srcStride, int dstWidth, int dstHeight, int dstStride,
               int bitsPerPixel) {
        const auto converter = std::make_shared<Converter>();
        const auto init = [=] {
            converter->Init(side, side, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel,
                            kRadius, kRadius, shape);
        };
        PanoramaView::Conversions conversions{init, Conversion(converter, bitsPerPixel), nullptr};
        if constexpr (sizeof...(pan) != 0) {
            conversions.convertTurned = Conversion(converter, bitsPerPixel, pan...);
        }
        return conversions;
    };
}

auto BestFitBy(void (*size)(int, int, float, float, float, int&, int&), float shape) {
    return [=](int side, int& width, int& height) {
        size(side, side, kRadius, kRadius, shape, width, height);
    };
}

}  // namespace

std::vector<PanoramaView> PanoramaViews() {
    constexpr float kPan = 123.0F;
    return {{"full", BestFitBy(UpwardFisheyeAlgoNS::GetBestFitPanoramaSize, kInnerRadiusRatio),
             ConversionsBy<UpwardFisheyeAlgoNS::CPanoramaConverter>(kInnerRadiusRatio, kPan)},
            {"dual", BestFitBy(UpwardFisheyeAlgoNS::GetBestFitDualPanoramaSize, kInnerRadiusRatio),
             ConversionsBy<UpwardFisheyeAlgoNS::CDualPanoramaConverter>(kInnerRadiusRatio, kPan)},
            {"wall", BestFitBy(FrontwardFisheyeAlgoNS::GetBestFitPanoramaSize, kWallViewAngle),
             ConversionsBy<FrontwardFisheyeAlgoNS::CPanoramaConverter>(kWallViewAngle)}};
}

PanoramaJob::PanoramaJob(const PanoramaView& view, int sideInPixels, int bits)
    : side(sideInPixels),
      bitsPerPixel(bits),
      bytesPerPixel(bits / 8),
      srcStride((side * bytesPerPixel + 3) & ~3) {
    view.bestFit(side, dstWidth, dstHeight);
    dstStride = (dstWidth * bytesPerPixel + 3) & ~3;
    src.resize(static_cast<std::size_t>(srcStride) * static_cast<std::size_t>(side));
    dst.resize(static_cast<std::size_t>(dstStride) * static_cast<std::size_t>(dstHeight));
    conversions = view.conversions(side, srcStride, dstWidth, dstHeight, dstStride, bits);
    conversions.init();
    ReadTable();
    std::mt19937 random(1);
    for (unsigned char& byte : src) {
        byte = static_cast<unsigned char>(random());
    }
    Convert();
    expected = dst;
}

/// Finds the table by converting a picture whose pixels hold their own number, from 1: pixels
/// without a source come out as 0.
void PanoramaJob::ReadTable() {
    const auto pixelAt = [this](std::vector<unsigned char>& frame, int stride, int x, int y) {
        return frame.data() + std::ptrdiff_t{y} * stride + std::ptrdiff_t{x} * bytesPerPixel;
    };
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const int number = y * side + x + 1;
            unsigned char* const pixel = pixelAt(src, srcStride, x, y);
            pixel[0] = static_cast<unsigned char>(number);
            pixel[1] = static_cast<unsigned char>(number >> 8);
            pixel[2] = static_cast<unsigned char>(number >> 16);
        }
    }
    Convert();
    table.reserve(Pixels());
    for (int y = 0; y < dstHeight; ++y) {
        for (int x = 0; x < dstWidth; ++x) {
            const unsigned char* const pixel = pixelAt(dst, dstStride, x, y);
            const int index = (pixel[0] | pixel[1] << 8 | pixel[2] << 16) - 1;
            table.push_back(index < 0 ? -1
                                      : index / side * srcStride + index % side * bytesPerPixel);
        }
    }
}
