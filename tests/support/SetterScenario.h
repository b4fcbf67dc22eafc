#ifndef KIVFISHEYE_TESTS_SETTER_SCENARIO_H
#define KIVFISHEYE_TESTS_SETTER_SCENARIO_H

#include <functional>

#include "support/PanoramaCamera.h"

/// A setter that takes memory: the call, and whether the camera has stored what it says.
struct Setter {
    std::function<ResultCode()> call;
    std::function<bool()> isStored;
};

/// A camera that is one setter short of a panorama with other frames or another lens, or of a
/// panorama at all.
template <class Panorama>
struct SetterScenario : PanoramaCamera<Panorama> {
    using PanoramaCamera<Panorama>::camera;
    using PanoramaCamera<Panorama>::kUntouched;
    using PanoramaCamera<Panorama>::input;
    using PanoramaCamera<Panorama>::output;

    static constexpr KivFisheyeLib::DewarpParams kOtherLens{0.375F, 0.25F, 30.0F, 0.5F};

    Setter Input() {
        return {[this] { return camera.SetInputVideoParams(tall.record, Panorama::kFormat); },
                [this] { return IsSameRecord(camera.m_inputInfo, tall.record); }};
    }

    Setter Output() {
        return {[this] { return camera.SetOutputVideoParams(narrow.record); },
                [this] { return IsSameRecord(camera.m_outputInfo, narrow.record); }};
    }

    Setter Lens() {
        return {[this] { return camera.SetDewarpParams(kOtherLens); },
                [this] { return camera.m_dewarpParams.radiusX == kOtherLens.radiusX; }};
    }

    Setter MountType() {
        EXPECT_EQ(camera.SetMountType(Panorama::kOtherMountType), kResultOk);
        return {[this] { return camera.SetMountType(Panorama::kMountType); },
                [this] { return camera.m_mountType == Panorama::kMountType; }};
    }

    Setter ViewType() {
        EXPECT_EQ(camera.SetViewType(KivFisheyeLib::ViewTypeVCam), kResultOk);
        return {[this] { return camera.SetViewType(Panorama::kView); },
                [this] { return camera.m_viewType == Panorama::kView; }};
    }

    Setter MountAndViewType() {
        EXPECT_EQ(
            camera.SetMountAndViewType(Panorama::kOtherMountType, KivFisheyeLib::ViewTypeVCam),
            kResultOk);
        return {[this] { return SetThePanorama(); },
                [this] {
                    return camera.m_mountType == Panorama::kMountType &&
                           camera.m_viewType == Panorama::kView;
                }};
    }

    ResultCode SetThePanorama() {
        return camera.SetMountAndViewType(Panorama::kMountType, Panorama::kView);
    }

    /// The stored records set once more.
    ResultCode SetTheSameInput() {
        const KivFisheyeLib::VideoFrameInfo record = camera.m_inputInfo;
        return camera.SetInputVideoParams(record, Panorama::kFormat);
    }
    ResultCode SetTheSameOutput() {
        const KivFisheyeLib::VideoFrameInfo record = camera.m_outputInfo;
        return camera.SetOutputVideoParams(record);
    }
    ResultCode SetTheSameLens() {
        const KivFisheyeLib::DewarpParams lens = camera.m_dewarpParams;
        return camera.SetDewarpParams(lens);
    }

    ClientFrame& PresentOutput() {
        return camera.m_outputInfo.buffer == narrow.record.buffer ? narrow : output;
    }

    const ClientFrame& PresentInput() const {
        return camera.m_inputInfo.buffer == tall.record.buffer ? tall : input;
    }

    void ClearOutputs() {
        output.Fill(kUntouched);
        narrow.Fill(kUntouched);
    }

    bool AreOutputsUntouched() const {
        return output.IsFilledWith(kUntouched) && narrow.IsFilledWith(kUntouched);
    }

    /// Whether the output shows the picture for all that the camera has stored.
    bool HasTheRightPicture() {
        const ClientFrame expected =
            ExpectedPicture<Panorama>(PresentInput(), PresentOutput(), camera.m_dewarpParams);
        return PresentOutput().bytes == expected.bytes;
    }

    /// The same after the next frame.
    bool ShowsTheRightPicture() {
        ClearOutputs();
        return camera.Process(0) == kResultOk && HasTheRightPicture();
    }

    ClientFrame tall = ClientFrame::OfCoordinates(30, 85, Panorama::kFormat);
    ClientFrame narrow{24, 21, Panorama::kFormat, kUntouched};
};

#endif
