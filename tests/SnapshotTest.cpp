#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <functional>
#include <optional>
#include <thread>

#include "support/FailingMalloc.h"
#include "support/FirstAccess.h"
#include "support/LockProbe.h"
#include "support/OutlineGeometry.h"
#include "support/PanoramaCamera.h"
#include "support/SnapshotBlock.h"
#include "support/SnapshotCamera.h"
#include "support/VCamCamera.h"

using namespace KivFisheyeLib;

namespace {

/// What a second context with the first one's lens, view and angles converts into a frame of the
/// size that it recommends. Bytes that a conversion leaves alone are 0.
ClientFrame PictureOfASecondContext(CKivFisheyeCamera& first, const Aim& wanted) {
    CKivFisheyeCamera second;
    EXPECT_EQ(second.SetDewarpParams(first.m_dewarpParams), kResultOk);
    EXPECT_EQ(second.SetInputVideoParams(first.m_inputInfo, first.m_pixelFormat), kResultOk);
    EXPECT_EQ(second.SetMountAndViewType(first.m_mountType, first.m_viewType), kResultOk);
    EXPECT_EQ(second.SetAbsolutePTZ(wanted.pan, wanted.tilt, wanted.zoom), kResultOk);
    unsigned int width = 0;
    unsigned int height = 0;
    EXPECT_EQ(second.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    ClientFrame picture(width, height, first.m_pixelFormat);
    EXPECT_EQ(second.SetOutputVideoParams(picture.record), kResultOk);
    EXPECT_EQ(second.Process(0), kResultOk);
    return picture;
}

constexpr Aim kAims[] = {{0.0F, 0.0F, 1.0F}, {50.0F, 20.0F, 3.0F}, {-120.0F, -30.0F, 1.5F}};

class SnapshotOfFormat : public testing::TestWithParam<PixelFormat> {};

TEST_P(SnapshotOfFormat, IsTheRecommendedFrameOfAnotherContextToTheByte) {
    for (const MountAndView& scene : kEveryScene) {
        for (const Aim& aim : kAims) {
            SCOPED_TRACE(testing::Message() << "mount " << scene.mount << ", view " << scene.view
                                            << ", pan " << aim.pan);
            SnapshotCamera prepared(scene, GetParam(), aim);
            const ClientFrame expected = PictureOfASecondContext(prepared.camera, aim);
            const MallocWatch watch;
            SnapshotBlock block(prepared.camera);
            EXPECT_EQ(block.Result(), kResultOk);
            ASSERT_TRUE(block.IsThere());
            EXPECT_EQ(watch.LargestRequest(), 64 + expected.bytes.size());
            EXPECT_EQ(block.Header(),
                      HeaderBytes(expected.Width(), -expected.Height(),
                                  BytesPerPixelOf(GetParam()) * 8, expected.bytes.size()));
            EXPECT_TRUE(block.Image() == expected.bytes);
            EXPECT_FALSE(IsLocked(prepared.camera));
        }
    }
}

TEST_P(SnapshotOfFormat, LeavesTheOddLastRowOfADualPanoramaBlack) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        int oddOnes = 0;
        for (std::uint32_t width = 140; width < 180; ++width) {
            SnapshotCamera prepared({mount, ViewTypeDualPanorama}, GetParam(), kAims[1], width);
            const ClientFrame expected = PictureOfASecondContext(prepared.camera, kAims[1]);
            if (expected.Height() % 2 == 0) {
                continue;
            }
            ++oddOnes;
            SnapshotBlock block(prepared.camera);
            ASSERT_EQ(block.Result(), kResultOk);
            const std::vector<unsigned char> image = block.Image();
            EXPECT_TRUE(image == expected.bytes);
            EXPECT_EQ(std::count(image.end() - expected.Stride(), image.end(), 0),
                      expected.Stride());
            EXPECT_LT(
                std::count(image.end() - 2 * expected.Stride(), image.end() - expected.Stride(), 0),
                expected.Stride());
        }
        EXPECT_GT(oddOnes, 3);
    }
}

