#include <gtest/gtest.h>

#include "FisheyeVCamAlgo.h"
#include "PanoramaOutlines.h"
#include "support/OutlineGeometry.h"
#include "support/OutlineOperations.h"
#include "support/PointList.h"
#include "support/VCamSettings.h"
#include "vcam/VCamMounts.h"
#include "vcam/VCamOutline.h"

using namespace KivFisheyeLib;

namespace {

/// Fills the list with what the kernel makes of these settings.
void FillByKernel(MountType mount, const VCamSettings& settings, PointList& list) {
    float matrix[16];
    if (mount == MountTypeWall) {
        FrontwardFisheyeAlgoNS::GetModelViewMatrix(settings.pan, settings.tilt, matrix);
    } else {
        DownwardFisheyeAlgoNS::GetModelViewMatrix(
            mount == MountTypeCeiling ? 360.0F - settings.pan : settings.pan, settings.tilt,
            matrix);
    }
    FisheyeVCamAlgoNS::CalculateVCamROICoordinate(
        kOutlineLens.radiusX, kOutlineLens.radiusY, settings.eyeZ, settings.fieldOfView,
        64.0F / 40.0F, settings.nearPlane, matrix, false, list.Floats(), list.Count(),
        CoordinateOrientationWindows);
}

TEST(CameraOutlineBits, AVirtualCamerasAreTheKernelsOfItsSettings) {
    constexpr SettingsFunction kSettings[] = {WallSettings, CeilingSettings, TableSettings};
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        OutlineCamera prepared(mount);
        for (const Aim& aim : AimsOf(mount)) {
            ASSERT_EQ(prepared.camera.SetAbsolutePTZ(aim.pan, aim.tilt, aim.zoom), kResultOk);
            PointList list(32);
            ASSERT_EQ(prepared.camera.GetVCamROI(list.Floats(), list.Count()), kResultOk);
            const VCamSettings settings = kSettings[mount](aim.pan, aim.tilt, aim.zoom, false);
            PointList expected(32);
            FillByKernel(mount, settings, expected);
            EXPECT_TRUE(list == expected)
                << "mount " << mount << ", pan " << aim.pan << ", zoom " << aim.zoom;
        }
    }
}

TEST(CameraOutlineBits, ADualPanoramasAreTheKernelsOfItsPanOrOf360LessIt) {
    for (const float pan : {0.0F, 77.0F, 180.0F, 359.5F}) {
        for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
            OutlineCamera prepared(mount, ViewTypeDualPanorama);
            ASSERT_EQ(prepared.camera.SetAbsolutePTZ(pan, 0.0F, 1.0F), kResultOk);
            PointList lists[2]{PointList(16), PointList(8)};
            ASSERT_EQ(
                prepared.camera.GetDualPanoramaROI(lists[0].Floats(), 16, lists[1].Floats(), 8),
                kResultOk);
            PointList expected[2]{PointList(16), PointList(8)};
            DownwardFisheyeAlgoNS::CalculateDualPanoramaROICoordinate(
                kOutlineLens.radiusX, kOutlineLens.radiusY, kOutlineLens.innerRadiusRatio, false,
                mount == MountTypeCeiling ? 360.0F - pan : pan, expected[0].Floats(), 16,
                expected[1].Floats(), 8, CoordinateOrientationWindows);
            EXPECT_TRUE(lists[0] == expected[0]) << mount << " at pan " << pan;
            EXPECT_TRUE(lists[1] == expected[1]) << mount << " at pan " << pan;
        }
    }
}

TEST(CameraOutlineBits, AContextsInterfacesGiveItsOutlines) {
    void* const context = CreateKivFisheyeCameraContext();
    GetCameraAPI(context)->SetDewarpParams(kOutlineLens);
    CKivFisheyeCamera camera;
    camera.SetDewarpParams(kOutlineLens);
    PointList expected(16);
    ASSERT_EQ(camera.GetWallPanoramaROI(expected.Floats(), 16), kResultOk);
    PointList view(16);
    EXPECT_EQ(GetROIAPI(context)->GetWallPanoramaROI(view.Floats(), 16), kResultOk);
    EXPECT_TRUE(view == expected);
    PointList boundary(16);
    EXPECT_EQ(GetDewarpBoundaryAPI(context)->CalculateWallPanoramaBoundary(nullptr,
                                                                           boundary.Floats(), 16),
              kResultOk);
    EXPECT_TRUE(boundary == expected);
    DeleteKivFisheyeCameraContext(context);
}

}  // namespace
