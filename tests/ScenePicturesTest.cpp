#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/CoordinateFrame.h"
#include "support/FailingAllocations.h"
#include "support/PanoramaCamera.h"

using namespace KivFisheyeLib;

namespace {

template <class Panorama>
class ScenePicture : public testing::Test, public PanoramaCamera<Panorama> {};

TYPED_TEST_SUITE(ScenePicture, Panoramas);

TYPED_TEST(ScenePicture, IsWhatTheConverterOfItsMountShows) {
    EXPECT_TRUE(this->Shows(this->Expected().bytes));
}

TYPED_TEST(ScenePicture, AppearsAtOnceWhenTheMountChanges) {
    ASSERT_EQ(this->camera.SetMountType(TypeParam::kOtherMountType), kResultOk);
    this->output.Fill(this->kUntouched);
    ASSERT_EQ(this->camera.SetMountType(TypeParam::kMountType), kResultOk);
    EXPECT_EQ(this->output.bytes, this->Expected().bytes);
}

TYPED_TEST(ScenePicture, AppearsAtOnceWhenTheViewChanges) {
    ASSERT_EQ(this->camera.SetViewType(static_cast<ViewType>(3)), kResultOk);
    EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched)) << "nothing serves that view";
    ASSERT_EQ(this->camera.SetViewType(TypeParam::kView), kResultOk);
    EXPECT_EQ(this->output.bytes, this->Expected().bytes);
    for (const ViewType other : {ViewTypeVCam, ViewTypeDualPanorama, ViewTypeFullPanorama}) {
        if (other != TypeParam::kView) {
            ASSERT_EQ(this->camera.SetViewType(other), kResultOk);
            EXPECT_NE(this->output.bytes, this->Expected().bytes) << other;
            this->output.Fill(this->kUntouched);
            ASSERT_EQ(this->camera.SetViewType(TypeParam::kView), kResultOk);
            EXPECT_EQ(this->output.bytes, this->Expected().bytes) << other;
        }
    }
}

TYPED_TEST(ScenePicture, AppearsAtOnceWhenMountAndViewAreSetAgain) {
    ASSERT_EQ(this->camera.SetMountAndViewType(TypeParam::kMountType, TypeParam::kView), kResultOk);
    EXPECT_EQ(this->output.bytes, this->Expected().bytes);
}

TYPED_TEST(ScenePicture, WaitsForProcessAfterEveryOtherSetter) {
    CKivFisheyeCamera& panorama = this->camera;
    EXPECT_EQ(panorama.SetInputVideoParams(this->input.record, TypeParam::kFormat), kResultOk);
    EXPECT_EQ(panorama.SetOutputVideoParams(this->output.record), kResultOk);
    EXPECT_EQ(panorama.SetDewarpParams({0.25F, 0.25F, 45.0F, 0.0F}), kResultOk);
    EXPECT_EQ(panorama.SetAbsolutePTZ(90.0F, 0.0F, 0.0F), kResultOk);
    EXPECT_EQ(panorama.SetRelativePTZ(90.0F, 0.0F, 0.0F), kResultOk);
    EXPECT_EQ(panorama.SetMountType(TypeParam::kMountType), kResultNoChange);
    EXPECT_EQ(panorama.SetViewType(TypeParam::kView), kResultNoChange);
    EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched));
}

TYPED_TEST(ScenePicture, ReadsTheInputAnewForEveryFrame) {
    ASSERT_EQ(this->camera.Process(0), kResultOk);
    this->input.Fill(0x11);
    EXPECT_TRUE(this->Shows(this->Expected().bytes));
    EXPECT_EQ(this->output.bytes.front(), 0x11);
}

TYPED_TEST(ScenePicture, APanOfNanWritesNothing) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    ASSERT_EQ(this->camera.SetAbsolutePTZ(nan, 0.0F, 0.0F), kResultOk);
    EXPECT_EQ(this->camera.Process(0), kResultOk);
    EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched));
}

TYPED_TEST(ScenePicture, ANewLensShowsWithTheNextFrame) {
    const DewarpParams lenses[] = {{0.25F, 0.375F, 30.0F, 0.25F},
                                   {0.25F, 0.5F, 30.0F, 0.25F},
                                   {0.25F, 0.5F, 30.0F, 0.75F},
                                   {1.0F, 0.75F, 30.0F, 0.0F}};
    for (const DewarpParams& lens : lenses) {
        ASSERT_EQ(this->camera.SetDewarpParams(lens), kResultOk);
        EXPECT_TRUE(this->Shows(ExpectedPicture<TypeParam>(this->input, this->output, lens).bytes));
    }
}

