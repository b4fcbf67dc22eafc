#include "memory/ContextMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "memory/HeapUse.h"
#include "memory/MemoryModel.h"

// What docs/memory.md says of the heap holds to the byte.

using namespace KivFisheyeLib;

namespace {

/// Of all of a context's objects, none of which depends on a size.
constexpr std::size_t kMostOfObjects = 600;
constexpr std::size_t kPaddingOfLanes = 192;

struct Sizes {
    std::uint32_t srcWidth;
    std::uint32_t srcHeight;
    std::uint32_t dstWidth;  // 0 for the recommended size
    std::uint32_t dstHeight;
};

/// Recommended sizes of small and middle sources, an output that is larger and one that is smaller
/// than the source, a single group of columns, rows of two tiles, and an odd height.
constexpr Sizes kSizes[] = {{161, 147, 0, 0},    {512, 512, 0, 0},   {1024, 1024, 0, 0},
                            {640, 480, 808, 99}, {320, 200, 8, 301}, {200, 200, 2056, 32},
                            {801, 801, 64, 16}};
constexpr PixelFormat kFormats[] = {PixelFormatRGB24, PixelFormatRGB32};

class ContextMemory : public testing::TestWithParam<MountedView> {
protected:
    /// Calls `check(context, bytesPerPixel)` with a context of every size and format.
    template <class Check>
    static void WithEachSize(Check&& check) {
        for (const Sizes& sizes : kSizes) {
            for (const PixelFormat format : kFormats) {
                SCOPED_TRACE(testing::Message()
                             << sizes.srcWidth << "x" << sizes.srcHeight << " to " << sizes.dstWidth
                             << "x" << sizes.dstHeight << ", format " << format);
                MeasuredContext context(GetParam(), format, sizes.srcWidth, sizes.srcHeight,
                                        sizes.dstWidth, sizes.dstHeight);
                check(context, BytesPerPixelOf(format));
            }
        }
    }

