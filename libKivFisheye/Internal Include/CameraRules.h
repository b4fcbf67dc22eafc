#ifndef KIVFISHEYE_CAMERA_RULES_H
#define KIVFISHEYE_CAMERA_RULES_H

#include "KivFisheyeTypes.h"
#include "vcam/VCamMounts.h"

// What the camera asks about its arguments: whether they are acceptable, which output suits them,
// and which way a point lies.

/// 24 or 32; 0 for a number that names no format.
int BitsPerPixel(KivFisheyeLib::PixelFormat format);

/// True when the record describes a frame of the format: no side is 0, the stride is exactly the
/// row's bytes rounded up to a multiple of 4, computed in 32 bits, and there is a buffer.
bool ValidateVideoFrameInfo(const KivFisheyeLib::VideoFrameInfo& info,
                            KivFisheyeLib::PixelFormat format);

/// False when a value is outside its range. NaN is not.
bool ValidateDewarpParams(const KivFisheyeLib::DewarpParams& params);

/// False for wall with dual panorama. Numbers that name no mount or view are let through.
bool ValidateMountTypeAndViewType(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view);

/// The output size in pixels that suits an input of `width` by `height`, or that size itself where
/// nothing is known for the mount and view. A virtual camera gets the lens ellipse's size with both
/// sides rounded up to multiples of 8.
void GetRecommendedOutputVideoSize(unsigned int width, unsigned int height,
                                   KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view,
                                   const KivFisheyeLib::DewarpParams& params,
                                   unsigned int* outWidth, unsigned int* outHeight);

/// Width over height of that output, from unrounded values; 1.0 where nothing is known or there is
/// no input.
float GetRecommendedOutputVideoRatio(unsigned int width, unsigned int height,
                                     KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view,
                                     const KivFisheyeLib::DewarpParams& params);

/// The pan and tilt, and with them the zoom, by the mount's own function. A number that names no
/// mount gives 0 and 0, and 1.
vcam::PanTilt CvtXYToVCamPanTilt(KivFisheyeLib::MountType mount, float radiusX, float radiusY,
                                 float x, float y);
vcam::PanTiltZoom CvtXYToVCamPanTiltZoom(KivFisheyeLib::MountType mount, float radiusX,
                                         float radiusY, float x, float y, float fieldOfView);

#endif
