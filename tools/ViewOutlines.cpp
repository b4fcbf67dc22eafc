#include "ViewOutlines.h"

#include <cmath>
#include <memory>
#include <new>

#include "Failure.h"

namespace KivFisheyeTools {

namespace {

/// A list of points as the library takes it, at a multiple of 16 bytes.
class PointList {
public:
    explicit PointList(std::uint32_t count)
        : m_count(count),
          m_numbers(static_cast<float*>(operator new(2 * sizeof(float) * count, kAlignment))) {}

    float* Data() const { return m_numbers.get(); }
    int Count() const { return static_cast<int>(m_count); }

    /// A ray along the lens's axis leads to no place: such a point is left out.
    Outline Named(const std::string& name, OutlineRole role) const {
        Outline outline{name, role, {}};
        for (std::size_t i = 0; i < m_count; ++i) {
            const Point point{m_numbers[2 * i], m_numbers[2 * i + 1]};
            if (std::isfinite(point.x) && std::isfinite(point.y)) {
                outline.points.push_back(point);
            }
        }
        return outline;
    }

private:
    static constexpr std::align_val_t kAlignment{16};
    struct Deleter {
        void operator()(float* numbers) const { operator delete(numbers, kAlignment); }
    };

    std::uint32_t m_count;
    std::unique_ptr<float[], Deleter> m_numbers;
};

void ExpectOutline(ResultCode result) {
    Expect(result, "the library gives no outline of this view");
}

Outline LensOutline(const ViewCamera& camera, std::uint32_t count) {
    const PointList inner(count);
    const PointList outer(count);
    ExpectOutline(camera.Boundaries()->CalculateCeilingTablePanoramaBoundary(
        nullptr, inner.Data(), inner.Count(), outer.Data(), outer.Count()));
    return outer.Named("lens", OutlineRole::Lens);
}

std::vector<Outline> DualOutlines(const ViewCamera& camera, std::uint32_t count) {
    const Angles present = camera.Present();
    if (present.pan == 180.0F) {
        // At exactly half a turn the library's picture is that of no turn.
        camera.Turn({0.0F, present.tilt, present.zoom});
    }
    const PointList upper(count);
    const PointList lower(count);
    ExpectOutline(camera.Outlines()->GetDualPanoramaROI(upper.Data(), upper.Count(), lower.Data(),
                                                        lower.Count()));
    return {upper.Named("upper", OutlineRole::View), lower.Named("lower", OutlineRole::LowerHalf)};
}

std::vector<Outline> RingOutlines(const ViewCamera& camera, const ViewArguments& view,
                                  std::uint32_t count) {
    const PointList inner(count);
    const PointList outer(count);
    ExpectOutline(camera.Outlines()->GetCeilingTablePanoramaROI(inner.Data(), inner.Count(),
                                                                outer.Data(), outer.Count()));
    std::vector<Outline> outlines = {outer.Named("outer", OutlineRole::View)};
    if (view.lens.innerRadiusRatio > 0.0F) {
        outlines.push_back(inner.Named("inner", OutlineRole::View));
    }
    return outlines;
}

}  // namespace

void CheckPointCount(const ViewArguments& view, std::uint32_t count) {
    std::uint32_t step = 16;
    if (IsDualPanorama(view)) {
        step = 8;
    } else if (ViewOfName(view.view) == KivFisheyeLib::ViewTypeFullPanorama && !IsWall(view)) {
        step = 4;
    }
    if (count % step != 0) {
        throw UsageError("--points: the outline of this view takes a multiple of " +
                         std::to_string(step) + " points");
    }
}

std::vector<Outline> OutlinesOf(const ViewCamera& camera, const ViewArguments& view,
                                std::uint32_t count) {
    switch (ViewOfName(view.view)) {
        case KivFisheyeLib::ViewTypeDualPanorama:
            return DualOutlines(camera, count);
        case KivFisheyeLib::ViewTypeFullPanorama:
            if (!IsWall(view)) {
                return RingOutlines(camera, view, count);
            }
            break;
        case KivFisheyeLib::ViewTypeVCam:
            break;
    }
    const PointList points(count);
    ExpectOutline(ViewOfName(view.view) == KivFisheyeLib::ViewTypeVCam
                      ? camera.Outlines()->GetVCamROI(points.Data(), points.Count())
                      : camera.Outlines()->GetWallPanoramaROI(points.Data(), points.Count()));
    return {LensOutline(camera, count), points.Named("view", OutlineRole::View)};
}

}  // namespace KivFisheyeTools
