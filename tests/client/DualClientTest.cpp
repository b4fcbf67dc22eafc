#include <DownwardFisheyeAlgo.h>
#include <KivFisheyeLib.h>
#include <UpwardFisheyeAlgo.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>
#include <vector>

#include "TwoHalves.h"

using namespace KivFisheyeLib;

namespace {

TEST(Client, ConvertsIntoTwoHalves) {
    void* const context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* const camera = GetCameraAPI(context);
    std::vector<unsigned char> source = TwoHalves(16, 16, 4);
    ASSERT_EQ(camera->SetMountAndViewType(MountTypeCeiling, ViewTypeDualPanorama), kResultOk);
    ASSERT_EQ(camera->SetInputVideoParams({16, 16, 16 * 4, source.data()}, PixelFormatRGB32),
              kResultOk);
    VideoFrameInfo output{};
    ASSERT_EQ(camera->GetRecommendOutputVideoSize(&output.width, &output.height), kResultOk);
    EXPECT_EQ(output.width, 16U);
    EXPECT_EQ(output.height, 16U);
    float ratio = 0.0F;
    ASSERT_EQ(camera->GetRecommendOutputVideoRatio(&ratio), kResultOk);
    EXPECT_EQ(ratio, 1.0F);
    std::vector<unsigned char> picture(std::size_t{16 * 16 * 4}, 0x77);
    output.stride = 16 * 4;
    output.buffer = picture.data();
    ASSERT_EQ(camera->SetOutputVideoParams(output), kResultOk);
    ASSERT_EQ(camera->Process(1), kResultOk);
    // The upper half runs from the left of the lens to its right, the lower one back.
    EXPECT_EQ(picture.front(), 0x10);
    EXPECT_EQ(picture[std::size_t{15 * 4}], 0xF0);
    EXPECT_EQ(picture[std::size_t{8 * 16 * 4}], 0xF0);
    EXPECT_EQ(picture[std::size_t{(8 * 16 + 15) * 4}], 0x10);
    DeleteKivFisheyeCameraContext(context);
}

// Eight columns of each half look at 0, 26, 51, 77, 103, 129, 154 and 180 degrees, the lower half's
// at the directions opposite. A ceiling's run the other way.
const std::vector<unsigned char> kRightToLeft = {0xF0, 0xF0, 0xF0, 0xF0, 0x10, 0x10, 0x10, 0x10};
const std::vector<unsigned char> kLeftToRight = {0x10, 0x10, 0x10, 0x10, 0xF0, 0xF0, 0xF0, 0xF0};

template <class Converter>
class DualConverterClient : public testing::Test {
protected:
    /// The rows' colours by a picture of 32 bits.
    template <class... Pan>
    static std::vector<std::vector<unsigned char>> RowsOf(Pan... pan) {
        const std::vector<unsigned char> source = TwoHalves(16, 16, 4);
        std::vector<unsigned char> picture(std::size_t{2 * 8 * 4}, 0x77);
        Converter converter;
        converter.Init(16, 16, 16 * 4, 8, 2, 8 * 4, 32, 0.25F, 0.25F, 1.0F);
        converter.CvtRGB32(pan..., source.data(), picture.data());
        return {Colours(picture.data(), 8, 4), Colours(&picture[std::size_t{8 * 4}], 8, 4)};
    }
};

using DualConverters = testing::Types<UpwardFisheyeAlgoNS::CDualPanoramaSimpleConverter,
                                      UpwardFisheyeAlgoNS::CDualPanoramaConverter,
                                      DownwardFisheyeAlgoNS::CDualPanoramaSimpleConverter,
                                      DownwardFisheyeAlgoNS::CDualPanoramaConverter>;
TYPED_TEST_SUITE(DualConverterClient, DualConverters);

TYPED_TEST(DualConverterClient, ConvertsFramesOfItsOwn) {
    constexpr bool kIsTable =
        std::is_same<TypeParam, UpwardFisheyeAlgoNS::CDualPanoramaSimpleConverter>::value ||
        std::is_same<TypeParam, UpwardFisheyeAlgoNS::CDualPanoramaConverter>::value;
    const std::vector<std::vector<unsigned char>> table = {kRightToLeft, kLeftToRight};
    const std::vector<std::vector<unsigned char>> ceiling = {kLeftToRight, kRightToLeft};
    EXPECT_EQ(this->RowsOf(0.0F), kIsTable ? table : ceiling);
    EXPECT_EQ(this->RowsOf(180.5F), kIsTable ? ceiling : table) << "the halves exchange";
    EXPECT_FALSE(std::is_copy_constructible<TypeParam>::value);
    EXPECT_FALSE(std::is_copy_assignable<TypeParam>::value);
}

TEST(DualTableConverterClient, ConvertsWithoutAPan) {
    const std::vector<unsigned char> source = TwoHalves(16, 16, 3);
    std::vector<unsigned char> picture(std::size_t{2 * 8 * 3}, 0x77);
    UpwardFisheyeAlgoNS::CDualPanoramaConverter table;
    table.Init(16, 16, 16 * 3, 8, 2, 8 * 3, 24, 0.25F, 0.25F, 1.0F);
    table.CvtRGB24(source.data(), picture.data());
    EXPECT_EQ(Colours(picture.data(), 8, 3), kRightToLeft);
    DownwardFisheyeAlgoNS::CDualPanoramaConverter ceiling;
    ceiling.Init(16, 16, 16 * 3, 8, 2, 8 * 3, 24, 0.25F, 0.25F, 1.0F);
    ceiling.CvtRGB24(source.data(), picture.data());
    EXPECT_EQ(Colours(picture.data(), 8, 3), kLeftToRight);
}

TEST(BestFitClient, FitsDualSizesAndRatios) {
    int width = 0;
    int height = 0;
    UpwardFisheyeAlgoNS::GetBestFitDualPanoramaSize(1000, 800, 0.5F, 0.5F, 0.25F, width, height);
    EXPECT_EQ(width, 1000);
    EXPECT_EQ(height, 750);
    DownwardFisheyeAlgoNS::GetBestFitDualPanoramaSize(1000, 800, 0.25F, 0.5F, 0.25F, width, height);
    EXPECT_EQ(width, 800);
    EXPECT_EQ(height, 600);
    EXPECT_EQ(UpwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio(1000, 800, 0.5F, 0.5F, 0.75F), 4.0F);
    EXPECT_EQ(DownwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio(1000, 800, 0.5F, 0.5F, 0.5F),
              2.0F);
}

}  // namespace
