#include <gtest/gtest.h>

#include <optional>

#include "support/FirstAccess.h"
#include "support/LockProbe.h"
#include "support/OutlineOperations.h"
#include "support/PointList.h"

using namespace KivFisheyeLib;

namespace {

bool WaitsForLock(const OutlineOperation& operation, MountType mount) {
    OutlineCamera prepared(mount);
    PointList first(operation.pointsInGroup);
    PointList second(operation.pointsInGroup);
    const bool waits = WaitsForLock(prepared.camera, [&] {
        operation.call(prepared.camera, first.Floats(), first.Count(), second.Floats(),
                       second.Count());
    });
    EXPECT_FALSE(IsLocked(prepared.camera)) << operation.name << " leaves it locked";
    return waits;
}

/// Whether the lock is held when the first point of either list is written.
bool ComputesUnderLock(const OutlineOperation& operation) {
    std::optional<bool> answers[2];
    for (int watched = 0; watched < 2; ++watched) {
        OutlineCamera prepared(operation.mount);
        PointList plain(operation.pointsInGroup);
        FirstAccess watchedList(4096, [&] { answers[watched] = IsLocked(prepared.camera); });
        auto* const floats = reinterpret_cast<float*>(watchedList.data());
        EXPECT_EQ(operation.call(prepared.camera, watched == 0 ? floats : plain.Floats(),
                                 operation.pointsInGroup, watched == 1 ? floats : plain.Floats(),
                                 operation.pointsInGroup),
                  kResultOk);
        EXPECT_FALSE(IsLocked(prepared.camera)) << operation.name << " leaves it locked";
    }
    EXPECT_TRUE(answers[0].has_value()) << operation.name;
    EXPECT_EQ(answers[1].has_value(), operation.lists == 2) << operation.name;
    EXPECT_EQ(answers[1].value_or(*answers[0]), *answers[0]) << operation.name;
    return *answers[0];
}

TEST(CameraOutlineLock, IsTakenWhereTheCameraIsAsked) {
    for (const OutlineOperation& operation :
         {kVCamRoi, kDualRoi, kWallRoi, kRingRoi, kOwnWallBoundary, kOwnRingBoundary}) {
        EXPECT_TRUE(WaitsForLock(operation, operation.mount)) << operation.name;
    }
}

TEST(CameraOutlineLock, IsTakenAlsoWhereTheMountDoesNotFit) {
    EXPECT_TRUE(WaitsForLock(kDualRoi, MountTypeWall));
    EXPECT_TRUE(WaitsForLock(kRingRoi, MountTypeWall));
    EXPECT_TRUE(WaitsForLock(kWallRoi, MountTypeTable));
    for (const OutlineOperation& operation : {kVCamRoi, kDualRoi, kWallRoi, kRingRoi}) {
        EXPECT_TRUE(WaitsForLock(operation, static_cast<MountType>(7))) << operation.name;
    }
}

TEST(CameraOutlineLock, IsNotTakenForALensOfTheCaller) {
    EXPECT_FALSE(WaitsForLock(kGivenWallBoundary, MountTypeWall));
    EXPECT_FALSE(WaitsForLock(kGivenRingBoundary, MountTypeTable));
}

TEST(CameraOutlineLock, IsHeldWhileWhatDependsOnAnglesIsComputed) {
    EXPECT_TRUE(ComputesUnderLock(kVCamRoi));
    EXPECT_TRUE(ComputesUnderLock(kDualRoi));
}

TEST(CameraOutlineLock, IsReleasedBeforeTheLensAloneIsComputed) {
    EXPECT_FALSE(ComputesUnderLock(kWallRoi));
    EXPECT_FALSE(ComputesUnderLock(kRingRoi));
    EXPECT_FALSE(ComputesUnderLock(kOwnWallBoundary));
    EXPECT_FALSE(ComputesUnderLock(kOwnRingBoundary));
    EXPECT_FALSE(ComputesUnderLock(kGivenWallBoundary));
    EXPECT_FALSE(ComputesUnderLock(kGivenRingBoundary));
}

}  // namespace
