#include "LibraryView.h"

#include <KivFisheyeLib.h>
#include <gtest/gtest.h>

LibraryContext ContextOf(const LibraryView& view) {
    LibraryContext context(CreateKivFisheyeCameraContext(), DeleteKivFisheyeCameraContext);
    IKivFisheyeCamera* const camera = GetCameraAPI(context.get());
    EXPECT_EQ(camera->SetMountAndViewType(view.mount, view.view), kResultOk);
    EXPECT_EQ(camera->SetDewarpParams(view.lens), kResultOk);
    EXPECT_EQ(camera->SetAbsolutePTZ(view.pan, view.tilt, view.zoom), kResultOk);
    return context;
}

void FlattenByLibrary(const LibraryView& view, const KivFisheyeLib::VideoFrameInfo& input,
                      KivFisheyeLib::PixelFormat format,
                      const KivFisheyeLib::VideoFrameInfo& output) {
    const LibraryContext context = ContextOf(view);
    IKivFisheyeCamera* const camera = GetCameraAPI(context.get());
    EXPECT_EQ(camera->SetInputVideoParams(input, format), kResultOk);
    EXPECT_EQ(camera->SetOutputVideoParams(output), kResultOk);
    EXPECT_EQ(camera->Process(0), kResultOk);
}
