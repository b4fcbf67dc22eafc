// Direct conversions of a wall panorama, whatever the form. Included once inside the form's
// namespace, whose `WallWalk<DirectProducts>` goes through the panorama, and whose `ConvertWalk`
// copies what it meets.

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
