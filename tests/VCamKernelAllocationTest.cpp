#include <gtest/gtest.h>

#include <vector>

#include "support/CoordinateFrame.h"
#include "support/FailingAllocations.h"
#include "support/GuardedBuffer.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"

// What the kernels ask memory for. The test program refuses requests beyond 1 GiB without counting
// them, which tells a request's size from outside.

using namespace KivFisheyeLib;

namespace {

constexpr int kGiB = 1 << 30;

class VCamKernelAllocation : public VCamKernelTest {
protected:
    static int RequestsOf(const VCamFrame& frame) {
        const auto src = CoordinateFrame(frame.srcWidth, frame.srcHeight, frame.srcStride, Bytes());
        std::vector<unsigned char> dst(frame.OutputBytes() +
                                       BytesBeyondFrame(Form(), frame, Bytes()));
        const AllocationWatch watch;
        GetParam()(frame, src.data(), dst.data());
        EXPECT_EQ(watch.BlocksTaken(), 0) << "all of it is given back";
        return watch.Requests();
    }

    /// Whether the one request for this frame is for no more than 1 GiB. It is never served.
    static bool RequestsAtMostOneGiB(const VCamFrame& frame) {
        const GuardedBuffer unreadable(0);
        GuardedBuffer unwritable(0);
        const AllocationWatch watch(1);
        EXPECT_TRUE(
            ThrowsBadAlloc([&] { GetParam()(frame, unreadable.data(), unwritable.data()); }));
        EXPECT_EQ(watch.BlocksTaken(), 0);
        return watch.HasFailed();
    }
};

TEST_P(VCamKernelAllocation, IsOneBlockInTheScalarAndTheAvxFormAndNoneInTheSse41Form) {
    const int expected = Form() == VCamForm::SSE41 ? 0 : 1;
    for (const int width : {8, 64, 400, 1003}) {
        for (const int height : {1, 2, 50}) {
            EXPECT_EQ(RequestsOf(PackedVCam(70, 60, width, height, Bytes())), expected)
                << width << "x" << height;
        }
    }
}

TEST_P(VCamKernelAllocation, AvxTakesNoneWithoutAWholeGroup) {
    EXPECT_EQ(RequestsOf(PackedVCam(70, 60, 7, 20, Bytes())), Form() == VCamForm::C ? 1 : 0);
}

// The other forms have no row table.
class VCamScalarAllocation : public VCamKernelAllocation {};

TEST_P(VCamScalarAllocation, IsFourBytesForEachSourceRow) {
    VCamFrame frame = PackedVCam(1, kGiB / 4, 8, 8, Bytes());
    EXPECT_TRUE(RequestsAtMostOneGiB(frame));
    ++frame.srcHeight;
    EXPECT_FALSE(RequestsAtMostOneGiB(frame));
}

INSTANTIATE_TEST_SUITE_P(, VCamScalarAllocation,
                         testing::Values(VCamKernel{VCamForm::C, 3}, VCamKernel{VCamForm::C, 4}),
                         NameOfKernel);

// The other forms keep no samples.
class VCamAvxAllocation : public VCamKernelAllocation {};

TEST_P(VCamAvxAllocation, Is96BytesForEachGroup) {
    constexpr int kColumns = kGiB / 96 * 8;
    EXPECT_TRUE(RequestsAtMostOneGiB(PackedVCam(70, 60, kColumns + 7, 1, Bytes())));
    EXPECT_FALSE(RequestsAtMostOneGiB(PackedVCam(70, 60, kColumns + 8, 1, Bytes())));
}

TEST_P(VCamAvxAllocation, IsForNoMoreGroupsThanTheRecordHasRoomFor) {
    VCamFrame frame = PackedVCam(70, 60, 8, 1, Bytes());
    frame.dstWidth = 1 << 30;
    EXPECT_TRUE(RequestsAtMostOneGiB(frame));
}

TEST_P(VCamAvxAllocation, IsAlignedToAGroup) {
    const VCamFrame frame = PackedVCam(70, 60, 64, 5, Bytes());
    const auto src = CoordinateFrame(70, 60, frame.srcStride, Bytes());
    std::vector<unsigned char> dst(frame.OutputBytes());
    const AllocationWatch watch;
    GetParam()(frame, src.data(), dst.data());
    EXPECT_EQ(watch.LastAlignment(), 32U);
}

INSTANTIATE_TEST_SUITE_P(, VCamAvxAllocation,
                         testing::Values(VCamKernel{VCamForm::AVX, 3},
                                         VCamKernel{VCamForm::AVX, 4}),
                         NameOfKernel);

TEST_P(VCamKernelAllocation, ThatFailsThrowsAndLeavesNothingBehind) {
    const VCamFrame frame = PackedVCam(70, 60, 64, 5, Bytes());
    const auto src = CoordinateFrame(70, 60, frame.srcStride, Bytes());
    std::vector<unsigned char> dst(frame.OutputBytes(), 0xCD);
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        watch.FailRequest(number);
        const bool failed = ThrowsBadAlloc([&] { GetParam()(frame, src.data(), dst.data()); });
        EXPECT_EQ(failed, watch.HasFailed());
        EXPECT_EQ(watch.BlocksTaken(), 0);
        failures += failed ? 1 : 0;
    });
    EXPECT_EQ(failures, Form() == VCamForm::SSE41 ? 0 : 1);
    EXPECT_EQ(dst, GetParam().ModelPicture(frame, src)) << "the last attempt had its memory";
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamKernelAllocation);

}  // namespace
