#ifndef KIVFISHEYE_OPENCV_VIEWS_H
#define KIVFISHEYE_OPENCV_VIEWS_H

#include <memory>

#include "ViewJob.h"

// OpenCV's ways to draw a view that moves, on one thread and with nearest pixels. They spare the
// test whether a ray is inside the lens's rim, so all rays of the job have to be.

/// Makes the map anew for each strip of rows, with functions on arrays, while the strip is in the
/// cache: rays, their angles, positions.
std::unique_ptr<ViewDrawer> OpenCvStrips(ViewJob& job);

/// Turns a map that was made once for the job's tilt, strip by strip. Tilt must not change.
std::unique_ptr<ViewDrawer> OpenCvTurnedMap(ViewJob& job);

/// Makes the map of a frame with the fisheye camera model, without distortion.
std::unique_ptr<ViewDrawer> OpenCvUndistort(ViewJob& job);

#endif
