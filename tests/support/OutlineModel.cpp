#include "support/OutlineModel.h"

#include <cmath>
#include <cstddef>

#include "instrset_detect.h"
#include "support/VectorMathModel.h"

std::string NameOf(ListForm form) {
    return form == ListForm::C ? "C" : "SSE2";
}

ListForm FormOfEntries() {
    constexpr int kLevelSse2 = 2;
    return GetCpuInstructionSet() >= kLevelSse2 ? ListForm::SSE2 : ListForm::C;
}

namespace model {

namespace {

constexpr float kPi = 3.1415927F;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

float UpFrom(float center, float up, bool isWindows) {
    return isWindows ? center - up : up + center;
}

/// The view's rectangle, and the scale of the lens.
struct ViewSizes {
    ViewSizes(const ViewOutline& view, int n) {
        const float half = view.fieldOfView * 0.5F * 0.017453292F;
        const double tangent = std::tan(static_cast<double>(half));
        top = static_cast<float>(tangent * static_cast<double>(view.nearPlane));
        right = view.aspect * top;
        stepX = (right + right) / static_cast<float>(n);
        stepY = (top + top) / static_cast<float>(n);
        const float scale = (1.0F + view.eyeZ) * 0.31830987F;
        kx = (view.radiusX + view.radiusX) * scale;
        ky = (view.radiusY + view.radiusY) * scale;
    }

