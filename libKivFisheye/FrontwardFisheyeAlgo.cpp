#include "vcam/Aiming.h"

namespace FrontwardFisheyeAlgoNS {

void GetModelViewMatrix(float pan, float tilt, float (&matrix)[16]) {
    const vcam::Turn p(pan);
    const vcam::Turn t(tilt);
    vcam::SetRotation({{p.cosine, -p.sine * t.sine, -p.sine * t.cosine},
                       {0.0F, t.cosine, -t.sine},
                       {p.sine, p.cosine * t.sine, p.cosine * t.cosine}},
                      matrix);
}

vcam::PanTilt CvtXYToVCamPanTilt(float radiusX, float radiusY, float x, float y) {
    const vcam::LensPoint point(radiusX, radiusY, x, y);
    return {point.x * 180.0F + -90.0F, point.y * -180.0F + 90.0F};
}

}  // namespace FrontwardFisheyeAlgoNS
