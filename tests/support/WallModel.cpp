#include "support/WallModel.h"

#include <cmath>
#include <ostream>

#include "support/MeshModel.h"
#include "support/VectorMathModel.h"

namespace {

constexpr float kHalfPi = 1.5707964F;
constexpr float kTwoOverPi = 0.63661975F;
constexpr float kRadiansPerDegree = 0.017453292F;

const double kExactPi = std::acos(-1.0);

float SineOf(float angle) {
    return static_cast<float>(std::sin(static_cast<double>(angle)));
}

float CosineOf(float angle) {
    return static_cast<float>(std::cos(static_cast<double>(angle)));
}

/// A direction in front of the lens, and its place in the lens image.
struct Direction {
    float x;
    float y;
    float r;
    float alpha;
};

struct LensPlace {
    float u;
    float v;
};

/// The lens's semi-axes for each radian off the axis.
struct Scale {
    float x;
    float y;
};

using PlaceOf = LensPlace (*)(const Direction& d, Scale k);

LensPlace DirectPlace(const Direction& d, Scale k) {
    const float inverse = 1.0F / d.r;
    return {(d.x * inverse) * (k.x * d.alpha), (d.y * inverse) * (k.y * d.alpha)};
}

LensPlace TablePlace(const Direction& d, Scale k) {
    const float share = d.alpha / d.r;
    return {d.x * (k.x * share), d.y * (k.y * share)};
}

LensPlace DirectPlaceOfLanes(const Direction& d, Scale k) {
    const float inverse = model::Reciprocal(d.r);
    return {k.x * ((d.x * inverse) * d.alpha), k.y * ((d.y * inverse) * d.alpha)};
}

LensPlace TablePlaceOfLanes(const Direction& d, Scale k) {
    const float share = d.alpha / d.r;
    return {k.x * (d.x * share), k.y * (d.y * share)};
}

int OffsetOf(const Wall& wall, int bytesPerPixel, KernelForm form, LensPlace place) {
    const bool isInside =
        place.u >= -0.5F && place.u <= 0.5F && place.v >= -0.5F && place.v <= 0.5F;
    if (!isInside || wall.srcWidth == 0 || wall.srcHeight == 0) {
        return kNoSource;
    }
    const float column = (place.u + 0.5F) * static_cast<float>(wall.srcWidth - 1);
    const float row = (place.v + 0.5F) * static_cast<float>(wall.srcHeight - 1);
    return PixelAt(form, row, wall.srcHeight) * wall.srcStride +
           PixelAt(form, column, wall.srcWidth) * bytesPerPixel;
}

std::vector<int> Offsets(const Wall& wall, int bytesPerPixel, KernelForm form, PlaceOf placeOf) {
    const model::AngleTable longitudes =
        model::AnglesOf(ListFormOf(form), -kHalfPi, kHalfPi, wall.dstWidth);
    const float halfAngle = wall.wallViewAngle * kRadiansPerDegree;
    const float phiStep = (halfAngle + halfAngle) / static_cast<float>(wall.dstHeight - 1);
    const float sinStep = SineOf(phiStep);
    const float cosStep = CosineOf(phiStep);
    const Scale scale{wall.radiusX * kTwoOverPi, wall.radiusY * kTwoOverPi};
    std::vector<int> offsets;
    float sinPhi = SineOf(-halfAngle);
    float cosPhi = CosineOf(-halfAngle);
    for (int row = 0; row < wall.dstHeight; ++row) {
        for (int x = 0; x < wall.dstWidth; ++x) {
            const auto column = static_cast<std::size_t>(x);
            const float right = cosPhi * longitudes.sines[column];
            const float ahead = cosPhi * longitudes.cosines[column];
            const float r = std::sqrt(sinPhi * sinPhi + right * right);
            const Direction direction{right, sinPhi, r, model::OffAxis(ListFormOf(form), r, ahead)};
            offsets.push_back(OffsetOf(wall, bytesPerPixel, form, placeOf(direction, scale)));
        }
        const float nextSin = sinPhi * cosStep + cosPhi * sinStep;
        const float nextCos = cosPhi * cosStep - sinPhi * sinStep;
        sinPhi = nextSin;
        cosPhi = nextCos;
    }
    return offsets;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Wall& wall) {
    return out << static_cast<const PanoramaFrames&>(wall) << ", view angle " << wall.wallViewAngle;
}

Wall PackedWall(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel) {
    return {PackedFrames(srcWidth, srcHeight, dstWidth, dstHeight, bytesPerPixel)};
}

std::vector<int> DirectOffsets(const Wall& wall, int bytesPerPixel, KernelForm form) {
    return Offsets(wall, bytesPerPixel, form,
                   form == KernelForm::C ? DirectPlace : DirectPlaceOfLanes);
}

std::vector<int> TableOffsets(const Wall& wall, int bytesPerPixel, KernelForm form) {
    return Offsets(wall, bytesPerPixel, form,
                   form == KernelForm::C ? TablePlace : TablePlaceOfLanes);
}

Wall WallGenerator::NextWall(int bytesPerPixel) {
    constexpr float kEdges[] = {10.0F, 90.0F, 45.0F};
    Wall wall{NextRing(bytesPerPixel)};
    wall.wallViewAngle = NextInt(0, 2) == 0
                             ? kEdges[NextInt(0, 2)]
                             : 10.0F + static_cast<float>(NextInt(0, 80 * 1024)) / 1024.0F;
    return wall;
}

bool ExactLook::IsInside(double margin) const {
    return std::fabs(u) <= 0.5 + margin && std::fabs(v) <= 0.5 + margin;
}

ExactLook LookOf(const Wall& wall, int x, int y) {
    const auto share = [](int index, int count) {
        return count == 1 ? 0.0 : static_cast<double>(index) / (count - 1);
    };
    const double halfAngle = static_cast<double>(wall.wallViewAngle) * kExactPi / 180.0;
    const double longitude = kExactPi * (share(x, wall.dstWidth) - 0.5);
    const double latitude = halfAngle * (2.0 * share(y, wall.dstHeight) - 1.0);
    const double right = std::cos(latitude) * std::sin(longitude);
    const double down = std::sin(latitude);
    const double ahead = std::cos(latitude) * std::cos(longitude);
    // Equidistant: the share of a quarter turn off the axis is the share of the radius.
    const double offAxis = std::atan2(std::hypot(right, down), ahead);
    const double reach = offAxis / (kExactPi / 2.0);
    const double heading = std::atan2(down, right);
    const double u = static_cast<double>(wall.radiusX) * reach * std::cos(heading);
    const double v = static_cast<double>(wall.radiusY) * reach * std::sin(heading);
    return {offAxis, u, v, (wall.srcWidth - 1) * (u + 0.5), (wall.srcHeight - 1) * (v + 0.5)};
}

double ErrorOfFraction(KernelForm form, Path path, float radius) {
    // Angles sum up to some thousand roundings of 6e-8 each. Most cancel out, and what is left
    // stays below this.
    constexpr double kOfSums = 4e-6;
    constexpr double kOfArctangent = 0.0029;
    const double ofEstimate = path == Path::Direct ? std::ldexp(1.5, -12) : 0.0;
    return kOfSums + (form == KernelForm::C ? 0.0
                                            : static_cast<double>(radius) *
                                                  (kOfArctangent * 2.0 / kExactPi + ofEstimate));
}
