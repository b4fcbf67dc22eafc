#include "ViewModel.h"

#include <cmath>

namespace {

constexpr double kPi = 3.14159265358979323846;

double Radians(double degrees) {
    return degrees / 180.0 * kPi;
}

}  // namespace

double LensOffset::Radius() const {
    return std::hypot(x, y);
}

LensOffset OffsetOfRay(const ViewJob& job, const View& view, int column, int row) {
    const double top = std::tan(Radians(ViewJob::kFieldOfView) / 2.0);
    const double rayX =
        top * job.dstWidth / job.dstHeight * (2.0 * column / (job.dstWidth - 1) - 1.0);
    const double rayY = top * (1.0 - 2.0 * row / (job.dstHeight - 1));

    const double tilt = Radians(view.tilt);
    const double tiltedY = rayY * std::cos(tilt) + std::sin(tilt);
    const double depth = std::cos(tilt) - rayY * std::sin(tilt);
    const double distance = std::hypot(rayX, tiltedY);
    if (distance == 0.0) {
        return {0.0, 0.0};
    }
    const double angle = (1.0 + double{job.move.eyeZ}) * std::atan2(distance, depth);
    const double pixels = angle / kPi * 2.0 * double{ViewJob::kRadius} * (job.side - 1) / distance;

    const double pan = Radians(view.pan);
    return {pixels * (rayX * std::cos(pan) - tiltedY * std::sin(pan)),
            -pixels * (rayX * std::sin(pan) + tiltedY * std::cos(pan))};
}
