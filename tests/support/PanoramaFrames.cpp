#include "support/PanoramaFrames.h"

#include <ostream>

std::size_t PanoramaFrames::SourceBytes(int bytesPerPixel) const {
    return static_cast<std::size_t>((srcHeight - 1) * srcStride + srcWidth * bytesPerPixel);
}

std::size_t PanoramaFrames::OutputBytes() const {
    return static_cast<std::size_t>(dstHeight) * static_cast<std::size_t>(dstStride);
}

std::ostream& operator<<(std::ostream& out, const PanoramaFrames& frames) {
    out.precision(9);
    return out << "source " << frames.srcWidth << "x" << frames.srcHeight << " stride "
               << frames.srcStride << ", output " << frames.dstWidth << "x" << frames.dstHeight
               << " stride " << frames.dstStride << ", radii " << frames.radiusX << " and "
               << frames.radiusY;
}

PanoramaFrames PackedFrames(int srcWidth, int srcHeight, int dstWidth, int dstHeight,
                            int bytesPerPixel) {
    return {srcWidth, srcHeight, srcWidth * bytesPerPixel,
            dstWidth, dstHeight, dstWidth * bytesPerPixel};
}

void Paint(const std::vector<int>& offsets, const PanoramaFrames& frames, int bytesPerPixel,
           RowStart rowStart, const std::vector<unsigned char>& src,
           std::vector<unsigned char>& dst) {
    const auto bytes = static_cast<std::size_t>(bytesPerPixel);
    const auto stride = static_cast<std::size_t>(frames.dstStride);
    std::size_t next = 0;
    for (std::size_t y = 0; next < offsets.size(); ++y) {
        for (std::size_t i = 0; i < stride && rowStart == RowStart::Cleared; ++i) {
            dst[y * stride + i] = 0;
        }
        for (std::size_t x = 0; x < static_cast<std::size_t>(frames.dstWidth); ++x) {
            const int offset = offsets[next++];
            const std::size_t begin = y * stride + x * bytes;
            for (std::size_t i = 0; i < bytes && begin + bytes <= frames.OutputBytes(); ++i) {
                dst[begin + i] =
                    offset == kNoSource ? 0 : src[static_cast<std::size_t>(offset) + i];
            }
        }
    }
}
