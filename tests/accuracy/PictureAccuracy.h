#ifndef KIVFISHEYE_TESTS_PICTURE_ACCURACY_H
#define KIVFISHEYE_TESTS_PICTURE_ACCURACY_H

#include "accuracy/GeometryGenerator.h"
#include "accuracy/PictureFigures.h"
#include "accuracy/SampledPlaces.h"

// Each of these adds one random geometry of its families in all their forms. They throw
// `BoundExceeded`.

/// Full and dual panoramas of a table and of a ceiling camera, direct and by table.
void AddRing(GeometryGenerator& random, const CoordinateSource& source, PictureFigures& figures);

/// A wall's panorama, direct and by table.
void AddWall(GeometryGenerator& random, const CoordinateSource& source, PictureFigures& figures);

/// The virtual camera of any mount.
void AddVCam(GeometryGenerator& random, const CoordinateSource& source, PictureFigures& figures);

#endif
