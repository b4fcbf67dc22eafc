#ifndef KIVFISHEYE_WALL_JOB_H
#define KIVFISHEYE_WALL_JOB_H

#include "PanoramaJob.h"

namespace wall {

/// One panorama of a camera that looks ahead, and how many degrees it reaches above and below the
/// horizon.
struct WallJob : PanoramaJob {
    float wallViewAngle = 45.0F;
};

}  // namespace wall

#endif
