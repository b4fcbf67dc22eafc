#ifndef KIVFISHEYE_FISHEYE_VCAM_ALGO_H
#define KIVFISHEYE_FISHEYE_VCAM_ALGO_H

#include "vcam/VCamJob.h"

/// The virtual camera, a flat view out of the lens image: what becomes of a wanted pan, tilt and
/// zoom, and the conversion of one frame.
///
/// The lens is a unit sphere, its axis the z axis, and a camera at rest looks along minus z; x
/// points to the right of the source frame and y to its top. Below zoom 2 the view is 90 degrees
/// high and the eye moves from the sphere's surface, from where the view shows the whole lens
/// circle, to its centre. From zoom 2 on the eye stays there and the view narrows by 10 degrees for
/// each unit.
namespace FisheyeVCamAlgoNS {

/// Limits pan and tilt, in degrees, and zoom to what the mount allows, and gives the position of
/// the eye on the axis, the distances of the near and the far plane from it, and the view's height
/// in degrees.
///
/// Below zoom 2 there is no tilt, and on a wall no pan. Otherwise the middles of the view's edges
/// stay about inside the half sphere. While `zoomingOut`, between zoom 2 and 5, the view also
/// glides towards the axis, so that it has arrived there at zoom 2. NaN passes through.
void GetWallVCamCameraSettings(float pan, float tilt, float zoom, bool zoomingOut, float& outEyeZ,
                               float& outNear, float& outFar, float& outFieldOfView, float& outPan,
                               float& outTilt, float& outZoom);
void GetCeilingVCamCameraSettings(float pan, float tilt, float zoom, bool zoomingOut,
                                  float& outEyeZ, float& outNear, float& outFar,
                                  float& outFieldOfView, float& outPan, float& outTilt,
                                  float& outZoom);
void GetTableVCamCameraSettings(float pan, float tilt, float zoom, bool zoomingOut, float& outEyeZ,
                                float& outNear, float& outFar, float& outFieldOfView, float& outPan,
                                float& outTilt, float& outZoom);

/// The zoom, 1 to 10, that shows `fieldOfView` radians: 180 degrees are 1, 90 are 2, 10 are 10. The
/// radii are not used.
float CvtFieldOfViewToZoom(float radiusX, float radiusY, float fieldOfView);

/// Convert one frame; see `vcam::VCamJob` for the arguments. Output pixels whose ray misses the
/// lens, or meets it outside the frame, come out as zero bytes. Throws `std::bad_alloc` when memory
/// runs out.
vcam::ConvertFunction CvtVCamRGB24;
vcam::ConvertFunction CvtVCamRGB32;

}  // namespace FisheyeVCamAlgoNS

#endif