    /// The objects of a context, whose frames are of the least size.
    static std::size_t Objects() {
        MeasuredContext context(GetParam(), PixelFormatRGB32, 16, 16, 8, 2);
        const std::size_t table = GetParam().IsPanorama() ? TableBytes(context, 4) : 0;
        return context.Held() - table;
    }
};

using PanoramaMemory = ContextMemory;
using VCamMemory = ContextMemory;

std::string TestNameOf(const testing::TestParamInfo<MountedView>& view) {
    std::string name = NameOf(view.param);
    name.erase(
        std::remove_if(name.begin(), name.end(), [](char c) { return c == ',' || c == ' '; }),
        name.end());
    return name;
}

std::vector<MountedView> Views(bool arePanoramas) {
    std::vector<MountedView> views;
    std::copy_if(std::begin(kMountedViews), std::end(kMountedViews), std::back_inserter(views),
                 [=](const MountedView& view) { return view.IsPanorama() == arePanoramas; });
    return views;
}

INSTANTIATE_TEST_SUITE_P(Views, ContextMemory, testing::ValuesIn(kMountedViews), TestNameOf);
INSTANTIATE_TEST_SUITE_P(Views, PanoramaMemory, testing::ValuesIn(Views(true)), TestNameOf);
INSTANTIATE_TEST_SUITE_P(Views, VCamMemory, testing::ValuesIn(Views(false)), TestNameOf);

TEST_P(ContextMemory, OfItsObjectsIsSmall) {
    EXPECT_GT(Objects(), sizeof(VideoFrameInfo) * 2);
    EXPECT_LT(Objects(), kMostOfObjects);
}

TEST_P(ContextMemory, GoesBackWithTheContext) {
    const HeapUse before = HeapInUse();
    {
        MeasuredContext context(GetParam(), PixelFormatRGB32, 161, 147);
        context.ForProcess();
        context.ForSnapshot();
    }
    EXPECT_EQ(HeapInUse(), before);
}

TEST_P(ContextMemory, IsTheSameForEachOfSeveralContexts) {
    const MeasuredContext first(GetParam(), PixelFormatRGB24, 161, 147);
    for (int i = 0; i < 3; ++i) {
        const MeasuredContext next(GetParam(), PixelFormatRGB24, 161, 147);
        EXPECT_EQ(next.Held(), first.Held());
    }
}

TEST_P(ContextMemory, IsTheSameWhenEverythingIsSetToWhatItWas) {
    MeasuredContext context(GetParam(), PixelFormatRGB32, 161, 147);
    IKivFisheyeCamera& camera = context.Camera();
    const HeapUse before = HeapInUse();
    const DewarpParams lens{0.5F, 0.5F, 45.0F, 0.0F};
    EXPECT_EQ(camera.SetDewarpParams({0.25F, 0.25F, 30.0F, 0.5F}), kResultOk);
    EXPECT_EQ(camera.SetDewarpParams(lens), kResultOk);
    EXPECT_EQ(camera.SetMountAndViewType(MountTypeWall, ViewTypeVCam), kResultOk);
    EXPECT_EQ(camera.SetMountAndViewType(GetParam().mount, GetParam().view), kResultOk);
    EXPECT_EQ(camera.SetInputVideoParams(context.Input().record, PixelFormatRGB32), kResultOk);
    EXPECT_EQ(camera.SetOutputVideoParams(context.Output().record), kResultOk);
    EXPECT_EQ(camera.SetAbsolutePTZ(77.0F, 10.0F, 3.0F), kResultOk);
    EXPECT_EQ(camera.Process(0), kResultOk);
    EXPECT_EQ(HeapInUse(), before);
}

TEST_P(PanoramaMemory, IsATableAndAListOfCacheLines) {
    WithEachSize([](MeasuredContext& context, int bytesPerPixel) {
        EXPECT_EQ(context.Held(), Objects() + TableBytes(context, bytesPerPixel));
    });
}

TEST_P(PanoramaMemory, OfALargePanoramaCountsItsNarrowTiles) {
    MeasuredContext context(GetParam(), PixelFormatRGB32, 1024, 1024, 4104, 1024);
    EXPECT_EQ(context.Held(), Objects() + TableBytes(context, 4));
    EXPECT_EQ(context.MostWhileSet(), context.Held() + ListingBytes(context));
}

TEST_P(PanoramaMemory, FallsWithALensThatMeetsFewLines) {
    MeasuredContext context(GetParam(), PixelFormatRGB32, 512, 512);
    const std::size_t before = HeapInUse().bytes;
    const std::size_t lines = LinesMet(context, 4);
    ASSERT_EQ(context.Camera().SetDewarpParams({0.125F, 0.125F, 45.0F, 0.0F}), kResultOk);
    const std::size_t fewer = LinesMet(context, 4);
    EXPECT_LT(fewer, lines / 4);
    EXPECT_EQ(HeapInUse().bytes, before - kBytesPerEntry * (lines - fewer));
}

TEST_P(PanoramaMemory, OfTheListIsAFewPercentInTheRecommendedSize) {
    for (const PixelFormat format : kFormats) {
        const MeasuredContext context(GetParam(), format, 1024, 1024);
        const std::size_t table = kBytesPerEntry * Pixels(context.Output());
        EXPECT_GT(context.Held(), table);
        EXPECT_LT(context.Held() - table, table / 16);
    }
}

TEST_P(PanoramaMemory, OfTheListIsNeverMoreThanItsLinesAndRows) {
    WithEachSize([](MeasuredContext& context, int) {
        const std::size_t table = kBytesPerEntry * Pixels(context.Output());
        const std::size_t ofLines = Bytes(context.Input()) / kLineBytes + 1;
        const std::size_t ofLooks = (Pixels(context.Output()) + kSparse - 1) / kSparse;
        const std::size_t ofRows = TileRows(context.Output());
        EXPECT_LE(context.Held(),
                  kMostOfObjects + table + kBytesPerEntry * (std::min(ofLines, ofLooks) + ofRows));
    });
}

TEST_P(PanoramaMemory, WhileATableIsBuiltIsThatOfListsBesideIt) {
    WithEachSize([](MeasuredContext& context, int) {
        const std::size_t listing = context.Held() + ListingBytes(context);
        const std::size_t filling =
            Objects() + kBytesPerEntry * Pixels(context.Output()) + FillingBytes(context);
        const std::size_t most = std::max(listing, filling);
        EXPECT_GE(context.MostWhileSet(), most);
        EXPECT_LE(context.MostWhileSet(), most + kPaddingOfLanes);
    });
}

TEST_P(PanoramaMemory, IsTheSameAfterALargerOutput) {
    MeasuredContext context(GetParam(), PixelFormatRGB32, 161, 147);
    const HeapUse before = HeapInUse();
    {
        const ClientFrame larger(8, 4000, PixelFormatRGB32);
        ASSERT_EQ(context.Camera().SetOutputVideoParams(larger.record), kResultOk);
        ASSERT_EQ(context.Camera().SetOutputVideoParams(context.Output().record), kResultOk);
    }
    EXPECT_EQ(HeapInUse(), before);
}

TEST_P(PanoramaMemory, WhileATableReplacesAnotherIsThatOfOne) {
    WithEachSize([](MeasuredContext& context, int) {
        StartHeapPeak();
        const std::size_t before = HeapInUse().bytes;
        ASSERT_EQ(context.Camera().SetOutputVideoParams(context.Output().record), kResultOk);
        EXPECT_EQ(HeapPeak() - before + context.Held(), context.MostWhileSet());
    });
}

TEST_P(PanoramaMemory, OfAFrameIsNone) {
    WithEachSize([](MeasuredContext& context, int) {
        ASSERT_EQ(context.Camera().SetAbsolutePTZ(33.0F, 0.0F, 1.0F), kResultOk);
        const std::size_t requests = HeapRequests();
        EXPECT_EQ(context.ForProcess(), 0U);
        EXPECT_EQ(HeapRequests(), requests);
    });
}

TEST_P(PanoramaMemory, OfASnapshotIsTwoPicturesAndATableOfItsOwn) {
    for (const PixelFormat format : kFormats) {
        MeasuredContext context(GetParam(), format, 161, 147);
        const std::size_t expected = 64 + 2 * Bytes(context.Output()) + context.MostWhileSet();
        const std::size_t most = context.ForSnapshot();
        EXPECT_LE(most, expected);
        EXPECT_GT(most, expected - kMostOfObjects);
    }
}

TEST_P(VCamMemory, IsTheSameForEverySize) {
    WithEachSize([](MeasuredContext& context, int) {
        EXPECT_EQ(context.Held(), Objects());
        EXPECT_LT(context.MostWhileSet(), kMostOfObjects);
    });
}

TEST_P(VCamMemory, OfAFrameIsOneRowOfPositionsOrOneTableOfRows) {
    WithEachSize([](MeasuredContext& context, int) {
        const std::size_t expected = FrameBytes(context);
        const std::size_t requests = HeapRequests();
        EXPECT_EQ(context.ForProcess(), expected);
        EXPECT_EQ(HeapRequests(), requests + (expected == 0 ? 0 : 1));
    });
}

TEST_P(VCamMemory, OfASnapshotIsTwoPicturesAndAFrame) {
    for (const PixelFormat format : kFormats) {
        MeasuredContext context(GetParam(), format, 161, 147);
        const std::size_t expected = 64 + 2 * Bytes(context.Output()) + FrameBytes(context);
        const std::size_t most = context.ForSnapshot();
        EXPECT_GT(most, expected);
        EXPECT_LT(most, expected + kMostOfObjects);
    }
}

}  // namespace
