// Tables of a wall panorama, whatever the form. Included once inside the form's namespace, whose
// `WallWalk<TableProducts>` goes through the panorama, and whose `FillTable` stores what it meets.

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
