#include "KivFisheyeCommon.h"

#include "BestFit.h"
#include "CameraRules.h"
#include "DownwardFisheyeAlgo.h"
#include "FrontwardFisheyeAlgo.h"
#include "TruncateToInt.h"
#include "UpwardFisheyeAlgo.h"

using namespace KivFisheyeLib;

namespace {

/// How a mount fits an output to a view: its two functions and the one lens parameter that shapes
/// it.
struct Fit {
    using SizeFunction = void(int srcWidth, int srcHeight, float radiusX, float radiusY,
                              float shape, int& width, int& height);
    using RatioFunction = float(int srcWidth, int srcHeight, float radiusX, float radiusY,
                                float shape);

    SizeFunction* size = nullptr;
    RatioFunction* ratio = nullptr;
    float shape = 0.0F;
};

constexpr Fit kNoFit{};

/// One of a mount's two fits, by the view.
Fit FitOfView(ViewType view, Fit dual, Fit full) {
    switch (view) {
        case ViewTypeDualPanorama:
            return dual;
        case ViewTypeFullPanorama:
            return full;
        default:
            return kNoFit;
    }
}

/// The panorama fit of a mount and view; empty where there is none.
Fit PanoramaFit(MountType mount, ViewType view, const DewarpParams& params) {
    const float ring = params.innerRadiusRatio;
    switch (mount) {
        case MountTypeWall:
            return FitOfView(
                view, kNoFit,
                {FrontwardFisheyeAlgoNS::GetBestFitPanoramaSize,
                 FrontwardFisheyeAlgoNS::GetBestFitPanoramaRatio, params.wallViewAngle});
        case MountTypeCeiling:
            return FitOfView(view,
                             {DownwardFisheyeAlgoNS::GetBestFitDualPanoramaSize,
                              DownwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio, ring},
                             {DownwardFisheyeAlgoNS::GetBestFitPanoramaSize,
                              DownwardFisheyeAlgoNS::GetBestFitPanoramaRatio, ring});
        case MountTypeTable:
            return FitOfView(view,
                             {UpwardFisheyeAlgoNS::GetBestFitDualPanoramaSize,
                              UpwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio, ring},
                             {UpwardFisheyeAlgoNS::GetBestFitPanoramaSize,
                              UpwardFisheyeAlgoNS::GetBestFitPanoramaRatio, ring});
    }
    return kNoFit;
}

float AsFloat(unsigned int side) {
    return static_cast<float>(static_cast<int>(side));
}

unsigned int LensSide(unsigned int side, float radius) {
    const int pixels = TruncateToInt(AsFloat(side) * (radius + radius));
    return static_cast<unsigned int>(RoundUpToEight(pixels));
}

}  // namespace

int BitsPerPixel(PixelFormat format) {
    constexpr int kBits[] = {24, 24, 32, 32};
    return format <= PixelFormatRGB32 ? kBits[format] : 0;
}

bool ValidateVideoFrameInfo(const VideoFrameInfo& info, PixelFormat format) {
    if (format > PixelFormatRGB32 || info.width == 0 || info.height == 0) {
        return false;
    }
    const auto bytesPerPixel = static_cast<std::uint32_t>(BitsPerPixel(format) / 8);
    const std::uint32_t stride = (info.width * bytesPerPixel + 3U) & ~3U;
    return info.stride == stride && info.buffer != nullptr;
}

bool ValidateDewarpParams(const DewarpParams& params) {
    const auto outside = [](float value, float low, float high) {
        return value < low || value > high;
    };
    return !outside(params.radiusX, 0.0F, 1.0F) && !outside(params.radiusY, 0.0F, 1.0F) &&
           !outside(params.wallViewAngle, 10.0F, 90.0F) &&
           !outside(params.innerRadiusRatio, 0.0F, 0.8F);
}

bool ValidateMountTypeAndViewType(MountType mount, ViewType view) {
    return !(mount == MountTypeWall && view == ViewTypeDualPanorama);
}

