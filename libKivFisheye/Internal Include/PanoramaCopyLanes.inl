// Direct conversions in lanes, of the walks that PanoramaLanes.inl tells of; to be included after
// it.

/// Turns pixels into offsets, and asks the memory for some of them.
template <class Pixel>
[[gnu::always_inline]] inline void FormOffsets(const SourceLanes<Pixel>& source, int groups,
                                               int firstLane, Samples* samples) {
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
            for (int group = 0; group < count; group += kGroups) {
                frame.Locate(walk.PointsOf(first + group), samples + group);
            }
            row.Add(first, count, y % kSparse);
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
            for (int group = 0; group < count; group += kGroups) {
                const LanePoints points = walk.PointsOf(first + group);
                frame.Locate(points, samples + group);
                frame.LocateOpposite(points, opposite + group);
            }
            upper.Add(first, count, y % kSparse);
            lower.Add(first, count, y % kSparse);
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
