#ifndef KIVFISHEYE_VCAM_RAY_STEPS_H
#define KIVFISHEYE_VCAM_RAY_STEPS_H

#include "sse/sse4Floats.h"
#include "vcam/VCamJob.h"

namespace vcam {

/// The row of a view matrix that gives one component of a turned ray.
inline sse::sse4Floats MatrixRow(const float (&matrix)[16], int component) {
    const float* const m = matrix + component;
    const float row[4] = {m[0], m[4], m[8], m[12]};
    return sse::sse4Floats::Load(row);
}

/// One component of the rays: that of the output's first pixel, and how it grows along a row and
/// from row to row.
struct RaySteps {
    RaySteps(const VCamJob& job, const ViewGrid& view, int component) {
        const float* const m = job.matrix + component;
        const float corner[4] = {-view.right, view.top, -job.nearPlane, -1.0F};
        start = Dot(MatrixRow(job.matrix, component), sse::sse4Floats::Load(corner));
        perPixel = m[0] * view.stepX;
        perRow = m[4] * view.stepY;
    }

    float start;
    float perPixel;
    float perRow;
};

}  // namespace vcam

#endif
