#include "SurfaceRules.h"

#include <cmath>
#include <limits>

using namespace KivFisheyeLib;

namespace {

constexpr float kEpsilon = 1.1920929e-7F;
constexpr float kRadiansPerDegree = 0.017453292F;
constexpr float kPi = 3.1415927F;

std::uint32_t UpToEight(int number) {
    return static_cast<std::uint32_t>((number + 7) & ~7);
}

bool IsOutside(float number, float least, float most) {
    return number < least || number > most;
}

/// NaN stays.
float Clamped(float number, float least, float most) {
    return number < least ? least : number > most ? most : number;
}

/// The ring's breadth along each axis, as a fraction of the frame.
struct RingBreadth {
    explicit RingBreadth(const DewarpParams& lens)
        : x((1.0F - lens.innerRadiusRatio) * lens.radiusX),
          y((1.0F - lens.innerRadiusRatio) * lens.radiusY) {}
    bool IsAlongX() const { return x >= y; }

    float x;
    float y;
};

float WallHeight(int height, const DewarpParams& lens) {
    const float angle = lens.wallViewAngle * kRadiansPerDegree;
    const float reach = std::atan2(std::sin(angle), std::cos(angle));
    const float half = std::fabs(static_cast<float>(height) * lens.radiusY * std::sin(reach));
    return half + half;
}

/// Moves a value of a narrow view towards 0.
float Recentred(float value, float narrowing, bool isZoomingOut) {
    const bool isNear = narrowing >= 1.0F && narrowing <= 30.0F;
    return isZoomingOut && isNear ? value - value / narrowing : value;
}

}  // namespace

int Truncated(float number) {
    const bool fits = number >= -2147483648.0F && number < 2147483648.0F;
    return fits ? static_cast<int>(number) : std::numeric_limits<int>::min();
}

bool IsAcceptedFormat(PixelFormat format) {
    return format == PixelFormatRGB24 || format == PixelFormatRGB32;
}

bool IsValidRecord(const VideoFrameInfo& record, PixelFormat format) {
    if (!IsAcceptedFormat(format) || record.width == 0 || record.height == 0) {
        return false;
    }
    const auto rowBytes = static_cast<std::uint64_t>(BytesPerPixel(format)) * record.width;
    const std::uint64_t stride = (rowBytes + 3) / 4 * 4 % (std::uint64_t{1} << 32);
    return record.stride == stride && record.buffer != nullptr;
}

bool IsValidLens(const DewarpParams& lens) {
    return !IsOutside(lens.radiusX, 0.0F, 1.0F) && !IsOutside(lens.radiusY, 0.0F, 1.0F) &&
           !IsOutside(lens.wallViewAngle, 10.0F, 90.0F) &&
           !IsOutside(lens.innerRadiusRatio, 0.0F, 0.8F);
}

bool IsKnownMount(MountType mount) {
    return mount == MountTypeWall || mount == MountTypeCeiling || mount == MountTypeTable;
}

bool IsAllowed(MountType mount, ViewType view) {
    return !(mount == MountTypeWall && view == ViewTypeDualPanorama);
}

bool HasScene(MountType mount, ViewType view) {
    const bool isKnownView =
        view == ViewTypeVCam || view == ViewTypeDualPanorama || view == ViewTypeFullPanorama;
    return IsKnownMount(mount) && isKnownView && IsAllowed(mount, view);
}

FrameSize RingSize(int width, int height, const DewarpParams& lens, bool isDual) {
    const RingBreadth breadth(lens);
    const float side = static_cast<float>(breadth.IsAlongX() ? width : height);
    const float radius = breadth.IsAlongX() ? lens.radiusX : lens.radiusY;
    const float across = breadth.IsAlongX() ? breadth.x : breadth.y;
    return {UpToEight(Truncated(side * (radius * (isDual ? 2.0F : 4.0F)))),
            static_cast<std::uint32_t>(Truncated(side * (isDual ? across + across : across)))};
}

float RingRatio(const DewarpParams& lens, bool isDual) {
    const RingBreadth breadth(lens);
    const float radius = breadth.IsAlongX() ? lens.radiusX : lens.radiusY;
    const float across = breadth.IsAlongX() ? breadth.x : breadth.y;
    return kEpsilon >= across ? 1.0F : (isDual ? radius : radius * 4.0F) / across;
}

FrameSize WallSize(int width, int height, const DewarpParams& lens) {
    return {UpToEight(Truncated(static_cast<float>(width) * (lens.radiusX + lens.radiusX))),
            static_cast<std::uint32_t>(Truncated(WallHeight(height, lens)))};
}

