// The direct conversions of a mount that sees a ring, where a form has them; included as
// RingTableKernels.inl is.

template <unsigned long bits>
void CvtPanoramaRGB(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                    int dstWidth, int dstHeight, int dstStride, unsigned char* dst, float radiusX,
                    float radiusY, float innerRadiusRatio, float pan) {
    form::ConvertFull<Mount, bits>(
        {{{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}},
          radiusX,
          radiusY},
         innerRadiusRatio},
        src, dst, pan);
}

template <unsigned long bits>
void CvtDualPanoramaRGB(int srcWidth, int srcHeight, int srcStride, const unsigned char* src,
                        int dstWidth, int dstHeight, int dstStride, unsigned char* dst,
                        float radiusX, float radiusY, float innerRadiusRatio, float pan) {
    form::ConvertDual<Mount, bits>(
        {{{srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, int{bits}},
          radiusX,
          radiusY},
         innerRadiusRatio},
        src, dst, pan);
}
