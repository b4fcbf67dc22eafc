#ifndef KIVFISHEYE_FUZZ_SURFACE_GEOMETRY_H
#define KIVFISHEYE_FUZZ_SURFACE_GEOMETRY_H

#include "Pictures.h"
#include "SurfaceModel.h"

/// Fails unless pixels of a virtual camera's picture show what lies in their directions, as far as
/// the kernels' arithmetic reaches.
void CheckView(const unsigned char* output, const FrameShape& shape, const SurfaceModel& model);

#endif
