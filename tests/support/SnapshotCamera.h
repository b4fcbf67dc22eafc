#ifndef KIVFISHEYE_TESTS_SNAPSHOT_CAMERA_H
#define KIVFISHEYE_TESTS_SNAPSHOT_CAMERA_H

#include <gtest/gtest.h>

#include "KivFisheyeCamera.h"
#include "support/ClientFrame.h"
#include "support/OutlineGeometry.h"

struct MountAndView {
    KivFisheyeLib::MountType mount;
    KivFisheyeLib::ViewType view;
};

constexpr MountAndView kEveryScene[] = {
    {KivFisheyeLib::MountTypeWall, KivFisheyeLib::ViewTypeVCam},
    {KivFisheyeLib::MountTypeWall, KivFisheyeLib::ViewTypeFullPanorama},
    {KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::ViewTypeVCam},
    {KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::ViewTypeDualPanorama},
    {KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::ViewTypeFullPanorama},
    {KivFisheyeLib::MountTypeTable, KivFisheyeLib::ViewTypeVCam},
    {KivFisheyeLib::MountTypeTable, KivFisheyeLib::ViewTypeDualPanorama},
    {KivFisheyeLib::MountTypeTable, KivFisheyeLib::ViewTypeFullPanorama}};

/// A camera with an input, a scene and an aim, and no output.
struct SnapshotCamera {
    SnapshotCamera(const MountAndView& scene, KivFisheyeLib::PixelFormat format, const Aim& aim,
                   std::uint32_t inputWidth = 161)
        : input(ClientFrame::OfCoordinates(inputWidth, 147, format)) {
        EXPECT_EQ(camera.SetDewarpParams({0.45F, 0.375F, 35.0F, 0.25F}), kResultOk);
        EXPECT_EQ(camera.SetInputVideoParams(input.record, format), kResultOk);
        EXPECT_EQ(camera.SetMountAndViewType(scene.mount, scene.view), kResultOk);
        EXPECT_EQ(camera.SetAbsolutePTZ(aim.pan, aim.tilt, aim.zoom), kResultOk);
    }

    ClientFrame input;
    CKivFisheyeCamera camera;
};

#endif
