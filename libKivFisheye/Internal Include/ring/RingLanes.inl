// The unrolling of the ring in lanes, as RingKernels_C.h has it in scalar arithmetic. Included once
// for each width of lanes, inside the form's namespace and target region, which names what
// PanoramaLanes.inl asks for.

#include "PanoramaLanes.inl"

template <class Mount>
class RingWalk {
public:
    RingWalk(const ring::RingJob& job, Span angles, int rows)
        : m_angles(angles, job.dstWidth), m_radii(ring::RowRadii::Of<Mount>(job, rows)) {}

    [[gnu::always_inline]] LanePoints PointsOf(int group) const {
        const std::ptrdiff_t column = std::ptrdiff_t{group} * kLanes;
        return {FloatGroups(Floats(m_radii.x)) * FloatGroups::Load(m_angles.Cosines() + column),
                FloatGroups(Floats(m_radii.y)) * FloatGroups::Load(m_angles.Sines() + column)};
    }

    void NextRow() { m_radii.NextRow(); }

private:
    ColumnAngleLanes<kLanes, kGroups> m_angles;
    ring::RowRadii m_radii;
};

#include "ring/RingTables.inl"
