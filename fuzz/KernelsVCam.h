#ifndef KIVFISHEYE_FUZZ_KERNELS_VCAM_H
#define KIVFISHEYE_FUZZ_KERNELS_VCAM_H

#include "KernelsInput.h"
#include "support/VCamModel.h"

/// Gives the frame a camera: that of a mount, or now and then any numbers. Whether the camera is
/// one that mounts have.
bool SetCamera(KernelsInput& input, VCamFrame& frame);

/// How far the lanes' arccosine and the roundings of single precision may turn a ray, in radians at
/// the eye.
constexpr double kErrorOfArccosine = 0.0058;
constexpr double kErrorOfRounding = 0.0005;

#endif
