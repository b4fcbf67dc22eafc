#include <gtest/gtest.h>

#include <cstdint>

#include "support/FailingAllocations.h"
#include "support/FailingMalloc.h"
#include "support/GuardedBuffer.h"
#include "support/LockProbe.h"
#include "support/SnapshotBlock.h"

using namespace KivFisheyeLib;

// Inputs that no client has. Their few bytes can not be read, so a look at a pixel ends the
// process.

namespace {

constexpr auto kNoMount = static_cast<MountType>(7);

class SnapshotSizes : public testing::Test {
protected:
    /// Sets the input, whose stride is as it comes out in 32 bits, and a mount and view.
    void SetInput(std::uint32_t width, std::uint32_t height, PixelFormat format, MountType mount,
                  ViewType view) {
        const std::uint32_t bytesPerPixel = format == PixelFormatRGB24 ? 3 : 4;
        const VideoFrameInfo input{width, height, (width * bytesPerPixel + 3U) & ~3U,
                                   m_nothing.data()};
        ASSERT_EQ(camera.SetInputVideoParams(input, format), kResultOk);
        ASSERT_EQ(camera.SetMountAndViewType(mount, view), kResultOk);
    }

    /// The answer is that memory ran out, without a block and without asking for one.
    void IsBeyond32Bits(std::uint32_t width, std::uint32_t height, PixelFormat format,
                        MountType mount = kNoMount, ViewType view = ViewTypeFullPanorama) {
        SCOPED_TRACE(testing::Message() << width << " x " << height << ", format " << format);
        SetInput(width, height, format, mount, view);
        EXPECT_EQ(LargestRequest(), 0U);
    }

    /// The answer is the same, after asking for this much.
    void AsksFor(std::uint64_t bytes, std::uint32_t width, std::uint32_t height, PixelFormat format,
                 MountType mount = kNoMount, ViewType view = ViewTypeFullPanorama) {
        SCOPED_TRACE(testing::Message() << width << " x " << height << ", format " << format);
        SetInput(width, height, format, mount, view);
        EXPECT_EQ(LargestRequest(), bytes);
    }

    CKivFisheyeCamera camera;

private:
    std::size_t LargestRequest() {
        const MallocWatch watch;
        const AllocationWatch others;
        const SnapshotBlock block(camera);
        const std::size_t largest = watch.LargestRequest();
        EXPECT_EQ(block.Result(), kResultOutOfMemory);
        EXPECT_FALSE(block.IsThere());
        EXPECT_EQ(others.Requests(), 0);
        EXPECT_FALSE(IsLocked(camera));
        return largest;
    }

    GuardedBuffer m_nothing{0};
};

TEST_F(SnapshotSizes, TheLargestBlockIs4BytesBelow4GiB) {
    // 4 * 1073741807 is 2^32 - 68.
    AsksFor(0xFFFFFFFC, 1, 1073741807, PixelFormatRGB32);
    AsksFor(0xFFFFFFFC, 1, 1073741807, PixelFormatRGB24);
    AsksFor(0xFFFFFFFC, 1073741807, 1, PixelFormatRGB32);
}

TEST_F(SnapshotSizes, AHeaderThatLeadsBeyondCounts) {
    IsBeyond32Bits(1, 1073741808, PixelFormatRGB32);
    IsBeyond32Bits(1073741808, 1, PixelFormatRGB32);
    IsBeyond32Bits(1, 1073741823, PixelFormatRGB32);
    IsBeyond32Bits(1, 1073741808, PixelFormatRGB24);
}

TEST_F(SnapshotSizes, AProductOfExactly4GiBIsNoSizeOf0) {
    IsBeyond32Bits(1, 1073741824, PixelFormatRGB32);
    IsBeyond32Bits(1U << 15, 1U << 15, PixelFormatRGB32);
    IsBeyond32Bits(1U << 16, 1U << 16, PixelFormatRGB32);
    IsBeyond32Bits(1U << 16, 1U << 16, PixelFormatRGB24);
    IsBeyond32Bits(1U << 15, 1U << 15, PixelFormatRGB32, MountTypeWall, ViewTypeVCam);
    IsBeyond32Bits(1U << 16, 1U << 16, PixelFormatRGB24, MountTypeTable, ViewTypeVCam);
}

TEST_F(SnapshotSizes, AProductABitAbove4GiBIsNoSmallSize) {
    IsBeyond32Bits(1, 1073741825, PixelFormatRGB32);
    IsBeyond32Bits(65537, 65536, PixelFormatRGB32);
    IsBeyond32Bits((1U << 15) + 8, 1U << 15, PixelFormatRGB32, MountTypeCeiling, ViewTypeVCam);
}

TEST_F(SnapshotSizes, AStrideThatWrappedIsNoSmallOne) {
    // 4 * 0x40000008 is 2^32 + 32, 3 * 0x55555558 is 2^32 + 8, and 3 * 0x55555555 + 3 is 2^32 + 2.
    IsBeyond32Bits(0x40000008, 1, PixelFormatRGB32);
    IsBeyond32Bits(0x40000000, 1, PixelFormatRGB32);
    IsBeyond32Bits(0x55555558, 1, PixelFormatRGB24);
    IsBeyond32Bits(0x55555555, 1, PixelFormatRGB24);
    IsBeyond32Bits(0xFFFFFFFF, 0xFFFFFFFF, PixelFormatRGB32);
    // 2^33 * 2^31 wraps to 0 in 64 bits too.
    IsBeyond32Bits(0x80000000, 0x80000000, PixelFormatRGB32);
    IsBeyond32Bits(0x40000008, 8, PixelFormatRGB32, MountTypeWall, ViewTypeVCam);
}

TEST_F(SnapshotSizes, ASmallSnapshotOfTheSameContextFollows) {
    IsBeyond32Bits(1U << 16, 1U << 16, PixelFormatRGB32);
    unsigned char pixel[4] = {1, 2, 3, 4};
    ASSERT_EQ(camera.SetInputVideoParams({1, 1, 4, pixel}, PixelFormatRGB32), kResultOk);
    ASSERT_EQ(camera.SetMountAndViewType(MountTypeWall, ViewTypeVCam), kResultOk);
    const SnapshotBlock block(camera);
    EXPECT_EQ(block.Result(), kResultOk);
    EXPECT_EQ(block.Header(), HeaderBytes(8, -8, 32, 256));
}

}  // namespace
