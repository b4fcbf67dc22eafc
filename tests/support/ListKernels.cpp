#include "support/ListKernels.h"

#include "DownwardFisheyeOpenGLAlgo_C.h"
#include "FisheyeAlgoCommon_C.h"
#include "FrontwardFisheyeOpenGLAlgo.h"
#include "FrontwardFisheyeOpenGLAlgo_C.h"
#if defined(__x86_64__)
#include "DownwardFisheyeOpenGLAlgo_SSE2.h"
#include "FisheyeAlgoCommon_SSE2.h"
#include "FrontwardFisheyeOpenGLAlgo_SSE2.h"
#endif

namespace {

template <CoordinateOrientationType orientation>
EllipseFunction& EllipseOf([[maybe_unused]] ListForm form) {
#if defined(__x86_64__)
    if (form == ListForm::SSE2) {
        return SSE2::CalculateEllipseCoordinate<orientation>;
    }
#endif
    return C::CalculateEllipseCoordinate<orientation>;
}

}  // namespace

EllipseFunction& EllipseOf(ListForm form, CoordinateOrientationType orientation) {
    return orientation == CoordinateOrientationWindows
               ? EllipseOf<CoordinateOrientationWindows>(form)
               : EllipseOf<CoordinateOrientationTexture>(form);
}

DownwardFisheyeAlgoNS::DualOutlineFunction& HalfRingsOf([[maybe_unused]] ListForm form) {
#if defined(__x86_64__)
    if (form == ListForm::SSE2) {
        return DownwardFisheyeAlgoNS::SSE2::CalculateDualPanoramaROICoordinate;
    }
#endif
    return DownwardFisheyeAlgoNS::C::CalculateDualPanoramaROICoordinate;
}

WallOutlineFunction& WallOutlineOf([[maybe_unused]] ListForm form) {
#if defined(__x86_64__)
    if (form == ListForm::SSE2) {
        return FrontwardFisheyeAlgoNS::SSE2::CalculatePanoramaBoundaryCoordinate<
            CoordinateOrientationWindows>;
    }
#endif
    return FrontwardFisheyeAlgoNS::C::CalculatePanoramaBoundaryCoordinate<
        CoordinateOrientationWindows>;
}

WallMeshFunction& WallMeshOf([[maybe_unused]] ListForm form) {
#if defined(__x86_64__)
    if (form == ListForm::SSE2) {
        return FrontwardFisheyeAlgoNS::SSE2::CalculatePanoramaTextureCoordinate;
    }
#endif
    return FrontwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate;
}
