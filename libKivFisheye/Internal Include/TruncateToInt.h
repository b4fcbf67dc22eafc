#ifndef KIVFISHEYE_TRUNCATE_TO_INT_H
#define KIVFISHEYE_TRUNCATE_TO_INT_H

#include <cstdint>
#include <limits>

/// `value` without its fraction. NaN and values that no 32-bit int holds give the smallest int,
/// which is what x86 gives and C++ leaves undefined.
inline std::int32_t TruncateToInt(double value) {
    constexpr double kTooLarge = 2147483648.0;
    constexpr double kTooSmall = -2147483649.0;
    if (!(value < kTooLarge && value > kTooSmall)) {
        return std::numeric_limits<std::int32_t>::min();
    }
    return static_cast<std::int32_t>(value);
}

inline std::int32_t TruncateToInt(float value) {
    constexpr float kTooLarge = 2147483648.0F;
    if (!(value < kTooLarge && value >= -kTooLarge)) {
        return std::numeric_limits<std::int32_t>::min();
    }
    return static_cast<std::int32_t>(value);
}

#endif
