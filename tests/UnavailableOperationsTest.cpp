#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "KivFisheyeCamera.h"
#include "support/PanoramaCamera.h"

using namespace KivFisheyeLib;

namespace {

constexpr float kUntouched = 77.0F;

/// Buffers that every operation would accept: 16 points each, at multiples of 16 bytes.
class UnavailableOperations : public testing::Test {
protected:
    UnavailableOperations() {
        first.fill(kUntouched);
        second.fill(kUntouched);
    }

    bool IsUntouched() const {
        const auto isUntouched = [](float value) { return value == kUntouched; };
        return std::all_of(first.begin(), first.end(), isUntouched) &&
               std::all_of(second.begin(), second.end(), isUntouched);
    }

    PanoramaCamera<TablePanorama<PixelFormatRGB32>> panorama;
    IKivFisheyeCamera& camera = panorama.camera;
    IKivFisheyeROI& roi = panorama.camera;
    IKivFisheyeDewarpBoundary& boundary = panorama.camera;
    alignas(16) std::array<float, 32> first;
    alignas(16) std::array<float, 32> second;
};

TEST_F(UnavailableOperations, SnapshotIsNotReadyAndWritesNothing) {
    unsigned char byte = 0;
    unsigned char* block = &byte;
    EXPECT_EQ(camera.Snapshot(&block), kResultNotReady);
    EXPECT_EQ(block, &byte);
    EXPECT_EQ(camera.FreeSnapshotMemory(&byte), kResultNotReady);
    EXPECT_EQ(camera.FreeSnapshotMemory(nullptr), kResultNotReady);
}

TEST_F(UnavailableOperations, OutlinesOfTheViewAreNotReadyAndWriteNothing) {
    for (const ViewType view : {ViewTypeFullPanorama, ViewTypeVCam, ViewTypeDualPanorama}) {
        camera.SetViewType(view);
        EXPECT_EQ(roi.GetVCamROI(first.data(), 16), kResultNotReady);
        EXPECT_EQ(roi.GetDualPanoramaROI(first.data(), 16, second.data(), 16), kResultNotReady);
        EXPECT_EQ(roi.GetWallPanoramaROI(first.data(), 16), kResultNotReady);
        EXPECT_EQ(roi.GetCeilingTablePanoramaROI(first.data(), 16, second.data(), 16),
                  kResultNotReady);
    }
    EXPECT_TRUE(IsUntouched());
}

TEST_F(UnavailableOperations, MountsAndViewsWithoutAMeaningConvertNothing) {
    panorama.output.Fill(0xCD);
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        ASSERT_EQ(camera.SetMountAndViewType(mount, static_cast<ViewType>(3)), kResultOk);
        EXPECT_EQ(camera.Process(0), kResultNotReady);
    }
    for (const ViewType view : {ViewTypeVCam, ViewTypeDualPanorama, ViewTypeFullPanorama}) {
        ASSERT_EQ(camera.SetMountAndViewType(static_cast<MountType>(3), view), kResultOk);
        EXPECT_EQ(camera.Process(0), kResultNotReady);
    }
    EXPECT_TRUE(panorama.output.IsFilledWith(0xCD));
}

TEST_F(UnavailableOperations, BoundariesAreNotReadyAndWriteNothing) {
    for (const DewarpParams* lens : {&kUnevenLens, static_cast<const DewarpParams*>(nullptr)}) {
        EXPECT_EQ(boundary.CalculateWallPanoramaBoundary(lens, first.data(), 16), kResultNotReady);
        EXPECT_EQ(boundary.CalculateCeilingTablePanoramaBoundary(lens, first.data(), 16,
                                                                 second.data(), 16),
                  kResultNotReady);
    }
    EXPECT_TRUE(IsUntouched());
}

}  // namespace
