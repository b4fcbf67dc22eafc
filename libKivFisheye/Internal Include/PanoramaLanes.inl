// What the vector forms make of a panorama's mapping, as PanoramaWalk.h has it for the scalar one.
// Included once for each width of lanes, inside the form's namespace and target region, which names
// what SampleLanes.inl asks for; `ToPixels` is PixelRounding.h's.
//
// A walk goes through a panorama's rows: `PointsOf(group)` gives the points of `kGroups` groups of
// the row's columns, and `NextRow()` goes on. Past the last column there are some more, of no
// meaning.

#include "SampleLanes.inl"

/// Points of the source frame from its centre, in fractions of the frame, v upward.
struct LanePoints {
    FloatGroups u;
    FloatGroups v;
};

/// From such points to source pixels.
struct FrameLanes {
    [[gnu::always_inline]] explicit FrameLanes(const PanoramaSizes& job)
        : lastColumn(Floats(static_cast<float>(job.srcWidth - 1))),
          lastRow(Floats(static_cast<float>(job.srcHeight - 1))) {}

    /// Live is what lies in the frame, its edges included.
    [[gnu::always_inline]] void Locate(const LanePoints& points, Samples* samples) const {
        const Floats half = Floats::FromBits(sse::kHalf);
        for (int i = 0; i < kGroups; ++i) {
            const Floats u = points.u.group[i];
            const Floats v = points.v.group[i];
            const Mask live = (Abs(u) <= half) & (Abs(v) <= half);
            live.Store(samples[i].live);
            ToPixels(lastColumn * (u + half)).Store(samples[i].x);
            ToPixels(lastRow * (half - v)).Store(samples[i].y);
        }
    }

    /// What lies opposite them, through the centre.
    [[gnu::always_inline]] void LocateOpposite(const LanePoints& points, Samples* samples) const {
        const FloatGroups zero = FloatGroups::FromBits(sse::kZero);
        Locate({zero - points.u, zero - points.v}, samples);
    }

    Floats lastColumn;
    Floats lastRow;
};

constexpr int GroupsOf(int columns) {
    return columns / kLanes + (columns % kLanes != 0 ? 1 : 0);
}

/// Stores the entries of `groups` groups, and of the last one no more than the table's row has.
template <int outOfFrame, class Pixel>
[[gnu::always_inline]] inline void StoreEntries(const SourceOffsets<Pixel>& source,
                                                const Samples* samples, int groups, int columns,
                                                int* entries) {
    const int whole = std::min(groups, columns / kLanes);
    for (int group = 0; group < whole; ++group) {
        source.template StoreEntries<outOfFrame, kLanes>(samples[group].live, samples[group].x,
                                                         samples[group].y,
                                                         entries + std::ptrdiff_t{group} * kLanes);
    }
    if (whole < groups) {
        int last[kLanes];
        source.template StoreEntries<outOfFrame, kLanes>(samples[whole].live, samples[whole].x,
                                                         samples[whole].y, last);
        std::copy_n(last, columns % kLanes, entries + std::ptrdiff_t{whole} * kLanes);
    }
}

/// Fills a table's entries, block by block: all positions first, in lanes, and then the offsets.
template <class Pixel, int outOfFrame, class Walk>
void FillTable(const PanoramaSizes& job, Walk& walk, int* entries) {
    const FrameLanes frame(job);
    const SourceOffsets<Pixel> source(job.srcWidth, job.srcHeight, job.srcStride);
    const int groups = GroupsOf(job.dstWidth);
    Samples samples[kBlock];
    for (int y = 0; y < job.dstHeight; ++y) {
        for (int first = 0; first < groups; first += kBlock) {
            const int count = std::min(groups - first, kBlock);
            for (int group = 0; group < count; group += kGroups) {
                frame.Locate(walk.PointsOf(first + group), samples + group);
            }
            const int column = first * kLanes;
            StoreEntries<outOfFrame>(source, samples, count, job.dstWidth - column,
                                     entries + column);
        }
        walk.NextRow();
        entries += job.dstWidth;
    }
}

/// Fills both halves of a dual table at once.
template <class Pixel, int outOfFrame, class Walk>
void FillDualTable(const PanoramaSizes& job, Walk& walk, int* entries) {
    const FrameLanes frame(job);
    const SourceOffsets<Pixel> source(job.srcWidth, job.srcHeight, job.srcStride);
    const int groups = GroupsOf(job.dstWidth);
    const int half = job.dstHeight / 2;
    int* upper = entries;
    int* lower = entries + std::ptrdiff_t{half} * job.dstWidth;
    Samples samples[kBlock];
    Samples opposite[kBlock];
    for (int y = 0; y < half; ++y) {
        for (int first = 0; first < groups; first += kBlock) {
            const int count = std::min(groups - first, kBlock);
            for (int group = 0; group < count; group += kGroups) {
                const LanePoints points = walk.PointsOf(first + group);
                frame.Locate(points, samples + group);
                frame.LocateOpposite(points, opposite + group);
            }
            const int column = first * kLanes;
            const int columns = job.dstWidth - column;
            StoreEntries<outOfFrame>(source, samples, count, columns, upper + column);
            StoreEntries<outOfFrame>(source, opposite, count, columns, lower + column);
        }
        walk.NextRow();
        upper += job.dstWidth;
        lower += job.dstWidth;
    }
}
