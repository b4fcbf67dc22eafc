// Included once for each mount and form, inside a namespace where `kernels` names theirs.

/// The builders alone.
template <int bits>
RingKernelSet Building() {
    return {nullptr, nullptr, kernels::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>,
            kernels::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>};
}

template <int bits>
RingKernelSet Converting() {
    constexpr auto kBits = static_cast<unsigned long>(bits);
    RingKernelSet set = Building<bits>();
    set.convert = kernels::CvtPanoramaRGB<kBits>;
    set.convertDual = kernels::CvtDualPanoramaRGB<kBits>;
    return set;
}
