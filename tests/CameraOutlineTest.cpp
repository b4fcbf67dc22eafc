#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "support/LockProbe.h"
#include "support/OutlineOperations.h"
#include "support/PointList.h"

using namespace KivFisheyeLib;

namespace {

constexpr int kRoom = 128;
constexpr auto kNoMount = static_cast<MountType>(7);

class CameraOutline : public testing::TestWithParam<OutlineOperation> {
protected:
    /// The operation on one list, or on two of which `changed` is the one to look at: the other is
    /// a good one.
    ResultCode CallWith(CKivFisheyeCamera& camera, int changed, float* points, int count) {
        const int good = GetParam().pointsInGroup;
        return changed == 0 ? GetParam().call(camera, points, count, other.Floats(), good)
                            : GetParam().call(camera, other.Floats(), good, points, count);
    }

    void Refuses(float* points, int count) {
        for (int changed = 0; changed < GetParam().lists; ++changed) {
            OutlineCamera prepared(GetParam().mount);
            ResultCode result = kResultOk;
            EXPECT_FALSE(WaitsForLock(prepared.camera, [&] {
                result = CallWith(prepared.camera, changed, points, count);
            })) << "refused after the lock";
            EXPECT_EQ(result, kResultInvalidArgument) << "list " << changed << ", count " << count;
            EXPECT_TRUE(list.IsUntouched());
            EXPECT_TRUE(other.IsUntouched());
            EXPECT_FALSE(IsLocked(prepared.camera));
        }
    }

    PointList list{kRoom};
    PointList other{kRoom};
};

TEST_P(CameraOutline, RefusesAListThatIsNotThere) {
    Refuses(nullptr, GetParam().pointsInGroup);
}

TEST_P(CameraOutline, RefusesAListThatLiesBetweenMultiplesOf16Bytes) {
    for (const int floats : {1, 2, 3}) {
        Refuses(list.Floats() + floats, GetParam().pointsInGroup);
    }
    auto* const bytes = reinterpret_cast<unsigned char*>(list.Floats());
    Refuses(reinterpret_cast<float*>(bytes + 1), GetParam().pointsInGroup);
}

TEST_P(CameraOutline, RefusesCountsOf0AndBelow) {
    const int group = GetParam().pointsInGroup;
    for (const int count : {0, -1, -group, -16, INT_MIN, INT_MIN + 16}) {
        Refuses(list.Floats(), count);
    }
}

TEST_P(CameraOutline, RefusesCountsThatAreNoWholeGroups) {
    const int group = GetParam().pointsInGroup;
    for (int count = 1; count < 3 * group; ++count) {
        if (count % group != 0) {
            Refuses(list.Floats(), count);
        }
    }
}

TEST_P(CameraOutline, FillsListsOfWholeGroupsToTheLastPoint) {
    const int group = GetParam().pointsInGroup;
    for (const int firstGroups : {1, 2, 3, 16}) {
        for (const int secondGroups : {1, 2, 5}) {
            OutlineCamera prepared(GetParam().mount);
            PointList first(firstGroups * group);
            PointList second(secondGroups * group);
            EXPECT_EQ(GetParam().call(prepared.camera, first.Floats(), first.Count(),
                                      second.Floats(), second.Count()),
                      kResultOk);
            EXPECT_TRUE(first.IsFull());
            EXPECT_TRUE(GetParam().lists == 2 ? second.IsFull() : second.IsUntouched());
        }
    }
}

std::string NameOf(const testing::TestParamInfo<OutlineOperation>& info) {
    std::string name = info.param.name;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] == ' ' || name[i] == '\'') {
            name[i] = '_';
        }
    }
    return name;
}

INSTANTIATE_TEST_SUITE_P(Operations, CameraOutline, testing::ValuesIn(kOutlineOperations), NameOf);

/// The answer of an operation on good lists, which it must have filled or left alone.
ResultCode Call(const OutlineOperation& operation, CKivFisheyeCamera& camera,
                bool (PointList::*isAsExpected)() const) {
    PointList first(operation.pointsInGroup);
    PointList second(operation.pointsInGroup);
    const ResultCode result =
        operation.call(camera, first.Floats(), first.Count(), second.Floats(), second.Count());
    EXPECT_TRUE((first.*isAsExpected)()) << operation.name;
    EXPECT_TRUE(operation.lists == 2 ? (second.*isAsExpected)() : second.IsUntouched())
        << operation.name;
    EXPECT_FALSE(IsLocked(camera)) << operation.name;
    return result;
}

