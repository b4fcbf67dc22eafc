#include "support/ClientFrame.h"

#include <algorithm>
#include <cstddef>

#include "support/CoordinateFrame.h"

using namespace KivFisheyeLib;

ClientFrame::ClientFrame(std::uint32_t width, std::uint32_t height, PixelFormat format,
                         unsigned char fill) {
    const std::uint32_t rowBytes = width * static_cast<std::uint32_t>(BytesPerPixelOf(format));
    const std::uint32_t stride = (rowBytes + 3) / 4 * 4;
    bytes.assign(std::size_t{stride} * height, fill);
    record = {width, height, stride, bytes.data()};
}

ClientFrame ClientFrame::OfCoordinates(std::uint32_t width, std::uint32_t height,
                                       PixelFormat format) {
    ClientFrame frame(width, height, format, 0xEE);
    const std::vector<unsigned char> pixels =
        CoordinateFrame(frame.Width(), frame.Height(), frame.Stride(), BytesPerPixelOf(format));
    std::copy(pixels.begin(), pixels.end(), frame.bytes.begin());
    return frame;
}

void ClientFrame::Fill(unsigned char value) {
    std::fill(bytes.begin(), bytes.end(), value);
}

bool ClientFrame::IsFilledWith(unsigned char value) const {
    return std::all_of(bytes.begin(), bytes.end(),
                       [value](unsigned char byte) { return byte == value; });
}

bool IsSameRecord(const VideoFrameInfo& a, const VideoFrameInfo& b) {
    return a.width == b.width && a.height == b.height && a.stride == b.stride &&
           a.buffer == b.buffer;
}

std::vector<unsigned char> TurnedLeft(const ClientFrame& frame, int bytesPerPixel, int columns) {
    std::vector<unsigned char> turned = frame.bytes;
    for (int y = 0; y < frame.Height(); ++y) {
        const auto row = turned.begin() + std::ptrdiff_t{y} * frame.Stride();
        std::rotate(row, row + std::ptrdiff_t{columns} * bytesPerPixel,
                    row + std::ptrdiff_t{frame.Width()} * bytesPerPixel);
    }
    return turned;
}
