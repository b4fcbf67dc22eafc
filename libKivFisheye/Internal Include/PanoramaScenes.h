#ifndef KIVFISHEYE_PANORAMA_SCENES_H
#define KIVFISHEYE_PANORAMA_SCENES_H

#include <type_traits>

#include "CameraRules.h"
#include "Degrees.h"
#include "DownwardFisheyeAlgo.h"
#include "FrontwardFisheyeAlgo.h"
#include "KivFisheyeCamera.h"
#include "UpwardFisheyeAlgo.h"

namespace SceneNS {

/// A panorama of the camera's input by one converter. The leaf classes below say by which angle it
/// is turned.
///
/// The tag of a converter is true for the wall's, which takes no angle and is shaped by
/// `wallViewAngle`, and false for those that turn and are shaped by `innerRadiusRatio`.
template <class Converter>
class CPanoramaSceneT : public CKivFisheyeCamera::CScene {
public:
    CPanoramaSceneT(CKivFisheyeCamera* camera, KivFisheyeLib::VideoFrameInfo* target)
        : CScene(camera, target) {
        xInitConverter();
    }

    void OnVideoParamsChanged() override { xInitConverter(); }
    void OnDewarpParamsChanged() override { xInitConverter(); }

    /// A panorama has no tilt and no zoom: the camera keeps what it has of them.
    ResultCode doSetAbsolutePTZ(float pan, float, float, bool) override {
        m_camera->m_pan = WrapDegrees(pan);
        return kResultOk;
    }

protected:
    ResultCode xProcess(float pan) {
        if (m_camera->m_inputInfo.buffer == nullptr || m_target->buffer == nullptr) {
            return kResultNotReady;
        }
        (this->*m_cvtMember)(pan, m_camera->m_inputInfo.buffer, m_target->buffer);
        return kResultOk;
    }

private:
    using Tag = std::integral_constant<
        bool, std::is_same_v<Converter, FrontwardFisheyeAlgoNS::CPanoramaConverter>>;
    using CvtMember = void (CPanoramaSceneT::*)(float pan, const unsigned char* src,
                                                unsigned char* dst);

    static float xShape(const KivFisheyeLib::DewarpParams& lens, std::false_type) {
        return lens.innerRadiusRatio;
    }
    static float xShape(const KivFisheyeLib::DewarpParams& lens, std::true_type) {
        return lens.wallViewAngle;
    }

    void xInitConverter() {
        const KivFisheyeLib::VideoFrameInfo& input = m_camera->m_inputInfo;
        const KivFisheyeLib::DewarpParams& lens = m_camera->m_dewarpParams;
        const int bitsPerPixel = BitsPerPixel(m_camera->m_pixelFormat);
        m_cvtMember =
            bitsPerPixel == 24 ? &CPanoramaSceneT::xCvtRGB24 : &CPanoramaSceneT::xCvtRGB32;
        m_converter.Init(static_cast<int>(input.width), static_cast<int>(input.height),
                         static_cast<int>(input.stride), static_cast<int>(m_target->width),
                         static_cast<int>(m_target->height), static_cast<int>(m_target->stride),
                         bitsPerPixel, lens.radiusX, lens.radiusY, xShape(lens, Tag()));
    }

    void xCvtRGB24(float pan, const unsigned char* src, unsigned char* dst) {
        if constexpr (Tag::value) {
            m_converter.CvtRGB24(src, dst);
        } else {
            m_converter.CvtRGB24(pan, src, dst);
        }
    }

    void xCvtRGB32(float pan, const unsigned char* src, unsigned char* dst) {
        if constexpr (Tag::value) {
            m_converter.CvtRGB32(src, dst);
        } else {
            m_converter.CvtRGB32(pan, src, dst);
        }
    }

    Converter m_converter;
    CvtMember m_cvtMember = nullptr;
};

/// One panorama of the whole lens image. Pan turns it as it is, while a dual panorama and a
/// ceiling's virtual camera take 360 minus it: clients rely on each.
template <class Converter>
class CFullPanoramaSceneT : public CPanoramaSceneT<Converter> {
public:
    using CPanoramaSceneT<Converter>::CPanoramaSceneT;
    ResultCode Process(unsigned long long) override {
        return this->xProcess(this->m_camera->m_pan);
    }
};

/// Two half panoramas, one above the other.
template <class Converter>
class CDualPanoramaSceneT : public CPanoramaSceneT<Converter> {
public:
    using CPanoramaSceneT<Converter>::CPanoramaSceneT;
    ResultCode Process(unsigned long long) override {
        return this->xProcess(360.0F - this->m_camera->m_pan);
    }
};

using CTableFullPanoramaScene = CFullPanoramaSceneT<UpwardFisheyeAlgoNS::CPanoramaConverter>;
using CCeilingFullPanoramaScene = CFullPanoramaSceneT<DownwardFisheyeAlgoNS::CPanoramaConverter>;
using CTableDualPanoramaScene = CDualPanoramaSceneT<UpwardFisheyeAlgoNS::CDualPanoramaConverter>;
using CCeilingDualPanoramaScene =
    CDualPanoramaSceneT<DownwardFisheyeAlgoNS::CDualPanoramaConverter>;

/// A wall's panorama shows all there is and does not turn.
class CWallFullPanoramaScene
    : public CFullPanoramaSceneT<FrontwardFisheyeAlgoNS::CPanoramaConverter> {
public:
    using CFullPanoramaSceneT::CFullPanoramaSceneT;

    ResultCode Process(unsigned long long) override { return xProcess(0.0F); }

    ResultCode doSetAbsolutePTZ(float, float, float, bool) override {
        m_camera->m_pan = 0.0F;
        return kResultOk;
    }
};

}  // namespace SceneNS

#endif
