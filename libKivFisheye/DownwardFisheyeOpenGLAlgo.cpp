#include "DownwardFisheyeOpenGLAlgo.h"

#include "DownwardFisheyeOpenGLAlgo_C.h"
#include "KernelPointer.h"
#include "PanoramaOutlines.h"
#include "ring/RingMesh.h"
#include "ring/RingMesh_C.h"
#include "ring/RingMount.h"
#if defined(__x86_64__)
#include "DownwardFisheyeOpenGLAlgo_SSE2.h"
#include "ring/RingMesh_SSE2.h"
#endif

namespace DownwardFisheyeAlgoNS {

namespace {

using Mount = ring::CeilingMount;

struct CDispatcher {
    static ring::MeshFunction& _calculate_panorama_texture_coordinate_dispatch;
    static ring::DualMeshFunction& _calculate_dual_panorama_texture_coordinate_dispatch;
    static DualOutlineFunction& _calculate_dual_panorama_roi_coordinate_dispatch;
    static KernelPointer<ring::MeshFunction> _calculate_panorama_texture_coordinate_impl;
    static KernelPointer<ring::DualMeshFunction> _calculate_dual_panorama_texture_coordinate_impl;
    static KernelPointer<DualOutlineFunction> _calculate_dual_panorama_roi_coordinate_impl;
};

}  // namespace

#include "ring/RingMesh.inl"

// clang-format off
DualOutlineFunction& CDispatcher::_calculate_dual_panorama_roi_coordinate_dispatch = FirstCallOf<_calculate_dual_panorama_roi_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculateDualPanoramaROICoordinate>, KernelIn<Form::SSE2, SSE2::CalculateDualPanoramaROICoordinate>>;
KernelPointer<DualOutlineFunction> CDispatcher::_calculate_dual_panorama_roi_coordinate_impl(_calculate_dual_panorama_roi_coordinate_dispatch);
// clang-format on

void CalculatePanoramaBoundaryCoordinate(float radiusX, float radiusY, float innerRadiusRatio,
                                         bool centerAtOrigin, float* innerCoordinates,
                                         int innerCount, float* outerCoordinates, int outerCount,
                                         CoordinateOrientationType orientation) {
    const float center = CenterOf(centerAtOrigin);
    CalculateEllipseCoordinate(center, center, radiusX * innerRadiusRatio,
                               radiusY * innerRadiusRatio, innerCoordinates, innerCount,
                               orientation);
    CalculateEllipseCoordinate(center, center, radiusX, radiusY, outerCoordinates, outerCount,
                               orientation);
}

void CalculateDualPanoramaROICoordinate(float radiusX, float radiusY, float innerRadiusRatio,
                                        bool centerAtOrigin, float panDegrees,
                                        float* firstCoordinates, int firstCount,
                                        float* secondCoordinates, int secondCount,
                                        CoordinateOrientationType orientation) {
    CDispatcher::_calculate_dual_panorama_roi_coordinate_impl(
        radiusX, radiusY, innerRadiusRatio, centerAtOrigin, panDegrees, firstCoordinates,
        firstCount, secondCoordinates, secondCount, orientation);
}

}  // namespace DownwardFisheyeAlgoNS