void GetRecommendedOutputVideoSize(unsigned int width, unsigned int height, MountType mount,
                                   ViewType view, const DewarpParams& params,
                                   unsigned int* outWidth, unsigned int* outHeight) {
    *outWidth = width;
    *outHeight = height;
    if (view == ViewTypeVCam) {
        *outWidth = LensSide(width, params.radiusX);
        *outHeight = LensSide(height, params.radiusY);
        return;
    }
    const Fit fit = PanoramaFit(mount, view, params);
    if (fit.size != nullptr) {
        int fitWidth = 0;
        int fitHeight = 0;
        fit.size(static_cast<int>(width), static_cast<int>(height), params.radiusX, params.radiusY,
                 fit.shape, fitWidth, fitHeight);
        *outWidth = static_cast<unsigned int>(fitWidth);
        *outHeight = static_cast<unsigned int>(fitHeight);
    }
}

float GetRecommendedOutputVideoRatio(unsigned int width, unsigned int height, MountType mount,
                                     ViewType view, const DewarpParams& params) {
    if (width == 0 || height == 0) {
        return 1.0F;
    }
    if (view == ViewTypeVCam) {
        const float lensHeight = static_cast<float>(height) * (params.radiusY + params.radiusY);
        if (lensHeight <= kNegligibleExtent) {
            return 1.0F;
        }
        return static_cast<float>(width) * (params.radiusX + params.radiusX) / lensHeight;
    }
    const Fit fit = PanoramaFit(mount, view, params);
    if (fit.ratio == nullptr) {
        return 1.0F;
    }
    return fit.ratio(static_cast<int>(width), static_cast<int>(height), params.radiusX,
                     params.radiusY, fit.shape);
}

vcam::PanTilt CvtXYToVCamPanTilt(MountType mount, float radiusX, float radiusY, float x, float y) {
    switch (mount) {
        case MountTypeWall:
            return FrontwardFisheyeAlgoNS::CvtXYToVCamPanTilt(radiusX, radiusY, x, y);
        case MountTypeCeiling:
            return DownwardFisheyeAlgoNS::CvtXYToVCamPanTilt(radiusX, radiusY, x, y);
        case MountTypeTable:
            return UpwardFisheyeAlgoNS::CvtXYToVCamPanTilt(radiusX, radiusY, x, y);
    }
    return {0.0F, 0.0F};
}

vcam::PanTiltZoom CvtXYToVCamPanTiltZoom(MountType mount, float radiusX, float radiusY, float x,
                                         float y, float fieldOfView) {
    switch (mount) {
        case MountTypeWall:
            return FrontwardFisheyeAlgoNS::CvtXYToVCamPanTiltZoom(radiusX, radiusY, x, y,
                                                                  fieldOfView);
        case MountTypeCeiling:
            return DownwardFisheyeAlgoNS::CvtXYToVCamPanTiltZoom(radiusX, radiusY, x, y,
                                                                 fieldOfView);
        case MountTypeTable:
            return UpwardFisheyeAlgoNS::CvtXYToVCamPanTiltZoom(radiusX, radiusY, x, y, fieldOfView);
    }
    return {{0.0F, 0.0F}, 1.0F};
}

std::pair<int, int> GetRatioRectSize(int srcWidth, int srcHeight, int boundWidth, int boundHeight) {
    if (srcWidth == 0 || srcHeight == 0 || boundWidth == 0 || boundHeight == 0) {
        return {0, 0};
    }
    const float srcRatio = static_cast<float>(srcWidth) / static_cast<float>(srcHeight);
    const float boundRatio = static_cast<float>(boundWidth) / static_cast<float>(boundHeight);
    if (srcRatio >= boundRatio) {
        return {boundWidth, TruncateToInt(static_cast<float>(boundWidth) / srcRatio)};
    }
    return {TruncateToInt(static_cast<float>(boundHeight) * srcRatio), boundHeight};
}
