// Direct conversions of a ring, whatever the form. Included once inside the form's namespace, whose
// `RingWalk` goes through the ring, and whose `ConvertWalk` and `ConvertDualWalk` copy what it
// meets.

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