float WallRatio(int width, int height, const DewarpParams& lens) {
    const float high = WallHeight(height, lens);
    return high <= kEpsilon ? 1.0F
                            : static_cast<float>(width) * (lens.radiusX + lens.radiusX) / high;
}

FrameSize RecommendedSize(FrameSize input, MountType mount, ViewType view,
                          const DewarpParams& lens) {
    const int width = static_cast<int>(input.width);
    const int height = static_cast<int>(input.height);
    if (view == ViewTypeVCam) {
        return {UpToEight(Truncated(static_cast<float>(width) * (lens.radiusX + lens.radiusX))),
                UpToEight(Truncated(static_cast<float>(height) * (lens.radiusY + lens.radiusY)))};
    }
    if (!HasScene(mount, view)) {
        return input;
    }
    return mount == MountTypeWall ? WallSize(width, height, lens)
                                  : RingSize(width, height, lens, view == ViewTypeDualPanorama);
}

float RecommendedRatio(FrameSize input, MountType mount, ViewType view, const DewarpParams& lens) {
    if (input.width == 0 || input.height == 0) {
        return 1.0F;
    }
    if (view == ViewTypeVCam) {
        const float high = static_cast<float>(input.height) * (lens.radiusY + lens.radiusY);
        const float wide = static_cast<float>(input.width) * (lens.radiusX + lens.radiusX);
        return high <= kEpsilon ? 1.0F : wide / high;
    }
    const int width = static_cast<int>(input.width);
    const int height = static_cast<int>(input.height);
    if (!HasScene(mount, view)) {
        return 1.0F;
    }
    return mount == MountTypeWall ? WallRatio(width, height, lens)
                                  : RingRatio(lens, view == ViewTypeDualPanorama);
}

float Wrapped(float degrees) {
    const float rest = std::fmod(degrees, 360.0F);
    return rest < 0.0F ? rest + 360.0F : rest;
}

Aim Limited(MountType mount, Aim wanted, bool isZoomingOut) {
    const bool isWall = mount == MountTypeWall;
    const float leastTilt = mount == MountTypeCeiling ? 0.0F : -90.0F;
    const float mostTilt = mount == MountTypeTable ? 0.0F : 90.0F;
    Aim aim{isWall ? Clamped(wanted.pan, -90.0F, 90.0F) : Wrapped(wanted.pan),
            Clamped(wanted.tilt, leastTilt, mostTilt), Clamped(wanted.zoom, 1.0F, 10.0F)};
    if (aim.zoom < 2.0F) {
        return {isWall ? 0.0F : aim.pan, 0.0F, aim.zoom};
    }
    const float fieldOfView = (aim.zoom - 2.0F) * -10.0F + 90.0F;
    const float limit = fieldOfView * -0.5F + 90.0F;
    const float narrowing = 90.0F - fieldOfView;
    if (isWall) {
        aim.pan = Recentred(Clamped(aim.pan, -limit, limit), narrowing, isZoomingOut);
    }
    const float tilt =
        Clamped(aim.tilt, leastTilt < 0.0F ? -limit : 0.0F, mostTilt > 0.0F ? limit : 0.0F);
    aim.tilt = Recentred(tilt, narrowing, isZoomingOut);
    return aim;
}

Aim AimAt(MountType mount, const DewarpParams& lens, float x, float y, float fieldOfView) {
    if (!IsKnownMount(mount)) {
        return {0.0F, 0.0F, 1.0F};
    }
    const float across = (x - (0.5F - lens.radiusX)) / (lens.radiusX + lens.radiusX);
    const float down = (y - (0.5F - lens.radiusY)) / (lens.radiusY + lens.radiusY);
    Aim aim{};
    // A field of view that is NaN counts as the widest.
    const float height = fieldOfView < kPi ? fieldOfView : kPi;
    const float zoom = height < kPi / 2 ? 2.0F + (kPi / 2 - height) * (18.0F / kPi)
                                        : 1.0F + (kPi - height) / (kPi / 2);
    aim.zoom = Clamped(zoom, 1.0F, 10.0F);
    if (mount == MountTypeWall) {
        aim.pan = across * 180.0F - 90.0F;
        aim.tilt = 90.0F - down * 180.0F;
        return aim;
    }
    const float right = across - 0.5F;
    const float up = 0.5F - down;
    const float direction = std::atan2(up, right) * 57.29578F;
    const float offAxis = 2.0F * std::sqrt(right * right + up * up) * 90.0F;
    const bool isTable = mount == MountTypeTable;
    aim.pan = std::fmod((isTable ? direction : -direction) + 90.0F + 360.0F, 360.0F);
    aim.tilt = isTable ? -offAxis : offAxis;
    return aim;
}
