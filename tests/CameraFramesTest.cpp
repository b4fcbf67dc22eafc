#include <gtest/gtest.h>

#include <cstdint>

#include "CameraRules.h"
#include "KivFisheyeCamera.h"
#include "support/ClientFrame.h"
#include "support/RecordingScene.h"

using namespace KivFisheyeLib;

namespace {

unsigned char pixels[64];

TEST(BitsPerPixel, Are24Or32AndNoneForOtherNumbers) {
    EXPECT_EQ(BitsPerPixel(PixelFormatBottomUpRGB24), 24);
    EXPECT_EQ(BitsPerPixel(PixelFormatRGB24), 24);
    EXPECT_EQ(BitsPerPixel(PixelFormatBottomUpRGB32), 32);
    EXPECT_EQ(BitsPerPixel(PixelFormatRGB32), 32);
    for (const std::uint32_t number : {4U, 5U, 1000U, 0x80000000U, 0xFFFFFFFFU}) {
        EXPECT_EQ(BitsPerPixel(static_cast<PixelFormat>(number)), 0) << number;
    }
}

TEST(FrameRecord, TheStrideIsTheRowRoundedUpTo4AndNothingElse) {
    struct Case {
        PixelFormat format;
        std::uint32_t width;
        std::uint32_t stride;
    };
    constexpr Case kCases[] = {
        {PixelFormatRGB24, 1, 4},          {PixelFormatRGB24, 2, 8},
        {PixelFormatRGB24, 3, 12},         {PixelFormatRGB24, 4, 12},
        {PixelFormatRGB24, 5, 16},         {PixelFormatRGB24, 1001, 3004},
        {PixelFormatRGB24, 1920, 5760},    {PixelFormatBottomUpRGB24, 2, 8},
        {PixelFormatRGB32, 1, 4},          {PixelFormatRGB32, 3, 12},
        {PixelFormatRGB32, 1001, 4004},    {PixelFormatRGB32, 1920, 7680},
        {PixelFormatBottomUpRGB32, 5, 20},
    };
    for (const Case& frame : kCases) {
        for (std::uint32_t stride = frame.stride - 4; stride <= frame.stride + 4; ++stride) {
            const VideoFrameInfo record{frame.width, 2, stride, pixels};
            EXPECT_EQ(ValidateVideoFrameInfo(record, frame.format), stride == frame.stride)
                << frame.width << " pixels of format " << frame.format << ", stride " << stride;
        }
        const VideoFrameInfo generous{frame.width, 2, 2 * frame.stride, pixels};
        EXPECT_FALSE(ValidateVideoFrameInfo(generous, frame.format));
    }
}

TEST(FrameRecord, EveryFieldMustBeThere) {
    const VideoFrameInfo good{8, 2, 32, pixels};
    EXPECT_TRUE(ValidateVideoFrameInfo(good, PixelFormatRGB32));
    EXPECT_FALSE(ValidateVideoFrameInfo({0, 2, 0, pixels}, PixelFormatRGB32));
    EXPECT_FALSE(ValidateVideoFrameInfo({0, 2, 32, pixels}, PixelFormatRGB32));
    EXPECT_FALSE(ValidateVideoFrameInfo({8, 0, 32, pixels}, PixelFormatRGB32));
    EXPECT_FALSE(ValidateVideoFrameInfo({8, 2, 0, pixels}, PixelFormatRGB32));
    EXPECT_FALSE(ValidateVideoFrameInfo({8, 2, 32, nullptr}, PixelFormatRGB32));
    for (const std::uint32_t number : {4U, 7U, 0xFFFFFFFFU}) {
        // A format without pixels makes rows without bytes; not even that stride is right.
        EXPECT_FALSE(ValidateVideoFrameInfo({8, 2, 0, pixels}, static_cast<PixelFormat>(number)));
        EXPECT_FALSE(ValidateVideoFrameInfo(good, static_cast<PixelFormat>(number)));
    }
}

TEST(SetInputVideoParams, CopiesTheRecordAndTheFormat) {
    CKivFisheyeCamera camera;
    VideoFrameInfo record{5, 3, 16, pixels};
    ASSERT_EQ(camera.SetInputVideoParams(record, PixelFormatRGB24), kResultOk);
    record = {};
    EXPECT_TRUE(IsSameRecord(camera.m_inputInfo, {5, 3, 16, pixels}));
    EXPECT_EQ(camera.m_pixelFormat, PixelFormatRGB24);
    EXPECT_TRUE(IsSameRecord(camera.m_outputInfo, {}));
}

TEST(SetOutputVideoParams, CopiesTheRecord) {
    CKivFisheyeCamera camera;
    VideoFrameInfo record{8, 2, 32, pixels};
    ASSERT_EQ(camera.SetOutputVideoParams(record), kResultOk);
    record = {};
    EXPECT_TRUE(IsSameRecord(camera.m_outputInfo, {8, 2, 32, pixels}));
    EXPECT_TRUE(IsSameRecord(camera.m_inputInfo, {}));
    EXPECT_EQ(camera.m_pixelFormat, PixelFormatRGB32);
}

TEST(SetInputVideoParams, RefusesFormatsWhoseRowsRunFromTheBottom) {
    CKivFisheyeCamera camera;
    EXPECT_EQ(camera.SetInputVideoParams({8, 2, 24, pixels}, PixelFormatBottomUpRGB24),
              kResultInvalidArgument);
    EXPECT_EQ(camera.SetInputVideoParams({8, 2, 32, pixels}, PixelFormatBottomUpRGB32),
              kResultInvalidArgument);
    for (const std::uint32_t number : {4U, 0xFFFFFFFFU}) {
        EXPECT_EQ(camera.SetInputVideoParams({8, 2, 32, pixels}, static_cast<PixelFormat>(number)),
                  kResultInvalidArgument);
        EXPECT_EQ(camera.SetInputVideoParams({8, 2, 0, pixels}, static_cast<PixelFormat>(number)),
                  kResultInvalidArgument);
    }
}

TEST(SetInputVideoParams, ARefusalChangesNothing) {
    RecordedCamera recorded;
    CKivFisheyeCamera& camera = recorded.camera;
    const VideoFrameInfo good{5, 3, 16, pixels};
    ASSERT_EQ(camera.SetInputVideoParams(good, PixelFormatRGB24), kResultOk);
    const VideoFrameInfo refused[] = {
        {0, 1, 0, pixels}, {1, 0, 4, pixels}, {1, 1, 3, pixels}, {1, 1, 4, nullptr}};
    for (const VideoFrameInfo& record : refused) {
        EXPECT_EQ(camera.SetInputVideoParams(record, PixelFormatRGB32), kResultInvalidArgument);
    }
    EXPECT_EQ(camera.SetInputVideoParams({8, 2, 32, pixels}, PixelFormatBottomUpRGB32),
              kResultInvalidArgument);
    EXPECT_TRUE(IsSameRecord(camera.m_inputInfo, good));
    EXPECT_EQ(camera.m_pixelFormat, PixelFormatRGB24);
    EXPECT_EQ(recorded.calls.videoChanges, 1);
}

TEST(SetOutputVideoParams, ARefusalChangesNothing) {
    RecordedCamera recorded;
    CKivFisheyeCamera& camera = recorded.camera;
    const VideoFrameInfo good{8, 2, 32, pixels};
    ASSERT_EQ(camera.SetOutputVideoParams(good), kResultOk);
    const VideoFrameInfo refused[] = {{0, 1, 0, pixels},   {16, 0, 64, pixels},
                                      {16, 1, 68, pixels}, {16, 1, 64, nullptr},
                                      {12, 1, 48, pixels}, {7, 1, 28, pixels}};
    for (const VideoFrameInfo& record : refused) {
        EXPECT_EQ(camera.SetOutputVideoParams(record), kResultInvalidArgument) << record.width;
    }
    EXPECT_TRUE(IsSameRecord(camera.m_outputInfo, good));
    EXPECT_EQ(recorded.calls.videoChanges, 1);
}

TEST(SetOutputVideoParams, TheWidthIsAMultipleOf8WhileTheInputsIsAny) {
    CKivFisheyeCamera camera;
    for (std::uint32_t width = 1; width <= 24; ++width) {
        const VideoFrameInfo record{width, 2, 4 * width, pixels};
        EXPECT_EQ(camera.SetInputVideoParams(record, PixelFormatRGB32), kResultOk) << width;
        EXPECT_EQ(camera.SetOutputVideoParams(record),
                  width % 8 == 0 ? kResultOk : kResultInvalidArgument)
            << width;
    }
    const VideoFrameInfo record{1001, 2, 4004, pixels};
    EXPECT_EQ(camera.SetOutputVideoParams(record), kResultInvalidArgument);
    EXPECT_EQ(camera.SetInputVideoParams(record, PixelFormatRGB32), kResultOk);
}

TEST(SetOutputVideoParams, FollowsTheFormatThatTheInputBrought) {
    CKivFisheyeCamera camera;
    const VideoFrameInfo rgb24{8, 2, 24, pixels};
    const VideoFrameInfo rgb32{8, 2, 32, pixels};
    EXPECT_EQ(camera.SetOutputVideoParams(rgb24), kResultInvalidArgument)
        << "32 bits before the input is set";
    EXPECT_EQ(camera.SetOutputVideoParams(rgb32), kResultOk);
    ASSERT_EQ(camera.SetInputVideoParams(rgb24, PixelFormatRGB24), kResultOk);
    EXPECT_TRUE(IsSameRecord(camera.m_outputInfo, rgb32)) << "kept as it was";
    EXPECT_EQ(camera.SetOutputVideoParams(rgb32), kResultInvalidArgument);
    EXPECT_EQ(camera.SetOutputVideoParams(rgb24), kResultOk);
}

TEST(FrameSetters, ReachTheSceneAtEveryCall) {
    RecordedCamera recorded;
    const VideoFrameInfo record{8, 2, 32, pixels};
    for (int call = 1; call <= 3; ++call) {
        recorded.camera.SetInputVideoParams(record, PixelFormatRGB32);
        EXPECT_EQ(recorded.calls.videoChanges, 2 * call - 1);
        recorded.camera.SetOutputVideoParams(record);
        EXPECT_EQ(recorded.calls.videoChanges, 2 * call);
    }
    EXPECT_EQ(recorded.calls.dewarpChanges, 0);
    EXPECT_TRUE(recorded.calls.frameTags.empty()) << "they convert nothing";
}

TEST(FrameSetters, TheSceneSeesTheNewRecord) {
    RecordedCamera recorded;
    const VideoFrameInfo record{8, 2, 24, pixels};
    recorded.calls.inside = [&] {
        EXPECT_TRUE(IsSameRecord(recorded.camera.m_inputInfo, record));
        EXPECT_EQ(recorded.camera.m_pixelFormat, PixelFormatRGB24);
    };
    recorded.camera.SetInputVideoParams(record, PixelFormatRGB24);
    recorded.calls.inside = [&] {
        EXPECT_TRUE(IsSameRecord(recorded.camera.m_outputInfo, record));
    };
    recorded.camera.SetOutputVideoParams(record);
    EXPECT_EQ(recorded.calls.videoChanges, 2);
}

TEST(SetInputVideoParams, AsksForTheFormatThroughTheInterface) {
    struct BottomUpCamera : CKivFisheyeCamera {
        ResultCode IsPixelFormatAccepted(PixelFormat format) override {
            return format == PixelFormatBottomUpRGB24 ? kResultOk : kResultNoChange;
        }
    } camera;
    EXPECT_EQ(camera.SetInputVideoParams({8, 2, 24, pixels}, PixelFormatBottomUpRGB24), kResultOk);
    EXPECT_EQ(camera.SetInputVideoParams({8, 2, 24, pixels}, PixelFormatRGB24),
              kResultInvalidArgument);
}

TEST(Process, NeedsBothFrames) {
    const VideoFrameInfo record{8, 2, 32, pixels};
    RecordedCamera recorded;
    EXPECT_EQ(recorded.camera.Process(0), kResultNullPointer);
    recorded.camera.SetInputVideoParams(record, PixelFormatRGB32);
    EXPECT_EQ(recorded.camera.Process(0), kResultNullPointer);
    EXPECT_TRUE(recorded.calls.frameTags.empty());

    RecordedCamera outputOnly;
    outputOnly.camera.SetOutputVideoParams(record);
    EXPECT_EQ(outputOnly.camera.Process(0), kResultNullPointer);
    outputOnly.camera.SetInputVideoParams(record, PixelFormatRGB32);
    EXPECT_EQ(outputOnly.camera.Process(0), kResultOk);
    EXPECT_EQ(outputOnly.calls.frameTags.size(), 1U);
}

TEST(Process, HandsTheTagOnAndTheScenesResultBack) {
    const VideoFrameInfo record{8, 2, 32, pixels};
    RecordedCamera recorded;
    recorded.camera.SetInputVideoParams(record, PixelFormatRGB32);
    recorded.camera.SetOutputVideoParams(record);
    for (const ResultCode result : {kResultOk, kResultNotReady, ResultCode{-12345678901234}}) {
        recorded.calls.result = result;
        EXPECT_EQ(recorded.camera.Process(0xFEDCBA9876543210ULL), result);
        EXPECT_EQ(recorded.calls.frameTags.back(), 0xFEDCBA9876543210ULL);
    }
    EXPECT_EQ(recorded.calls.frameTags.size(), 3U);
}

TEST(CameraWithoutAScene, StoresWhatItIsToldAndIsNotReadyToConvert) {
    CKivFisheyeCamera camera;
    ASSERT_EQ(camera.SetMountType(static_cast<MountType>(7)), kResultOk);
    EXPECT_EQ(camera.m_scene, nullptr);
    EXPECT_EQ(camera.Process(0), kResultNullPointer) << "missing frames are told first";
    const VideoFrameInfo record{8, 2, 32, pixels};
    EXPECT_EQ(camera.SetInputVideoParams(record, PixelFormatRGB32), kResultOk);
    EXPECT_EQ(camera.SetOutputVideoParams(record), kResultOk);
    EXPECT_EQ(camera.SetDewarpParams({0.25F, 0.25F, 30.0F, 0.5F}), kResultOk);
    EXPECT_TRUE(IsSameRecord(camera.m_inputInfo, record));
    EXPECT_TRUE(IsSameRecord(camera.m_outputInfo, record));
    EXPECT_EQ(camera.m_dewarpParams.wallViewAngle, 30.0F);
    EXPECT_EQ(camera.Process(0), kResultNotReady);
    EXPECT_EQ(camera.SetAbsolutePTZ(10.0F, 20.0F, 2.0F), kResultNotReady);
    EXPECT_EQ(camera.SetRelativePTZ(10.0F, 20.0F, 2.0F), kResultNotReady);
    EXPECT_EQ(camera.SetRelativePTZ(0.0F, 0.0F, 0.0F), kResultNotReady);
    EXPECT_EQ(camera.m_pan, 0.0F);
    EXPECT_EQ(camera.m_tilt, 0.0F);
    EXPECT_EQ(camera.m_zoom, 1.0F);
    auto mount = MountTypeWall;
    EXPECT_EQ(camera.GetMountType(&mount), kResultOk);
    EXPECT_EQ(mount, 7U);
}

}  // namespace
