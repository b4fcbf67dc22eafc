#ifndef KIVFISHEYE_TESTS_FLOAT_BITS_H
#define KIVFISHEYE_TESTS_FLOAT_BITS_H

#include <cmath>
#include <cstdint>
#include <cstring>

inline std::uint32_t BitsOf(float value) {
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

inline float FloatOf(std::uint32_t bits) {
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

/// The same bits, or NaN on both sides.
inline bool IsSameFloat(float a, float b) {
    return BitsOf(a) == BitsOf(b) || (std::isnan(a) && std::isnan(b));
}

#endif
