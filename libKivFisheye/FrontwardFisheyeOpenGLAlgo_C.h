#ifndef KIVFISHEYE_FRONTWARD_FISHEYE_OPENGL_ALGO_C_H
#define KIVFISHEYE_FRONTWARD_FISHEYE_OPENGL_ALGO_C_H

#include <functional>

#include "ColumnAngles.h"
#include "Degrees.h"
#include "FisheyeAlgoCommon.h"
#include "RunningAngle.h"
#include "wall/WallDirection.h"

/// Grids and outlines of a wall panorama in scalar arithmetic: the geometry of its pixels, at the
/// vertices of a mesh and along the edges.
namespace FrontwardFisheyeAlgoNS::C {

/// Fills a grid of texture coordinates, v downward. Rows lie end to end. A vertex on the lens axis
/// has no direction in the image plane, and is NaN.
inline void FillTextureCoordinates(int width, int height, float wallViewAngle, bool centerAtOrigin,
                                   float* coordinates) {
    const ColumnAngles longitudes({-kQuarterTurn, kQuarterTurn}, width);
    const float* const sines = longitudes.Sines();
    const float* const cosines = longitudes.Cosines();
    const float center = CenterOf(centerAtOrigin);
    const float halfAngle = wallViewAngle * kDegreesToRadians;
    auto latitude = AngleOf(-halfAngle);
    const auto step = AngleOf(StepOf({-halfAngle, halfAngle}, height));
    for (int row = 0; row < height; ++row) {
        for (int i = 0; i < width; ++i) {
            const wall::Direction direction(cosines[i], sines[i], latitude.cosine, latitude.sine);
            const float k = direction.alpha / direction.r * kRadiusPerRadian;
            *coordinates++ = center + direction.x * k;
            *coordinates++ = center + direction.y * k;
        }
        latitude.Advance(step);
    }
}

using DirectionTransform =
    std::function<void(float cosTheta, float sinTheta, float cosPhi, float sinPhi, float* point)>;

/// Puts a direction on the fisheye frame.
template <CoordinateOrientationType orientation>
struct map_sphere_theta_phi_to_ellipse_uv_coordinate {
    void operator()(float cosTheta, float sinTheta, float cosPhi, float sinPhi,
                    float* point) const {
        const wall::Direction direction(cosTheta, sinTheta, cosPhi, sinPhi);
        const float k = direction.alpha / direction.r;
        point[0] = direction.x * (k * scaleX) + centerX;
        point[1] = TowardsTop<orientation>(centerY, direction.y * (k * scaleY));
    }

    float centerX;
    float centerY;
    float scaleX;
    float scaleY;
};

/// Calls `visit(sine and cosine, point)` for `count` angles from `start` on. The one at `end`
/// begins the next side, and is left to it.
template <class Visit>
void VisitSide(int count, float* points, float start, float end, Visit&& visit) {
    const float step = (end - start) / static_cast<float>(count);
    float angle = start;
    for (int i = 0; i < count; ++i) {
        visit(AngleOf(angle), points);
        points += 2;
        angle += step;
    }
}

/// A side of one longitude. Angles are in radians.
inline void transform_vertical_segment(int count, DirectionTransform transform, float* points,
                                       float theta, float phiStart, float phiEnd) {
    const auto fixed = AngleOf(theta);
    VisitSide(count, points, phiStart, phiEnd, [&](const RunningAngle<float>& phi, float* point) {
        transform(fixed.cosine, fixed.sine, phi.cosine, phi.sine, point);
    });
}

/// A side of one latitude.
inline void transform_horizontal_segment(int count, DirectionTransform transform, float* points,
                                         float thetaStart, float thetaEnd, float phi) {
    const auto fixed = AngleOf(phi);
    VisitSide(count, points, thetaStart, thetaEnd,
              [&](const RunningAngle<float>& theta, float* point) {
                  transform(theta.cosine, theta.sine, fixed.cosine, fixed.sine, point);
              });
}

template <CoordinateOrientationType orientation>
void CalculatePanoramaBoundaryCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                         float wallViewAngle, float* points, int count) {
    const int n = count / 4;
    if (n <= 0) {
        return;
    }
    const map_sphere_theta_phi_to_ellipse_uv_coordinate<orientation> transform{
        centerX, centerY, radiusX * kQuarterTurnsPerRadian, radiusY * kQuarterTurnsPerRadian};
    const float halfAngle = wallViewAngle * kDegreesToRadians;
    transform_vertical_segment(n, transform, SideOf(points, n, 0), -kQuarterTurn, -halfAngle,
                               halfAngle);
    transform_horizontal_segment(n, transform, SideOf(points, n, 1), -kQuarterTurn, kQuarterTurn,
                                 halfAngle);
    transform_vertical_segment(n, transform, SideOf(points, n, 2), kQuarterTurn, halfAngle,
                               -halfAngle);
    transform_horizontal_segment(n, transform, SideOf(points, n, 3), kQuarterTurn, -kQuarterTurn,
                                 -halfAngle);
}

}  // namespace FrontwardFisheyeAlgoNS::C

#endif
