#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "instrset_detect.h"
#include "support/FailingAllocations.h"
#include "support/FailingMalloc.h"
#include "support/KernelForm.h"
#include "support/LockProbe.h"
#include "support/PanoramaCamera.h"
#include "support/SnapshotBlock.h"
#include "support/SnapshotCamera.h"

using namespace KivFisheyeLib;

namespace {

constexpr auto kNoMount = static_cast<MountType>(7);
constexpr auto kNoView = static_cast<ViewType>(7);
constexpr Aim kAim{30.0F, 10.0F, 3.0F};

bool IsAllZero(const std::vector<unsigned char>& bytes) {
    return std::all_of(bytes.begin(), bytes.end(), [](unsigned char byte) { return byte == 0; });
}

/// A failure left the context as it was: the next snapshot is a good one.
void ExpectGoodSnapshot(CKivFisheyeCamera& camera) {
    const SnapshotBlock block(camera);
    EXPECT_EQ(block.Result(), kResultOk);
    ASSERT_TRUE(block.IsThere());
    EXPECT_FALSE(IsAllZero(block.Image()));
}

/// The answer is that memory ran out, and there is a block whose image shows nothing.
void ExpectBlackBlock(CKivFisheyeCamera& camera, std::int64_t width, std::int64_t height) {
    const SnapshotBlock block(camera);
    EXPECT_EQ(block.Result(), kResultOutOfMemory);
    EXPECT_FALSE(IsLocked(camera));
    ASSERT_TRUE(block.IsThere());
    EXPECT_EQ(block.Header(),
              HeaderBytes(width, -height, 32, static_cast<std::size_t>(width * height * 4)));
    EXPECT_TRUE(IsAllZero(block.Image()));
}

TEST(SnapshotFailure, ANullPointerIsRefusedBeforeTheLock) {
    SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB32, kAim);
    EXPECT_FALSE(WaitsForLock(prepared.camera, [&] {
        EXPECT_EQ(prepared.camera.Snapshot(nullptr), kResultNullPointer);
    }));
}

TEST(SnapshotFailure, AContextWithoutAnInputIsNotReady) {
    CKivFisheyeCamera camera;
    const SnapshotBlock block(camera);
    EXPECT_EQ(block.Result(), kResultNotReady);
    EXPECT_FALSE(block.IsThere());
    EXPECT_FALSE(IsLocked(camera));
}

TEST(SnapshotFailure, AnInputWithASideOf0IsNotReady) {
    for (const auto side : {&VideoFrameInfo::width, &VideoFrameInfo::height}) {
        SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB32, kAim);
        prepared.camera.m_inputInfo.*side = 0;
        const SnapshotBlock block(prepared.camera);
        EXPECT_EQ(block.Result(), kResultNotReady);
        EXPECT_FALSE(block.IsThere());
    }
}

TEST(SnapshotFailure, ASizeThatIsNotToldGivesAHeaderAlone) {
    SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB32, kAim);
    prepared.camera.m_inputInfo.buffer = nullptr;
    ExpectBlackBlock(prepared.camera, 0, 0);
    const MallocWatch watch;
    unsigned char* block = nullptr;
    prepared.camera.Snapshot(&block);
    EXPECT_EQ(watch.LargestRequest(), 64U);
    prepared.camera.FreeSnapshotMemory(block);
}

TEST(SnapshotFailure, ALensWithoutWidthGivesAHeaderAlone) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        SnapshotCamera prepared({mount, ViewTypeVCam}, PixelFormatRGB32, kAim);
        ASSERT_EQ(prepared.camera.SetDewarpParams({0.0F, 0.5F, 45.0F, 0.0F}), kResultOk);
        // 147 rows, and a virtual camera's sides are multiples of 8.
        ExpectBlackBlock(prepared.camera, 0, 152);
    }
}

TEST(SnapshotFailure, ALensWithoutHeightGivesAHeaderAlone) {
    SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB32, kAim);
    ASSERT_EQ(prepared.camera.SetDewarpParams({0.5F, 0.0F, 45.0F, 0.0F}), kResultOk);
    ExpectBlackBlock(prepared.camera, 168, 0);
}

TEST(SnapshotFailure, WithoutAMountOrViewThereIsABlackBlockOfTheInputsSize) {
    for (const MountAndView& scene :
         {MountAndView{kNoMount, ViewTypeFullPanorama}, MountAndView{kNoMount, kNoView},
          MountAndView{MountTypeTable, kNoView}, MountAndView{MountTypeWall, kNoView}}) {
        ClientFrame input(161, 147, PixelFormatRGB32, 0x5A);
        CKivFisheyeCamera camera;
        ASSERT_EQ(camera.SetInputVideoParams(input.record, PixelFormatRGB32), kResultOk);
        ASSERT_EQ(camera.SetMountAndViewType(scene.mount, scene.view), kResultOk);
        ExpectBlackBlock(camera, 161, 147);
        ASSERT_EQ(camera.SetMountAndViewType(MountTypeWall, ViewTypeVCam), kResultOk);
        ExpectGoodSnapshot(camera);
    }
}

