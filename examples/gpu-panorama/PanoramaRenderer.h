#ifndef GPU_PANORAMA_PANORAMA_RENDERER_H
#define GPU_PANORAMA_PANORAMA_RENDERER_H

#include <Picture.h>

#include "PanoramaMesh.h"

/// Draws the panorama of a fisheye picture with OpenGL, which must be current on this thread.
/// Pixels are the nearest ones of the source. Throws `std::runtime_error` when OpenGL refuses
/// something, and `std::invalid_argument` as `MakePanoramaMesh` does.
Picture RenderPanorama(const Picture& fisheye, const PanoramaView& view, int width, int height);

#endif
