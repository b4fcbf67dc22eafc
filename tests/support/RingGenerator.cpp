#include "support/RingGenerator.h"

// The distributions of the standard library differ between its makers; the engine does not.
int RingGenerator::NextInt(int lowest, int highest) {
    const auto range = static_cast<std::uint32_t>(highest - lowest + 1);
    return lowest + static_cast<int>(m_engine() % range);
}

float RingGenerator::NextFloat(float lowest, float highest) {
    constexpr int kSteps = 1 << 20;
    return lowest +
           (highest - lowest) * static_cast<float>(NextInt(0, kSteps)) / static_cast<float>(kSteps);
}

// One side in four is 1, 2 or 3.
int RingGenerator::NextSide(int highest) {
    return NextInt(0, 3) == 0 ? NextInt(1, 3) : NextInt(1, highest);
}

float RingGenerator::NextRadius() {
    constexpr float kEdges[] = {0.0F, 0.5F, 0.25F, 1.0F};
    return NextInt(0, 2) == 0 ? kEdges[NextInt(0, 3)] : NextFloat(0.0F, 1.0F);
}

float RingGenerator::NextRatio() {
    constexpr float kEdges[] = {0.0F, 0.8F};
    return NextInt(0, 2) == 0 ? kEdges[NextInt(0, 1)] : NextFloat(0.0F, 0.8F);
}

Ring RingGenerator::NextRing(int bytesPerPixel) {
    Ring ring;
    ring.srcWidth = NextSide(90);
    ring.srcHeight = NextSide(90);
    ring.srcStride = ring.srcWidth * bytesPerPixel + NextInt(0, 9);
    ring.dstWidth = NextSide(70);
    ring.dstHeight = NextSide(24);
    ring.dstStride = ring.dstWidth * bytesPerPixel + NextInt(0, 9);
    ring.radiusX = NextRadius();
    ring.radiusY = NextRadius();
    ring.innerRadiusRatio = NextRatio();
    return ring;
}

float RingGenerator::NextPan() {
    constexpr float kEdges[] = {0.0F, 90.0F, 180.0F, 360.0F, -90.0F, 45.0F};
    return NextInt(0, 2) == 0 ? kEdges[NextInt(0, 5)] : NextFloat(-1000.0F, 1000.0F);
}

std::vector<unsigned char> RingGenerator::NextBytes(std::size_t count) {
    std::vector<unsigned char> bytes(count);
    for (unsigned char& byte : bytes) {
        byte = static_cast<unsigned char>(m_engine() & 0xFF);
    }
    return bytes;
}

std::vector<int> RingGenerator::NextEntries(const Ring& ring, int bytesPerPixel) {
    std::vector<int> entries;
    for (int i = 0; i < ring.dstWidth * ring.dstHeight; ++i) {
        const int row = NextInt(0, ring.srcHeight - 1);
        const int column = NextInt(0, ring.srcWidth - 1);
        const bool isBlack = NextInt(0, 4) == 0;
        entries.push_back(isBlack ? kNoSource : row * ring.srcStride + column * bytesPerPixel);
    }
    return entries;
}
