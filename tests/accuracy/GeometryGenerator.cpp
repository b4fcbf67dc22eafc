#include "accuracy/GeometryGenerator.h"

#include <algorithm>

float GeometryGenerator::Between(float lowest, float highest) {
    constexpr int kSteps = 1 << 20;
    return lowest +
           (highest - lowest) * static_cast<float>(Whole(0, kSteps)) / static_cast<float>(kSteps);
}

int GeometryGenerator::NextBytesPerPixel() {
    m_bytesPerPixel = 7 - m_bytesPerPixel;
    return m_bytesPerPixel;
}

PanoramaFrames GeometryGenerator::NextFrames(int side, int maxWidth, int bytesPerPixel) {
    constexpr int kPixels = 40000;
    const int width = 8 * Whole(8, maxWidth / 8);
    const int height = 2 * std::max(2, kPixels / width / 2);
    PanoramaFrames frames = PackedFrames(side, side, width, height, bytesPerPixel);
    SetLens(frames);
    return frames;
}
