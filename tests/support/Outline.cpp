#include "support/Outline.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

namespace {

double Distance(const Point& a, const Point& b) {
    return std::hypot(a.x - b.x, a.y - b.y);
}

double DistanceToSide(const Point& point, const Point& from, const Point& to) {
    const double sideX = to.x - from.x;
    const double sideY = to.y - from.y;
    const double square = sideX * sideX + sideY * sideY;
    const double along = (point.x - from.x) * sideX + (point.y - from.y) * sideY;
    const double part = square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
    return Distance(point, {from.x + part * sideX, from.y + part * sideY});
}

/// Calls `visit(from, to)` for every side.
template <class Visit>
void VisitSides(const std::vector<Point>& points, Visit visit) {
    for (std::size_t i = 0; i < points.size(); ++i) {
        visit(points[i], points[(i + 1) % points.size()]);
    }
}

}  // namespace

Outline::Outline(const std::vector<Point>& points, int width, int height) : m_points(points) {
    for (Point& point : m_points) {
        point = {point.x * (width - 1), point.y * (height - 1)};
    }
}

bool Outline::Contains(const Point& point) const {
    bool isInside = false;
    VisitSides(m_points, [&](const Point& from, const Point& to) {
        if ((from.y > point.y) != (to.y > point.y) &&
            point.x < from.x + (to.x - from.x) * (point.y - from.y) / (to.y - from.y)) {
            isInside = !isInside;
        }
    });
    return isInside;
}

double Outline::DistanceTo(const Point& point) const {
    double nearest = std::numeric_limits<double>::infinity();
    VisitSides(m_points, [&](const Point& from, const Point& to) {
        nearest = std::min(nearest, DistanceToSide(point, from, to));
    });
    return nearest;
}

double Outline::DistanceOutside(const Point& point) const {
    return Contains(point) ? 0.0 : DistanceTo(point);
}

double Outline::DistanceInside(const Point& point) const {
    return Contains(point) ? DistanceTo(point) : 0.0;
}

double Outline::ChordError() const {
    double longest = 0.0;
    VisitSides(m_points, [&](const Point& from, const Point& to) {
        longest = std::max(longest, Distance(from, to));
    });
    // The height of an arc of one radian is an eighth of its chord.
    return longest / 8.0;
}