ResultCode CallUntouched(const OutlineOperation& operation, CKivFisheyeCamera& camera) {
    return Call(operation, camera, &PointList::IsUntouched);
}

ResultCode CallFilled(const OutlineOperation& operation, CKivFisheyeCamera& camera) {
    return Call(operation, camera, &PointList::IsFull);
}

TEST(CameraOutlineMount, AWallHasNoRing) {
    OutlineCamera wall(MountTypeWall);
    EXPECT_EQ(CallUntouched(kDualRoi, wall.camera), kResultNotReady);
    EXPECT_EQ(CallUntouched(kRingRoi, wall.camera), kResultNotReady);
    EXPECT_EQ(CallFilled(kWallRoi, wall.camera), kResultOk);
}

TEST(CameraOutlineMount, CeilingAndTableHaveNoWallPanorama) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        OutlineCamera ring(mount);
        EXPECT_EQ(CallUntouched(kWallRoi, ring.camera), kResultNotReady);
        EXPECT_EQ(CallFilled(kDualRoi, ring.camera), kResultOk);
        EXPECT_EQ(CallFilled(kRingRoi, ring.camera), kResultOk);
    }
}

TEST(CameraOutlineMount, BoundariesDoNotAskForIt) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable, kNoMount}) {
        OutlineCamera prepared(mount);
        for (const OutlineOperation& operation :
             {kOwnWallBoundary, kGivenWallBoundary, kOwnRingBoundary, kGivenRingBoundary}) {
            EXPECT_EQ(CallFilled(operation, prepared.camera), kResultOk) << mount;
        }
    }
}

TEST(CameraOutlineMount, ANumberWithoutAMeaningIsNoFailureButForTheWall) {
    OutlineCamera unknown(kNoMount);
    EXPECT_EQ(CallUntouched(kVCamRoi, unknown.camera), kResultOk);
    EXPECT_EQ(CallUntouched(kDualRoi, unknown.camera), kResultOk);
    EXPECT_EQ(CallUntouched(kRingRoi, unknown.camera), kResultOk);
    EXPECT_EQ(CallUntouched(kWallRoi, unknown.camera), kResultNotReady);
}

TEST(CameraOutlineMount, PanoramasNeedNeitherFramesNorTheirView) {
    CKivFisheyeCamera camera;
    EXPECT_EQ(CallFilled(kWallRoi, camera), kResultOk);
    camera.SetMountType(MountTypeTable);
    EXPECT_EQ(CallFilled(kRingRoi, camera), kResultOk);
    EXPECT_EQ(CallFilled(kDualRoi, camera), kResultOk);
}

TEST(CameraOutlineOutput, AVirtualCameraWithoutOneIsNotReady) {
    CKivFisheyeCamera camera;
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable, kNoMount}) {
        camera.SetMountType(mount);
        EXPECT_EQ(CallUntouched(kVCamRoi, camera), kResultNotReady);
    }
}

TEST(CameraOutlineOutput, NeitherSideMayBe0) {
    OutlineCamera prepared(MountTypeWall);
    prepared.camera.m_outputInfo.width = 0;
    EXPECT_EQ(CallUntouched(kVCamRoi, prepared.camera), kResultNotReady);
    prepared.camera.m_outputInfo.width = 64;
    prepared.camera.m_outputInfo.height = 0;
    EXPECT_EQ(CallUntouched(kVCamRoi, prepared.camera), kResultNotReady);
    prepared.camera.m_outputInfo.height = 1;
    EXPECT_EQ(CallFilled(kVCamRoi, prepared.camera), kResultOk);
}

TEST(CameraOutlineOutput, AnyViewHasTheOutlineOfTheVirtualCamera) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        OutlineCamera vcam(mount);
        ASSERT_EQ(vcam.camera.SetAbsolutePTZ(20.0F, 10.0F, 3.0F), kResultOk);
        PointList expected(32);
        ASSERT_EQ(vcam.camera.GetVCamROI(expected.Floats(), expected.Count()), kResultOk);
        for (const ViewType view : {ViewTypeDualPanorama, ViewTypeFullPanorama}) {
            if (vcam.camera.SetViewType(view) == kResultOk) {
                PointList list(32);
                EXPECT_EQ(vcam.camera.GetVCamROI(list.Floats(), list.Count()), kResultOk);
                EXPECT_TRUE(list == expected) << mount << " in view " << view;
            } else {
                EXPECT_EQ(mount, MountTypeWall);
            }
        }
    }
}

}  // namespace
