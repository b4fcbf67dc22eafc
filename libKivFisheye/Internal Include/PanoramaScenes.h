#ifndef KIVFISHEYE_PANORAMA_SCENES_H
#define KIVFISHEYE_PANORAMA_SCENES_H

#include "CameraRules.h"
#include "Degrees.h"
#include "DownwardFisheyeAlgo.h"
#include "KivFisheyeCamera.h"
#include "UpwardFisheyeAlgo.h"

namespace SceneNS {

/// A full panorama that turns with the camera's pan. The leaf classes below say by which angle.
template <class Converter>
class CFullPanoramaSceneT : public CKivFisheyeCamera::CScene {
public:
    CFullPanoramaSceneT(CKivFisheyeCamera* camera, KivFisheyeLib::VideoFrameInfo* target)
        : CScene(camera, target) {
        _Init_Converter();
    }

    void OnVideoParamsChanged() override { _Init_Converter(); }
    void OnDewarpParamsChanged() override { _Init_Converter(); }

    /// A panorama has no tilt and no zoom: the camera keeps what it has of them.
    ResultCode doSetAbsolutePTZ(float pan, float, float, bool) override {
        m_camera->m_pan = WrapDegrees(pan);
        return kResultOk;
    }

protected:
    ResultCode _Process(float pan) {
        if (m_camera->m_inputInfo.buffer == nullptr || m_target->buffer == nullptr) {
            return kResultNotReady;
        }
        (this->*m_cvtMember)(pan, m_camera->m_inputInfo.buffer, m_target->buffer);
        return kResultOk;
    }

private:
    using CvtMember = void (CFullPanoramaSceneT::*)(float pan, const unsigned char* src,
                                                    unsigned char* dst);

    void _Init_Converter() {
        const KivFisheyeLib::VideoFrameInfo& input = m_camera->m_inputInfo;
        const KivFisheyeLib::DewarpParams& lens = m_camera->m_dewarpParams;
        const int bitsPerPixel = BitsPerPixel(m_camera->m_pixelFormat);
        m_cvtMember =
            bitsPerPixel == 24 ? &CFullPanoramaSceneT::_CvtRGB24 : &CFullPanoramaSceneT::_CvtRGB32;
        m_converter.Init(static_cast<int>(input.width), static_cast<int>(input.height),
                         static_cast<int>(input.stride), static_cast<int>(m_target->width),
                         static_cast<int>(m_target->height), static_cast<int>(m_target->stride),
                         bitsPerPixel, lens.radiusX, lens.radiusY, lens.innerRadiusRatio);
    }

    void _CvtRGB24(float pan, const unsigned char* src, unsigned char* dst) {
        m_converter.CvtRGB24(pan, src, dst);
    }

    void _CvtRGB32(float pan, const unsigned char* src, unsigned char* dst) {
        m_converter.CvtRGB32(pan, src, dst);
    }

    Converter m_converter;
    CvtMember m_cvtMember = nullptr;
};

class CTableFullPanoramaScene
    : public CFullPanoramaSceneT<UpwardFisheyeAlgoNS::CPanoramaConverter> {
public:
    using CFullPanoramaSceneT::CFullPanoramaSceneT;
    ResultCode Process(unsigned long long) override { return _Process(m_camera->m_pan); }
};

class CCeilingFullPanoramaScene
    : public CFullPanoramaSceneT<DownwardFisheyeAlgoNS::CPanoramaConverter> {
public:
    using CFullPanoramaSceneT::CFullPanoramaSceneT;
    ResultCode Process(unsigned long long) override { return _Process(m_camera->m_pan); }
};

}  // namespace SceneNS

#endif
