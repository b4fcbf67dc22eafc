#ifndef KIVFISHEYE_VIEW_MODEL_H
#define KIVFISHEYE_VIEW_MODEL_H

#include "ViewJob.h"

/// Source pixels, from the lens axis to the right and down.
struct LensOffset {
    double x;
    double y;
    double Radius() const;
};

/// Where the lens would show an output pixel's ray, within its rim or beyond.
LensOffset OffsetOfRay(const ViewJob& job, const View& view, int column, int row);

#endif
