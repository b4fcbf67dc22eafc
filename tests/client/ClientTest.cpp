#include <DownwardFisheyeAlgo.h>
#include <KivFisheye.h>
#include <KivFisheyeCommon.h>
#include <KivFisheyeLib.h>
#include <KivFisheyeVersion.h>
#include <UpwardFisheyeAlgo.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "TwoHalves.h"

using namespace KivFisheyeLib;

namespace {

TEST(Records, LieInMemoryAsClientsKnowThem) {
    EXPECT_EQ(offsetof(VideoFrameInfo, width), 0U);
    EXPECT_EQ(offsetof(VideoFrameInfo, height), 4U);
    EXPECT_EQ(offsetof(VideoFrameInfo, stride), 8U);
    EXPECT_EQ(offsetof(VideoFrameInfo, buffer), sizeof(void*) == 8 ? 16U : 12U);
    EXPECT_EQ(sizeof(DewarpParams), 16U);
    EXPECT_EQ(offsetof(DewarpParams, radiusY), 4U);
    EXPECT_EQ(offsetof(DewarpParams, wallViewAngle), 8U);
    EXPECT_EQ(offsetof(DewarpParams, innerRadiusRatio), 12U);
}

TEST(Context, IsItsOwnCameraInterface) {
    void* const context = CreateKivFisheyeCameraContext();
    ASSERT_NE(context, nullptr);
    EXPECT_EQ(static_cast<void*>(GetCameraAPI(context)), context);
    EXPECT_EQ(GetCameraAPI(context), GetCameraAPI(context));
    DeleteKivFisheyeCameraContext(context);
}

TEST(Context, HasThreeInterfacesOfOneObject) {
    void* const context = CreateKivFisheyeCameraContext();
    const auto* const camera = reinterpret_cast<const char*>(GetCameraAPI(context));
    const auto* const outlines = reinterpret_cast<const char*>(GetROIAPI(context));
    const auto* const boundaries = reinterpret_cast<const char*>(GetDewarpBoundaryAPI(context));
    EXPECT_LT(camera, outlines);
    EXPECT_LT(outlines, boundaries);
    EXPECT_EQ(dynamic_cast<IKivFisheyeCamera*>(GetROIAPI(context)), GetCameraAPI(context));
    EXPECT_EQ(dynamic_cast<IKivFisheyeCamera*>(GetDewarpBoundaryAPI(context)),
              GetCameraAPI(context));
    DeleteKivFisheyeCameraContext(context);
}

TEST(Context, NullGivesNullAndIsIgnored) {
    EXPECT_EQ(GetCameraAPI(nullptr), nullptr);
    EXPECT_EQ(GetROIAPI(nullptr), nullptr);
    EXPECT_EQ(GetDewarpBoundaryAPI(nullptr), nullptr);
    DeleteKivFisheyeCameraContext(nullptr);
}

TEST(Context, ContextsAreIndependent) {
    void* const first = CreateKivFisheyeCameraContext();
    void* const second = CreateKivFisheyeCameraContext();
    EXPECT_NE(first, second);
    EXPECT_EQ(GetCameraAPI(first)->SetMountType(MountTypeTable), kResultOk);
    auto mount = MountTypeCeiling;
    EXPECT_EQ(GetCameraAPI(second)->GetMountType(&mount), kResultOk);
    EXPECT_EQ(mount, MountTypeWall);
    DeleteKivFisheyeCameraContext(first);
    EXPECT_EQ(GetCameraAPI(second)->GetMountType(&mount), kResultOk);
    DeleteKivFisheyeCameraContext(second);
}

TEST(Context, TellsTheInstructionSet) {
    const int level = GetCPUInstructionSet();
    EXPECT_GE(level, 0);
    EXPECT_LE(level, 8);
    EXPECT_EQ(GetCPUInstructionSet(), level);
#if defined(__x86_64__)
    EXPECT_GE(level, 2) << "every 64-bit processor of this make has SSE2";
#endif
}

// Eight columns look at 0, 51, 103, 154, 206, 257, 309 and 360 degrees, counted from the right of
// the lens; those beyond 90 and before 270 degrees are in the left half.
const std::vector<unsigned char> kUnturned = {0xF0, 0xF0, 0x10, 0x10, 0x10, 0x10, 0xF0, 0xF0};
const std::vector<unsigned char> kTurnedBy90 = {0x10, 0x10, 0x10, 0x10, 0xF0, 0xF0, 0xF0, 0xF0};

TEST(Client, ConvertsFromStartToEnd) {
    for (const PixelFormat format : {PixelFormatRGB24, PixelFormatRGB32}) {
        const int bytesPerPixel = format == PixelFormatRGB24 ? 3 : 4;
        const auto bytes = static_cast<std::uint32_t>(bytesPerPixel);
        void* const context = CreateKivFisheyeCameraContext();
        IKivFisheyeCamera* const camera = GetCameraAPI(context);
        std::vector<unsigned char> source = TwoHalves(16, 16, bytesPerPixel);
        ASSERT_EQ(camera->SetMountType(MountTypeTable), kResultOk);
        ASSERT_EQ(camera->SetViewType(ViewTypeFullPanorama), kResultOk);
        ASSERT_EQ(camera->SetDewarpParams({0.25F, 0.25F, 45.0F, 0.5F}), kResultOk);
        ASSERT_EQ(camera->SetInputVideoParams({16, 16, 16 * bytes, source.data()}, format),
                  kResultOk);
        VideoFrameInfo output{};
        ASSERT_EQ(camera->GetRecommendOutputVideoSize(&output.width, &output.height), kResultOk);
        EXPECT_EQ(output.width, 16U);
        EXPECT_EQ(output.height, 2U);
        output.width = 8;
        output.stride = 8 * bytes;
        std::vector<unsigned char> picture(std::size_t{output.stride} * output.height, 0x77);
        output.buffer = picture.data();
        ASSERT_EQ(camera->SetOutputVideoParams(output), kResultOk);
        ASSERT_EQ(camera->Process(1), kResultOk);
        for (std::size_t y = 0; y < output.height; ++y) {
            EXPECT_EQ(Colours(&picture[y * output.stride], 8, bytesPerPixel), kUnturned);
        }
        ASSERT_EQ(camera->SetAbsolutePTZ(90.0F, 0.0F, 0.0F), kResultOk);
        ASSERT_EQ(camera->Process(2), kResultOk);
        EXPECT_EQ(Colours(picture.data(), 8, bytesPerPixel), kTurnedBy90);
        DeleteKivFisheyeCameraContext(context);
    }
}

template <class Converter>
class ConverterClient : public testing::Test {};

using Converters = testing::Types<
    UpwardFisheyeAlgoNS::CPanoramaSimpleConverter, UpwardFisheyeAlgoNS::CPanoramaConverter,
    DownwardFisheyeAlgoNS::CPanoramaSimpleConverter, DownwardFisheyeAlgoNS::CPanoramaConverter>;
TYPED_TEST_SUITE(ConverterClient, Converters);

TYPED_TEST(ConverterClient, ConvertsFramesOfItsOwn) {
    for (const int bytesPerPixel : {3, 4}) {
        const std::vector<unsigned char> source = TwoHalves(16, 16, bytesPerPixel);
        const int stride = 8 * bytesPerPixel;
        std::vector<unsigned char> picture(static_cast<std::size_t>(2 * stride), 0x77);
        TypeParam converter;
        converter.Init(16, 16, 16 * bytesPerPixel, 8, 2, stride, 8 * bytesPerPixel, 0.25F, 0.25F,
                       0.5F);
        if (bytesPerPixel == 3) {
            converter.CvtRGB24(0.0F, source.data(), picture.data());
        } else {
            converter.CvtRGB32(0.0F, source.data(), picture.data());
        }
        EXPECT_EQ(Colours(picture.data(), 8, bytesPerPixel), kUnturned);
        EXPECT_EQ(Colours(&picture[static_cast<std::size_t>(stride)], 8, bytesPerPixel), kUnturned);
    }
    EXPECT_FALSE(std::is_copy_constructible<TypeParam>::value);
    EXPECT_FALSE(std::is_copy_assignable<TypeParam>::value);
}

template <class Converter>
class TableConverterClient : public testing::Test {};

using TableConverters = testing::Types<UpwardFisheyeAlgoNS::CPanoramaConverter,
                                       DownwardFisheyeAlgoNS::CPanoramaConverter>;
TYPED_TEST_SUITE(TableConverterClient, TableConverters);

TYPED_TEST(TableConverterClient, ConvertsWithoutAPan) {
    for (const int bytesPerPixel : {3, 4}) {
        const std::vector<unsigned char> source = TwoHalves(16, 16, bytesPerPixel);
        std::vector<unsigned char> picture(static_cast<std::size_t>(8 * bytesPerPixel), 0x77);
        TypeParam converter;
        converter.Init(16, 16, 16 * bytesPerPixel, 8, 1, 8 * bytesPerPixel, 8 * bytesPerPixel,
                       0.25F, 0.25F, 0.5F);
        if (bytesPerPixel == 3) {
            converter.CvtRGB24(source.data(), picture.data());
        } else {
            converter.CvtRGB32(source.data(), picture.data());
        }
        EXPECT_EQ(Colours(picture.data(), 8, bytesPerPixel), kUnturned);
    }
}

TEST(BestFitClient, FitsSizesAndRatios) {
    int width = 0;
    int height = 0;
    UpwardFisheyeAlgoNS::GetBestFitPanoramaSize(1000, 800, 0.5F, 0.5F, 0.25F, width, height);
    EXPECT_EQ(width, 2000);
    EXPECT_EQ(height, 375);
    DownwardFisheyeAlgoNS::GetBestFitPanoramaSize(1000, 800, 0.25F, 0.5F, 0.25F, width, height);
    EXPECT_EQ(width, 1600);
    EXPECT_EQ(height, 300);
    EXPECT_EQ(UpwardFisheyeAlgoNS::GetBestFitPanoramaRatio(1000, 800, 0.5F, 0.5F, 0.75F), 16.0F);
    EXPECT_EQ(DownwardFisheyeAlgoNS::GetBestFitPanoramaRatio(1000, 800, 0.5F, 0.5F, 0.5F), 8.0F);
    EXPECT_EQ(GetRatioRectSize(4, 3, 100, 100), std::make_pair(100, 75));
}

TEST(HelloWorld, PrintsItsLine) {
    testing::internal::CaptureStdout();
    KivFisheye().HelloWorld("a line of 100% text\twith a tab");
    KivFisheye().HelloWorld("");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a line of 100% text\twith a tab\n\n");
}

TEST(Version, IsTheSameInNumbersAndInText) {
    const std::string numbers = std::to_string(KIVFISHEYE_VERSION_MAJOR) + "." +
                                std::to_string(KIVFISHEYE_VERSION_MINOR) + "." +
                                std::to_string(KIVFISHEYE_VERSION_PATCH);
    EXPECT_EQ(numbers, KIVFISHEYE_VERSION);
}

}  // namespace
