#ifndef KIVFISHEYE_RING_JOB_H
#define KIVFISHEYE_RING_JOB_H

#include "PanoramaJob.h"

namespace ring {

/// One unrolling of a ring, with the part of the radius that is left out around the centre.
struct RingJob : PanoramaJob {
    float innerRadiusRatio = 0.0F;
};

}  // namespace ring

#endif
