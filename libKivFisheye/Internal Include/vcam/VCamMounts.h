#ifndef KIVFISHEYE_VCAM_MOUNTS_H
#define KIVFISHEYE_VCAM_MOUNTS_H

#include "FisheyeVCamAlgo.h"

// What the mounts make of a virtual camera: the matrix of a pan and tilt, the conversion that uses
// it, and the way from a point of the source frame to the pan and tilt that look at it.

namespace vcam {

/// The signature of a mount's conversion; pan and tilt are degrees.
using MountConvertFunction = void(int sourceWidth, int sourceHeight, int sourceStride,
                                  const unsigned char* source, float radiusX, float radiusY,
                                  float eyeZ, float fieldOfView, float aspect, float nearPlane,
                                  float pan, float tilt, int targetWidth, int targetHeight,
                                  int targetStride, unsigned char* target);

using MatrixFunction = void(float pan, float tilt, float (&matrix)[16]);

template <MatrixFunction& getMatrix, ConvertFunction& convert>
void ConvertOnMount(int sourceWidth, int sourceHeight, int sourceStride,
                    const unsigned char* source, float radiusX, float radiusY, float eyeZ,
                    float fieldOfView, float aspect, float nearPlane, float pan, float tilt,
                    int targetWidth, int targetHeight, int targetStride, unsigned char* target) {
    float matrix[16];
    getMatrix(pan, tilt, matrix);
    convert(sourceWidth, sourceHeight, sourceStride, source, radiusX, radiusY, eyeZ, fieldOfView,
            aspect, nearPlane, matrix, targetWidth, targetHeight, targetStride, target);
}

/// Degrees.
struct PanTilt {
    float pan;
    float tilt;
};

struct PanTiltZoom {
    PanTilt angles;
    float zoom;
};

using AimFunction = PanTilt(float radiusX, float radiusY, float x, float y);

template <AimFunction& aim>
PanTiltZoom AimWithZoom(float radiusX, float radiusY, float x, float y, float fieldOfView) {
    return {aim(radiusX, radiusY, x, y),
            FisheyeVCamAlgoNS::CvtFieldOfViewToZoom(radiusX, radiusY, fieldOfView)};
}

}  // namespace vcam

/// A camera on a wall. Pan turns about the vertical, positive to the right, and positive tilt looks
/// up.
namespace FrontwardFisheyeAlgoNS {

/// The rotation by minus pan about y after one by tilt about x, column by column.
vcam::MatrixFunction GetModelViewMatrix;

inline constexpr auto& CvtVCamRGB24 =
    vcam::ConvertOnMount<GetModelViewMatrix, FisheyeVCamAlgoNS::CvtVCamRGB24>;
inline constexpr auto& CvtVCamRGB32 =
    vcam::ConvertOnMount<GetModelViewMatrix, FisheyeVCamAlgoNS::CvtVCamRGB32>;

/// The pan and tilt for a point in fractions of the source frame from its top left. Both run evenly
/// from -90 to 90 degrees across the lens image's bounding box, so away from the centre the view
/// only roughly faces the point. The zoom is the one that shows `fieldOfView` radians.
vcam::AimFunction CvtXYToVCamPanTilt;
inline constexpr auto& CvtXYToVCamPanTiltZoom = vcam::AimWithZoom<CvtXYToVCamPanTilt>;

}  // namespace FrontwardFisheyeAlgoNS

/// A camera on a ceiling. Tilt, 0 to 90, swings the view off the axis towards the top of the frame,
/// and pan then carries it around the axis, anticlockwise as seen on the frame: the scene reverses
/// its pan.
namespace DownwardFisheyeAlgoNS {

/// The rotation by pan about z after one by tilt about x, column by column.
vcam::MatrixFunction GetModelViewMatrix;

inline constexpr auto& CvtVCamRGB24 =
    vcam::ConvertOnMount<GetModelViewMatrix, FisheyeVCamAlgoNS::CvtVCamRGB24>;
inline constexpr auto& CvtVCamRGB32 =
    vcam::ConvertOnMount<GetModelViewMatrix, FisheyeVCamAlgoNS::CvtVCamRGB32>;

/// The pan and tilt that face a point in fractions of the source frame from its top left; the rim
/// is 90 degrees off the axis. The zoom is the one that shows `fieldOfView` radians.
vcam::AimFunction CvtXYToVCamPanTilt;
inline constexpr auto& CvtXYToVCamPanTiltZoom = vcam::AimWithZoom<CvtXYToVCamPanTilt>;

}  // namespace DownwardFisheyeAlgoNS

/// A camera on a table. Its tilt is 0 or negative, so at pan 0 it looks to the bottom of the frame;
/// otherwise as on a ceiling.
namespace UpwardFisheyeAlgoNS {

inline constexpr auto& CvtVCamRGB24 = DownwardFisheyeAlgoNS::CvtVCamRGB24;
inline constexpr auto& CvtVCamRGB32 = DownwardFisheyeAlgoNS::CvtVCamRGB32;

vcam::AimFunction CvtXYToVCamPanTilt;
inline constexpr auto& CvtXYToVCamPanTiltZoom = vcam::AimWithZoom<CvtXYToVCamPanTilt>;

}  // namespace UpwardFisheyeAlgoNS

#endif