TEST_P(SnapshotOfFormat, OfAWallsWholeFrameHasItsSize) {
    ClientFrame input(1000, 1000, GetParam(), 0x5A);
    CKivFisheyeCamera camera;
    ASSERT_EQ(camera.SetInputVideoParams(input.record, GetParam()), kResultOk);
    const MallocWatch watch;
    SnapshotBlock block(camera);
    ASSERT_EQ(block.Result(), kResultOk);
    const int bytesPerPixel = BytesPerPixelOf(GetParam());
    const auto imageSize = static_cast<std::size_t>(1000000 * bytesPerPixel);
    EXPECT_EQ(block.Header(), HeaderBytes(1000, -1000, bytesPerPixel * 8, imageSize));
    EXPECT_EQ(watch.LargestRequest(), imageSize + 64);
}

TEST_P(SnapshotOfFormat, OfAMountWithoutAMeaningPadsItsRowsToMultiplesOf4Bytes) {
    for (const std::uint32_t width : {1U, 2U, 3U, 4U, 61U, 62U, 63U, 64U}) {
        ClientFrame input(width, 7, GetParam(), 0x5A);
        CKivFisheyeCamera camera;
        ASSERT_EQ(camera.SetInputVideoParams(input.record, GetParam()), kResultOk);
        ASSERT_EQ(camera.SetMountAndViewType(static_cast<MountType>(7), ViewTypeFullPanorama),
                  kResultOk);
        SnapshotBlock block(camera);
        EXPECT_EQ(block.Result(), kResultOutOfMemory);
        ASSERT_TRUE(block.IsThere());
        const int bytesPerPixel = BytesPerPixelOf(GetParam());
        const auto stride = static_cast<std::size_t>((input.Width() * bytesPerPixel + 3) / 4 * 4);
        EXPECT_EQ(block.Header(), HeaderBytes(input.Width(), -7, bytesPerPixel * 8, stride * 7));
        EXPECT_EQ(block.Image(), std::vector<unsigned char>(stride * 7, 0));
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, SnapshotOfFormat,
                         testing::Values(PixelFormatRGB24, PixelFormatRGB32),
                         [](const auto& instance) {
                             return instance.param == PixelFormatRGB24 ? "RGB24" : "RGB32";
                         });

TEST(SnapshotHeaderFields, FillTheRecordOfThePublicHeader) {
    SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB24, kAims[0]);
    SnapshotBlock block(prepared.camera);
    ASSERT_TRUE(block.IsThere());
    SnapshotHeader header{};
    std::memcpy(&header, block.Header().data(), sizeof(header));
    unsigned int width = 0;
    unsigned int height = 0;
    ASSERT_EQ(prepared.camera.GetRecommendOutputVideoSize(&width, &height), kResultOk);
    EXPECT_EQ(header.size, 64U);
    EXPECT_EQ(header.width, std::int64_t{width});
    EXPECT_EQ(header.height, -std::int64_t{height});
    EXPECT_EQ(header.planes, 1);
    EXPECT_EQ(header.bitsPerPixel, 24);
    EXPECT_EQ(header.imageSize, width * height * 3);
}

template <class Panorama>
class SnapshotBesidePanorama : public testing::Test {};
TYPED_TEST_SUITE(SnapshotBesidePanorama, Panoramas);

TYPED_TEST(SnapshotBesidePanorama, LeavesTheRunningSceneAndTheOutputAlone) {
    PanoramaCamera<TypeParam> running;
    const auto* const scene = running.camera.m_scene.get();
    ASSERT_TRUE(running.Shows(running.Expected().bytes));
    running.output.Fill(running.kUntouched);
    SnapshotBlock block(running.camera);
    EXPECT_EQ(block.Result(), kResultOk);
    EXPECT_TRUE(running.output.IsFilledWith(running.kUntouched));
    EXPECT_EQ(running.camera.m_scene.get(), scene);
    EXPECT_TRUE(IsSameRecord(running.camera.m_outputInfo, running.output.record));
    EXPECT_TRUE(IsSameRecord(running.camera.m_inputInfo, running.input.record));
    EXPECT_TRUE(running.Shows(running.Expected().bytes));
}

template <class V>
class SnapshotBesideVCam : public testing::Test {};
TYPED_TEST_SUITE(SnapshotBesideVCam, VCams);

