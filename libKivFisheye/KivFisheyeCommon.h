#ifndef KIVFISHEYE_COMMON_H
#define KIVFISHEYE_COMMON_H

#include <utility>

#include "KivFisheyeExport.h"

/// The largest width and height that have the shape of the source and fit in the bound, sides
/// rounded down. Any side of 0 gives 0 by 0. Any thread may call at any time.
KIVFISHEYE_API std::pair<int, int> GetRatioRectSize(int srcWidth, int srcHeight, int boundWidth,
                                                    int boundHeight);

#endif
