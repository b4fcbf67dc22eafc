#ifndef KIVFISHEYE_TESTS_CASE_GENERATOR_H
#define KIVFISHEYE_TESTS_CASE_GENERATOR_H

#include <cstdint>
#include <string>
#include <vector>

/// The frames of a panorama and the lens that they are seen through: sides in pixels, strides in
/// bytes, radii as fractions of the source frame.
struct CaseFrames {
    int srcWidth;
    int srcHeight;
    int srcStride;
    int dstWidth;
    int dstHeight;
    int dstStride;
    float radiusX;
    float radiusY;

    /// A source whose pixels tell their places.
    std::vector<unsigned char> Source(int bytesPerPixel) const;
    std::vector<unsigned char> Output() const;
};

/// Makes the numbers of one case. They follow from its name alone, on every machine and with every
/// standard library.
class CaseGenerator {
public:
    explicit CaseGenerator(const std::string& name);

    int NextInt(int lowest, int highest);
    float NextFloat(float lowest, float highest);
    /// One side in four is 1, 2 or 3.
    int NextSide(int highest);
    /// Within the frame or beyond it, and now and then such that the lens touches the edges.
    float NextRadius();
    /// From 0 to 0.8.
    float NextRatio();
    /// From 10 to 90 degrees.
    float NextWallViewAngle();
    float NextPan();
    /// Any sides and strides.
    CaseFrames NextFrames(int bytesPerPixel);
    /// The same, but frames that a context accepts.
    CaseFrames NextCameraFrames(int bytesPerPixel);

private:
    CaseFrames NextSides();

    std::uint64_t m_state;
};

#endif
