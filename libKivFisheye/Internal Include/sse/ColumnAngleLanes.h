#ifndef KIVFISHEYE_COLUMN_ANGLE_LANES_H
#define KIVFISHEYE_COLUMN_ANGLE_LANES_H

#include <algorithm>

#include "ColumnAngles.h"
#include "FisheyeAlgoCommon_SSE2.h"
#include "MemoryUtils.h"

/// `ColumnAngles` by the lanes' own sine. The tables hold whole groups of so many lanes, and from
/// each group on `groupsAtOnce` can be read: what is too much repeats the last column. Throws
/// `std::bad_alloc` when memory runs out.
template <int lanes, int groupsAtOnce = 1>
class ColumnAngleLanes {
public:
    ColumnAngleLanes(Span angles, int columns) {
        if (columns <= 0) {
            return;
        }
        const auto count = static_cast<unsigned long>(columns);
        const unsigned long groups = (count + kLanes - 1) / kLanes;
        const unsigned long whole = (groups + groupsAtOnce - 1) * kLanes;
        m_sines.Allocate(whole);
        m_cosines.Allocate(whole);
        ::SSE2::CSinAndCosThetaTable::CalculateSinAndCosThetaTable(
            m_sines.data(), m_cosines.data(), count, angles.first, angles.last);
        std::fill(m_sines.data() + count, m_sines.data() + whole, m_sines.data()[count - 1]);
        std::fill(m_cosines.data() + count, m_cosines.data() + whole, m_cosines.data()[count - 1]);
    }

    const float* Sines() const { return m_sines.data(); }
    const float* Cosines() const { return m_cosines.data(); }
    /// How many entries the tables have.
    unsigned long long Count() const { return m_sines.count(); }

private:
    static constexpr unsigned long kLanes = lanes;

    CAlignedBufferT<float, kLanes * sizeof(float)> m_sines;
    CAlignedBufferT<float, kLanes * sizeof(float)> m_cosines;
};

#endif
