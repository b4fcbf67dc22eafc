#include "KivFisheyeCamera.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "CameraRules.h"
#include "RelaxedAccess.h"
#include "vcam/VCamOutline.h"

using namespace KivFisheyeLib;

// Clients hand these records over in memory.
static_assert(sizeof(PixelFormat) == 4 && sizeof(MountType) == 4 && sizeof(ViewType) == 4);
static_assert(offsetof(VideoFrameInfo, width) == 0 && offsetof(VideoFrameInfo, height) == 4 &&
              offsetof(VideoFrameInfo, stride) == 8);
static_assert(sizeof(void*) != 8 ||
              (offsetof(VideoFrameInfo, buffer) == 16 && sizeof(VideoFrameInfo) == 24));
static_assert(offsetof(DewarpParams, radiusX) == 0 && offsetof(DewarpParams, radiusY) == 4 &&
              offsetof(DewarpParams, wallViewAngle) == 8 &&
              offsetof(DewarpParams, innerRadiusRatio) == 12 && sizeof(DewarpParams) == 16);
static_assert(sizeof(ResultCode) == 8 && kResultNotReady > 0);

CKivFisheyeCamera::CKivFisheyeCamera() {
    xCreateScene();
}

CKivFisheyeCamera::~CKivFisheyeCamera() = default;

// The first conversion shows a change of mount or view at once, without waiting for a frame.
void CKivFisheyeCamera::xCreateScene() {
    xMakeScene();
    if (m_scene != nullptr) {
        m_scene->Process(0);
    }
}

void CKivFisheyeCamera::xMakeScene() {
    m_buildFailed = true;
    m_scene.reset();
    m_scene = SceneNS::CreateScene(this, nullptr);
    m_buildFailed = false;
}

void CKivFisheyeCamera::xTellScene(void (CScene::*event)()) {
    if (m_scene != nullptr) {
        m_buildFailed = true;
        (m_scene.get()->*event)();
        m_buildFailed = false;
    } else if (m_buildFailed) {
        xMakeScene();
    }
}

ResultCode CKivFisheyeCamera::IsPixelFormatAccepted(PixelFormat format) {
    static constexpr PixelFormat kAccepted[] = {PixelFormatRGB24, PixelFormatRGB32};
    const bool accepted =
        std::find(std::begin(kAccepted), std::end(kAccepted), format) != std::end(kAccepted);
    return accepted ? kResultOk : kResultNoChange;
}

ResultCode CKivFisheyeCamera::SetInputVideoParams(const VideoFrameInfo& info, PixelFormat format) {
    if (IsPixelFormatAccepted(format) != kResultOk || !ValidateVideoFrameInfo(info, format)) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    StoreRelaxed(m_inputInfo.width, info.width);
    StoreRelaxed(m_inputInfo.height, info.height);
    m_inputInfo.stride = info.stride;
    m_inputInfo.buffer = info.buffer;
    m_pixelFormat = format;
    xTellScene(&CScene::OnVideoParamsChanged);
    return kResultOk;
}

ResultCode CKivFisheyeCamera::SetOutputVideoParams(const VideoFrameInfo& info) {
    const Lock lock(this);
    if (!ValidateVideoFrameInfo(info, m_pixelFormat) || info.width % 8 != 0) {
        return kResultInvalidArgument;
    }
    m_outputInfo = info;
    xTellScene(&CScene::OnVideoParamsChanged);
    return kResultOk;
}

ResultCode CKivFisheyeCamera::SetMountType(MountType mount) {
    const Lock lock(this);
    if (mount == m_mountType && !m_buildFailed) {
        return kResultNoChange;
    }
    if (!ValidateMountTypeAndViewType(mount, m_viewType)) {
        return kResultInvalidArgument;
    }
    StoreRelaxed(m_mountType, mount);
    xCreateScene();
    return kResultOk;
}

