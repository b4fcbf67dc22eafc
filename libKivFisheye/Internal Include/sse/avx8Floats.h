#ifndef KIVFISHEYE_AVX_8_FLOATS_H
#define KIVFISHEYE_AVX_8_FLOATS_H

#include <immintrin.h>

#include "TargetRegion.h"
#include "sse/sseConstants.h"

// Eight lanes, and AVX alone: what AVX has no eight-lane instruction for is done on halves.

KIVFISHEYE_TARGET_BEGIN("avx")
namespace sse::AVX {

/// What a comparison says of each of eight lanes. Only the sign bits count.
class avx8Mask {
public:
    avx8Mask() = default;
    [[gnu::always_inline]] explicit avx8Mask(__m256 lanes) : m_lanes(lanes) {}

    [[gnu::always_inline]] __m256 Lanes() const { return m_lanes; }
    [[gnu::always_inline]] static avx8Mask Load(const int* values) {
        return avx8Mask(
            _mm256_castsi256_ps(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(values))));
    }
    [[gnu::always_inline]] void Store(int* values) const {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(values), _mm256_castps_si256(m_lanes));
    }
    /// One bit for each lane, the first lane lowest.
    [[gnu::always_inline]] int Bits() const { return _mm256_movemask_ps(m_lanes); }

    [[gnu::always_inline]] friend avx8Mask operator&(avx8Mask a, avx8Mask b) {
        return avx8Mask(_mm256_and_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend avx8Mask operator|(avx8Mask a, avx8Mask b) {
        return avx8Mask(_mm256_or_ps(a.m_lanes, b.m_lanes));
    }
    /// True where `a` is and `b` is not.
    [[gnu::always_inline]] friend avx8Mask AndNot(avx8Mask a, avx8Mask b) {
        return avx8Mask(_mm256_andnot_ps(b.m_lanes, a.m_lanes));
    }

private:
    __m256 m_lanes;
};

/// Eight signed 32-bit integers.
class avx8Ints {
public:
    static constexpr int kLanes = 8;

    avx8Ints() = default;
    [[gnu::always_inline]] explicit avx8Ints(__m256i lanes) : m_lanes(lanes) {}

    [[gnu::always_inline]] void Store(int* values) const {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(values), m_lanes);
    }

    [[gnu::always_inline]] __m256i Lanes() const { return m_lanes; }

    template <int count>
    [[gnu::always_inline]] avx8Ints ShiftedLeft() const {
        const __m128i low = _mm_slli_epi32(_mm256_castsi256_si128(m_lanes), count);
        const __m128i high = _mm_slli_epi32(_mm256_extractf128_si256(m_lanes, 1), count);
        return avx8Ints(_mm256_insertf128_si256(_mm256_castsi128_si256(low), high, 1));
    }

private:
    __m256i m_lanes;
};

/// Eight single-precision numbers.
class avx8Floats {
public:
    using Mask = avx8Mask;
    static constexpr int kLanes = 8;

    avx8Floats() = default;
    [[gnu::always_inline]] explicit avx8Floats(__m256 lanes) : m_lanes(lanes) {}
    [[gnu::always_inline]] explicit avx8Floats(float value) : m_lanes(_mm256_set1_ps(value)) {}
    [[gnu::always_inline]] explicit avx8Floats(avx8Ints values)
        : m_lanes(_mm256_cvtepi32_ps(values.Lanes())) {}
    [[gnu::always_inline]] static avx8Floats FromBits(FloatBits bits) {
        return avx8Floats(_mm256_castsi256_ps(_mm256_set1_epi32(static_cast<int>(bits))));
    }
    [[gnu::always_inline]] static avx8Floats Load(const float* values) {
        return avx8Floats(_mm256_loadu_ps(values));
    }
    [[gnu::always_inline]] void Store(float* values) const { _mm256_storeu_ps(values, m_lanes); }

    [[gnu::always_inline]] __m256 Lanes() const { return m_lanes; }

