#include "SurfaceGeometry.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "Check.h"
#include "support/CoordinateFrame.h"

using namespace KivFisheyeLib;

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kRadiansPerDegree = kPi / 180;

struct Direction {
    double x;  // to the right of the fisheye frame
    double y;  // to its top
    double z;  // against the lens's axis
};

Direction TurnedAboutX(Direction d, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {d.x, d.y * c - d.z * s, d.y * s + d.z * c};
}

Direction TurnedAboutY(Direction d, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {d.x * c + d.z * s, d.y, d.z * c - d.x * s};
}

Direction TurnedAboutZ(Direction d, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    return {d.x * c - d.y * s, d.x * s + d.y * c, d.z};
}

/// A virtual camera in double precision.
class View {
public:
    View(const FrameShape& shape, const SurfaceModel& model) : m_shape(shape), m_model(model) {
        const double zoom = double{model.aim.zoom};
        m_eye = zoom < 2 ? 1 - 0.99 * (zoom - 1) : 0.01;
        const double height = zoom < 2 ? 90 : 90 - 10 * (zoom - 2);
        m_top = std::tan(height / 2 * kRadiansPerDegree);
        m_right = m_top * shape.width / shape.height;
    }

    /// How far the lens is drawn out along an axis: source pixels for each radian off the axis.
    double Scale(float radius, std::uint32_t side) const {
        return 2 * double{radius} * (1 + m_eye) / kPi * (side - 1.0);
    }

    /// Where in the source a pixel looks, in pixels from its top left one.
    void Look(std::uint32_t column, std::uint32_t row, double* x, double* y) const {
        const double across = column / (m_shape.width - 1.0) * 2 - 1;
        const double down = row == 0 ? -1 : row / (m_shape.height - 1.0) * 2 - 1;
        const Direction ray = Turned({across * m_right, -down * m_top, -1});
        const double offAxis = std::hypot(ray.x, ray.y);
        const double angle = std::atan2(offAxis, -ray.z);
        const FrameSize source = m_model.InputSize();
        *x = (source.width - 1.0) / 2 +
             Scale(m_model.lens.radiusX, source.width) * angle * ray.x / offAxis;
        *y = (source.height - 1.0) / 2 -
             Scale(m_model.lens.radiusY, source.height) * angle * ray.y / offAxis;
    }

private:
    Direction Turned(Direction ray) const {
        const double pan = double{m_model.aim.pan} * kRadiansPerDegree;
        const Direction tilted = TurnedAboutX(ray, double{m_model.aim.tilt} * kRadiansPerDegree);
        switch (m_model.mount) {
            case MountTypeWall:
                return TurnedAboutY(tilted, -pan);
            case MountTypeCeiling:
                return TurnedAboutZ(tilted, -pan);
            default:
                return TurnedAboutZ(tilted, pan);
        }
    }

    const FrameShape& m_shape;
    const SurfaceModel& m_model;
    double m_eye;
    double m_top;
    double m_right;
};

bool IsSane(const SurfaceModel& model) {
    const Aim& aim = model.aim;
    return std::fabs(aim.pan) <= 400 && std::fabs(aim.tilt) <= 90 && aim.zoom >= 1 &&
           aim.zoom <= 10 && model.lens.radiusX <= 1 && model.lens.radiusY <= 1;
}

}  // namespace

void CheckView(const unsigned char* output, const FrameShape& shape, const SurfaceModel& model) {
    if (!IsSane(model) || shape.RowBytes() > shape.stride) {
        return;
    }
    // The lanes' arccosine is good to 0.0058 radians; single precision adds up along the rows.
    constexpr double kAngleTolerance = 0.0068;
    const View view(shape, model);
    const FrameSize source = model.InputSize();
    const std::uint32_t columnStep = std::max(1U, shape.width / 4);
    const std::uint32_t rowStep = std::max(1U, shape.height / 4);
    for (std::uint32_t row = 0; row < shape.height; row += rowStep) {
        for (std::uint32_t column = 0; column < shape.width; column += columnStep) {
            const std::optional<PixelPlace> place =
                PlaceIn(output + std::size_t{row} * shape.stride +
                            std::size_t{column} * static_cast<std::size_t>(shape.bytesPerPixel),
                        shape.bytesPerPixel);
            if (!place) {
                continue;
            }
            double x = 0;
            double y = 0;
            view.Look(column, row, &x, &y);
            const double mostX =
                1.01 + kAngleTolerance * view.Scale(model.lens.radiusX, source.width);
            const double mostY =
                1.01 + kAngleTolerance * view.Scale(model.lens.radiusY, source.height);
            Expect(!(std::fabs(x - place->column) > mostX) && !(std::fabs(y - place->row) > mostY),
                   "the pixel at (", column, ", ", row, ") of ", shape.width, " by ", shape.height,
                   " shows ", *place, " instead of (", x, ", ", y, ") of ", source.width, " by ",
                   source.height, ", at a pan of ", model.aim.pan, ", a tilt of ", model.aim.tilt,
                   " and a zoom of ", model.aim.zoom);
        }
    }
}
