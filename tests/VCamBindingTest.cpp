#include <gtest/gtest.h>

#include <cstdint>

#include "KivFisheyeCamera.h"
#include "instrset_detect.h"
#include "support/FailingAllocations.h"
#include "support/LockProbe.h"
#include "support/VCamCamera.h"

using namespace KivFisheyeLib;

namespace {

/// Eight lanes keep the samples of a row and the scalar form the rows' offsets; four lanes need no
/// memory.
int RequestsPerFrame() {
    const int level = GetCpuInstructionSet();
    return level >= 7 || level < 5 ? 1 : 0;
}

template <class V>
class VCamBinding : public testing::Test, public VCamCamera<V> {};

TYPED_TEST_SUITE(VCamBinding, VCams);

TYPED_TEST(VCamBinding, ConvertsNothingOnceABufferOrASideIsGone) {
    ClientFrame frame(16, 5, TypeParam::kFormat, this->kUntouched);
    VideoFrameInfo target = frame.record;
    const auto scene = SceneNS::CreateScene(&this->camera, &target);
    for (const VideoFrameInfo& broken :
         {VideoFrameInfo{16, 5, frame.record.stride, nullptr},
          VideoFrameInfo{0, 5, frame.record.stride, frame.record.buffer},
          VideoFrameInfo{16, 0, frame.record.stride, frame.record.buffer}}) {
        target = broken;
        EXPECT_EQ(scene->Process(0), kResultOk) << "a conversion is bound";
        EXPECT_TRUE(frame.IsFilledWith(this->kUntouched));
    }
    target = frame.record;
    this->camera.m_inputInfo.buffer = nullptr;
    EXPECT_EQ(scene->Process(0), kResultOk);
    EXPECT_TRUE(frame.IsFilledWith(this->kUntouched));
    this->camera.m_inputInfo = this->input.record;
    EXPECT_EQ(scene->Process(0), kResultOk);
    EXPECT_FALSE(frame.IsFilledWith(this->kUntouched)) << "whole again";
}

TYPED_TEST(VCamBinding, IsNotReadyUntilItIsToldOfWholeRecords) {
    ClientFrame frame(16, 5, TypeParam::kFormat, this->kUntouched);
    const VideoFrameInfo whole = this->input.record;
    const auto isReady = [this](const VideoFrameInfo& source, VideoFrameInfo target) {
        this->camera.m_inputInfo = source;
        return SceneNS::CreateScene(&this->camera, &target)->Process(0) == kResultOk;
    };
    EXPECT_TRUE(isReady(whole, frame.record));
    EXPECT_FALSE(isReady({0, whole.height, whole.stride, whole.buffer}, frame.record));
    EXPECT_FALSE(isReady({whole.width, 0, whole.stride, whole.buffer}, frame.record));
    EXPECT_FALSE(isReady({whole.width, whole.height, whole.stride, nullptr}, frame.record));
    EXPECT_FALSE(isReady(whole, {0, 5, frame.record.stride, frame.record.buffer}));
    EXPECT_FALSE(isReady(whole, {16, 0, frame.record.stride, frame.record.buffer}));
    EXPECT_FALSE(isReady(whole, {16, 5, frame.record.stride, nullptr}));

    this->camera.m_inputInfo = whole;
    VideoFrameInfo target{};
    const auto scene = SceneNS::CreateScene(&this->camera, &target);
    target = frame.record;
    EXPECT_EQ(scene->Process(0), kResultNotReady) << "not told yet";
    scene->OnVideoParamsChanged();
    EXPECT_EQ(scene->Process(0), kResultOk);
    target.buffer = nullptr;
    scene->OnVideoParamsChanged();
    EXPECT_EQ(scene->Process(0), kResultNotReady) << "no longer";
}

TYPED_TEST(VCamBinding, TakesTheConversionByTheFormatsBits) {
    const auto expected = this->Expected(kWholeLens);
    constexpr bool kIs24 = BytesPerPixelOf(TypeParam::kFormat) == 3;
    this->camera.m_pixelFormat = kIs24 ? PixelFormatBottomUpRGB24 : PixelFormatBottomUpRGB32;
    this->camera.m_scene->OnVideoParamsChanged();
    EXPECT_TRUE(this->Shows(expected));
    for (const std::uint32_t number : {4U, 9U, 0xFFFFFFFFU}) {
        this->camera.m_pixelFormat = static_cast<PixelFormat>(number);
        this->camera.m_scene->OnVideoParamsChanged();
        EXPECT_EQ(this->camera.Process(0), kResultNotReady) << number;
    }
}

TYPED_TEST(VCamBinding, AFailedAllocationLeavesTheContextUsable) {
    const auto expected = this->Expected(kWholeLens);
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        watch.FailRequest(number);
        const bool failed = ThrowsBadAlloc([this] { this->camera.Process(0); });
        watch.StopFailing();
        EXPECT_EQ(failed, watch.HasFailed());
        EXPECT_FALSE(IsLocked(this->camera));
        EXPECT_EQ(watch.BlocksTaken(), 0);
        failures += failed ? 1 : 0;
        EXPECT_TRUE(this->Shows(expected));
    });
    EXPECT_EQ(failures, RequestsPerFrame());
}

