#include "ViewModel.h"

#include <cmath>

namespace {

double Radians(double degrees) {
    return degrees / 180.0 * std::acos(-1.0);
}

}  // namespace

double LensOffset::Radius() const {
    return std::hypot(x, y);
}

LensOffset OffsetOfRay(const ViewJob& job, const View& view, int column, int row) {
    const double top = job.HalfHeight();
    const double right = top * job.dstWidth / job.dstHeight;
    const double rayX = right * (2.0 * column / (job.dstWidth - 1) - 1.0);
    const double rayY = top * (1.0 - 2.0 * row / (job.dstHeight - 1));

    const double tilt = Radians(view.tilt);
    const double tiltedY = rayY * std::cos(tilt) + std::sin(tilt);
    const double depth = std::cos(tilt) - rayY * std::sin(tilt);
    const double distance = std::hypot(rayX, tiltedY);
    if (distance == 0.0) {
        return {0.0, 0.0};
    }
    const double scale = job.PixelsPerRadian() * std::atan2(distance, depth) / distance;

    const double pan = Radians(view.pan);
    return {scale * (rayX * std::cos(pan) - tiltedY * std::sin(pan)),
            -scale * (rayX * std::sin(pan) + tiltedY * std::cos(pan))};
}
