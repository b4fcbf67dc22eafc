#ifndef KIVFISHEYE_TESTS_OUTLINE_H
#define KIVFISHEYE_TESTS_OUTLINE_H

#include <vector>

#include "support/PointList.h"

/// A closed polygon on a source frame, in pixels. A pixel's middle is half a pixel from its place.
class Outline {
public:
    /// Of points in fractions of the frame. Sides are those that conversions scale by: the frame's
    /// less one.
    Outline(const std::vector<Point>& points, int width, int height);

    const std::vector<Point>& Points() const { return m_points; }

    bool Contains(const Point& point) const;
    double DistanceTo(const Point& point) const;

    /// How far a point is outside; 0 for those inside.
    double DistanceOutside(const Point& point) const;
    /// How far it is inside; 0 for those outside.
    double DistanceInside(const Point& point) const;

    /// How far the curve that the points lie on may be from the polygon, where it turns by less
    /// than a radian from point to point.
    double ChordError() const;

private:
    std::vector<Point> m_points;
};

#endif
