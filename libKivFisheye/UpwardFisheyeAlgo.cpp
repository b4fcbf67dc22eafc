#include "UpwardFisheyeAlgo.h"

#include "DownwardFisheyeAlgo.h"
#include "UpwardFisheyeAlgo_C.h"
#if defined(__x86_64__)
#include "UpwardFisheyeAlgo_AVX.h"
#include "UpwardFisheyeAlgo_SSE41.h"
#else
namespace UpwardFisheyeAlgoNS {
namespace SSE41 = C;
namespace AVX = C;
}  // namespace UpwardFisheyeAlgoNS
#endif
#include "ring/RingConverters.h"
#include "vcam/Aiming.h"

namespace UpwardFisheyeAlgoNS {

#include "ring/RingConverters.inl"

void GetBestFitPanoramaSize(int srcWidth, int srcHeight, float radiusX, float radiusY,
                            float innerRadiusRatio, int& width, int& height) {
    DownwardFisheyeAlgoNS::GetBestFitPanoramaSize(srcWidth, srcHeight, radiusX, radiusY,
                                                  innerRadiusRatio, width, height);
}

float GetBestFitPanoramaRatio(int srcWidth, int srcHeight, float radiusX, float radiusY,
                              float innerRadiusRatio) {
    return DownwardFisheyeAlgoNS::GetBestFitPanoramaRatio(srcWidth, srcHeight, radiusX, radiusY,
                                                          innerRadiusRatio);
}

void GetBestFitDualPanoramaSize(int srcWidth, int srcHeight, float radiusX, float radiusY,
                                float innerRadiusRatio, int& width, int& height) {
    DownwardFisheyeAlgoNS::GetBestFitDualPanoramaSize(srcWidth, srcHeight, radiusX, radiusY,
                                                      innerRadiusRatio, width, height);
}

float GetBestFitDualPanoramaRatio(int srcWidth, int srcHeight, float radiusX, float radiusY,
                                  float innerRadiusRatio) {
    return DownwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio(srcWidth, srcHeight, radiusX, radiusY,
                                                              innerRadiusRatio);
}

vcam::PanTilt CvtXYToVCamPanTilt(float radiusX, float radiusY, float x, float y) {
    return vcam::AimAroundAxis(vcam::LensPoint(radiusX, radiusY, x, y), vcam::kDegreesPerRadian,
                               -90.0F);
}

}  // namespace UpwardFisheyeAlgoNS
