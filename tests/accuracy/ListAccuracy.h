#ifndef KIVFISHEYE_TESTS_LIST_ACCURACY_H
#define KIVFISHEYE_TESTS_LIST_ACCURACY_H

#include <map>
#include <string>
#include <utility>

#include "accuracy/GeometryGenerator.h"

/// The families of kernels that fill lists of floats.
enum class List { Ellipse, HalfRing, WallOutline, VCamOutline, RingMesh, WallMesh };

inline constexpr List kLists[] = {List::Ellipse,     List::HalfRing, List::WallOutline,
                                  List::VCamOutline, List::RingMesh, List::WallMesh};

std::string NameOf(List list);

/// Points of an outline, and columns of a mesh.
inline constexpr int kListLengths[] = {16, 256, 1024};

/// The largest distances along an axis, as fractions of the frame; meshes count the lens's circle
/// as the frame.
struct ListDistances {
    double lanesFromScalar = 0.0;
    double scalarFromExact = 0.0;
    double lanesFromExact = 0.0;
};

using ListFigures = std::map<std::pair<List, int>, ListDistances>;

/// Adds one random geometry of every list in both forms and all lengths. Throws `BoundExceeded`.
void AddLists(GeometryGenerator& random, ListFigures& figures);

#endif
