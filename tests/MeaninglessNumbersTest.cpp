#include <gtest/gtest.h>

#include "KivFisheyeCamera.h"
#include "support/PanoramaCamera.h"

using namespace KivFisheyeLib;

namespace {

TEST(NumbersWithoutAMeaning, ConvertNothing) {
    PanoramaCamera<TablePanorama<PixelFormatRGB32>> panorama;
    IKivFisheyeCamera& camera = panorama.camera;
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

}  // namespace
