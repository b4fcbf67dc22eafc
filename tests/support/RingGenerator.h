#ifndef KIVFISHEYE_TESTS_RING_GENERATOR_H
#define KIVFISHEYE_TESTS_RING_GENERATOR_H

#include <cstdint>
#include <random>
#include <vector>

#include "support/RingModel.h"

/// Makes rings of all shapes, the same ones for the same seed: small sides, odd strides, radii
/// within and beyond the frame, rings with and without a hole.
class RingGenerator {
public:
    explicit RingGenerator(std::uint32_t seed) : m_engine(seed) {}

    Ring NextRing(int bytesPerPixel);
    float NextPan();
    std::vector<unsigned char> NextBytes(std::size_t count);
    /// A table between the ring's frames: a fifth of the entries has no source, the others lead to
    /// any pixel of it.
    std::vector<int> NextEntries(const Ring& ring, int bytesPerPixel);
    int NextInt(int lowest, int highest);

private:
    float NextFloat(float lowest, float highest);
    int NextSide(int highest);
    float NextRadius();
    float NextRatio();

    std::mt19937 m_engine;
};

#endif
