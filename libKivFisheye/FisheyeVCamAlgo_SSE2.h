#ifndef KIVFISHEYE_FISHEYE_VCAM_ALGO_SSE2_H
#define KIVFISHEYE_FISHEYE_VCAM_ALGO_SSE2_H

#include <cstddef>

#include "FisheyeAlgoCommon.h"
#include "sse/sseMath.h"
#include "sse/sseUtil.h"
#include "vcam/RaySteps.h"
#include "vcam/VCamOutline.h"

/// The virtual camera's outline in four lanes, one edge after the other. Rays are stepped and not
/// formed anew, and the arccosine is the lanes' own. Each edge is whole groups of four points: a
/// count is a multiple of 16.
namespace FisheyeVCamAlgoNS::SSE2 {

using sse::sse4Floats;

/// Four neighbouring rays of an edge, which go on by four steps at once.
class EdgeRays {
public:
    /// From `corner` on by `step` for each point, or by minus `step`, where `sign` is -1.
    EdgeRays(const float (&matrix)[16], const float (&corner)[4], const float (&step)[4],
             float sign) {
        for (int component = 0; component < 3; ++component) {
            const sse4Floats row = vcam::MatrixRow(matrix, component);
            const float first = Dot(row, sse4Floats::Load(corner));
            const float perPoint = sign * Dot(row, sse4Floats::Load(step));
            m_rays[component] = sse4Floats(first) + sse::LaneIndices() * sse4Floats(perPoint);
            m_fourSteps[component] = sse4Floats(perPoint * 4.0F);
        }
    }

    void Advance() {
        for (int component = 0; component < 3; ++component) {
            m_rays[component] = m_rays[component] + m_fourSteps[component];
        }
    }

    sse4Floats X() const { return m_rays[0]; }
    sse4Floats Y() const { return m_rays[1]; }
    sse4Floats Z() const { return m_rays[2]; }

private:
    sse4Floats m_rays[3];
    sse4Floats m_fourSteps[3];
};

/// Where rays meet the lens image, those beyond its rim held at it.
template <CoordinateOrientationType orientation>
struct OutlineLens {
    void StorePoints(const EdgeRays& rays, float* points) const {
        const sse4Floats rr = rays.X() * rays.X() + rays.Y() * rays.Y();
        const sse4Floats length = Sqrt(rr + rays.Z() * rays.Z());
        const sse4Floats theta = sseAcos((sse4Floats(0.0F) - rays.Z()) / length);
        const sse4Floats r = Sqrt(rr);
        const sse4Floats extentX = Min(sse4Floats(scale.x) * theta, sse4Floats(scale.radiusX));
        const sse4Floats extentY = Min(sse4Floats(scale.y) * theta, sse4Floats(scale.radiusY));
        sse::StoreInterleaved(
            sse4Floats(centerX) + extentX * (rays.X() / r),
            TowardsTop<orientation>(sse4Floats(centerY), extentY * (rays.Y() / r)), points);
    }

    float centerX;
    float centerY;
    vcam::OutlineScale scale;
};

template <CoordinateOrientationType orientation>
void CalculateVCamROICoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float eyeZ, float fieldOfView, float aspect, float nearPlane,
                                const float (&matrix)[16], float* coordinates, int count) {
    const int n = count / 4;
    if (n <= 0) {
        return;
    }
    const vcam::ViewEdges view({fieldOfView, aspect, nearPlane}, n);
    const OutlineLens<orientation> lens{centerX, centerY, {radiusX, radiusY, eyeZ}};
    const float down[4] = {0.0F, -view.stepY, 0.0F, 0.0F};
    const float rightward[4] = {view.stepX, 0.0F, 0.0F, 0.0F};
    const float topLeft[4] = {-view.right, view.top, -nearPlane, -1.0F};
    const float bottomLeft[4] = {-view.right, -view.top, -nearPlane, -1.0F};
    const float bottomRight[4] = {view.right, -view.top, -nearPlane, -1.0F};
    const float topRight[4] = {view.right, view.top, -nearPlane, -1.0F};
    EdgeRays edges[4] = {{matrix, topLeft, down, 1.0F},
                         {matrix, bottomLeft, rightward, 1.0F},
                         {matrix, bottomRight, down, -1.0F},
                         {matrix, topRight, rightward, -1.0F}};
    for (int edge = 0; edge < 4; ++edge) {
        for (std::ptrdiff_t i = 0; i < n; i += sse4Floats::kLanes) {
            lens.StorePoints(edges[edge], SideOf(coordinates, n, edge) + 2 * i);
            edges[edge].Advance();
        }
    }
}

}  // namespace FisheyeVCamAlgoNS::SSE2

#endif
