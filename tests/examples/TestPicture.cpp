#include "TestPicture.h"

#include <KivFisheyeLib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

using Context = std::unique_ptr<void, void (*)(void*)>;

Context ContextFor(Picture& input, const LibraryView& view) {
    Context context(CreateKivFisheyeCameraContext(), DeleteKivFisheyeCameraContext);
    IKivFisheyeCamera* const camera = GetCameraAPI(context.get());
    EXPECT_EQ(camera->SetInputVideoParams(
                  {input.width, input.height, input.width * 4, input.pixels.data()},
                  KivFisheyeLib::PixelFormatRGB32),
              kResultOk);
    EXPECT_EQ(camera->SetMountAndViewType(view.mount, view.view), kResultOk);
    EXPECT_EQ(camera->SetDewarpParams(view.lens), kResultOk);
    EXPECT_EQ(camera->SetAbsolutePTZ(view.pan, view.tilt, view.zoom), kResultOk);
    return context;
}

}  // namespace

Color ColorAt(const Picture& picture, std::uint32_t x, std::uint32_t y) {
    const unsigned char* const pixel = picture.At(x, y);
    return {pixel[0], pixel[1], pixel[2]};
}

Picture Slopes(std::uint32_t width, std::uint32_t height) {
    Picture picture(width, height);
    for (std::uint32_t y = 0; y < height; ++y) {
        for (std::uint32_t x = 0; x < width; ++x) {
            unsigned char* const pixel = picture.At(x, y);
            pixel[0] = static_cast<unsigned char>(x);
            pixel[1] = static_cast<unsigned char>(y);
            pixel[2] = 100;
            pixel[3] = 255;
        }
    }
    return picture;
}

void ExpectSamePixels(const Picture& shown, const Picture& expected) {
    ASSERT_EQ(shown.width, expected.width);
    ASSERT_EQ(shown.height, expected.height);
    const auto [at, other] =
        std::mismatch(shown.pixels.begin(), shown.pixels.end(), expected.pixels.begin());
    if (at != shown.pixels.end()) {
        const auto pixel = (at - shown.pixels.begin()) / 4;
        ADD_FAILURE() << "a byte of pixel " << pixel % shown.width << ", " << pixel / shown.width
                      << " is " << int{*at} << " and should be " << int{*other};
    }
}

Picture FlattenedByLibrary(Picture input, const LibraryView& view, std::uint32_t width,
                           std::uint32_t height) {
    const Context context = ContextFor(input, view);
    IKivFisheyeCamera* const camera = GetCameraAPI(context.get());
    Picture output(width, height);
    EXPECT_EQ(camera->SetOutputVideoParams({width, height, width * 4, output.pixels.data()}),
              kResultOk);
    EXPECT_EQ(camera->Process(0), kResultOk);
    return output;
}

Picture FlattenedByLibrary(Picture input, const LibraryView& view) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    const Context context = ContextFor(input, view);
    EXPECT_EQ(GetCameraAPI(context.get())->GetRecommendOutputVideoSize(&width, &height), kResultOk);
    return FlattenedByLibrary(std::move(input), view, width, height + height % 2);
}
