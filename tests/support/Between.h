#ifndef KIVFISHEYE_TESTS_BETWEEN_H
#define KIVFISHEYE_TESTS_BETWEEN_H

#include <random>

// Random numbers evenly between two values, both included for whole numbers.

inline float Between(std::mt19937& engine, float low, float high) {
    return std::uniform_real_distribution<float>(low, high)(engine);
}

inline int Between(std::mt19937& engine, int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(engine);
}

#endif