TYPED_TEST(SnapshotBesideVCam, LeavesAnglesOutputAndPictureAsTheyAre) {
    VCamCamera<TypeParam> running;
    running.camera.SetAbsolutePTZ(20.0F, 15.0F * TypeParam::kTiltSign, 4.0F);
    ASSERT_EQ(running.camera.Process(0), kResultOk);
    const std::vector<unsigned char> before = running.output.bytes;
    running.output.Fill(running.kUntouched);
    SnapshotBlock block(running.camera);
    EXPECT_EQ(block.Result(), kResultOk);
    EXPECT_TRUE(running.output.IsFilledWith(running.kUntouched));
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 0.0F;
    running.camera.GetPTZ(&pan, &tilt, &zoom);
    EXPECT_EQ(pan, 20.0F);
    EXPECT_EQ(tilt, 15.0F * TypeParam::kTiltSign);
    EXPECT_EQ(zoom, 4.0F);
    EXPECT_TRUE(running.Shows(before));
}

TEST(SnapshotLock, IsWaitedFor) {
    SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB32, kAims[0]);
    EXPECT_TRUE(WaitsForLock(prepared.camera, [&] {
        const SnapshotBlock block(prepared.camera);
        EXPECT_EQ(block.Result(), kResultOk);
    }));
    EXPECT_FALSE(IsLocked(prepared.camera));
}

TEST(SnapshotLock, IsHeldWhileTheInputIsRead) {
    for (const MountAndView& mountAndView : kEveryScene) {
        CKivFisheyeCamera camera;
        std::optional<bool> isLocked;
        FirstAccess pixels(64 * 64 * 4, [&] { isLocked = IsLocked(camera); });
        const VideoFrameInfo input{64, 64, 256, pixels.data()};
        ASSERT_EQ(camera.SetInputVideoParams(input, PixelFormatRGB32), kResultOk);
        ASSERT_EQ(camera.SetMountAndViewType(mountAndView.mount, mountAndView.view), kResultOk);
        ASSERT_FALSE(isLocked.has_value());
        const SnapshotBlock block(camera);
        EXPECT_EQ(isLocked, std::optional<bool>(true)) << mountAndView.mount;
        EXPECT_FALSE(IsLocked(camera));
    }
}

TEST(SnapshotLock, MayBeHeldByTheCallingThread) {
    SnapshotCamera prepared(kEveryScene[4], PixelFormatRGB32, kAims[0]);
    const CObjectLockT<CMultiThreadModel> lock(&prepared.camera);
    const SnapshotBlock block(prepared.camera);
    EXPECT_EQ(block.Result(), kResultOk);
    EXPECT_TRUE(IsLocked(prepared.camera)) << "by this thread still";
}

TEST(FreeSnapshotMemory, SaysThatThereWasNothingToFree) {
    CKivFisheyeCamera camera;
    EXPECT_EQ(camera.FreeSnapshotMemory(nullptr), 1);
}

TEST(FreeSnapshotMemory, WorksOnAnotherThreadThroughAnotherContextWithoutALock) {
    SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB32, kAims[0]);
    unsigned char* block = nullptr;
    ASSERT_EQ(prepared.camera.Snapshot(&block), kResultOk);
    CKivFisheyeCamera other;
    EXPECT_FALSE(
        WaitsForLock(other, [&] { EXPECT_EQ(other.FreeSnapshotMemory(block), kResultOk); }));
    EXPECT_FALSE(WaitsForLock(
        other, [&] { EXPECT_EQ(other.FreeSnapshotMemory(nullptr), kResultNoChange); }));
}

TEST(FreeSnapshotMemory, GivesTheBlockBack) {
    constexpr int kTimes = 8;
    SnapshotCamera prepared(kEveryScene[0], PixelFormatRGB32, kAims[0]);
    const std::size_t before = BytesInUse();
    for (int i = 0; i < kTimes; ++i) {
        const SnapshotBlock block(prepared.camera);
        ASSERT_TRUE(block.IsThere());
        ASSERT_GT(block.Image().size(), 50000U);
    }
    EXPECT_LT(BytesInUse(), before + 50000);
}

}  // namespace
