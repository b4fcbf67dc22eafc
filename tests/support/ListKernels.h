#ifndef KIVFISHEYE_TESTS_LIST_KERNELS_H
#define KIVFISHEYE_TESTS_LIST_KERNELS_H

#include "FisheyeAlgoCommon.h"
#include "PanoramaOutlines.h"
#include "support/OutlineModel.h"

// The kernels of outlines and of the wall's mesh, in each of their forms.

using EllipseFunction = void(float centerX, float centerY, float radiusX, float radiusY,
                             float* points, int count);
using WallOutlineFunction = void(float centerX, float centerY, float radiusX, float radiusY,
                                 float wallViewAngle, float* points, int count);
using WallMeshFunction = void(int width, int height, float wallViewAngle, bool centerAtOrigin,
                              float* coordinates);

EllipseFunction& EllipseOf(ListForm form, CoordinateOrientationType orientation);
DownwardFisheyeAlgoNS::DualOutlineFunction& HalfRingsOf(ListForm form);
/// That of windows orientation, the only one.
WallOutlineFunction& WallOutlineOf(ListForm form);
WallMeshFunction& WallMeshOf(ListForm form);

#endif
