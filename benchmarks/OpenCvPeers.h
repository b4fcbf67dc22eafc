#ifndef KIVFISHEYE_OPENCV_PEERS_H
#define KIVFISHEYE_OPENCV_PEERS_H

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "PanoramaJob.h"

/// OpenCV's ways to convert the job's frame on one thread with the same nearest pixels, by the kind
/// of map: name and conversion. The maps are made here and not per frame.
std::vector<std::pair<std::string, std::function<void()>>> OpenCvRemaps(PanoramaJob& job);

#endif
