#include "TestPicture.h"

#include <Camera.h>
#include <KivFisheyeLib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

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

LibraryView SquareView(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view, float pan,
                       float tilt, float zoom) {
    return {mount, view, pan, tilt, zoom, kSquareLens};
}

Picture FlattenedByLibrary(Picture input, const LibraryView& view, std::uint32_t width,
                           std::uint32_t height) {
    Picture output(width, height);
    FlattenByLibrary(view, FrameOf(input), KivFisheyeLib::PixelFormatRGB32, FrameOf(output));
    return output;
}

Picture FlattenedByLibrary(Picture input, const LibraryView& view) {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    const LibraryContext context = ContextOf(view);
    IKivFisheyeCamera* const camera = GetCameraAPI(context.get());
    EXPECT_EQ(camera->SetInputVideoParams(FrameOf(input), KivFisheyeLib::PixelFormatRGB32),
              kResultOk);
    EXPECT_EQ(camera->GetRecommendOutputVideoSize(&width, &height), kResultOk);
    return FlattenedByLibrary(std::move(input), view, width, height + height % 2);
}
