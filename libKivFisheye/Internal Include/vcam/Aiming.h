#ifndef KIVFISHEYE_VCAM_AIMING_H
#define KIVFISHEYE_VCAM_AIMING_H

#include <algorithm>
#include <cmath>
#include <iterator>

#include "Degrees.h"
#include "vcam/VCamMounts.h"

// What the mounts' matrices and point conversions share.

namespace vcam {

/// The sine and the cosine of an angle in degrees, in single precision.
struct Turn {
    explicit Turn(float degrees) {
        const float angle = degrees * kDegreesToRadians;
        sine = std::sin(angle);
        cosine = std::cos(angle);
    }

    float sine;
    float cosine;
};

/// Fills a 4 by 4 matrix, column by column, with a rotation given row by row.
inline void SetRotation(const float (&rows)[3][3], float (&matrix)[16]) {
    std::fill(std::begin(matrix), std::end(matrix), 0.0F);
    for (int column = 0; column < 3; ++column) {
        for (int row = 0; row < 3; ++row) {
            matrix[column * 4 + row] = rows[row][column];
        }
    }
    matrix[15] = 1.0F;
}

/// A point of the source frame in the unit square of the lens image's bounding box, from its top
/// left.
struct LensPoint {
    LensPoint(float radiusX, float radiusY, float frameX, float frameY)
        : x((frameX - (0.5F - radiusX)) / (radiusX + radiusX)),
          y((frameY - (0.5F - radiusY)) / (radiusY + radiusY)) {}

    float x;
    float y;
};

/// Pan and tilt around the lens axis. The factors give the sense in which the pan runs round the
/// frame, in degrees per radian, and the tilt at the rim.
inline PanTilt AimAroundAxis(const LensPoint& point, float panPerRadian, float tiltAtRim) {
    const float dx = point.x + -0.5F;
    const float dy = 0.5F - point.y;
    const float angle = std::atan2(dy, dx);
    const float radius = std::sqrt(dx * dx + dy * dy);
    return {std::fmod(angle * panPerRadian + 90.0F + 360.0F, 360.0F),
            (radius + radius) * tiltAtRim + 0.0F};
}

constexpr float kDegreesPerRadian = 57.29578F;

}  // namespace vcam

#endif
