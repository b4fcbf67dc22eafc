#ifndef KIVFISHEYE_OPENCV_MAPS_H
#define KIVFISHEYE_OPENCV_MAPS_H

#include <functional>

#include "PanoramaJob.h"

/// OpenCV's way to the same place: two maps of floats, filled by a plain loop, and turned into the
/// fixed map of nearest pixels. Sines and cosines of the columns are taken once.
std::function<void()> OpenCvMaps(const PanoramaJob& job, bool isWall);

#endif
