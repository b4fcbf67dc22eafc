// The builders of tables for a mount that sees a ring, under the names that its converters know
// them by. Included once inside the namespace of each mount and form, where `Mount` is the mount
// and `form` the ring's kernels of that form.

template <int bits, int outOfFrame>
void InitPanoramaCoorToFisheyeAddrOffsetTableRGB(int srcWidth, int srcHeight, int srcStride,
                                                 int dstWidth, int dstHeight, int dstStride,
                                                 float radiusX, float radiusY,
                                                 float innerRadiusRatio,
                                                 CAlignedBufferT<int, 32>& table) {
    form::BuildFullTable<Mount, bits, outOfFrame>(
        {{{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}},
          radiusX,
          radiusY},
         innerRadiusRatio},
        table);
}

template <int bits, int outOfFrame>
void InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB(int srcWidth, int srcHeight, int srcStride,
                                                     int dstWidth, int dstHeight, int dstStride,
                                                     float radiusX, float radiusY,
                                                     float innerRadiusRatio,
                                                     CAlignedBufferT<int, 32>& table) {
    form::BuildDualTable<Mount, bits, outOfFrame>(
        {{{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}},
          radiusX,
          radiusY},
         innerRadiusRatio},
        table);
}
