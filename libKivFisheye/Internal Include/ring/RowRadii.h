#ifndef KIVFISHEYE_ROW_RADII_H
#define KIVFISHEYE_ROW_RADII_H

#include "ColumnAngles.h"
#include "ring/RingJob.h"

namespace ring {

/// The semi-axes of a row's ellipse, in fractions of the source frame. They grow by repeated
/// addition in single precision, in every form.
struct RowRadii {
    template <class Mount>
    static RowRadii Of(const RingJob& job, int rows) {
        const Span spanX = Mount::Radii(job.radiusX * job.innerRadiusRatio, job.radiusX);
        const Span spanY = Mount::Radii(job.radiusY * job.innerRadiusRatio, job.radiusY);
        return {spanX.first, spanY.first, StepOf(spanX, rows), StepOf(spanY, rows)};
    }

    void NextRow() {
        x += stepX;
        y += stepY;
    }

    float x;
    float y;
    float stepX;
    float stepY;
};

}  // namespace ring

#endif
