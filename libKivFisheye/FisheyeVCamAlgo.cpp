#include "FisheyeVCamAlgo.h"

#include "Degrees.h"
#include "FisheyeVCamAlgo_C.h"
#include "KernelPointer.h"
#include "vcam/VCamOutline.h"
#if defined(__x86_64__)
#include "FisheyeVCamAlgo_AVX.h"
#include "FisheyeVCamAlgo_SSE2.h"
#include "FisheyeVCamAlgo_SSE41.h"
#else
namespace FisheyeVCamAlgoNS {
namespace SSE2 = C;
namespace SSE41 = C;
namespace AVX = C;
}  // namespace FisheyeVCamAlgoNS
#endif

namespace FisheyeVCamAlgoNS {

namespace {

struct CvtVCamRGBImpl {
    static vcam::ConvertFunction& _cvt_rgb24_dispatch;
    static vcam::ConvertFunction& _cvt_rgb32_dispatch;
    static KernelPointer<vcam::ConvertFunction> _cvt_rgb24_impl;
    static KernelPointer<vcam::ConvertFunction> _cvt_rgb32_impl;
};

struct CalculateVCamROICoordinateImpl {
    static vcam::OutlineFunction& _windows_dispatch;
    static vcam::OutlineFunction& _texture_dispatch;
    static KernelPointer<vcam::OutlineFunction> _windows_impl;
    static KernelPointer<vcam::OutlineFunction> _texture_impl;
};

// clang-format off
vcam::ConvertFunction& CvtVCamRGBImpl::_cvt_rgb24_dispatch = FirstCallOf<_cvt_rgb24_impl, AvxSse41OrC, KernelIn<Form::C, C::CvtVCamRGB<24>>, KernelIn<Form::SSE41, SSE41::CvtVCamRGB<24>>, KernelIn<Form::AVX, AVX::CvtVCamRGB<24>>>;
vcam::ConvertFunction& CvtVCamRGBImpl::_cvt_rgb32_dispatch = FirstCallOf<_cvt_rgb32_impl, AvxSse41OrC, KernelIn<Form::C, C::CvtVCamRGB<32>>, KernelIn<Form::SSE41, SSE41::CvtVCamRGB<32>>, KernelIn<Form::AVX, AVX::CvtVCamRGB<32>>>;
KernelPointer<vcam::ConvertFunction> CvtVCamRGBImpl::_cvt_rgb24_impl(_cvt_rgb24_dispatch);
KernelPointer<vcam::ConvertFunction> CvtVCamRGBImpl::_cvt_rgb32_impl(_cvt_rgb32_dispatch);

vcam::OutlineFunction& CalculateVCamROICoordinateImpl::_windows_dispatch = FirstCallOf<_windows_impl, Sse2OrC, KernelIn<Form::C, C::CalculateVCamROICoordinate<CoordinateOrientationWindows>>, KernelIn<Form::SSE2, SSE2::CalculateVCamROICoordinate<CoordinateOrientationWindows>>>;
vcam::OutlineFunction& CalculateVCamROICoordinateImpl::_texture_dispatch = FirstCallOf<_texture_impl, Sse2OrC, KernelIn<Form::C, C::CalculateVCamROICoordinate<CoordinateOrientationTexture>>, KernelIn<Form::SSE2, SSE2::CalculateVCamROICoordinate<CoordinateOrientationTexture>>>;
KernelPointer<vcam::OutlineFunction> CalculateVCamROICoordinateImpl::_windows_impl(_windows_dispatch);
KernelPointer<vcam::OutlineFunction> CalculateVCamROICoordinateImpl::_texture_impl(_texture_dispatch);
// clang-format on

/// Two comparisons, so that NaN passes.
float Clamped(float value, float low, float high) {
    return value < low ? low : (value > high ? high : value);
}

// What each mount does to pan and tilt. `limit` is the largest angle off the axis at which the
// view's edge stays inside the half sphere.

struct WallAim {
    static float EnterPan(float pan) { return Clamped(pan, -90.0F, 90.0F); }
    static float EnterTilt(float tilt) { return Clamped(tilt, -90.0F, 90.0F); }
    static float WidePan(float) { return 0.0F; }
    static float NarrowPan(float pan, float limit) { return Clamped(pan, -limit, limit); }
    static float NarrowTilt(float tilt, float limit) { return Clamped(tilt, -limit, limit); }
    static float RecentredPan(float pan, float divisor) { return pan - pan / divisor; }
};

/// Around a vertical axis the pan is free.
struct RoundAim {
    static float EnterPan(float pan) { return WrapDegrees(pan); }
    static float WidePan(float pan) { return pan; }
    static float NarrowPan(float pan, float) { return pan; }
    static float RecentredPan(float pan, float) { return pan; }
};

struct CeilingAim : RoundAim {
    static float EnterTilt(float tilt) { return Clamped(tilt, 0.0F, 90.0F); }
    static float NarrowTilt(float tilt, float limit) { return Clamped(tilt, 0.0F, limit); }
};

struct TableAim : RoundAim {
    static float EnterTilt(float tilt) { return Clamped(tilt, -90.0F, 0.0F); }
    static float NarrowTilt(float tilt, float limit) { return Clamped(tilt, -limit, 0.0F); }
};

/// `zoom` is limited already, and below 2.
void SetWideView(float zoom, float& eyeZ, float& nearPlane, float& farPlane, float& fieldOfView) {
    eyeZ = (zoom + -1.0F) * -0.99F + 1.0F;
    nearPlane = eyeZ;
    farPlane = eyeZ + 3.0F;
    fieldOfView = 90.0F;
}

void SetNarrowView(float zoom, float& eyeZ, float& nearPlane, float& farPlane, float& fieldOfView) {
    eyeZ = 0.01F;
    nearPlane = 0.01F;
    farPlane = 3.01F;
    fieldOfView = (zoom + -2.0F) * -10.0F + 90.0F;
}

template <class Aim>
void GetCameraSettings(float pan, float tilt, float zoom, bool zoomingOut, float& outEyeZ,
                       float& outNear, float& outFar, float& outFieldOfView, float& outPan,
                       float& outTilt, float& outZoom) {
    outPan = Aim::EnterPan(pan);
    outTilt = Aim::EnterTilt(tilt);
    outZoom = Clamped(zoom, 1.0F, 10.0F);
    if (outZoom < 2.0F) {
        SetWideView(outZoom, outEyeZ, outNear, outFar, outFieldOfView);
        outPan = Aim::WidePan(outPan);
        outTilt = 0.0F;
        return;
    }
    SetNarrowView(outZoom, outEyeZ, outNear, outFar, outFieldOfView);
    const float limit = outFieldOfView * -0.5F + 90.0F;
    outPan = Aim::NarrowPan(outPan, limit);
    outTilt = Aim::NarrowTilt(outTilt, limit);

    const float divisor = 90.0F - outFieldOfView;
    if (zoomingOut && divisor >= 1.0F && divisor <= 30.0F) {
        outPan = Aim::RecentredPan(outPan, divisor);
        outTilt = outTilt - outTilt / divisor;
    }
}

}  // namespace

void GetWallVCamCameraSettings(float pan, float tilt, float zoom, bool zoomingOut, float& outEyeZ,
                               float& outNear, float& outFar, float& outFieldOfView, float& outPan,
                               float& outTilt, float& outZoom) {
    GetCameraSettings<WallAim>(pan, tilt, zoom, zoomingOut, outEyeZ, outNear, outFar,
                               outFieldOfView, outPan, outTilt, outZoom);
}

void GetCeilingVCamCameraSettings(float pan, float tilt, float zoom, bool zoomingOut,
                                  float& outEyeZ, float& outNear, float& outFar,
                                  float& outFieldOfView, float& outPan, float& outTilt,
                                  float& outZoom) {
    GetCameraSettings<CeilingAim>(pan, tilt, zoom, zoomingOut, outEyeZ, outNear, outFar,
                                  outFieldOfView, outPan, outTilt, outZoom);
}

void GetTableVCamCameraSettings(float pan, float tilt, float zoom, bool zoomingOut, float& outEyeZ,
                                float& outNear, float& outFar, float& outFieldOfView, float& outPan,
                                float& outTilt, float& outZoom) {
    GetCameraSettings<TableAim>(pan, tilt, zoom, zoomingOut, outEyeZ, outNear, outFar,
                                outFieldOfView, outPan, outTilt, outZoom);
}

float CvtFieldOfViewToZoom(float, float, float fieldOfView) {
    constexpr float kZoomPerRadian =
        -0x1.6EB166p+2F;  // near -18 / pi; clients rely on the last bit
    const float angle = fieldOfView < kHalfTurn ? fieldOfView : kHalfTurn;
    if (angle < kQuarterTurn) {
        const float zoom = (angle + -kQuarterTurn) * kZoomPerRadian + 2.0F;
        return zoom < 10.0F ? zoom : 10.0F;
    }
    const float zoom = (angle + -kHalfTurn) / -kQuarterTurn + 1.0F;
    return zoom < 1.0F ? 1.0F : zoom;
}

void CvtVCamRGB24(int sourceWidth, int sourceHeight, int sourceStride, const unsigned char* source,
                  float radiusX, float radiusY, float eyeZ, float fieldOfView, float aspect,
                  float nearPlane, const float (&matrix)[16], int targetWidth, int targetHeight,
                  int targetStride, unsigned char* target) {
    CvtVCamRGBImpl::_cvt_rgb24_impl(sourceWidth, sourceHeight, sourceStride, source, radiusX,
                                    radiusY, eyeZ, fieldOfView, aspect, nearPlane, matrix,
                                    targetWidth, targetHeight, targetStride, target);
}

void CvtVCamRGB32(int sourceWidth, int sourceHeight, int sourceStride, const unsigned char* source,
                  float radiusX, float radiusY, float eyeZ, float fieldOfView, float aspect,
                  float nearPlane, const float (&matrix)[16], int targetWidth, int targetHeight,
                  int targetStride, unsigned char* target) {
    CvtVCamRGBImpl::_cvt_rgb32_impl(sourceWidth, sourceHeight, sourceStride, source, radiusX,
                                    radiusY, eyeZ, fieldOfView, aspect, nearPlane, matrix,
                                    targetWidth, targetHeight, targetStride, target);
}

void CalculateVCamROICoordinate(float radiusX, float radiusY, float eyeZ, float fieldOfView,
                                float aspect, float nearPlane, const float (&matrix)[16],
                                bool centerAtOrigin, float* coordinates, int count,
                                CoordinateOrientationType orientation) {
    const float center = CenterOf(centerAtOrigin);
    switch (orientation) {
        case CoordinateOrientationWindows:
            CalculateVCamROICoordinateImpl::_windows_impl(center, center, radiusX, radiusY, eyeZ,
                                                          fieldOfView, aspect, nearPlane, matrix,
                                                          coordinates, count);
            break;
        case CoordinateOrientationTexture:
            CalculateVCamROICoordinateImpl::_texture_impl(center, center, radiusX, radiusY, eyeZ,
                                                          fieldOfView, aspect, nearPlane, matrix,
                                                          coordinates, count);
            break;
    }
}

}  // namespace FisheyeVCamAlgoNS