ResultCode CKivFisheyeCamera::GetMountType(MountType* mount) {
    if (mount == nullptr) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    *mount = m_mountType;
    return kResultOk;
}

ResultCode CKivFisheyeCamera::SetViewType(ViewType view) {
    const Lock lock(this);
    if (view == m_viewType && !m_buildFailed) {
        return kResultNoChange;
    }
    if (!ValidateMountTypeAndViewType(m_mountType, view)) {
        return kResultInvalidArgument;
    }
    StoreRelaxed(m_viewType, view);
    xCreateScene();
    return kResultOk;
}

ResultCode CKivFisheyeCamera::GetViewType(ViewType* view) {
    if (view == nullptr) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    *view = m_viewType;
    return kResultOk;
}

ResultCode CKivFisheyeCamera::SetMountAndViewType(MountType mount, ViewType view) {
    if (!ValidateMountTypeAndViewType(mount, view)) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    StoreRelaxed(m_mountType, mount);
    StoreRelaxed(m_viewType, view);
    xCreateScene();
    return kResultOk;
}

ResultCode CKivFisheyeCamera::GetMountAndViewType(MountType* mount, ViewType* view) {
    if (mount == nullptr || view == nullptr) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    *mount = m_mountType;
    *view = m_viewType;
    return kResultOk;
}

ResultCode CKivFisheyeCamera::GetRecommendOutputVideoSize(unsigned int* width,
                                                          unsigned int* height) {
    if (width == nullptr || height == nullptr) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    if (!ValidateVideoFrameInfo(m_inputInfo, m_pixelFormat)) {
        return kResultNotReady;
    }
    GetRecommendedOutputVideoSize(m_inputInfo.width, m_inputInfo.height, m_mountType, m_viewType,
                                  m_dewarpParams, width, height);
    return kResultOk;
}

ResultCode CKivFisheyeCamera::GetRecommendOutputVideoRatio(float* ratio) {
    const DewarpParams params{
        LoadRelaxed(m_dewarpParams.radiusX), LoadRelaxed(m_dewarpParams.radiusY),
        LoadRelaxed(m_dewarpParams.wallViewAngle), LoadRelaxed(m_dewarpParams.innerRadiusRatio)};
    return GetRecommendOutputVideoRatio(LoadRelaxed(m_inputInfo.width),
                                        LoadRelaxed(m_inputInfo.height), LoadRelaxed(m_mountType),
                                        LoadRelaxed(m_viewType), params, ratio);
}

ResultCode CKivFisheyeCamera::GetRecommendOutputVideoRatio(unsigned int width, unsigned int height,
                                                           MountType mount, ViewType view,
                                                           const DewarpParams& params,
                                                           float* ratio) {
    if (ratio == nullptr || !ValidateMountTypeAndViewType(mount, view) ||
        !ValidateDewarpParams(params)) {
        return kResultInvalidArgument;
    }
    *ratio = GetRecommendedOutputVideoRatio(width, height, mount, view, params);
    return kResultOk;
}

ResultCode CKivFisheyeCamera::SetAbsolutePTZ(float pan, float tilt, float zoom) {
    const Lock lock(this);
    if (m_scene == nullptr) {
        return kResultNotReady;
    }
    return m_scene->SetAbsolutePTZ(pan, tilt, zoom < 1.0F ? m_zoom : zoom);
}

ResultCode CKivFisheyeCamera::SetRelativePTZ(float pan, float tilt, float zoom) {
    const Lock lock(this);
    if (m_scene == nullptr) {
        return kResultNotReady;
    }
    return m_scene->SetRelativePTZ(pan, tilt, zoom);
}

ResultCode CKivFisheyeCamera::GetPTZ(float* pan, float* tilt, float* zoom) {
    if (pan == nullptr || tilt == nullptr || zoom == nullptr) {
        return kResultNullPointer;
    }
    const Lock lock(this);
    *pan = m_pan;
    *tilt = m_tilt;
    *zoom = m_zoom;
    return kResultOk;
}

