#include "accuracy/ListCheck.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "accuracy/GeometryCheck.h"

namespace {

/// The distance that the lanes of a list may have from the scalar form. Angles that grow by
/// addition or rotation part further in longer lists.
double BoundBetweenForms(List list, int length) {
    switch (list) {
        case List::Ellipse:
        case List::HalfRing:
            return length <= 256 ? 3e-6 : 1e-5;
        case List::RingMesh:
            return length <= 16 ? 1e-6 : (length <= 256 ? 8e-6 : 6e-5);
        case List::VCamOutline:
            return 3e-3;
        default:
            return 2e-3;
    }
}

/// The largest distance between both, of which `what` says whose it is.
double LargestDistance(const ListCase& listCase, const std::vector<float>& from,
                       const std::vector<double>& to, double bound, const std::string& what) {
    double largest = from.size() == to.size() ? 0.0 : HUGE_VAL;
    for (std::size_t i = 0; i < from.size() && i < to.size(); ++i) {
        const double distance = std::fabs(static_cast<double>(from[i]) - to[i]);
        largest = std::isnan(distance) ? HUGE_VAL : std::max(largest, distance);
    }
    if (largest > bound) {
        throw BoundExceeded("the " + what + " at " + std::to_string(listCase.length) +
                            " points of a " + NameOf(listCase.list) + ", by " +
                            std::to_string(1e6 * largest) + " millionths of the frame where " +
                            std::to_string(1e6 * bound) + " are allowed.");
    }
    return largest;
}

}  // namespace

std::string NameOf(List list) {
    const std::string names[] = {"lens ellipse",           "half ring", "wall outline",
                                 "virtual camera outline", "ring mesh", "wall mesh"};
    return names[static_cast<int>(list)];
}

void AddTo(ListFigures& figures, const ListCase& listCase, const ListBounds& bounds) {
    const auto add = [&](double& figure, const std::vector<float>& from,
                         const std::vector<double>& to, double bound, const char* what) {
        figure = std::max(figure, LargestDistance(listCase, from, to, bound, what));
    };
    ListDistances& distances = figures[{listCase.list, listCase.length}];
    const std::vector<double> scalar(listCase.scalar.begin(), listCase.scalar.end());
    add(distances.lanesFromScalar, listCase.lanes, scalar,
        BoundBetweenForms(listCase.list, listCase.length), "SSE2 form is off the C form");
    add(distances.scalarFromExact, listCase.scalar, listCase.exact, bounds.ofScalar,
        "C form is off exact geometry");
    add(distances.lanesFromExact, listCase.lanes, listCase.exact, bounds.ofLanes,
        "SSE2 form is off exact geometry");
}
