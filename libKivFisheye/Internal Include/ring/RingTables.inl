// Tables of a ring, whatever the form. Included once inside the form's namespace, whose `RingWalk`
// goes through the ring, and whose `FillTable` and `FillDualTable` store what it meets.

/// Fills `table`, which has an entry for every pixel of the panorama, with the byte offset of each
/// one's source pixel, or `outOfFrame`.
template <class Mount, int bitsPerPixel, int outOfFrame>
void BuildFullTable(const ring::RingJob& job, CAlignedBufferT<int, 32>& table) {
    if (table.count() == 0 || !job.HasSource()) {
        std::fill_n(table.data(), table.count(), outOfFrame);
        return;
    }
    RingWalk<Mount> walk(job, Mount::Angles(kFullTurn), job.dstHeight);
    FillTable<PixelT<static_cast<unsigned long>(bitsPerPixel)>, outOfFrame>(job, walk,
                                                                            table.data());
}

/// The same for a dual panorama. An odd last row shows nothing.
template <class Mount, int bitsPerPixel, int outOfFrame>
void BuildDualTable(const ring::RingJob& job, CAlignedBufferT<int, 32>& table) {
    if (table.count() == 0 || !job.HasSource()) {
        std::fill_n(table.data(), table.count(), outOfFrame);
        return;
    }
    const int half = job.dstHeight / 2;
    RingWalk<Mount> walk(job, Mount::Angles(kHalfTurn), half);
    FillDualTable<PixelT<static_cast<unsigned long>(bitsPerPixel)>, outOfFrame>(job, walk,
                                                                                table.data());
    if (job.dstHeight % 2 != 0) {
        std::fill_n(table.data() + std::ptrdiff_t{2} * half * job.dstWidth, job.dstWidth,
                    outOfFrame);
    }
}