ResultCode CKivFisheyeCamera::SetDewarpParams(const DewarpParams& params) {
    if (!ValidateDewarpParams(params)) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    // As bytes: 0 and -0 differ, and a NaN equals itself.
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison)
    if (std::memcmp(&params, &m_dewarpParams, sizeof(params)) != 0 || m_buildFailed) {
        StoreRelaxed(m_dewarpParams.radiusX, params.radiusX);
        StoreRelaxed(m_dewarpParams.radiusY, params.radiusY);
        StoreRelaxed(m_dewarpParams.wallViewAngle, params.wallViewAngle);
        StoreRelaxed(m_dewarpParams.innerRadiusRatio, params.innerRadiusRatio);
        xTellScene(&CScene::OnDewarpParamsChanged);
    }
    return kResultOk;
}

ResultCode CKivFisheyeCamera::GetDewarpParams(DewarpParams* params) {
    if (params == nullptr) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    *params = m_dewarpParams;
    return kResultOk;
}

ResultCode CKivFisheyeCamera::Process(unsigned long long frameTag) {
    const Lock lock(this);
    if (m_inputInfo.buffer == nullptr || m_outputInfo.buffer == nullptr) {
        return kResultNullPointer;
    }
    if (m_scene == nullptr) {
        return kResultNotReady;
    }
    return m_scene->Process(frameTag);
}

ResultCode CKivFisheyeCamera::CvtXYToVCamPanTilt(float x, float y, float& pan, float& tilt) {
    const vcam::PanTilt angles =
        ::CvtXYToVCamPanTilt(LoadRelaxed(m_mountType), LoadRelaxed(m_dewarpParams.radiusX),
                             LoadRelaxed(m_dewarpParams.radiusY), x, y);
    pan = angles.pan;
    tilt = angles.tilt;
    return kResultOk;
}

ResultCode CKivFisheyeCamera::CvtXYToVCamPanTiltZoom(float x, float y, float fieldOfView,
                                                     float& pan, float& tilt, float& zoom) {
    const vcam::PanTiltZoom aim =
        ::CvtXYToVCamPanTiltZoom(LoadRelaxed(m_mountType), LoadRelaxed(m_dewarpParams.radiusX),
                                 LoadRelaxed(m_dewarpParams.radiusY), x, y, fieldOfView);
    pan = aim.angles.pan;
    tilt = aim.angles.tilt;
    zoom = aim.zoom;
    return kResultOk;
}

ResultCode CKivFisheyeCamera::GetVCamROI(float* points, int count) {
    if (!IsPointList(points, count, 16)) {
        return kResultInvalidArgument;
    }
    const Lock lock(this);
    if (m_outputInfo.width == 0 || m_outputInfo.height == 0) {
        return kResultNotReady;
    }
    float matrix[16];
    switch (m_mountType) {
        case MountTypeWall:
            FrontwardFisheyeAlgoNS::GetModelViewMatrix(m_pan, m_tilt, matrix);
            break;
        case MountTypeCeiling:
            DownwardFisheyeAlgoNS::GetModelViewMatrix(360.0F - m_pan, m_tilt, matrix);
            break;
        case MountTypeTable:
            DownwardFisheyeAlgoNS::GetModelViewMatrix(m_pan, m_tilt, matrix);
            break;
        default:
            return kResultOk;
    }
    const float aspect =
        static_cast<float>(m_outputInfo.width) / static_cast<float>(m_outputInfo.height);
    FisheyeVCamAlgoNS::CalculateVCamROICoordinate(
        m_dewarpParams.radiusX, m_dewarpParams.radiusY, m_vcamEyeZ, m_vcamFieldOfView, aspect,
        m_vcamNear, matrix, false, points, count, CoordinateOrientationWindows);
    return kResultOk;
}
