#include "FisheyeAlgoCommon.h"

#include "FisheyeAlgoCommon_C.h"
#include "KernelPointer.h"
#if defined(__x86_64__)
#include "FisheyeAlgoCommon_SSE2.h"
#else
namespace SSE2 = C;
#endif

namespace {

using EllipseFunction = void(float centerX, float centerY, float radiusX, float radiusY,
                             float* points, int count);

struct CDispatcher {
    static EllipseFunction& _calculate_ellipse_windows_coordinate_dispatch;
    static EllipseFunction& _calculate_ellipse_texture_coordinate_dispatch;
    static KernelPointer<EllipseFunction> _calculate_ellipse_windows_coordinate_impl;
    static KernelPointer<EllipseFunction> _calculate_ellipse_texture_coordinate_impl;
};

// clang-format off
EllipseFunction& CDispatcher::_calculate_ellipse_windows_coordinate_dispatch = FirstCallOf<_calculate_ellipse_windows_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculateEllipseCoordinate<CoordinateOrientationWindows>>, KernelIn<Form::SSE2, SSE2::CalculateEllipseCoordinate<CoordinateOrientationWindows>>>;
EllipseFunction& CDispatcher::_calculate_ellipse_texture_coordinate_dispatch = FirstCallOf<_calculate_ellipse_texture_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculateEllipseCoordinate<CoordinateOrientationTexture>>, KernelIn<Form::SSE2, SSE2::CalculateEllipseCoordinate<CoordinateOrientationTexture>>>;
KernelPointer<EllipseFunction> CDispatcher::_calculate_ellipse_windows_coordinate_impl(_calculate_ellipse_windows_coordinate_dispatch);
KernelPointer<EllipseFunction> CDispatcher::_calculate_ellipse_texture_coordinate_impl(_calculate_ellipse_texture_coordinate_dispatch);
// clang-format on

}  // namespace

void CalculateEllipseCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float* points, int count, CoordinateOrientationType orientation) {
    switch (orientation) {
        case CoordinateOrientationWindows:
            CDispatcher::_calculate_ellipse_windows_coordinate_impl(centerX, centerY, radiusX,
                                                                    radiusY, points, count);
            break;
        case CoordinateOrientationTexture:
            CDispatcher::_calculate_ellipse_texture_coordinate_impl(centerX, centerY, radiusX,
                                                                    radiusY, points, count);
            break;
    }
}
