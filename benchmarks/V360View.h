#ifndef KIVFISHEYE_V360_VIEW_H
#define KIVFISHEYE_V360_VIEW_H

#include <memory>

#include "ViewJob.h"

/// FFmpeg's v360 filter on one thread, with nearest pixels. It takes and gives planes, so frames of
/// 24 bits are laid out so beforehand. The filter works out its map anew for every angle that it is
/// told, hence one: pan. Tilt must not change.
std::unique_ptr<ViewDrawer> FfmpegV360(ViewJob& job);

#endif
