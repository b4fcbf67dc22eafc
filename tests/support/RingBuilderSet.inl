// Included once for each mount and form, inside a namespace where `kernels` names theirs.

/// The builders alone.
template <int bits>
RingKernelSet Building() {
    return {nullptr, nullptr, kernels::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>,
            kernels::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>};
}
