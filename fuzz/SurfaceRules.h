#ifndef KIVFISHEYE_FUZZ_SURFACE_RULES_H
#define KIVFISHEYE_FUZZ_SURFACE_RULES_H

#include <cstdint>

#include "KivFisheyeLib.h"

// What the surface promises, written a second time and as plainly as it goes.

constexpr int BytesPerPixel(KivFisheyeLib::PixelFormat format) {
    return format == KivFisheyeLib::PixelFormatRGB24 ? 3 : 4;
}

/// As a conversion to int gives it on the processors that the library was made for.
int Truncated(float number);

bool IsAcceptedFormat(KivFisheyeLib::PixelFormat format);
bool IsValidRecord(const KivFisheyeLib::VideoFrameInfo& record, KivFisheyeLib::PixelFormat format);
bool IsValidLens(const KivFisheyeLib::DewarpParams& lens);
bool IsKnownMount(KivFisheyeLib::MountType mount);
bool IsAllowed(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view);
bool HasScene(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view);

struct FrameSize {
    std::uint32_t width;
    std::uint32_t height;
};

FrameSize RingSize(int width, int height, const KivFisheyeLib::DewarpParams& lens, bool isDual);
float RingRatio(const KivFisheyeLib::DewarpParams& lens, bool isDual);
FrameSize WallSize(int width, int height, const KivFisheyeLib::DewarpParams& lens);
float WallRatio(int width, int height, const KivFisheyeLib::DewarpParams& lens);

FrameSize RecommendedSize(FrameSize input, KivFisheyeLib::MountType mount,
                          KivFisheyeLib::ViewType view, const KivFisheyeLib::DewarpParams& lens);
float RecommendedRatio(FrameSize input, KivFisheyeLib::MountType mount,
                       KivFisheyeLib::ViewType view, const KivFisheyeLib::DewarpParams& lens);

struct Aim {
    float pan;
    float tilt;
    float zoom;
};

/// What a virtual camera of this mount makes of wanted angles and zoom.
Aim Limited(KivFisheyeLib::MountType mount, Aim wanted, bool isZoomingOut);

/// Degrees from 0 to 360.
float Wrapped(float degrees);

/// The aim at a point of the input frame.
Aim AimAt(KivFisheyeLib::MountType mount, const KivFisheyeLib::DewarpParams& lens, float x, float y,
          float fieldOfView);

#endif
