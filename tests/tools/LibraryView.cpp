#include "LibraryView.h"

#include <KivFisheyeLib.h>
#include <gtest/gtest.h>

using KivFisheyeTools::Picture;

Picture FlattenedByLibrary(Picture input, const LibraryView& view, std::uint32_t width,
                           std::uint32_t height) {
    Picture output(width, height, 3);
    void* context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* camera = GetCameraAPI(context);
    EXPECT_EQ(camera->SetMountAndViewType(view.mount, view.view), kResultOk);
    EXPECT_EQ(
        camera->SetInputVideoParams({input.width, input.height, input.stride, input.pixels.data()},
                                    KivFisheyeLib::PixelFormatRGB24),
        kResultOk);
    EXPECT_EQ(camera->SetOutputVideoParams({width, height, output.stride, output.pixels.data()}),
              kResultOk);
    EXPECT_EQ(camera->SetAbsolutePTZ(view.pan, view.tilt, view.zoom), kResultOk);
    EXPECT_EQ(camera->Process(0), kResultOk);
    DeleteKivFisheyeCameraContext(context);
    return output;
}
