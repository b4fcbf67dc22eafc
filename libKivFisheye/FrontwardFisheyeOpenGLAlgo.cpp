#include "FrontwardFisheyeOpenGLAlgo.h"

#include "FrontwardFisheyeOpenGLAlgo_C.h"
#include "KernelPointer.h"
#include "PanoramaOutlines.h"
#if defined(__x86_64__)
#include "FrontwardFisheyeOpenGLAlgo_SSE2.h"
#endif

namespace FrontwardFisheyeAlgoNS {

void C::CalculatePanoramaTextureCoordinate(int width, int height, float wallViewAngle,
                                           bool centerAtOrigin, float* coordinates) {
    FillTextureCoordinates(width, height, wallViewAngle, centerAtOrigin, coordinates);
}

#if defined(__x86_64__)
void SSE2::CalculatePanoramaTextureCoordinate(int width, int height, float wallViewAngle,
                                              bool centerAtOrigin, float* coordinates) {
    FillTextureCoordinates(width, height, wallViewAngle, centerAtOrigin, coordinates);
}
#else
namespace SSE2 = C;
#endif

namespace {

using MeshFunction = void(int width, int height, float wallViewAngle, bool centerAtOrigin,
                          float* coordinates);
using OutlineFunction = void(float centerX, float centerY, float radiusX, float radiusY,
                             float wallViewAngle, float* points, int count);

struct CDispatcher {
    static MeshFunction& _calculate_panorama_texture_coordinate_dispatch;
    static OutlineFunction& _calculate_panorama_boundary_windows_coordinate_dispatch;
    static OutlineFunction& _calculate_panorama_boundary_texture_coordinate_dispatch;
    static KernelPointer<MeshFunction> _calculate_panorama_texture_coordinate_impl;
    static KernelPointer<OutlineFunction> _calculate_panorama_boundary_windows_coordinate_impl;
    static KernelPointer<OutlineFunction> _calculate_panorama_boundary_texture_coordinate_impl;
};

// Both outlines run the kernel of windows orientation: clients rely on it.
// clang-format off
MeshFunction& CDispatcher::_calculate_panorama_texture_coordinate_dispatch = FirstCallOf<_calculate_panorama_texture_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculatePanoramaTextureCoordinate>, KernelIn<Form::SSE2, SSE2::CalculatePanoramaTextureCoordinate>>;
OutlineFunction& CDispatcher::_calculate_panorama_boundary_windows_coordinate_dispatch = FirstCallOf<_calculate_panorama_boundary_windows_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculatePanoramaBoundaryCoordinate<CoordinateOrientationWindows>>, KernelIn<Form::SSE2, SSE2::CalculatePanoramaBoundaryCoordinate<CoordinateOrientationWindows>>>;
OutlineFunction& CDispatcher::_calculate_panorama_boundary_texture_coordinate_dispatch = FirstCallOf<_calculate_panorama_boundary_texture_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculatePanoramaBoundaryCoordinate<CoordinateOrientationWindows>>, KernelIn<Form::SSE2, SSE2::CalculatePanoramaBoundaryCoordinate<CoordinateOrientationWindows>>>;
KernelPointer<MeshFunction> CDispatcher::_calculate_panorama_texture_coordinate_impl(_calculate_panorama_texture_coordinate_dispatch);
KernelPointer<OutlineFunction> CDispatcher::_calculate_panorama_boundary_windows_coordinate_impl(_calculate_panorama_boundary_windows_coordinate_dispatch);
KernelPointer<OutlineFunction> CDispatcher::_calculate_panorama_boundary_texture_coordinate_impl(_calculate_panorama_boundary_texture_coordinate_dispatch);
// clang-format on

}  // namespace

void CalculatePanoramaTextureCoordinate(int width, int height, float wallViewAngle,
                                        bool centerAtOrigin, float* coordinates) {
    CDispatcher::_calculate_panorama_texture_coordinate_impl(width, height, wallViewAngle,
                                                             centerAtOrigin, coordinates);
}

void CalculatePanoramaBoundaryCoordinate(float radiusX, float radiusY, float wallViewAngle,
                                         bool centerAtOrigin, float* points, int count,
                                         CoordinateOrientationType orientation) {
    const float center = CenterOf(centerAtOrigin);
    switch (orientation) {
        case CoordinateOrientationWindows:
            CDispatcher::_calculate_panorama_boundary_windows_coordinate_impl(
                center, center, radiusX, radiusY, wallViewAngle, points, count);
            break;
        case CoordinateOrientationTexture:
            CDispatcher::_calculate_panorama_boundary_texture_coordinate_impl(
                center, center, radiusX, radiusY, wallViewAngle, points, count);
            break;
    }
}

}  // namespace FrontwardFisheyeAlgoNS
