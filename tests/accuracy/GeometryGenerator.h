#ifndef KIVFISHEYE_TESTS_GEOMETRY_GENERATOR_H
#define KIVFISHEYE_TESTS_GEOMETRY_GENERATOR_H

#include <cstdint>

#include "support/PanoramaFrames.h"
#include "support/RingGenerator.h"

/// Makes geometries such as cameras have, the same ones for the same seed and on every machine.
class GeometryGenerator {
public:
    explicit GeometryGenerator(std::uint32_t seed) : m_random(seed) {}

    int Whole(int lowest, int highest) { return m_random.NextInt(lowest, highest); }
    float Between(float lowest, float highest);

    /// 3 and 4 by turns.
    int NextBytesPerPixel();

    /// Packed frames: a square source, and an output that is a multiple of 8 wide, `maxWidth` at
    /// most, and of an even height. Wide outputs have few rows, and narrow ones many.
    PanoramaFrames NextFrames(int side, int maxWidth, int bytesPerPixel);

    /// Semi-axes between 0.3 and 0.6, one pair in four a circle that touches the frame's edges.
    template <class Frames>
    void SetLens(Frames& frames) {
        const bool isTouching = Whole(0, 3) == 0;
        frames.radiusX = isTouching ? 0.5F : Between(0.3F, 0.6F);
        frames.radiusY = isTouching ? 0.5F : Between(0.3F, 0.6F);
    }

private:
    RingGenerator m_random;
    int m_bytesPerPixel = 4;
};

#endif
