// The kernels of a form that has direct conversions too; included as RingBuilderSet.inl is.

#include "support/RingBuilderSet.inl"

template <int bits>
RingKernelSet Converting() {
    constexpr auto kBits = static_cast<unsigned long>(bits);
    RingKernelSet set = Building<bits>();
    set.convert = kernels::CvtPanoramaRGB<kBits>;
    set.convertDual = kernels::CvtDualPanoramaRGB<kBits>;
    return set;
}
