#ifndef KIVFISHEYE_SSE_4_INTS_H
#define KIVFISHEYE_SSE_4_INTS_H

#include <smmintrin.h>

#include "TargetRegion.h"
#include "sse/sseMask.h"

namespace sse {

/// Four signed 32-bit integers that wrap around.
class sse4Ints {
public:
    static constexpr int kLanes = 4;

    sse4Ints() = default;
    [[gnu::always_inline]] explicit sse4Ints(__m128i lanes) : m_lanes(lanes) {}
    [[gnu::always_inline]] explicit sse4Ints(int value) : m_lanes(_mm_set1_epi32(value)) {}

    [[gnu::always_inline]] static sse4Ints Load(const int* values) {
        return sse4Ints(_mm_loadu_si128(reinterpret_cast<const __m128i*>(values)));
    }
    [[gnu::always_inline]] void Store(int* values) const {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(values), m_lanes);
    }

    [[gnu::always_inline]] __m128i Lanes() const { return m_lanes; }
    [[gnu::always_inline]] friend sse4Ints operator+(sse4Ints a, sse4Ints b) {
        return sse4Ints(_mm_add_epi32(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend sse4Ints operator&(sse4Ints a, sse4Ints b) {
        return sse4Ints(_mm_and_si128(a.m_lanes, b.m_lanes));
    }
    /// `a` where the mask has all bits set, `b` where it has none.
    [[gnu::always_inline]] friend sse4Ints Select(sse4Ints mask, sse4Ints a, sse4Ints b) {
        return sse4Ints(_mm_or_si128(_mm_and_si128(mask.m_lanes, a.m_lanes),
                                     _mm_andnot_si128(mask.m_lanes, b.m_lanes)));
    }
    template <int count>
    [[gnu::always_inline]] sse4Ints ShiftedLeft() const {
        return sse4Ints(_mm_slli_epi32(m_lanes, count));
    }
    /// Fills up with zeros.
    template <int count>
    [[gnu::always_inline]] sse4Ints ShiftedRight() const {
        return sse4Ints(_mm_srli_epi32(m_lanes, count));
    }
    [[gnu::always_inline]] friend sseMask operator==(sse4Ints a, sse4Ints b) {
        return sseMask(_mm_castsi128_ps(_mm_cmpeq_epi32(a.m_lanes, b.m_lanes)));
    }

private:
    __m128i m_lanes;
};

}  // namespace sse

KIVFISHEYE_TARGET_BEGIN("sse4.1")
namespace sse {

/// The low 32 bits of the products. An instruction of SSE4.1, unlike everything else here.
[[gnu::always_inline]] inline sse4Ints MultiplyLow(sse4Ints a, sse4Ints b) {
    return sse4Ints(_mm_mullo_epi32(a.Lanes(), b.Lanes()));
}

/// An instruction of SSE4.1 too.
[[gnu::always_inline]] inline sse4Ints Min(sse4Ints a, sse4Ints b) {
    return sse4Ints(_mm_min_epi32(a.Lanes(), b.Lanes()));
}

}  // namespace sse
KIVFISHEYE_TARGET_END

#endif