TYPED_TEST(VCamBinding, AFailedAllocationWhileTheMountChangesIsMadeUpForByTheNextSetter) {
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        VCamCamera<TypeParam> vcam;
        ASSERT_EQ(vcam.camera.SetMountType(TypeParam::kOtherMountType), kResultOk);
        watch.FailRequest(number);
        const bool failed =
            ThrowsBadAlloc([&] { vcam.camera.SetMountType(TypeParam::kMountType); });
        watch.StopFailing();
        EXPECT_EQ(failed, watch.HasFailed());
        EXPECT_FALSE(IsLocked(vcam.camera));
        EXPECT_EQ(vcam.camera.m_mountType, TypeParam::kMountType);
        EXPECT_EQ(vcam.camera.Process(0),
                  vcam.camera.m_scene == nullptr ? kResultNotReady : kResultOk);
        EXPECT_EQ(vcam.camera.SetOutputVideoParams(vcam.output.record), kResultOk);
        EXPECT_TRUE(vcam.Shows(vcam.Expected(kWholeLens)));
        failures += failed ? 1 : 0;
    });
    EXPECT_EQ(failures, RequestsPerFrame() + 1) << "the scene, and its first picture";
}

TEST(NewCamera, IsAVirtualCameraOnAWallThatWaitsForItsFrames) {
    using Wall = VCam<MountTypeWall, PixelFormatRGB32>;
    const ClientFrame input = ClientFrame::OfCoordinates(61, 47, PixelFormatRGB32);
    ClientFrame output(40, 22, PixelFormatRGB32, 0xCD);
    for (const bool isInputFirst : {true, false}) {
        CKivFisheyeCamera camera;
        ASSERT_NE(camera.m_scene, nullptr);
        EXPECT_EQ(camera.Process(0), kResultNullPointer);
        EXPECT_EQ(camera.m_scene->Process(0), kResultNotReady);
        if (isInputFirst) {
            ASSERT_EQ(camera.SetInputVideoParams(input.record, PixelFormatRGB32), kResultOk);
        } else {
            ASSERT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
        }
        EXPECT_EQ(camera.Process(0), kResultNullPointer);
        EXPECT_EQ(camera.m_scene->Process(0), kResultNotReady) << "one frame is missing";
        if (isInputFirst) {
            ASSERT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
        } else {
            ASSERT_EQ(camera.SetInputVideoParams(input.record, PixelFormatRGB32), kResultOk);
        }
        EXPECT_EQ(camera.SetMountType(MountTypeWall), kResultNoChange);
        EXPECT_TRUE(output.IsFilledWith(0xCD));
        EXPECT_EQ(camera.Process(0), kResultOk);
        EXPECT_EQ(output.bytes, Wall::Picture(input, 40, 22, kTouchingLens, kWholeLens).bytes);
        output.Fill(0xCD);
        EXPECT_EQ(camera.SetMountAndViewType(MountTypeWall, ViewTypeVCam), kResultOk);
        EXPECT_EQ(output.bytes, Wall::Picture(input, 40, 22, kTouchingLens, kWholeLens).bytes);
        output.Fill(0xCD);
    }
}

}  // namespace
