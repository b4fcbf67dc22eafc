#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "KivFisheyeLib.h"
#include "support/AtOnce.h"
#include "support/ClientFrame.h"
#include "support/SnapshotCamera.h"

// Contexts that share nothing but the library: their pictures do not depend on which others are
// there and on which threads they run.

using namespace KivFisheyeLib;

namespace {

struct ContextSetting {
    MountAndView scene;
    PixelFormat format;
    std::uint32_t width;
    std::uint32_t height;
    DewarpParams lens;
};

/// Every mount and view in both formats, no two of one size.
std::vector<ContextSetting> EverySetting() {
    std::vector<ContextSetting> settings;
    for (const MountAndView& scene : kEveryScene) {
        for (const PixelFormat format : {PixelFormatRGB24, PixelFormatRGB32}) {
            const auto index = static_cast<std::uint32_t>(settings.size());
            const float inner = 0.05F * static_cast<float>(index);
            settings.push_back(
                {scene, format, 8 * (index + 2), 9 + index, {0.5F, 0.375F, 40.0F, inner}});
        }
    }
    return settings;
}

/// All frames of a context's life, snapshots among them, one after the other.
std::string PicturesOf(const ContextSetting& setting) {
    const ClientFrame input = ClientFrame::OfCoordinates(61, 47, setting.format);
    ClientFrame output(setting.width, setting.height, setting.format, 0xCD);
    void* const context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera& camera = *GetCameraAPI(context);
    EXPECT_EQ(camera.SetInputVideoParams(input.record, setting.format), kResultOk);
    EXPECT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
    EXPECT_EQ(camera.SetDewarpParams(setting.lens), kResultOk);
    EXPECT_EQ(camera.SetMountAndViewType(setting.scene.mount, setting.scene.view), kResultOk);
    std::string pictures;
    for (int frame = 0; frame < 3; ++frame) {
        EXPECT_EQ(camera.Process(0), kResultOk);
        pictures.append(output.bytes.begin(), output.bytes.end());
        unsigned char* block = nullptr;
        EXPECT_EQ(camera.Snapshot(&block), kResultOk);
        SnapshotHeader header{};
        std::memcpy(&header, block, sizeof header);
        pictures.append(reinterpret_cast<const char*>(block), sizeof header + header.imageSize);
        EXPECT_EQ(camera.FreeSnapshotMemory(block), kResultOk);
        EXPECT_EQ(camera.SetRelativePTZ(100.0F, 20.0F, 1.5F), kResultOk);
    }
    DeleteKivFisheyeCameraContext(context);
    return pictures;
}

TEST(CamerasApart, EachShowsWhatItShowsAlone) {
    constexpr int kRounds = 10;
    const std::vector<ContextSetting> settings = EverySetting();
    std::vector<std::string> alone;
    std::vector<std::function<void()>> actions;
    for (const ContextSetting& setting : settings) {
        alone.push_back(PicturesOf(setting));
    }
    for (std::size_t i = 0; i < settings.size(); ++i) {
        actions.emplace_back([&, i] {
            for (int round = 0; round < kRounds; ++round) {
                EXPECT_EQ(PicturesOf(settings[i]), alone[i])
                    << "mount " << settings[i].scene.mount << ", view " << settings[i].scene.view
                    << ", format " << settings[i].format;
            }
        });
    }
    RunAtOnce(actions);
}

}  // namespace
