#ifndef KIVFISHEYE_BEST_FIT_H
#define KIVFISHEYE_BEST_FIT_H

/// A divisor of at most this much makes a ratio meaningless.
constexpr float kNegligibleExtent = 1.1920929e-07F;

/// Output widths are multiples of 8.
constexpr int RoundUpToEight(int value) {
    return (value + 7) & ~7;
}

#endif