    [[gnu::always_inline]] friend avx8Floats operator+(avx8Floats a, avx8Floats b) {
        return avx8Floats(_mm256_add_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend avx8Floats operator-(avx8Floats a, avx8Floats b) {
        return avx8Floats(_mm256_sub_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend avx8Floats operator*(avx8Floats a, avx8Floats b) {
        return avx8Floats(_mm256_mul_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend avx8Floats operator/(avx8Floats a, avx8Floats b) {
        return avx8Floats(_mm256_div_ps(a.m_lanes, b.m_lanes));
    }
    /// Flips the signs where `signs` has its top bit set; its other bits are 0.
    [[gnu::always_inline]] friend avx8Floats operator^(avx8Floats a, avx8Ints signs) {
        return avx8Floats(_mm256_xor_ps(a.m_lanes, _mm256_castsi256_ps(signs.Lanes())));
    }
    [[gnu::always_inline]] friend avx8Mask operator<(avx8Floats a, avx8Floats b) {
        return avx8Mask(_mm256_cmp_ps(a.m_lanes, b.m_lanes, _CMP_LT_OQ));
    }
    [[gnu::always_inline]] friend avx8Mask operator<=(avx8Floats a, avx8Floats b) {
        return avx8Mask(_mm256_cmp_ps(a.m_lanes, b.m_lanes, _CMP_LE_OQ));
    }

    /// Bit by bit: puts a sign from `SignOf` on a number that has none.
    [[gnu::always_inline]] friend avx8Floats operator|(avx8Floats a, avx8Floats b) {
        return avx8Floats(_mm256_or_ps(a.m_lanes, b.m_lanes));
    }
    /// The sign bit alone.
    [[gnu::always_inline]] friend avx8Floats SignOf(avx8Floats a) {
        return avx8Floats(_mm256_andnot_ps(FromBits(kAbsMask).m_lanes, a.m_lanes));
    }
    [[gnu::always_inline]] friend avx8Floats Abs(avx8Floats a) {
        return avx8Floats(_mm256_and_ps(a.m_lanes, FromBits(kAbsMask).m_lanes));
    }
    [[gnu::always_inline]] friend avx8Floats Sqrt(avx8Floats a) {
        return avx8Floats(_mm256_sqrt_ps(a.m_lanes));
    }
    /// `b` where either is NaN.
    [[gnu::always_inline]] friend avx8Floats Max(avx8Floats a, avx8Floats b) {
        return avx8Floats(_mm256_max_ps(a.m_lanes, b.m_lanes));
    }
    /// The processor's estimate of 1 / a, good to 1.5 * 2^-12.
    [[gnu::always_inline]] friend avx8Floats Rcp(avx8Floats a) {
        return avx8Floats(_mm256_rcp_ps(a.m_lanes));
    }
    /// `b` where either is NaN.
    [[gnu::always_inline]] friend avx8Floats Min(avx8Floats a, avx8Floats b) {
        return avx8Floats(_mm256_min_ps(a.m_lanes, b.m_lanes));
    }
    /// `a` where the mask is true, `b` elsewhere.
    [[gnu::always_inline]] friend avx8Floats Select(avx8Mask mask, avx8Floats a, avx8Floats b) {
#if defined(__GNUC__) && !defined(__clang__)
        // Without AVX2, GCC 12 takes the intrinsic apart lane by lane.
        __m256 lanes;
        __asm__("vblendvps %3, %2, %1, %0"
                : "=x"(lanes)
                : "x"(b.m_lanes), "xm"(a.m_lanes), "x"(mask.Lanes()));
        return avx8Floats(lanes);
#else
        return avx8Floats(_mm256_blendv_ps(b.m_lanes, a.m_lanes, mask.Lanes()));
#endif
    }
    /// True where the sign bit is set, which it also is for minus zero.
    [[gnu::always_inline]] friend avx8Mask HasSignBit(avx8Floats a) {
        return avx8Mask(a.m_lanes);
    }
    /// To the nearest integer, ties to the even one.
    [[gnu::always_inline]] friend avx8Ints RoundToInts(avx8Floats a) {
        return avx8Ints(_mm256_cvtps_epi32(a.m_lanes));
    }
    [[gnu::always_inline]] friend avx8Ints TruncateToInts(avx8Floats a) {
        return avx8Ints(_mm256_cvttps_epi32(a.m_lanes));
    }

private:
    __m256 m_lanes;
};

/// (0, 1, 2, 3, 4, 5, 6, 7)
[[gnu::always_inline]] inline avx8Floats LaneIndices() {
    return avx8Floats(_mm256_setr_ps(0.0F, 1.0F, 2.0F, 3.0F, 4.0F, 5.0F, 6.0F, 7.0F));
}

}  // namespace sse::AVX
KIVFISHEYE_TARGET_END

#endif
