#include <algorithm>
#include <iterator>

#include "vcam/Aiming.h"

namespace FrontwardFisheyeAlgoNS {

void GetModelViewMatrix(float pan, float tilt, float (&matrix)[16]) {
    const vcam::Turn p(pan);
    const vcam::Turn t(tilt);
    const float columns[16] = {
        p.cosine,
        0.0F,
        p.sine,
        0.0F,  //
        -p.sine * t.sine,
        t.cosine,
        p.cosine * t.sine,
        0.0F,  //
        -p.sine * t.cosine,
        -t.sine,
        p.cosine * t.cosine,
        0.0F,  //
        0.0F,
        0.0F,
        0.0F,
        1.0F,
    };
    std::copy(std::begin(columns), std::end(columns), matrix);
}

vcam::PanTilt CvtXYToVCamPanTilt(float radiusX, float radiusY, float x, float y) {
    const vcam::LensPoint point(radiusX, radiusY, x, y);
    return {point.x * 180.0F + -90.0F, point.y * -180.0F + 90.0F};
}

vcam::PanTiltZoom CvtXYToVCamPanTiltZoom(float radiusX, float radiusY, float x, float y,
                                         float fieldOfView) {
    return vcam::WithZoom(CvtXYToVCamPanTilt(radiusX, radiusY, x, y), radiusX, radiusY,
                          fieldOfView);
}

}  // namespace FrontwardFisheyeAlgoNS
