#ifndef KIVFISHEYE_TESTS_READY_CAMERA_H
#define KIVFISHEYE_TESTS_READY_CAMERA_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/ClientFrame.h"
#include "support/SnapshotCamera.h"

/// A mount, a view and a format.
struct CameraSetting {
    MountAndView scene;
    KivFisheyeLib::PixelFormat format;
};

/// Frames that outlive the cameras which use them.
struct CameraFrames {
    explicit CameraFrames(KivFisheyeLib::PixelFormat format)
        : input(ClientFrame::OfCoordinates(61, 47, format)),
          otherInput(ClientFrame::OfCoordinates(30, 85, format)),
          output(64, 9, format),
          otherOutput(24, 21, format) {}

    void Clear() {
        output.Fill(0xCD);
        otherOutput.Fill(0xCD);
    }
    std::string Bytes() const {
        return std::string(output.bytes.begin(), output.bytes.end())
            .append(otherOutput.bytes.begin(), otherOutput.bytes.end());
    }

    ClientFrame input;
    ClientFrame otherInput;
    ClientFrame output;
    ClientFrame otherOutput;
};

/// A camera with everything set, and an output that it has not written yet.
struct ReadyCamera {
    ReadyCamera(const CameraSetting& cameraSetting, CameraFrames& cameraFrames)
        : setting(cameraSetting), frames(cameraFrames) {
        camera.SetDewarpParams({0.45F, 0.375F, 35.0F, 0.25F});
        camera.SetInputVideoParams(frames.input.record, setting.format);
        camera.SetOutputVideoParams(frames.output.record);
        camera.SetMountAndViewType(setting.scene.mount, setting.scene.view);
        camera.SetAbsolutePTZ(70.0F, 10.0F, 3.0F);
    }

    KivFisheyeLib::MountType OtherMount() const {
        return setting.scene.mount == KivFisheyeLib::MountTypeTable
                   ? KivFisheyeLib::MountTypeCeiling
                   : KivFisheyeLib::MountTypeTable;
    }
    KivFisheyeLib::ViewType OtherView() const {
        return setting.scene.view == KivFisheyeLib::ViewTypeVCam
                   ? KivFisheyeLib::ViewTypeFullPanorama
                   : KivFisheyeLib::ViewTypeVCam;
    }

    /// The next frame, over whatever was there.
    std::string NextPicture() {
        frames.Clear();
        EXPECT_EQ(camera.Process(0), kResultOk);
        return frames.Bytes();
    }

    CameraSetting setting;
    CameraFrames& frames;
    CKivFisheyeCamera camera;
};

inline std::vector<CameraSetting> EveryCameraSetting() {
    std::vector<CameraSetting> settings;
    for (const MountAndView& scene : kEveryScene) {
        settings.push_back({scene, KivFisheyeLib::PixelFormatRGB24});
        settings.push_back({scene, KivFisheyeLib::PixelFormatRGB32});
    }
    return settings;
}

inline std::string NameOfSetting(const testing::TestParamInfo<CameraSetting>& info) {
    static constexpr const char* kMounts[] = {"Wall", "Ceiling", "Table"};
    static constexpr const char* kViews[] = {"VCam", "Dual", "Full"};
    return std::string(kMounts[info.param.scene.mount]) + kViews[info.param.scene.view] +
           (info.param.format == KivFisheyeLib::PixelFormatRGB24 ? "24" : "32");
}

#endif
