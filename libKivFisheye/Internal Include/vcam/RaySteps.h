#ifndef KIVFISHEYE_VCAM_RAY_STEPS_H
#define KIVFISHEYE_VCAM_RAY_STEPS_H

#include "sse/sse4Floats.h"
#include "vcam/VCamJob.h"

namespace vcam {

/// One component of the rays: that of the output's first pixel, and how it grows along a row and
/// from row to row.
struct RaySteps {
    RaySteps(const VCamJob& job, const ViewRectangle& view, int component) {
        const float* const m = job.matrix + component;
        const float matrixRow[4] = {m[0], m[4], m[8], m[12]};
        const float corner[4] = {-view.right, view.top, -job.nearPlane, -1.0F};
        start = Dot(sse::sse4Floats::Load(matrixRow), sse::sse4Floats::Load(corner));
        perPixel = m[0] * view.stepX;
        perRow = m[4] * view.stepY;
    }

    float start;
    float perPixel;
    float perRow;
};

}  // namespace vcam

#endif