TYPED_TEST(ScenePicture, TheWallsViewAngleDoesNotShow) {
    DewarpParams lens = kUnevenLens;
    lens.wallViewAngle = 80.0F;
    ASSERT_EQ(this->camera.SetDewarpParams(lens), kResultOk);
    EXPECT_TRUE(this->Shows(this->Expected().bytes));
}

TYPED_TEST(ScenePicture, FollowsFramesOfOtherSizes) {
    const ClientFrame tall = ClientFrame::OfCoordinates(30, 85, TypeParam::kFormat);
    ASSERT_EQ(this->camera.SetInputVideoParams(tall.record, TypeParam::kFormat), kResultOk);
    EXPECT_TRUE(this->Shows(ExpectedPicture<TypeParam>(tall, this->output, kUnevenLens).bytes));

    ClientFrame narrow(24, 21, TypeParam::kFormat, this->kUntouched);
    ASSERT_EQ(this->camera.SetOutputVideoParams(narrow.record), kResultOk);
    ASSERT_EQ(this->camera.Process(0), kResultOk);
    EXPECT_EQ(narrow.bytes, ExpectedPicture<TypeParam>(tall, narrow, kUnevenLens).bytes);
}

TYPED_TEST(ScenePicture, GoesToTheTargetThatTheSceneWasMadeFor) {
    ClientFrame frame(16, 5, TypeParam::kFormat, this->kUntouched);
    const auto scene = SceneNS::CreateScene(&this->camera, &frame.record);
    ASSERT_EQ(scene->Process(0), kResultOk);
    EXPECT_EQ(frame.bytes, ExpectedPicture<TypeParam>(this->input, frame, kUnevenLens).bytes);
    EXPECT_TRUE(this->output.IsFilledWith(this->kUntouched));
}

TYPED_TEST(ScenePicture, SetInAnyOrderIsTheSame) {
    CKivFisheyeCamera viewFirst;
    ASSERT_EQ(viewFirst.SetMountAndViewType(TypeParam::kMountType, TypeParam::kView), kResultOk);
    if (TypeParam::kFormat == PixelFormatRGB32) {
        ASSERT_EQ(viewFirst.SetOutputVideoParams(this->output.record), kResultOk);
        ASSERT_EQ(viewFirst.SetInputVideoParams(this->input.record, TypeParam::kFormat), kResultOk);
    } else {
        ASSERT_EQ(viewFirst.SetInputVideoParams(this->input.record, TypeParam::kFormat), kResultOk);
        ASSERT_EQ(viewFirst.SetOutputVideoParams(this->output.record), kResultOk);
    }
    ASSERT_EQ(viewFirst.SetDewarpParams(kUnevenLens), kResultOk);
    ASSERT_EQ(viewFirst.Process(0), kResultOk);
    EXPECT_EQ(this->output.bytes, this->Expected().bytes);
}

template <class Panorama>
class FullScenePicture : public testing::Test, public PanoramaCamera<Panorama> {};

TYPED_TEST_SUITE(FullScenePicture, FullPanoramas);

TYPED_TEST(FullScenePicture, EveryPixelShowsItsPointOfTheLens) {
    ASSERT_EQ(this->camera.Process(0), kResultOk);
    Ring ring = PackedRing(61, 47, 64, 9, this->kBytesPerPixel);
    ring.radiusX = kUnevenLens.radiusX;
    ring.radiusY = kUnevenLens.radiusY;
    ring.innerRadiusRatio = kUnevenLens.innerRadiusRatio;
    const ExactRing exact = ExactRing::Table(TypeParam::kMount, ring);
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 64; ++x) {
            const std::ptrdiff_t offset = (std::ptrdiff_t{y} * 64 + x) * this->kBytesPerPixel;
            const std::optional<PixelPlace> place =
                PlaceIn(this->output.bytes.data() + offset, this->kBytesPerPixel);
            ASSERT_TRUE(place.has_value()) << x << ", " << y;
            const ExactPoint point = exact.PointAt(x, y);
            ASSERT_LE(std::abs(place->column - point.column), 1.0 + exact.ErrorOfColumn());
            ASSERT_LE(std::abs(place->row - point.row), 1.0 + exact.ErrorOfRow());
        }
    }
}

