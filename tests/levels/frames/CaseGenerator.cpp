#include "CaseGenerator.h"

#include "Digest.h"
#include "support/CoordinateFrame.h"

std::vector<unsigned char> CaseFrames::Source(int bytesPerPixel) const {
    return CoordinateFrame(srcWidth, srcHeight, srcStride, bytesPerPixel);
}

std::vector<unsigned char> CaseFrames::Output() const {
    constexpr unsigned char kUntouched = 0xCD;
    return std::vector<unsigned char>(
        static_cast<std::size_t>(dstHeight) * static_cast<std::size_t>(dstStride), kUntouched);
}

CaseGenerator::CaseGenerator(const std::string& name) {
    Digest digest;
    digest.Add(name.data(), name.size());
    m_state = digest.Value();
}

// The generator of xorshift64*, whose upper half is the better one.
int CaseGenerator::NextInt(int lowest, int highest) {
    m_state ^= m_state >> 12;
    m_state ^= m_state << 25;
    m_state ^= m_state >> 27;
    const auto bits = static_cast<std::uint32_t>((m_state * 0x2545F4914F6CDD1DULL) >> 32);
    return lowest + static_cast<int>(bits % static_cast<std::uint32_t>(highest - lowest + 1));
}

float CaseGenerator::NextFloat(float lowest, float highest) {
    constexpr int kSteps = 1 << 20;
    return lowest +
           (highest - lowest) * static_cast<float>(NextInt(0, kSteps)) / static_cast<float>(kSteps);
}

int CaseGenerator::NextSide(int highest) {
    return NextInt(0, 3) == 0 ? NextInt(1, 3) : NextInt(1, highest);
}

float CaseGenerator::NextRadius() {
    return NextInt(0, 3) == 0 ? 0.5F : NextFloat(0.05F, 0.9F);
}

float CaseGenerator::NextRatio() {
    constexpr float kEdges[] = {0.0F, 0.8F};
    return NextInt(0, 3) == 0 ? kEdges[NextInt(0, 1)] : NextFloat(0.0F, 0.8F);
}

float CaseGenerator::NextWallViewAngle() {
    constexpr float kEdges[] = {10.0F, 90.0F};
    return NextInt(0, 3) == 0 ? kEdges[NextInt(0, 1)] : NextFloat(10.0F, 90.0F);
}

float CaseGenerator::NextPan() {
    constexpr float kEdges[] = {0.0F, 90.0F, 180.0F, 360.0F};
    return NextInt(0, 3) == 0 ? kEdges[NextInt(0, 3)] : NextFloat(-400.0F, 800.0F);
}

CaseFrames CaseGenerator::NextSides() {
    CaseFrames frames{};
    frames.srcWidth = NextSide(300);
    frames.srcHeight = NextSide(300);
    frames.dstWidth = NextSide(100);
    frames.dstHeight = NextSide(40);
    frames.radiusX = NextRadius();
    frames.radiusY = NextRadius();
    return frames;
}

CaseFrames CaseGenerator::NextFrames(int bytesPerPixel) {
    CaseFrames frames = NextSides();
    frames.srcStride = frames.srcWidth * bytesPerPixel + NextInt(0, 9);
    frames.dstStride = frames.dstWidth * bytesPerPixel + NextInt(0, 9);
    return frames;
}

// A context takes rows that begin at multiples of 4 bytes, and outputs of whole groups of 8 pixels.
CaseFrames CaseGenerator::NextCameraFrames(int bytesPerPixel) {
    CaseFrames frames = NextSides();
    frames.dstWidth = (frames.dstWidth + 7) / 8 * 8;
    frames.srcStride = (frames.srcWidth * bytesPerPixel + 3) / 4 * 4;
    frames.dstStride = frames.dstWidth * bytesPerPixel;
    return frames;
}
