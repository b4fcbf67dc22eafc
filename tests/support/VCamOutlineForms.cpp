#include "support/VCamOutlineForms.h"

#include <algorithm>
#include <cstddef>

#include "FisheyeVCamAlgo_C.h"
#include "support/FloatList.h"
#include "support/VCamForms.h"
#if defined(__x86_64__)
#include "FisheyeVCamAlgo_SSE2.h"
#endif

namespace {

template <CoordinateOrientationType orientation>
vcam::OutlineFunction& KernelOf([[maybe_unused]] ListForm form) {
#if defined(__x86_64__)
    if (form == ListForm::SSE2) {
        return FisheyeVCamAlgoNS::SSE2::CalculateVCamROICoordinate<orientation>;
    }
#endif
    return FisheyeVCamAlgoNS::C::CalculateVCamROICoordinate<orientation>;
}

}  // namespace

vcam::OutlineFunction& VCamOutlineOf(ListForm form, CoordinateOrientationType orientation) {
    return orientation == CoordinateOrientationWindows
               ? KernelOf<CoordinateOrientationWindows>(form)
               : KernelOf<CoordinateOrientationTexture>(form);
}

MatrixOf::MatrixOf(const model::ViewOutline& view) {
    std::copy(view.matrix.begin(), view.matrix.end(), elements);
}

std::vector<float> VCamOutlinePoints(ListForm form, const model::ViewOutline& v, int count) {
    const MatrixOf matrix(v);
    return FilledList(2 * static_cast<std::size_t>(count), [&](float* points) {
        VCamOutlineOf(form, OrientationOf(v))(v.center, v.center, v.radiusX, v.radiusY, v.eyeZ,
                                              v.fieldOfView, v.aspect, v.nearPlane, matrix.elements,
                                              points, count);
    });
}

std::vector<float> VCamOutlineOfEntry(const model::ViewOutline& v, bool centerAtOrigin, int count) {
    const MatrixOf matrix(v);
    return FilledList(2 * static_cast<std::size_t>(count), [&](float* points) {
        FisheyeVCamAlgoNS::CalculateVCamROICoordinate(
            v.radiusX, v.radiusY, v.eyeZ, v.fieldOfView, v.aspect, v.nearPlane, matrix.elements,
            centerAtOrigin, points, count, OrientationOf(v));
    });
}

model::ViewOutline ViewOf(const AimedView& aim) {
    const VCamSettings s = SettingsOf(aim.mount, aim.pan, aim.tilt, aim.zoom);
    return {0.5F,          0.5F, 0.5F,        s.eyeZ,
            s.fieldOfView, 1.0F, s.nearPlane, VCamMatrix(aim.mount, s.pan, s.tilt),
            true};
}
