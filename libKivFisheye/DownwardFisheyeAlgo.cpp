#include "DownwardFisheyeAlgo.h"

#include "DownwardFisheyeAlgo_C.h"
#if defined(__x86_64__)
#include "DownwardFisheyeAlgo_AVX.h"
#include "DownwardFisheyeAlgo_SSE41.h"
#else
namespace DownwardFisheyeAlgoNS {
namespace SSE41 = C;
namespace AVX = C;
}  // namespace DownwardFisheyeAlgoNS
#endif
#include "ring/RingConverters.h"
#include "ring/RingFit.h"
#include "vcam/Aiming.h"

namespace DownwardFisheyeAlgoNS {

#include "ring/RingConverters.inl"

void GetBestFitPanoramaSize(int srcWidth, int srcHeight, float radiusX, float radiusY,
                            float innerRadiusRatio, int& width, int& height) {
    ring::FullFit::Size(srcWidth, srcHeight, {radiusX, radiusY, innerRadiusRatio}, width, height);
}

float GetBestFitPanoramaRatio(int, int, float radiusX, float radiusY, float innerRadiusRatio) {
    return ring::FullFit::Ratio({radiusX, radiusY, innerRadiusRatio});
}

void GetBestFitDualPanoramaSize(int srcWidth, int srcHeight, float radiusX, float radiusY,
                                float innerRadiusRatio, int& width, int& height) {
    ring::DualFit::Size(srcWidth, srcHeight, {radiusX, radiusY, innerRadiusRatio}, width, height);
}

float GetBestFitDualPanoramaRatio(int, int, float radiusX, float radiusY, float innerRadiusRatio) {
    return ring::DualFit::Ratio({radiusX, radiusY, innerRadiusRatio});
}

void GetModelViewMatrix(float pan, float tilt, float (&matrix)[16]) {
    const vcam::Turn p(pan);
    const vcam::Turn t(tilt);
    vcam::SetRotation({{p.cosine, -p.sine * t.cosine, p.sine * t.sine},
                       {p.sine, p.cosine * t.cosine, -p.cosine * t.sine},
                       {0.0F, t.sine, t.cosine}},
                      matrix);
}

vcam::PanTilt CvtXYToVCamPanTilt(float radiusX, float radiusY, float x, float y) {
    return vcam::AimAroundAxis(vcam::LensPoint(radiusX, radiusY, x, y), -vcam::kDegreesPerRadian,
                               90.0F);
}

}  // namespace DownwardFisheyeAlgoNS
