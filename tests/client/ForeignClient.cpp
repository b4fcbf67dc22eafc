#include "ForeignClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "ForeignInterfaces.h"

using foreign::Boundaries;
using foreign::Call;
using foreign::Camera;
using foreign::Outlines;

extern "C" {
void* CreateKivFisheyeCameraContext();
void DeleteKivFisheyeCameraContext(void* context);
void* GetCameraAPI(void* context);
void* GetROIAPI(void* context);
void* GetDewarpBoundaryAPI(void* context);
}

namespace {

template <class T>
T* At(float* places, int index) {
    return reinterpret_cast<T*>(places + index);
}

}  // namespace

std::vector<std::int64_t> CallCameraOperations(void* camera, float* places) {
    using foreign::Number;
    const foreign::Frame input{1, 2, 3, At<unsigned char>(places, 0)};
    const foreign::Frame output{4, 5, 6, At<unsigned char>(places, 1)};
    const foreign::Lens lens{0.25F, 0.5F, 0.75F, 1.0F};
    const foreign::Lens otherLens{1.25F, 1.5F, 1.75F, 2.0F};
    return {
        Call(camera, &Camera::TestFormat, 7U),
        Call(camera, &Camera::PutInput, input, 8U),
        Call(camera, &Camera::PutOutput, output),
        Call(camera, &Camera::PutMount, 9U),
        Call(camera, &Camera::TakeMount, At<Number>(places, 2)),
        Call(camera, &Camera::PutView, 10U),
        Call(camera, &Camera::TakeView, At<Number>(places, 3)),
        Call(camera, &Camera::PutMountAndView, 11U, 12U),
        Call(camera, &Camera::TakeMountAndView, At<Number>(places, 4), At<Number>(places, 5)),
        Call(camera, &Camera::TakeSize, At<unsigned int>(places, 6), At<unsigned int>(places, 7)),
        Call(camera, &Camera::TakeRatio, places + 8),
        Call(camera, &Camera::TakeRatioOf, 13U, 14U, 15U, 16U, lens, places + 9),
        Call(camera, &Camera::PutAngles, 17.5F, 18.5F, 19.5F),
        Call(camera, &Camera::AddAngles, 20.5F, 21.5F, 22.5F),
        Call(camera, &Camera::TakeAngles, places + 10, places + 11, places + 12),
        Call(camera, &Camera::PutLens, otherLens),
        Call(camera, &Camera::TakeLens, At<foreign::Lens>(places, 13)),
        Call(camera, &Camera::Convert, 0x1700000018ULL),
        Call(camera, &Camera::TakePicture, At<unsigned char*>(places, 14)),
        Call(camera, &Camera::ReleasePicture, At<unsigned char>(places, 15)),
        Call(camera, &Camera::Aim, 25.5F, 26.5F, places[16], places[17]),
        Call(camera, &Camera::AimAndZoom, 27.5F, 28.5F, 29.5F, places[18], places[19], places[20]),
    };
}

std::vector<std::int64_t> CallOutlineOperations(void* outlines, float* places) {
    return {
        Call(outlines, &Outlines::OfVirtualCamera, places, 30),
        Call(outlines, &Outlines::OfDual, places + 1, 31, places + 2, 32),
        Call(outlines, &Outlines::OfWall, places + 3, 33),
        Call(outlines, &Outlines::OfRing, places + 4, 34, places + 5, 35),
    };
}

std::vector<std::int64_t> CallBoundaryOperations(void* boundaries, float* places) {
    return {
        Call(boundaries, &Boundaries::OfWall, At<const foreign::Lens>(places, 0), places + 1, 36),
        Call(boundaries, &Boundaries::OfRing, At<const foreign::Lens>(places, 2), places + 3, 37,
             places + 4, 38),
    };
}

void DeleteCamera(void* camera) {
    foreign::Delete<Camera>(camera);
}

void DeleteOutlines(void* outlines) {
    foreign::Delete<Outlines>(outlines);
}

void DeleteBoundaries(void* boundaries) {
    foreign::Delete<Boundaries>(boundaries);
}

namespace {

constexpr std::int64_t kOk = 0;
constexpr std::int64_t kNoChange = 1;
constexpr std::int64_t kInvalidArgument = 2147483651;
constexpr std::int64_t kNullPointer = 2147483652;
constexpr foreign::Number kTable = 2;
constexpr foreign::Number kFullPanorama = 2;
constexpr foreign::Number kRgb32 = 3;

/// A context that this client drives.
class ForeignClient : public testing::Test {
protected:
    ~ForeignClient() override { DeleteKivFisheyeCameraContext(context); }

