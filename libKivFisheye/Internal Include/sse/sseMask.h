#ifndef KIVFISHEYE_SSE_MASK_H
#define KIVFISHEYE_SSE_MASK_H

#include <emmintrin.h>

namespace sse {

/// What a comparison says of each of four lanes: all bits set for true, none for false.
class sseMask {
public:
    sseMask() = default;
    [[gnu::always_inline]] explicit sseMask(__m128 lanes) : m_lanes(lanes) {}

    [[gnu::always_inline]] __m128 Lanes() const { return m_lanes; }
    [[gnu::always_inline]] static sseMask Load(const int* values) {
        return sseMask(_mm_castsi128_ps(_mm_loadu_si128(reinterpret_cast<const __m128i*>(values))));
    }
    [[gnu::always_inline]] void Store(int* values) const {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(values), _mm_castps_si128(m_lanes));
    }
    /// One bit for each lane, the first lane lowest.
    [[gnu::always_inline]] int Bits() const { return _mm_movemask_ps(m_lanes); }

    [[gnu::always_inline]] friend sseMask operator&(sseMask a, sseMask b) {
        return sseMask(_mm_and_ps(a.m_lanes, b.m_lanes));
    }
    [[gnu::always_inline]] friend sseMask operator|(sseMask a, sseMask b) {
        return sseMask(_mm_or_ps(a.m_lanes, b.m_lanes));
    }
    /// True where `a` is and `b` is not.
    [[gnu::always_inline]] friend sseMask AndNot(sseMask a, sseMask b) {
        return sseMask(_mm_andnot_ps(b.m_lanes, a.m_lanes));
    }

private:
    __m128 m_lanes;
};

}  // namespace sse

#endif
