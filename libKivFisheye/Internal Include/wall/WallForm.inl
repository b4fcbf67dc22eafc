// Conversions and tables of a wall panorama, whatever the form. Included once inside each form's
// namespace, whose `WallWalk` goes through the panorama by one of two ways to multiply,
// `DirectProducts` and `TableProducts`, and whose `ConvertWalk` and `FillTable` make something of it.

/// Converts one frame, evaluating the mapping afresh.
template <unsigned long bits>
void CvtPanoramaRGB(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                    int dstWidth, int dstHeight, int dstStride, unsigned char* dst, float radiusX,
                    float radiusY, float wallViewAngle) {
    using Pixel = PixelT<bits>;
    const wall::WallJob job{
        {{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}},
         radiusX,
         radiusY},
        wallViewAngle};
    if (!job.HasPixels(Pixel::kBytes)) {
        ClearRows(dst, dstHeight, dstStride);
        return;
    }
    WallWalk<DirectProducts> walk(job);
    ConvertWalk<Pixel>(job, walk, src, dst);
}

/// Fills `table`, which has an entry for every pixel of the panorama, with the byte offset of each
/// one's source pixel, or `outOfFrame`.
template <int bits, int outOfFrame>
void InitPanoramaCoorToFisheyeAddrOffsetTableRGB(int srcWidth, int srcHeight, int srcStride,
                                                 int dstWidth, int dstHeight, int dstStride,
                                                 float radiusX, float radiusY, float wallViewAngle,
                                                 CAlignedBufferT<int, 32>& table) {
    const wall::WallJob job{
        {{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bits}, radiusX, radiusY},
        wallViewAngle};
    if (table.count() == 0 || !job.HasSource()) {
        std::fill_n(table.data(), table.count(), outOfFrame);
        return;
    }
    WallWalk<TableProducts> walk(job);
    FillTable<PixelT<static_cast<unsigned long>(bits)>, outOfFrame>(job, walk, table.data());
}
