#ifndef KIVFISHEYE_TESTS_UNUSUAL_FRAMES_H
#define KIVFISHEYE_TESTS_UNUSUAL_FRAMES_H

#include <vector>

#include "support/PanoramaFrames.h"

// Frames that no conversion serves in full. Each list takes everything else from `frames`.

/// Sources without a pixel, whatever their strides say.
std::vector<PanoramaFrames> WithEmptySources(const PanoramaFrames& frames);

/// Sources beyond what an int counts by a byte, and sources whose rows do not fit in their stride.
std::vector<PanoramaFrames> WithUnusableSources(const PanoramaFrames& frames, int bytesPerPixel);

/// Outputs without a pixel.
std::vector<PanoramaFrames> WithEmptyOutputs(const PanoramaFrames& frames);

/// Outputs of more pixels than a table has entries. A negative side stands for a huge one.
std::vector<PanoramaFrames> WithTooLargeOutputs(const PanoramaFrames& frames);

#endif
