#ifndef KIVFISHEYE_SSE_CONSTANTS_H
#define KIVFISHEYE_SSE_CONSTANTS_H

#include <cstdint>

namespace sse {

/// Single-precision numbers by their bits: some differ in the last place from what their decimal
/// form suggests, and each bit shows in the results.
using FloatBits = std::uint32_t;

constexpr FloatBits kAbsMask = 0x7FFFFFFF;

constexpr FloatBits kZero = 0x00000000;
constexpr FloatBits kHalf = 0x3F000000;
constexpr FloatBits kOne = 0x3F800000;

constexpr FloatBits kInvPi = 0x3EA2F983;
constexpr FloatBits kPi = 0x40490FDB;
constexpr FloatBits kNegPi = 0xC0490FDB;
constexpr FloatBits kHalfPi = 0x3FC90FDB;

// The sine's polynomial. Beyond the cubic the coefficients are not those of the Taylor series.
constexpr FloatBits kSinC3 = 0xBE2AAAAB;
constexpr FloatBits kSinC5 = 0x3C0887E6;
constexpr FloatBits kSinC7 = 0xB94FC635;
constexpr FloatBits kSinC9 = 0x362F5E1D;
constexpr FloatBits kSinSmall = 0x39E89769;  // below it a sine is its argument

// Euler's series of the arctangent.
constexpr FloatBits kEuler1 = 0x3F2AAAAB;     // 2/3
constexpr FloatBits kEuler2 = 0x3F088889;     // 8/15
constexpr FloatBits kEuler3 = 0x3EEA0EA1;     // 16/35
constexpr FloatBits kEuler4 = 0x3ED00D01;     // 128/315
constexpr FloatBits kEuler5 = 0x3EBD2318;     // 256/693
constexpr FloatBits kEuler6 = 0x3EAE968C;     // 1024/3003
constexpr FloatBits kAtanSmall = 0x39B89BA3;  // below it an arctangent is its argument

}  // namespace sse

#endif
