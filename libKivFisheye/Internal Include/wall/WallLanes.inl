// The wall panorama in lanes, as FrontwardFisheyeAlgo_C.h has it in scalar arithmetic. Included once
// for each width of lanes, inside the form's namespace and target region, which names what
// PanoramaLanes.inl asks for and has `sseAtan2` at hand.

#include "PanoramaLanes.inl"

/// A direct conversion takes the processor's estimate of 1 / r.
struct DirectProducts {
    [[gnu::always_inline]] static Floats Scaled(Floats x, Floats r, Floats alpha, Floats k) {
        return k * ((x * Rcp(r)) * alpha);
    }
};

struct TableProducts {
    [[gnu::always_inline]] static Floats Scaled(Floats x, Floats r, Floats alpha, Floats k) {
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
        const Floats cosPhi(m_rows.latitude.cosine);
        const Floats x = cosPhi * Floats::Load(m_longitudes.Sines() + column);
        const Floats z = cosPhi * Floats::Load(m_longitudes.Cosines() + column);
        const Floats y(m_rows.latitude.sine);
        const Floats r = Sqrt(y * y + x * x);
        const Floats alpha = sseAtan2(r, z);
        const Floats down = Products::Scaled(y, r, alpha, Floats(m_rows.ky));
        return {Products::Scaled(x, r, alpha, Floats(m_rows.kx)),
                Floats::FromBits(sse::kZero) - down};
    }

    void NextRow() { m_rows.Next(); }

private:
    ColumnAngleLanes<kLanes> m_longitudes;
    wall::Rows m_rows;
};

#include "wall/WallForm.inl"
