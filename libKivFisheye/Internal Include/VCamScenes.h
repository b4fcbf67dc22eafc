#ifndef KIVFISHEYE_VCAM_SCENES_H
#define KIVFISHEYE_VCAM_SCENES_H

#include "CameraRules.h"
#include "KivFisheyeCamera.h"
#include "vcam/VCamMounts.h"

namespace SceneNS {

/// A virtual camera. It keeps no table: every frame is computed from the camera's members as they
/// are then, so a turn or another lens costs nothing. The leaf classes below say which functions
/// are the mount's.
class CVCamScene : public CKivFisheyeCamera::CScene {
protected:
    using CScene::CScene;

    /// Binds the conversion, or none while it lacks frames or there is none for the format.
    void xInitConverter(vcam::MountConvertFunction* wrapper) {
        const KivFisheyeLib::VideoFrameInfo& input = m_camera->m_inputInfo;
        m_cvtMember = nullptr;
        if (input.width == 0 || input.height == 0 || input.buffer == nullptr ||
            m_target->width == 0 || m_target->height == 0) {
            return;
        }
        if (wrapper == nullptr || m_target->buffer == nullptr) {
            return;
        }
        m_cvtFunction = wrapper;
        m_cvtMember = &CVCamScene::xCvt;
    }

    ResultCode Convert(float pan, float tilt) {
        if (m_cvtMember == nullptr) {
            return kResultNotReady;
        }
        (this->*m_cvtMember)(pan, tilt);
        return kResultOk;
    }

private:
    void xCvt(float pan, float tilt) {
        const KivFisheyeLib::VideoFrameInfo& input = m_camera->m_inputInfo;
        const KivFisheyeLib::DewarpParams& lens = m_camera->m_dewarpParams;
        if (input.buffer == nullptr || m_target->buffer == nullptr || m_target->width == 0 ||
            m_target->height == 0) {
            return;
        }
        const float aspect =
            static_cast<float>(m_target->width) / static_cast<float>(m_target->height);
        m_cvtFunction(static_cast<int>(input.width), static_cast<int>(input.height),
                      static_cast<int>(input.stride), input.buffer, lens.radiusX, lens.radiusY,
                      m_camera->m_vcamEyeZ, m_camera->m_vcamFieldOfView, aspect,
                      m_camera->m_vcamNear, pan, tilt, static_cast<int>(m_target->width),
                      static_cast<int>(m_target->height), static_cast<int>(m_target->stride),
                      m_target->buffer);
    }

    void (CVCamScene::*m_cvtMember)(float pan, float tilt) = nullptr;
    vcam::MountConvertFunction* m_cvtFunction = nullptr;
};

/// A virtual camera on a mount, which offers its conversion for both pixel sizes, the way the pan
/// runs, and its limits.
template <class Mount>
class CMountVCamScene : public CVCamScene {
public:
    CMountVCamScene(CKivFisheyeCamera* camera, KivFisheyeLib::VideoFrameInfo* target)
        : CVCamScene(camera, target) {
        CMountVCamScene::OnVideoParamsChanged();
    }

    void OnVideoParamsChanged() override {
        const int bitsPerPixel = BitsPerPixel(m_camera->m_pixelFormat);
        xInitConverter(bitsPerPixel == 24   ? Mount::kCvtRGB24
                       : bitsPerPixel == 32 ? Mount::kCvtRGB32
                                            : nullptr);
    }

    ResultCode Process(unsigned long long) override {
        return Convert(Mount::Pan(m_camera->m_pan), m_camera->m_tilt);
    }

    ResultCode doSetAbsolutePTZ(float pan, float tilt, float zoom, bool zoomingOut) override {
        Mount::GetSettings(pan, tilt, zoom, zoomingOut, m_camera->m_vcamEyeZ, m_camera->m_vcamNear,
                           m_camera->m_vcamFar, m_camera->m_vcamFieldOfView, m_camera->m_pan,
                           m_camera->m_tilt, m_camera->m_zoom);
        return kResultOk;
    }
};

struct WallVCam {
    static constexpr auto* kCvtRGB24 = FrontwardFisheyeAlgoNS::CvtVCamRGB24;
    static constexpr auto* kCvtRGB32 = FrontwardFisheyeAlgoNS::CvtVCamRGB32;
    static constexpr auto& GetSettings = FisheyeVCamAlgoNS::GetWallVCamCameraSettings;
    static float Pan(float pan) { return pan; }
};

struct CeilingVCam {
    static constexpr auto* kCvtRGB24 = DownwardFisheyeAlgoNS::CvtVCamRGB24;
    static constexpr auto* kCvtRGB32 = DownwardFisheyeAlgoNS::CvtVCamRGB32;
    static constexpr auto& GetSettings = FisheyeVCamAlgoNS::GetCeilingVCamCameraSettings;
    // On the frame the camera's pan runs clockwise, and the matrix turns the other way. Pan 0 goes
    // in as 360, whose sine is not quite 0.
    static float Pan(float pan) { return 360.0F - pan; }
};

struct TableVCam {
    static constexpr auto* kCvtRGB24 = UpwardFisheyeAlgoNS::CvtVCamRGB24;
    static constexpr auto* kCvtRGB32 = UpwardFisheyeAlgoNS::CvtVCamRGB32;
    static constexpr auto& GetSettings = FisheyeVCamAlgoNS::GetTableVCamCameraSettings;
    static float Pan(float pan) { return pan; }
};

using CWallVCamScene = CMountVCamScene<WallVCam>;
using CCeilingVCamScene = CMountVCamScene<CeilingVCam>;
using CTableVCamScene = CMountVCamScene<TableVCam>;

}  // namespace SceneNS

#endif
