// Conversions and tables of a ring, whatever the form. Included once inside each form's namespace,
// whose `RingWalk` goes through the ring, and whose `ConvertWalk`, `FillTable` and their dual twins
// make something of it.

/// Converts one frame into a full panorama turned by `pan` degrees, evaluating the mapping afresh.
template <class Mount, unsigned long bitsPerPixel>
void ConvertFull(const ring::RingJob& job, const unsigned char* src, unsigned char* dst,
                 float pan) {
    using Pixel = PixelT<bitsPerPixel>;
    if (!job.HasPixels(Pixel::kBytes)) {
        ClearRows(dst, job.dstHeight, job.dstStride);
        return;
    }
    // On both mounts the angle rises here, while a ceiling table's falls: clients of the direct
    // conversion rely on its ceiling picture being the mirror image of the table's.
    const float start = pan * kDegreesToRadians;
    const float end = start + kFullTurn;
    RingWalk<Mount> walk(job, {start, end}, job.dstHeight);
    ConvertWalk<Pixel>(job, walk, src, dst);
}

/// Converts one frame into a dual panorama turned by `pan` degrees, the other way than a full one.
/// An odd last row belongs to neither half and is left as it is.
template <class Mount, unsigned long bitsPerPixel>
void ConvertDual(const ring::RingJob& job, const unsigned char* src, unsigned char* dst,
                 float pan) {
    using Pixel = PixelT<bitsPerPixel>;
    const int half = job.dstHeight / 2;
    if (!job.HasPixels(Pixel::kBytes)) {
        ClearRows(dst, 2 * half, job.dstStride);
        return;
    }
    RingWalk<Mount> walk(job, Mount::HalfTurnAt(pan * kDegreesToRadians), half);
    ConvertDualWalk<Pixel>(job, walk, src, dst);
}

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
