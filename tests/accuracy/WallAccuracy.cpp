#include <algorithm>
#include <cmath>
#include <vector>

#include "accuracy/GeometryCheck.h"
#include "accuracy/PictureAccuracy.h"
#include "support/WallKernelSet.h"
#include "support/WallModel.h"

namespace {

const double kQuarterTurn = std::acos(0.0);

std::vector<ExactPlace> ExactPlacesOf(const Wall& wall) {
    std::vector<ExactPlace> places;
    for (int y = 0; y < wall.dstHeight; ++y) {
        for (int x = 0; x < wall.dstWidth; ++x) {
            const ExactLook look = LookOf(wall, x, y);
            places.push_back(
                {look.column, look.row, BeyondFrame(look.column, look.row, wall.srcWidth)});
        }
    }
    return places;
}

SourcePlaces PlacesOf(const Wall& wall, Path path, KernelForm form, int bytesPerPixel,
                      const CoordinateSource& source) {
    const WallKernelSet kernels = WallKernelsOf(form, 8 * bytesPerPixel);
    if (path == Path::Table) {
        return PlacesOfTable(*kernels.build, wall, wall.wallViewAngle, bytesPerPixel);
    }
    std::vector<unsigned char> picture(wall.OutputBytes());
    kernels.convert(wall.srcWidth, wall.srcHeight, wall.srcStride,
                    source.Pixels(bytesPerPixel).data(), wall.dstWidth, wall.dstHeight,
                    wall.dstStride, picture.data(), wall.radiusX, wall.radiusY, wall.wallViewAngle);
    return PlacesOfPicture(picture, bytesPerPixel);
}

/// Of a form's pixels from those of the C form: one for the rounding, and what the lanes'
/// arctangent and for direct conversions the estimate of an inverse are off.
double ReachFromScalar(Path path, float radius, int side) {
    constexpr double kOfArctangent = 0.0029;
    const double ofEstimate = path == Path::Direct ? std::ldexp(1.5, -12) : 0.0;
    return 1.0 + std::ceil((kOfArctangent / kQuarterTurn + ofEstimate) *
                           static_cast<double>(radius) * side);
}

/// How far the columns' angles, which grow by addition, come from evenly spaced ones, in radians.
double DriftOfAngles(KernelForm form, int columns) {
    const std::vector<float> angles = AnglesOfForm(form, -1.5707964F, 1.5707964F, columns);
    double largest = 0.0;
    for (int x = 0; x < columns; ++x) {
        const double exact = kQuarterTurn * (2.0 * x / (columns - 1) - 1.0);
        const auto summed = static_cast<double>(angles[static_cast<std::size_t>(x)]);
        largest = std::max(largest, std::fabs(summed - exact));
    }
    return largest;
}

/// An angle moves a point by its share of a quarter turn, and at the rim by as much as the rim is
/// longer than a quarter turn.
FormBounds BoundsOf(const Wall& wall, Path path, KernelForm form) {
    // Of positions, in source pixels.
    constexpr double kRounding = 0.001;
    const double drift = DriftOfAngles(form, wall.dstWidth);
    const auto fromExact = [&](float radius) {
        return kRounding + wall.srcWidth * (ErrorOfFraction(form, path, radius) +
                                            static_cast<double>(radius) * drift);
    };
    return {{fromExact(wall.radiusX), fromExact(wall.radiusY)},
            {ReachFromScalar(path, wall.radiusX, wall.srcWidth),
             ReachFromScalar(path, wall.radiusY, wall.srcHeight)}};
}

}  // namespace

void AddWall(GeometryGenerator& random, const CoordinateSource& source, PictureFigures& figures) {
    const int bytesPerPixel = random.NextBytesPerPixel();
    const Wall wall{random.NextFrames(source.Side(), source.Side(), bytesPerPixel),
                    random.Between(10.0F, 90.0F)};
    const std::vector<ExactPlace> exact = ExactPlacesOf(wall);
    for (const Path path : {Path::Direct, Path::Table}) {
        const Conversion conversion =
            path == Path::Direct ? Conversion::WallDirect : Conversion::WallTable;
        GeometryCheck check(figures, conversion, source.Side(), exact);
        for (const KernelForm form : kKernelForms) {
            if (HasForm(conversion, form)) {
                check.Add(form, PlacesOf(wall, path, form, bytesPerPixel, source),
                          BoundsOf(wall, path, form));
            }
        }
    }
}