    float top;
    float right;
    float stepX;
    float stepY;
    float kx;
    float ky;
};

using Ray = std::array<float, 3>;

/// A point of the rectangle, turned by the view's matrix.
Ray ScalarRay(const ViewOutline& view, float x, float y) {
    const float z = (view.eyeZ - view.nearPlane) - view.eyeZ;
    Ray ray{};
    for (std::size_t i = 0; i < ray.size(); ++i) {
        const float* const m = &view.matrix[i];
        ray[i] = ((x * m[0] + y * m[4]) + z * m[8]) + 0.0F * m[12];
    }
    return ray;
}

void AppendScalarPoint(const ViewOutline& view, const ViewSizes& sizes, float x, float y,
                       std::vector<float>& points) {
    const Ray ray = ScalarRay(view, x, y);
    const float aside = ray[0] * ray[0] + ray[1] * ray[1];
    const auto inverse = static_cast<float>(1.0 / std::sqrt(static_cast<double>(aside)));
    const double cosine = static_cast<double>(-ray[2] / std::sqrt(aside + ray[2] * ray[2]));
    const auto theta = static_cast<float>(std::acos(cosine));
    const float reachX = sizes.kx * theta;
    const float reachY = sizes.ky * theta;
    const float ex = view.radiusX < reachX ? view.radiusX : reachX;
    const float ey = view.radiusY < reachY ? view.radiusY : reachY;
    points.push_back(ex * (ray[0] * inverse) + view.center);
    points.push_back(UpFrom(view.center, ey * (ray[1] * inverse), view.isWindows));
}

std::vector<float> ScalarViewOutline(const ViewOutline& view, int n) {
    const ViewSizes sizes(view, n);
    std::vector<float> left, bottom, right, top;
    float falling = sizes.top;
    float rightward = -sizes.right;
    float rising = -sizes.top;
    float leftward = sizes.right;
    for (int k = 0; k < n; ++k) {
        AppendScalarPoint(view, sizes, -sizes.right, falling, left);
        AppendScalarPoint(view, sizes, rightward, -sizes.top, bottom);
        AppendScalarPoint(view, sizes, sizes.right, rising, right);
        AppendScalarPoint(view, sizes, leftward, sizes.top, top);
        falling -= sizes.stepY;
        rightward += sizes.stepX;
        rising += sizes.stepY;
        leftward -= sizes.stepX;
    }
    std::vector<float> points = left;
    for (const auto& edge : {bottom, right, top}) {
        points.insert(points.end(), edge.begin(), edge.end());
    }
    return points;
}

#if defined(__x86_64__)

struct Edge {
    float cornerX;
    float cornerY;
    float stepX;
    float stepY;
};

/// Point `k` of an edge whose rays are stepped in four lanes.
Ray LaneRay(const ViewOutline& view, const Edge& edge, int k) {
    const auto& m = view.matrix;
    Ray ray{};
    for (std::size_t i = 0; i < ray.size(); ++i) {
        const float corner = (m[i] * edge.cornerX + m[4 + i] * edge.cornerY) +
                             (m[8 + i] * -view.nearPlane + m[12 + i] * -1.0F);
        const float step = (m[i] * edge.stepX + m[4 + i] * edge.stepY) + 0.0F;
        ray[i] = corner + static_cast<float>(k % 4) * step;
        for (int group = 0; group < k / 4; ++group) {
            ray[i] += 4.0F * step;
        }
    }
    return ray;
}

void AppendLanePoint(const ViewOutline& view, const ViewSizes& sizes, const Ray& ray,
                     std::vector<float>& points) {
    const float aside = ray[0] * ray[0] + ray[1] * ray[1];
    const float theta = Arccosine(-ray[2] / std::sqrt(aside + ray[2] * ray[2]));
    const float r = std::sqrt(aside);
    const float reachX = sizes.kx * theta;
    const float reachY = sizes.ky * theta;
    const float ex = reachX < view.radiusX ? reachX : view.radiusX;
    const float ey = reachY < view.radiusY ? reachY : view.radiusY;
    points.push_back(view.center + ex * (ray[0] / r));
    points.push_back(UpFrom(view.center, ey * (ray[1] / r), view.isWindows));
}

std::vector<float> LaneViewOutline(const ViewOutline& view, int n) {
    const ViewSizes s(view, n);
    const Edge edges[] = {{-s.right, s.top, 0.0F, -s.stepY},
                          {-s.right, -s.top, s.stepX, 0.0F},
                          {s.right, -s.top, 0.0F, s.stepY},
                          {s.right, s.top, -s.stepX, 0.0F}};
    std::vector<float> points;
    for (const Edge& edge : edges) {
        for (int k = 0; k < n; ++k) {
            AppendLanePoint(view, s, LaneRay(view, edge, k), points);
        }
    }
    return points;
}

#else

std::vector<float> LaneViewOutline(const ViewOutline&, int) {
    return {};
}

#endif

}  // namespace

Turned TurnedBy(float radians) {
    const auto wide = static_cast<double>(radians);
    return {static_cast<float>(std::cos(wide)), static_cast<float>(std::sin(wide))};
}

Turned RotatedBy(Turned angle, Turned step) {
    return {angle.c * step.c - angle.s * step.s, angle.s * step.c + angle.c * step.s};
}

std::vector<Turned> RotatedAngles(ListForm form, float start, float step, int count) {
    const int lanes = LanesOf(form);
    const Turned oneStep = TurnedBy(step);
    const Turned allSteps = TurnedBy(step * static_cast<float>(lanes));
    std::vector<Turned> angles{TurnedBy(start)};
    for (int i = 1; i < count; ++i) {
        angles.push_back(i < lanes ? RotatedBy(angles.back(), oneStep)
                                   : RotatedBy(angles[At(i - lanes)], allSteps));
    }
    angles.resize(At(count));
    return angles;
}

std::vector<float> AnglesOfLanes(float start, float step, int count) {
    const float twoOn = (step + step) + start;
    std::vector<float> angles{start, start + step, twoOn, step + twoOn};
    const float fourSteps = (step + step) + (step + step);
    while (angles.size() < At(count)) {
        angles.push_back(angles[angles.size() - 4] + fourSteps);
    }
    angles.resize(At(count));
    return angles;
}

std::vector<float> WithHalfRing(ListForm form, const HalfRing& ring, int count,
                                std::vector<float> list) {
    const int half = count / 2;
    const float step = kPi / static_cast<float>(half - 1);
    const int walked = half < 1 ? 0 : WholeGroups(form, half);
    const auto store = [&](int point, Turned angle, float radiusX, float radiusY) {
        list.at(At(2 * point)) = angle.c * radiusX + ring.center;
        list.at(At(2 * point + 1)) = UpFrom(ring.center, angle.s * radiusY, ring.isWindows);
    };
    const auto outer = RotatedAngles(form, ring.start, step, walked);
    if (form == ListForm::C) {
        for (int k = 0; k < walked; ++k) {
            store(k, outer[At(k)], ring.outerX, ring.outerY);
            store(count - 1 - k, outer[At(k)], ring.innerX, ring.innerY);
        }
        return list;
    }
    const auto inner = RotatedAngles(form, ring.start + kPi, -step, walked);
    for (int group = 0; group < walked; group += 4) {
        for (int k = group; k < group + 4; ++k) {
            store(k, outer[At(k)], ring.outerX, ring.outerY);
        }
        for (int k = group; k < group + 4; ++k) {
            store(half + k, inner[At(k)], ring.innerX, ring.innerY);
        }
    }
    return list;
}

std::vector<float> ViewOutlinePoints(ListForm form, const ViewOutline& view, int count) {
    return form == ListForm::C ? ScalarViewOutline(view, count / 4)
                               : LaneViewOutline(view, count / 4);
}

}  // namespace model