    void SetUpPanorama() {
        ASSERT_EQ(Call(camera, &Camera::PutMountAndView, kTable, kFullPanorama), kOk);
        ASSERT_EQ(Call(camera, &Camera::PutLens, foreign::Lens{0.5F, 0.5F, 45.0F, 0.5F}), kOk);
        ASSERT_EQ(Call(camera, &Camera::PutInput, foreign::Frame{16, 16, 64, input}, kRgb32), kOk);
    }

    void* context = CreateKivFisheyeCameraContext();
    void* camera = GetCameraAPI(context);
    unsigned char input[64 * 16] = {};
    unsigned char output[128 * 4] = {};
};

TEST_F(ForeignClient, SetsAndGetsMountAndView) {
    foreign::Number mount = 77;
    foreign::Number view = 77;
    EXPECT_EQ(Call(camera, &Camera::TakeMount, &mount), kOk);
    EXPECT_EQ(mount, 0U);
    EXPECT_EQ(Call(camera, &Camera::TakeView, &view), kOk);
    EXPECT_EQ(view, 0U);
    EXPECT_EQ(Call(camera, &Camera::PutMount, 1U), kOk);
    EXPECT_EQ(Call(camera, &Camera::PutMount, 1U), kNoChange);
    EXPECT_EQ(Call(camera, &Camera::PutView, 2U), kOk);
    EXPECT_EQ(Call(camera, &Camera::TakeMountAndView, &mount, &view), kOk);
    EXPECT_EQ(mount, 1U);
    EXPECT_EQ(view, 2U);
    EXPECT_EQ(Call(camera, &Camera::PutMountAndView, 0U, 1U), kInvalidArgument);
    EXPECT_EQ(Call(camera, &Camera::TakeMount, nullptr), kInvalidArgument);
}

TEST_F(ForeignClient, ConvertsAPanorama) {
    SetUpPanorama();
    EXPECT_EQ(Call(camera, &Camera::TestFormat, kRgb32), kOk);
    EXPECT_EQ(Call(camera, &Camera::TestFormat, 2U), kNoChange);
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(Call(camera, &Camera::TakeSize, &width, &height), kOk);
    EXPECT_EQ(width, 32U) << "four radii";
    EXPECT_EQ(height, 4U) << "the outer half of a radius";
    EXPECT_EQ(Call(camera, &Camera::Convert, 1ULL), kNullPointer);
    EXPECT_EQ(Call(camera, &Camera::PutOutput, foreign::Frame{32, 4, 124, output}),
              kInvalidArgument);
    EXPECT_EQ(Call(camera, &Camera::PutOutput, foreign::Frame{32, 4, 128, output}), kOk);
    std::fill_n(input, sizeof(input), static_cast<unsigned char>(0x42));
    EXPECT_EQ(Call(camera, &Camera::Convert, 2ULL), kOk);
    EXPECT_EQ(std::count(output, output + sizeof(output), 0x42),
              static_cast<std::ptrdiff_t>(sizeof(output)));
}

TEST_F(ForeignClient, AsksForRatios) {
    SetUpPanorama();
    float ratio = 0.0F;
    EXPECT_EQ(Call(camera, &Camera::TakeRatio, &ratio), kOk);
    EXPECT_EQ(ratio, 8.0F);
    EXPECT_EQ(Call(camera, &Camera::TakeRatioOf, 300U, 200U, 0U, 0U,
                   foreign::Lens{0.5F, 0.25F, 45.0F, 0.0F}, &ratio),
              kOk);
    EXPECT_EQ(ratio, 3.0F);
}

TEST_F(ForeignClient, TurnsAndChangesTheLens) {
    SetUpPanorama();
    float pan = 0.0F;
    float tilt = 77.0F;
    float zoom = 0.0F;
    EXPECT_EQ(Call(camera, &Camera::PutAngles, 350.0F, 10.0F, 2.0F), kOk);
    EXPECT_EQ(Call(camera, &Camera::AddAngles, 20.0F, 0.0F, 0.0F), kOk);
    EXPECT_EQ(Call(camera, &Camera::AddAngles, 0.0F, 0.0F, 0.0F), kNoChange);
    EXPECT_EQ(Call(camera, &Camera::TakeAngles, &pan, &tilt, &zoom), kOk);
    EXPECT_EQ(pan, 10.0F);
    EXPECT_EQ(tilt, 0.0F);
    EXPECT_EQ(zoom, 1.0F);
    EXPECT_EQ(Call(camera, &Camera::PutLens, foreign::Lens{0.25F, 0.5F, 30.0F, 0.75F}), kOk);
    foreign::Lens lens{};
    EXPECT_EQ(Call(camera, &Camera::TakeLens, &lens), kOk);
    EXPECT_EQ(lens.radiusX, 0.25F);
    EXPECT_EQ(lens.radiusY, 0.5F);
    EXPECT_EQ(lens.wallViewAngle, 30.0F);
    EXPECT_EQ(lens.innerRadiusRatio, 0.75F);
}

TEST_F(ForeignClient, AimsAtAPoint) {
    SetUpPanorama();
    float pan = 77.0F;
    float tilt = 77.0F;
    float zoom = 77.0F;
    // Halfway up from the centre: half a quarter turn from the table's axis, pan counted from the
    // bottom of the frame. A quarter turn is zoom 2.
    EXPECT_EQ(Call(camera, &Camera::Aim, 0.5F, 0.25F, pan, tilt), kOk);
    EXPECT_EQ(pan, 180.0F);
    EXPECT_EQ(tilt, -45.0F);
    EXPECT_EQ(Call(camera, &Camera::AimAndZoom, 1.0F, 0.5F, 1.57079637F, pan, tilt, zoom), kOk);
    EXPECT_EQ(pan, 90.0F);
    EXPECT_EQ(tilt, -90.0F);
    EXPECT_EQ(zoom, 2.0F);
}

TEST_F(ForeignClient, LooksAroundWithAVirtualCamera) {
    // A new context has one, on a wall.
    EXPECT_EQ(Call(camera, &Camera::PutInput, foreign::Frame{16, 16, 64, input}, kRgb32), kOk);
    EXPECT_EQ(Call(camera, &Camera::Convert, 1ULL), kNullPointer);
    EXPECT_EQ(Call(camera, &Camera::PutOutput, foreign::Frame{16, 8, 64, output}), kOk);
    EXPECT_EQ(Call(camera, &Camera::PutAngles, 10.0F, -60.0F, 3.0F), kOk);
    float pan = 77.0F;
    float tilt = 77.0F;
    float zoom = 77.0F;
    EXPECT_EQ(Call(camera, &Camera::TakeAngles, &pan, &tilt, &zoom), kOk);
    EXPECT_EQ(pan, 10.0F);
    EXPECT_EQ(tilt, -50.0F) << "the view's edge at the rim";
    EXPECT_EQ(zoom, 3.0F);
    std::fill_n(input, sizeof(input), static_cast<unsigned char>(0x42));
    EXPECT_EQ(Call(camera, &Camera::AddAngles, 0.0F, 50.0F, 7.0F), kOk);
    EXPECT_EQ(Call(camera, &Camera::Convert, 2ULL), kOk);
    EXPECT_EQ(std::count(output, output + 64 * 8, 0x42), 64 * 8) << "10 degrees off the axis";
}

TEST_F(ForeignClient, TakesAStillPicture) {
    SetUpPanorama();
    unsigned char* block = nullptr;
    ASSERT_EQ(Call(camera, &Camera::TakePicture, &block), kOk);
    ASSERT_NE(block, nullptr);
    std::int64_t size[2];  // of the picture, from the top
    std::memcpy(size, block + 8, sizeof(size));
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(Call(camera, &Camera::TakeSize, &width, &height), kOk);
    EXPECT_EQ(size[0], width);
    EXPECT_EQ(size[1], -std::int64_t{height});
    EXPECT_EQ(Call(camera, &Camera::ReleasePicture, block), kOk);
    EXPECT_EQ(Call(camera, &Camera::ReleasePicture, nullptr), kNoChange);
}

TEST_F(ForeignClient, TracesTheRing) {
    SetUpPanorama();
    alignas(16) float inner[8] = {};
    alignas(16) float outer[8] = {};
    EXPECT_EQ(Call(GetROIAPI(context), &Outlines::OfRing, inner, 4, outer, 4), kOk);
    EXPECT_EQ(inner[0], 0.75F) << "half the radius is left out";
    EXPECT_EQ(outer[0], 1.0F);
    EXPECT_EQ(outer[1], 0.5F);
}

TEST_F(ForeignClient, IsRefusedCountsThatDoNotFit) {
    SetUpPanorama();
    alignas(16) float points[64] = {};
    EXPECT_EQ(CallOutlineOperations(GetROIAPI(context), points),
              std::vector<std::int64_t>(4, kInvalidArgument));
    EXPECT_EQ(CallBoundaryOperations(GetDewarpBoundaryAPI(context), points),
              std::vector<std::int64_t>(2, kInvalidArgument));
    EXPECT_EQ(std::count(points, points + 64, 0.0F), 64);
}

}  // namespace
