#include "memory/MemoryModel.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "support/CoordinateFrame.h"

namespace {

constexpr int kLevelOfSse41 = 5;
constexpr int kLevelOfAvx = 7;

/// Panoramas beyond 4 Mi pixels have narrow tiles.
std::size_t TileColumns(const ClientFrame& output) {
    return Pixels(output) > std::size_t{1} << 22 ? 256 : 2048;
}

}  // namespace

std::size_t Pixels(const ClientFrame& frame) {
    return std::size_t{frame.record.width} * frame.record.height;
}

std::size_t Bytes(const ClientFrame& frame) {
    return std::size_t{frame.record.stride} * frame.record.height;
}

std::size_t TileRows(const ClientFrame& output) {
    const std::size_t columns = TileColumns(output);
    return (output.record.width + columns - 1) / columns * output.record.height;
}

std::size_t LinesMet(MeasuredContext& context, int bytesPerPixel) {
    context.Camera().SetAbsolutePTZ(0.0F, 0.0F, 1.0F);
    context.Camera().Process(0);
    const ClientFrame& output = context.Output();
    const auto stride = static_cast<std::ptrdiff_t>(context.Input().record.stride);
    std::vector<bool> isMet(Bytes(context.Input()) / kLineBytes + 1);
    for (int y = 0; y < output.Height(); ++y) {
        for (int x = y % int{kSparse}; x < output.Width(); x += int{kSparse}) {
            const unsigned char* const pixel = output.bytes.data() +
                                               std::ptrdiff_t{y} * output.Stride() +
                                               std::ptrdiff_t{x} * bytesPerPixel;
            if (const auto place = PlaceIn(pixel, bytesPerPixel)) {
                const std::ptrdiff_t offset =
                    place->row * stride + std::ptrdiff_t{place->column} * bytesPerPixel;
                isMet[static_cast<std::size_t>(offset) / kLineBytes] = true;
            }
        }
    }
    return static_cast<std::size_t>(std::count(isMet.begin(), isMet.end(), true));
}

std::size_t TableBytes(MeasuredContext& context, int bytesPerPixel) {
    return kBytesPerEntry * (Pixels(context.Output()) + TileRows(context.Output()) +
                             LinesMet(context, bytesPerPixel));
}

std::size_t ListingBytes(const MeasuredContext& context) {
    const ClientFrame& output = context.Output();
    const std::size_t longest = std::min<std::size_t>(output.record.width, TileColumns(output));
    const std::size_t looks = TileRows(output) * ((longest + kSparse - 1) / kSparse);
    const std::size_t lines = Bytes(context.Input()) / kLineBytes + 1;
    return lines + 1 + kBytesPerEntry * (std::min(lines, looks) + 1);
}

std::size_t FillingBytes(const MeasuredContext& context) {
    const std::size_t ofColumns = 2 * sizeof(float) * context.Output().record.width;
    const std::size_t ofRows = kBytesPerEntry * context.Input().record.height;
    return ofColumns + (GetCPUInstructionSet() < kLevelOfSse41 ? ofRows : 0);
}

std::size_t FrameBytes(const MeasuredContext& context) {
    const int level = GetCPUInstructionSet();
    return level >= kLevelOfAvx     ? std::size_t{12} * context.Output().record.width
           : level >= kLevelOfSse41 ? 0
                                    : std::size_t{4} * context.Input().record.height;
}
