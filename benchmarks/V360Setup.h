#ifndef KIVFISHEYE_V360_SETUP_H
#define KIVFISHEYE_V360_SETUP_H

#include <functional>

#include "PanoramaJob.h"

/// Sets up FFmpeg's v360 filter from a fisheye picture to a panorama of the job's size, which
/// builds its maps. Throws `std::runtime_error` when FFmpeg refuses.
std::function<void()> FfmpegV360Setup(const PanoramaJob& job);

#endif
