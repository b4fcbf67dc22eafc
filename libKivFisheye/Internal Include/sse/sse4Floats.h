#ifndef KIVFISHEYE_SSE_4_FLOATS_H
#define KIVFISHEYE_SSE_4_FLOATS_H

#include <emmintrin.h>

#include "sse/sse4Ints.h"
#include "sse/sseConstants.h"
#include "sse/sseMask.h"

namespace sse {

/// Four single-precision numbers. SSE2 instructions alone, so that every form may use it.
class sse4Floats {
public:
    using Mask = sseMask;
    static constexpr int kLanes = 4;

    sse4Floats() = default;
    [[gnu::always_inline]] explicit sse4Floats(__m128 lanes) : m_lanes(lanes) {}
    [[gnu::always_inline]] explicit sse4Floats(float value) : m_lanes(_mm_set1_ps(value)) {}
    [[gnu::always_inline]] explicit sse4Floats(sse4Ints values)
        : m_lanes(_mm_cvtepi32_ps(values.Lanes())) {}
    [[gnu::always_inline]] static sse4Floats FromBits(FloatBits bits) {
        return sse4Floats(_mm_castsi128_ps(_mm_set1_epi32(static_cast<int>(bits))));
    }
    [[gnu::always_inline]] static sse4Floats Load(const float* values) {
        return sse4Floats(_mm_loadu_ps(values));
    }
    [[gnu::always_inline]] void Store(float* values) const { _mm_storeu_ps(values, m_lanes); }

    [[gnu::always_inline]] __m128 Lanes() const { return m_lanes; }

    [[gnu::always_inline]] friend sse4Floats operator+(sse4Floats a, sse4Floats b) {
        return sse4Floats(_mm_add_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend sse4Floats operator-(sse4Floats a, sse4Floats b) {
        return sse4Floats(_mm_sub_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend sse4Floats operator*(sse4Floats a, sse4Floats b) {
        return sse4Floats(_mm_mul_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend sse4Floats operator/(sse4Floats a, sse4Floats b) {
        return sse4Floats(_mm_div_ps(a.m_lanes, b.m_lanes));
    }
    /// Flips the signs where `signs` has its top bit set; its other bits are 0.
    [[gnu::always_inline]] friend sse4Floats operator^(sse4Floats a, sse4Ints signs) {
        return sse4Floats(_mm_xor_ps(a.m_lanes, _mm_castsi128_ps(signs.Lanes())));
    }
    [[gnu::always_inline]] friend sseMask operator<(sse4Floats a, sse4Floats b) {
        return sseMask(_mm_cmplt_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend sseMask operator<=(sse4Floats a, sse4Floats b) {
        return sseMask(_mm_cmple_ps(a.m_lanes, b.m_lanes));
    }

    /// Bit by bit: puts a sign from `SignOf` on a number that has none.
    [[gnu::always_inline]] friend sse4Floats operator|(sse4Floats a, sse4Floats b) {
        return sse4Floats(_mm_or_ps(a.m_lanes, b.m_lanes));
    }
    /// The sign bit alone.
    [[gnu::always_inline]] friend sse4Floats SignOf(sse4Floats a) {
        return sse4Floats(_mm_andnot_ps(FromBits(kAbsMask).m_lanes, a.m_lanes));
    }
    [[gnu::always_inline]] friend sse4Floats Abs(sse4Floats a) {
        return sse4Floats(_mm_and_ps(a.m_lanes, FromBits(kAbsMask).m_lanes));
    }
    [[gnu::always_inline]] friend sse4Floats Sqrt(sse4Floats a) {
        return sse4Floats(_mm_sqrt_ps(a.m_lanes));
    }
    /// `b` where either is NaN.
    [[gnu::always_inline]] friend sse4Floats Max(sse4Floats a, sse4Floats b) {
        return sse4Floats(_mm_max_ps(a.m_lanes, b.m_lanes));
    }
    /// The processor's estimate of 1 / a, good to 1.5 * 2^-12.
    [[gnu::always_inline]] friend sse4Floats Rcp(sse4Floats a) {
        return sse4Floats(_mm_rcp_ps(a.m_lanes));
    }
    /// `b` where either is NaN.
    [[gnu::always_inline]] friend sse4Floats Min(sse4Floats a, sse4Floats b) {
        return sse4Floats(_mm_min_ps(a.m_lanes, b.m_lanes));
    }
    /// `a` where the mask is true, `b` elsewhere.
    [[gnu::always_inline]] friend sse4Floats Select(sseMask mask, sse4Floats a, sse4Floats b) {
        return sse4Floats(
            _mm_or_ps(_mm_and_ps(mask.Lanes(), a.m_lanes), _mm_andnot_ps(mask.Lanes(), b.m_lanes)));
    }
    /// True where the sign bit is set, which it also is for minus zero.
    [[gnu::always_inline]] friend sseMask HasSignBit(sse4Floats a) {
        const sse4Ints signs = sse4Ints(_mm_castps_si128(a.m_lanes)).ShiftedRight<31>();
        return AndNot(sse4Ints(-1) == sse4Ints(-1), signs == sse4Ints(0));
    }
    /// To the nearest integer, ties to the even one.
    [[gnu::always_inline]] friend sse4Ints RoundToInts(sse4Floats a) {
        return sse4Ints(_mm_cvtps_epi32(a.m_lanes));
    }
    /// The products' sum as (p0 + p1) + (p2 + p3).
    [[gnu::always_inline]] friend float Dot(sse4Floats a, sse4Floats b) {
        const __m128 products = _mm_mul_ps(a.m_lanes, b.m_lanes);
        const __m128 swapped = _mm_shuffle_ps(products, products, _MM_SHUFFLE(2, 3, 0, 1));
        const __m128 pairs = _mm_add_ps(products, swapped);
        return _mm_cvtss_f32(_mm_add_ps(pairs, _mm_movehl_ps(pairs, pairs)));
    }

private:
    __m128 m_lanes;
};

}  // namespace sse

#endif
