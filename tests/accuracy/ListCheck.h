#ifndef KIVFISHEYE_TESTS_LIST_CHECK_H
#define KIVFISHEYE_TESTS_LIST_CHECK_H

#include <vector>

#include "accuracy/ListAccuracy.h"

/// How far both forms may be from the exact list, in fractions of the frame.
struct ListBounds {
    double ofScalar;
    double ofLanes;
};

/// One list in both forms.
struct ListCase {
    List list;
    int length;
    std::vector<float> scalar;
    std::vector<float> lanes;
    std::vector<double> exact;
};

/// Adds the list's distances. Throws `BoundExceeded`.
void AddTo(ListFigures& figures, const ListCase& listCase, const ListBounds& bounds);

#endif
