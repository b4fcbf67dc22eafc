// The wall panorama in lanes, as FrontwardFisheyeAlgo_C.h has it in scalar arithmetic. Included
// once for each width of lanes, inside the form's namespace and target region, which names what
// PanoramaLanes.inl asks for and has `sseAtan2` at hand.

#include "PanoramaLanes.inl"

struct TableProducts {
    [[gnu::always_inline]] static FloatGroups Scaled(const FloatGroups& x, const FloatGroups& r,
                                                     const FloatGroups& alpha,
                                                     const FloatGroups& k) {
        return k * (x * (alpha / r));
    }
};

template <class Products>
class WallWalk {
public:
    explicit WallWalk(const wall::WallJob& job)
        : m_longitudes(wall::kLongitudes, job.dstWidth), m_rows(job) {}

    [[gnu::always_inline]] LanePoints PointsOf(int group) const {
        const std::ptrdiff_t column = std::ptrdiff_t{group} * kLanes;
        const FloatGroups cosPhi(Floats(m_rows.latitude.cosine));
        const FloatGroups x = cosPhi * FloatGroups::Load(m_longitudes.Sines() + column);
        const FloatGroups z = cosPhi * FloatGroups::Load(m_longitudes.Cosines() + column);
        const FloatGroups y(Floats(m_rows.latitude.sine));
        const FloatGroups r = Sqrt(y * y + x * x);
        const FloatGroups alpha = sseAtan2(r, z);
        const FloatGroups down = Products::Scaled(y, r, alpha, FloatGroups(Floats(m_rows.ky)));
        return {Products::Scaled(x, r, alpha, FloatGroups(Floats(m_rows.kx))),
                FloatGroups::FromBits(sse::kZero) - down};
    }

    void NextRow() { m_rows.Next(); }

private:
    ColumnAngleLanes<kLanes, kGroups> m_longitudes;
    wall::Rows m_rows;
};

#include "wall/WallTable.inl"