TYPED_TEST(FullScenePicture, PanMovesItToTheLeftOnBothMounts) {
    const ClientFrame unturned = this->Expected();
    const struct {
        float pan;
        int columns;
    } cases[] = {{0.0F, 0}, {45.0F, 8}, {90.0F, 16}, {270.0F, 48}, {-90.0F, 48}, {5.7F, 1}};
    for (const auto& turn : cases) {
        ASSERT_EQ(this->camera.SetAbsolutePTZ(turn.pan, 0.0F, 0.0F), kResultOk);
        EXPECT_TRUE(this->Shows(TurnedLeft(unturned, this->kBytesPerPixel, turn.columns)))
            << turn.pan;
    }
}

TYPED_TEST(FullScenePicture, ThePanThatTheCameraHasIsTakenOver) {
    const ClientFrame unturned = this->Expected();
    this->camera.SetViewType(ViewTypeVCam);
    this->camera.m_pan = 45.0F;
    ASSERT_EQ(this->camera.SetViewType(ViewTypeFullPanorama), kResultOk);
    EXPECT_EQ(this->output.bytes, TurnedLeft(unturned, this->kBytesPerPixel, 8));
}

TYPED_TEST(FullScenePicture, APanBeyondItsRangeIsTakenAsItStandsUntilTheNextCall) {
    const ClientFrame unturned = this->Expected();
    this->camera.m_pan = -90.0F;
    EXPECT_TRUE(this->Shows(unturned.bytes)) << "a negative pan does not turn";
    this->camera.m_pan = 450.0F;
    EXPECT_TRUE(this->Shows(TurnedLeft(unturned, this->kBytesPerPixel, 16)));
}

TYPED_TEST(FullScenePicture, ATinyNegativePanShowsItUnturned) {
    ASSERT_EQ(this->camera.SetAbsolutePTZ(-1e-30F, 0.0F, 0.0F), kResultOk);
    EXPECT_TRUE(this->Shows(this->Expected().bytes));
}

TEST(SceneOfAnUnknownFormat, CopiesPixelsOf32Bits) {
    PanoramaCamera<TablePanorama<PixelFormatRGB32>> panorama;
    panorama.camera.m_pixelFormat = static_cast<PixelFormat>(9);
    panorama.camera.m_scene->OnVideoParamsChanged();
    EXPECT_TRUE(panorama.Shows(panorama.Expected().bytes));
}

template <class Panorama>
class TableBuilding : public testing::Test, public PanoramaCamera<Panorama> {
protected:
    /// Whether the call takes memory, as a new table does.
    template <class Call>
    static bool TakesMemory(Call call) {
        const AllocationWatch watch;
        call();
        return watch.Requests() != 0;
    }
};

TYPED_TEST_SUITE(TableBuilding, Panoramas);

TYPED_TEST(TableBuilding, HappensWithEveryFrameRecord) {
    for (int call = 0; call < 2; ++call) {
        EXPECT_TRUE(this->TakesMemory(
            [&] { this->camera.SetInputVideoParams(this->input.record, TypeParam::kFormat); }));
        EXPECT_TRUE(
            this->TakesMemory([&] { this->camera.SetOutputVideoParams(this->output.record); }));
    }
}

TYPED_TEST(TableBuilding, HappensWithANewLensAlone) {
    DewarpParams lens = kUnevenLens;
    EXPECT_FALSE(this->TakesMemory([&] { this->camera.SetDewarpParams(lens); }));
    lens.radiusX = 0.25F;
    EXPECT_TRUE(this->TakesMemory([&] { this->camera.SetDewarpParams(lens); }));
    lens.wallViewAngle = 80.0F;
    EXPECT_TRUE(this->TakesMemory([&] { this->camera.SetDewarpParams(lens); }));
    EXPECT_FALSE(this->TakesMemory([&] { this->camera.SetDewarpParams(lens); }));
}

TYPED_TEST(TableBuilding, HappensNeitherPerFrameNorForAngles) {
    EXPECT_FALSE(this->TakesMemory([&] {
        this->camera.Process(0);
        this->camera.SetAbsolutePTZ(50.0F, 0.0F, 0.0F);
        this->camera.SetRelativePTZ(50.0F, 0.0F, 0.0F);
        this->camera.Process(0);
    }));
}

TYPED_TEST(TableBuilding, DoesNotHappenForRefusedRecords) {
    EXPECT_FALSE(this->TakesMemory([&] {
        VideoFrameInfo record = this->input.record;
        record.buffer = nullptr;
        this->camera.SetInputVideoParams(record, TypeParam::kFormat);
        this->camera.SetOutputVideoParams(record);
    }));
}

}  // namespace
