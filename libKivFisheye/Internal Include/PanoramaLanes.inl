// What the vector forms make of a panorama's mapping, as PanoramaWalk.h has it for the scalar one.
// Included once for each width of lanes, inside the form's namespace and target region, which names
// what SampleLanes.inl asks for. The namespace also offers `ToPixels`, the form's way from a position in pixels to a
// pixel.
//
// A walk goes through a panorama's rows: `PointsOf(group)` gives the points of a group of the row's
// columns, and `NextRow()` goes on.

#include "SampleLanes.inl"

/// Points of the source frame from its centre, in fractions of the frame, v upward.
struct LanePoints {
    Floats u;
    Floats v;
};

/// From such points to source pixels.
struct FrameLanes {
    [[gnu::always_inline]] explicit FrameLanes(const PanoramaSizes& job)
        : lastColumn(static_cast<float>(job.srcWidth - 1)),
          lastRow(static_cast<float>(job.srcHeight - 1)) {}

    /// Live is what lies in the frame, its edges included.
    [[gnu::always_inline]] void Locate(const LanePoints& points, Samples* sample) const {
        const Floats half = Floats::FromBits(sse::kHalf);
        const Mask live = (Abs(points.u) <= half) & (Abs(points.v) <= half);
        live.Store(sample->live);
        ToPixels(lastColumn * (points.u + half)).Store(sample->x);
        ToPixels(lastRow * (half - points.v)).Store(sample->y);
    }

    /// What lies opposite them, through the centre.
    [[gnu::always_inline]] void LocateOpposite(const LanePoints& points, Samples* sample) const {
        const Floats zero = Floats::FromBits(sse::kZero);
        Locate({zero - points.u, zero - points.v}, sample);
    }

    Floats lastColumn;
    Floats lastRow;
};

constexpr int GroupsOf(int columns) {
    return columns / kLanes + (columns % kLanes != 0 ? 1 : 0);
}

/// Stores the entries of `groups` groups, and of the last one no more than the table's row has.
template <int outOfFrame, class Pixel>
[[gnu::always_inline]] inline void StoreEntries(const SourceLanes<Pixel>& source,
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
    const SourceLanes<Pixel> source(nullptr, job.srcWidth, job.srcHeight, job.srcStride);
    const int groups = GroupsOf(job.dstWidth);
    Samples samples[kBlock];
    for (int y = 0; y < job.dstHeight; ++y) {
        for (int first = 0; first < groups; first += kBlock) {
            const int count = std::min(groups - first, kBlock);
            for (int group = 0; group < count; ++group) {
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
    const SourceLanes<Pixel> source(nullptr, job.srcWidth, job.srcHeight, job.srcStride);
    const int groups = GroupsOf(job.dstWidth);
    const int half = job.dstHeight / 2;
    int* upper = entries;
    int* lower = entries + std::ptrdiff_t{half} * job.dstWidth;
    Samples samples[kBlock];
    Samples opposite[kBlock];
    for (int y = 0; y < half; ++y) {
        for (int first = 0; first < groups; first += kBlock) {
            const int count = std::min(groups - first, kBlock);
            for (int group = 0; group < count; ++group) {
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

/// Turns pixels into offsets, and asks the memory for some of them.
template <class Pixel>
[[gnu::always_inline]] inline void FormOffsets(const SourceLanes<Pixel>& source, int groups,
                                               int firstLane, Samples* samples) {
    constexpr int kSparse = 4;
    for (int group = 0; group < groups; ++group) {
        source.template FormOffsets<kLanes>(samples[group].live, samples[group].x,
                                            samples[group].y);
    }
    for (int group = 0; group < groups; ++group) {
        source.template Prefetch<kLanes, kSparse>(samples[group].x, firstLane);
    }
}

/// A row of the output whose pixels are copied a block after they were found, when memory has
/// answered.
template <class Pixel>
class RowInBlocks {
public:
    [[gnu::always_inline]] RowInBlocks(const PanoramaSizes& job, const SourceLanes<Pixel>& source,
                                       unsigned char* dst, int y)
        : m_row(job, dst, y), m_task{source, m_samples[1], 0, m_row.At(0), m_row.Columns()} {}

    [[gnu::always_inline]] int Columns() const { return m_row.Columns(); }

    /// Where the samples of the block go that begins with the group at `first`.
    [[gnu::always_inline]] Samples* BlockAt(int first) { return m_samples[first / kBlock % 2]; }

    /// Takes a block whose pixels were found, and copies the one before it.
    [[gnu::always_inline]] void Add(int first, int groups, int firstLane) {
        Samples* const samples = BlockAt(first);
        FormOffsets(m_task.source, groups, firstLane, samples);
        m_task.RunFrom(0);
        m_task.samples = samples;
        m_task.groups = groups;
        m_task.target = m_row.At(first * kLanes);
        m_task.columns = m_row.Columns() - first * kLanes;
    }

    /// Copies what is left.
    [[gnu::always_inline]] void Finish() {
        m_task.RunFrom(0);
        m_task.groups = 0;
    }

private:
    ClearedRow<Pixel> m_row;
    Samples m_samples[2][kBlock];
    CopyTask<Pixel> m_task;
};

template <class Pixel, class Walk>
void ConvertWalk(const PanoramaSizes& job, Walk& walk, const unsigned char* src,
                 unsigned char* dst) {
    const FrameLanes frame(job);
    const SourceLanes<Pixel> source(src, job.srcWidth, job.srcHeight, job.srcStride);
    for (int y = 0; y < job.dstHeight; ++y) {
        RowInBlocks<Pixel> row(job, source, dst, y);
        const int groups = GroupsOf(row.Columns());
        for (int first = 0; first < groups; first += kBlock) {
            const int count = std::min(groups - first, kBlock);
            Samples* const samples = row.BlockAt(first);
            for (int group = 0; group < count; ++group) {
                frame.Locate(walk.PointsOf(first + group), samples + group);
            }
            row.Add(first, count, y % kLanes);
        }
        row.Finish();
        walk.NextRow();
    }
}

/// The lower half shows what lies opposite. An odd last row is left as it is. Rows that overlap, as
/// their stride is short, get their groups by turns.
template <class Pixel, class Walk>
void ConvertDualWalk(const PanoramaSizes& job, Walk& walk, const unsigned char* src,
                     unsigned char* dst) {
    const FrameLanes frame(job);
    const SourceLanes<Pixel> source(src, job.srcWidth, job.srcHeight, job.srcStride);
    const int half = job.dstHeight / 2;
    const bool isOverlapping = std::int64_t{job.dstWidth} * Pixel::kBytes > job.dstStride;
    const int block = isOverlapping ? 1 : kBlock;
    for (int y = 0; y < half; ++y) {
        RowInBlocks<Pixel> upper(job, source, dst, y);
        RowInBlocks<Pixel> lower(job, source, dst, half + y);
        const int groups = GroupsOf(upper.Columns());
        for (int first = 0; first < groups; first += block) {
            const int count = std::min(groups - first, block);
            Samples* const samples = upper.BlockAt(first);
            Samples* const opposite = lower.BlockAt(first);
            for (int group = 0; group < count; ++group) {
                const LanePoints points = walk.PointsOf(first + group);
                frame.Locate(points, samples + group);
                frame.LocateOpposite(points, opposite + group);
            }
            upper.Add(first, count, y % kLanes);
            lower.Add(first, count, y % kLanes);
            if (isOverlapping) {
                upper.Finish();
                lower.Finish();
            }
        }
        upper.Finish();
        lower.Finish();
        walk.NextRow();
    }
}
