#ifndef KIVFISHEYE_TESTS_VCAM_CAMERA_H
#define KIVFISHEYE_TESTS_VCAM_CAMERA_H

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

#include "KivFisheyeCamera.h"
#include "VCamScenes.h"
#include "support/ClientFrame.h"

/// What a mount's conversion is told of the virtual camera: angles in degrees.
struct View {
    float eyeZ;
    float fieldOfView;
    float nearPlane;
    float pan;
    float tilt;
};

/// A mount and a pixel format of a virtual camera. `kTiltSign` is the direction in which the mount
/// tilts, and `PanOf` the pan that its conversion gets.
template <KivFisheyeLib::MountType mount, KivFisheyeLib::PixelFormat format>
struct VCam {
    static constexpr auto kMountType = mount;
    static constexpr auto kOtherMountType = mount == KivFisheyeLib::MountTypeTable
                                                ? KivFisheyeLib::MountTypeCeiling
                                                : KivFisheyeLib::MountTypeTable;
    static constexpr auto kFormat = format;
    static constexpr float kTiltSign = mount == KivFisheyeLib::MountTypeTable ? -1.0F : 1.0F;

    static float PanOf(float pan) {
        return mount == KivFisheyeLib::MountTypeCeiling ? 360.0F - pan : pan;
    }

    /// The picture that the mount's conversion makes when it is called directly.
    static ClientFrame Picture(const ClientFrame& input, std::uint32_t width, std::uint32_t height,
                               const KivFisheyeLib::DewarpParams& lens, const View& view) {
        constexpr unsigned char kUnwritten = 0xA5;
        ClientFrame output(width, height, format, kUnwritten);
        Function()(input.Width(), input.Height(), input.Stride(), input.bytes.data(), lens.radiusX,
                   lens.radiusY, view.eyeZ, view.fieldOfView,
                   static_cast<float>(width) / static_cast<float>(height), view.nearPlane, view.pan,
                   view.tilt, output.Width(), output.Height(), output.Stride(),
                   output.bytes.data());
        return output;
    }

private:
    static vcam::MountConvertFunction* Function() {
        constexpr bool kIs24 = BytesPerPixelOf(format) == 3;
        switch (mount) {
            case KivFisheyeLib::MountTypeWall:
                return kIs24 ? FrontwardFisheyeAlgoNS::CvtVCamRGB24
                             : FrontwardFisheyeAlgoNS::CvtVCamRGB32;
            case KivFisheyeLib::MountTypeCeiling:
                return kIs24 ? DownwardFisheyeAlgoNS::CvtVCamRGB24
                             : DownwardFisheyeAlgoNS::CvtVCamRGB32;
            case KivFisheyeLib::MountTypeTable:
                return kIs24 ? UpwardFisheyeAlgoNS::CvtVCamRGB24
                             : UpwardFisheyeAlgoNS::CvtVCamRGB32;
        }
        return nullptr;
    }
};

using VCams = testing::Types<VCam<KivFisheyeLib::MountTypeWall, KivFisheyeLib::PixelFormatRGB24>,
                             VCam<KivFisheyeLib::MountTypeWall, KivFisheyeLib::PixelFormatRGB32>,
                             VCam<KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::PixelFormatRGB24>,
                             VCam<KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::PixelFormatRGB32>,
                             VCam<KivFisheyeLib::MountTypeTable, KivFisheyeLib::PixelFormatRGB24>,
                             VCam<KivFisheyeLib::MountTypeTable, KivFisheyeLib::PixelFormatRGB32>>;

/// The lens that touches the frame's edges, which a new camera has, and one that does not.
constexpr KivFisheyeLib::DewarpParams kTouchingLens{0.5F, 0.5F, 45.0F, 0.0F};
constexpr KivFisheyeLib::DewarpParams kSmallLens{0.5F, 0.375F, 30.0F, 0.25F};

/// A camera with both frames in the virtual camera's view, which has not converted anything yet.
template <class V>
struct VCamCamera {
    static constexpr unsigned char kUntouched = 0xCD;

    VCamCamera() {
        EXPECT_EQ(camera.SetInputVideoParams(input.record, V::kFormat), kResultOk);
        EXPECT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
        EXPECT_EQ(camera.SetMountAndViewType(V::kMountType, KivFisheyeLib::ViewTypeVCam),
                  kResultOk);
        output.Fill(kUntouched);
    }

    /// The picture of this view; its pan is the camera's.
    std::vector<unsigned char> Expected(View view) const {
        view.pan = V::PanOf(view.pan);
        return V::Picture(input, output.record.width, output.record.height, camera.m_dewarpParams,
                          view)
            .bytes;
    }

    /// Converts one frame and says whether the output shows exactly this.
    bool Shows(const std::vector<unsigned char>& bytes) {
        output.Fill(kUntouched);
        return camera.Process(0) == kResultOk && output.bytes == bytes;
    }

    ClientFrame input = ClientFrame::OfCoordinates(61, 47, V::kFormat);
    ClientFrame output{40, 22, V::kFormat, kUntouched};
    CKivFisheyeCamera camera;
};

/// The view of a camera at zoom 1.
constexpr View kWholeLens{1.0F, 90.0F, 1.0F, 0.0F, 0.0F};

#endif