TEST(SnapshotFailure, WithoutMemoryForTheBlockThereIsNone) {
    for (const MountAndView& scene : kEveryScene) {
        SnapshotCamera prepared(scene, PixelFormatRGB32, kAim);
        {
            const MallocWatch noLargeBlocks(10000);
            const AllocationWatch watch;
            const SnapshotBlock block(prepared.camera);
            EXPECT_EQ(block.Result(), kResultOutOfMemory);
            EXPECT_FALSE(block.IsThere());
            EXPECT_EQ(watch.Requests(), 0) << "asked for more after that";
        }
        EXPECT_FALSE(IsLocked(prepared.camera));
        ExpectGoodSnapshot(prepared.camera);
    }
}

TEST(SnapshotFailure, WithoutMemoryForThePictureTheBlockShowsNothing) {
    for (const MountAndView& scene : kEveryScene) {
        SnapshotCamera prepared(scene, PixelFormatRGB32, kAim);
        unsigned int width = 0;
        unsigned int height = 0;
        ASSERT_EQ(prepared.camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
        unsigned char* block = nullptr;
        {
            AllocationWatch watch(1);
            EXPECT_EQ(prepared.camera.Snapshot(&block), kResultOutOfMemory);
            EXPECT_TRUE(watch.HasFailed());
            EXPECT_EQ(watch.LastAlignment(), 16UL);
            EXPECT_EQ(watch.Requests(), 1) << "asked for more after that";
        }
        ASSERT_NE(block, nullptr);
        const std::size_t size = std::size_t{width} * height * 4;
        EXPECT_EQ(std::vector<unsigned char>(block, block + 64),
                  HeaderBytes(width, -std::int64_t{height}, 32, size));
        EXPECT_TRUE(IsAllZero({block + 64, block + 64 + size}));
        EXPECT_EQ(prepared.camera.FreeSnapshotMemory(block), kResultOk);
        EXPECT_FALSE(IsLocked(prepared.camera));
        ExpectGoodSnapshot(prepared.camera);
    }
}

/// Lets every request after the picture's own fail in turn. Returns how many did.
int FailEachRequestOfTheScene(SnapshotCamera& prepared) {
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        unsigned char stale = 0;
        unsigned char* block = &stale;
        watch.FailRequest(number + 1);
        const bool failed = ThrowsBadAlloc([&] { prepared.camera.Snapshot(&block); });
        // A request that the scene can do without makes no failure.
        EXPECT_TRUE(watch.HasFailed() || !failed) << "request " << number;
        EXPECT_EQ(block == nullptr, failed);
        EXPECT_EQ(watch.BlocksTaken(), 0) << "request " << number;
        EXPECT_FALSE(IsLocked(prepared.camera));
        failures += failed ? 1 : 0;
        prepared.camera.FreeSnapshotMemory(block);
    });
    return failures;
}

/// How many of these requests there are at least: the scene itself, and what it takes. Four lanes
/// convert a virtual camera's view without memory.
int LeastRequestsOf(const MountAndView& scene) {
    const bool isWithoutMemory =
        scene.view == ViewTypeVCam && FormOfLevel(GetCpuInstructionSet()) == KernelForm::SSE41;
    return isWithoutMemory ? 1 : 2;
}

TEST(SnapshotFailure, AnExceptionOfTheSceneLeavesNoBlockAndNoLock) {
    for (const MountAndView& scene : kEveryScene) {
        SCOPED_TRACE(testing::Message() << "mount " << scene.mount << ", view " << scene.view);
        SnapshotCamera prepared(scene, PixelFormatRGB32, kAim);
        EXPECT_GE(FailEachRequestOfTheScene(prepared), LeastRequestsOf(scene));
        ExpectGoodSnapshot(prepared.camera);
    }
}

TEST(SnapshotFailure, AnExceptionOfTheSceneGivesTheBlockBack) {
    for (const MountAndView& scene : kEveryScene) {
        SnapshotCamera prepared(scene, PixelFormatRGB32, kAim);
        FailEachRequestOfTheScene(prepared);
        const std::size_t before = BytesInUse();
        for (int i = 0; i < 4; ++i) {
            FailEachRequestOfTheScene(prepared);
        }
        // The smallest of the blocks is larger.
        EXPECT_LT(BytesInUse(), before + 20000)
            << "mount " << scene.mount << ", view " << scene.view;
    }
}

template <class Panorama>
class SnapshotFailureBesidePanorama : public testing::Test {};
TYPED_TEST_SUITE(SnapshotFailureBesidePanorama, Panoramas);

TYPED_TEST(SnapshotFailureBesidePanorama, LeavesTheRunningSceneAlone) {
    PanoramaCamera<TypeParam> running;
    unsigned char* block = nullptr;
    {
        AllocationWatch watch(2);
        EXPECT_TRUE(ThrowsBadAlloc([&] { running.camera.Snapshot(&block); }));
    }
    EXPECT_EQ(block, nullptr);
    EXPECT_TRUE(running.output.IsFilledWith(running.kUntouched));
    EXPECT_EQ(running.camera.SetMountType(TypeParam::kMountType), kResultNoChange);
    EXPECT_TRUE(running.Shows(running.Expected().bytes));
}

}  // namespace
