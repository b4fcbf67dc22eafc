#include <algorithm>
#include <cmath>
#include <limits>
#include <ostream>
#include <utility>
#include <vector>

#include "KernelsJobs.h"
#include "KernelsLists.h"
#include "KernelsVCam.h"
#include "support/ListKernels.h"
#include "support/MeshModel.h"
#include "support/VCamOutlineForms.h"

// The kernels of outlines.

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kAnything = std::numeric_limits<double>::infinity();

/// What a list of points is asked for.
struct Outline {
    float centerX;
    float centerY;
    float radiusX;
    float radiusY;
    float shape;  ///< the inner ratio or the view angle
    float pan;
    int count;
    int secondCount;
    bool isWindows;
    bool isWild;

    CoordinateOrientationType Orientation() const {
        return isWindows ? CoordinateOrientationWindows : CoordinateOrientationTexture;
    }
    double Radius() const {
        return std::max({0.0, std::fabs(double{radiusX}), std::fabs(double{radiusY})});
    }
};

std::ostream& operator<<(std::ostream& out, const Outline& job) {
    out.precision(9);
    return out << "an outline around " << job.centerX << ", " << job.centerY << ", radii "
               << job.radiusX << " and " << job.radiusY << ", shape " << job.shape << ", pan "
               << job.pan << ", " << job.count << " and " << job.secondCount << " points, "
               << (job.isWindows ? "windows" : "texture");
}

struct ViewOutlineJob : model::ViewOutline {};

std::ostream& operator<<(std::ostream& out, const ViewOutlineJob& job) {
    out.precision(9);
    out << "a virtual camera's outline around " << job.center << ", "
        << (job.isWindows ? "windows" : "texture") << ", radii " << job.radiusX << " and "
        << job.radiusY << ", eye " << job.eyeZ << ", near " << job.nearPlane << ", field "
        << job.fieldOfView << ", aspect " << job.aspect << ", matrix";
    for (const float element : job.matrix) {
        out << " " << element;
    }
    return out;
}

int NextCount(KernelsInput& input, int group) {
    const int groups = input.OnceIn(8) ? input.Between(0, 40) : input.Between(0, 12);
    return groups * group + (input.OnceIn(4) ? input.Between(0, group - 1) : 0);
}

Outline NextOutline(KernelsInput& input, float leastShape, float mostShape, int group) {
    Outline job;
    job.isWild = input.OnceIn(4);
    input.SetWild(job.isWild);
    job.centerX = input.Between(0, 1) == 0 ? 0.5F : 0.0F;
    job.centerY = input.OnceIn(4) ? input.Value(0.0F, 1.0F) : job.centerX;
    job.radiusX = input.Value(0.0F, 1.0F);
    job.radiusY = input.Value(0.0F, 1.0F);
    job.shape = input.Value(leastShape, mostShape);
    job.pan = input.Value(0.0F, 360.0F);
    job.count = NextCount(input, group);
    job.secondCount = NextCount(input, group);
    job.isWindows = input.Between(0, 1) == 0;
    return job;
}

/// The angles of a full turn.
std::vector<float> EllipsePoints(ListForm form, const Outline& job) {
    constexpr float kRound = 6.2831855F;
    std::vector<float> points;
    const float step = kRound / static_cast<float>(job.count);
    for (const model::Turned& angle :
         model::RotatedAngles(form, 0.0F, step, WholeGroups(form, job.count))) {
        const float up = angle.s * job.radiusY;
        points.push_back(angle.c * job.radiusX + job.centerX);
        points.push_back(job.isWindows ? job.centerY - up : up + job.centerY);
    }
    return points;
}

/// The floats that a half ring writes to: groups of four may reach beyond an arc.
std::size_t HalfRingFloats(ListForm form, int count) {
    const int half = count / 2;
    return 2 * static_cast<std::size_t>(std::max(count, half + WholeGroups(form, half)));
}

/// A count that a form of the wall's or a virtual camera's outline takes: lanes want whole groups
/// on each side.
int CountFor(ListForm form, int count) {
    return form == ListForm::C || count < 4 ? count : count / 16 * 16;
}

/// A list of which `written` is filled, and no more.
template <class Job, class Fill>
void CheckFirstPoints(const Job& job, ListForm form, int count, const std::vector<float>& written,
                      Fill&& fill) {
    CheckList(job, form, 2 * static_cast<std::size_t>(count), fill, [&](std::vector<float> list) {
        std::copy(written.begin(), written.end(), list.begin());
        return list;
    });
}

}  // namespace

void CheckEllipse(KernelsInput& input) {
    const Outline job = NextOutline(input, 0.0F, 1.0F, 4);
    // Each point is a rotation of an earlier one, of five roundings.
    FormDistance distance(job.isWild ? kAnything
                                     : 1e-6 + job.Radius() * std::ldexp(6.25 * job.count, -24));
    for (const ListForm form : kListForms) {
        const auto expected = job.count == 0 ? std::vector<float>() : EllipsePoints(form, job);
        CheckFullList(job, form, expected, [&](float* points) {
            EllipseOf(form, job.Orientation())(job.centerX, job.centerY, job.radiusX, job.radiusY,
                                               points, job.count);
        });
        distance.Add(job, expected);
    }
}

void CheckHalfRings(KernelsInput& input) {
    constexpr float kOpposite = 3.1415927F;
    constexpr float kRadian = 0.017453292F;
    const Outline job = NextOutline(input, 0.0F, 0.8F, 8);
    const bool isOrigin = job.centerX == 0.0F;
    model::HalfRing first{job.centerX,
                          job.radiusX,
                          job.radiusY,
                          job.radiusX * job.shape,
                          job.radiusY * job.shape,
                          job.pan * kRadian,
                          job.isWindows};
    model::HalfRing second = first;
    second.start += kOpposite;
    // The start of the second list's inner arc is rounded thrice, above 8 radians.
    FormDistance distance(job.isWild || job.count % 8 != 0
                              ? kAnything
                              : 4e-6 + job.Radius() * std::ldexp(6.25 * job.count, -24));
    for (const ListForm form : kListForms) {
        const auto& fill = HalfRingsOf(form);
        // Each list is filled while the other one is asked for no point.
        const auto check = [&](const model::HalfRing& ring, int count, bool isFirst) {
            const std::size_t floats = HalfRingFloats(form, count);
            const auto run = [&](float* points) {
                fill(job.radiusX, job.radiusY, job.shape, isOrigin, job.pan,
                     isFirst ? points : nullptr, isFirst ? count : 0, isFirst ? nullptr : points,
                     isFirst ? 0 : count, job.Orientation());
            };
            CheckList(job, form, floats, run, [&](std::vector<float> before) {
                return model::WithHalfRing(form, ring, count, std::move(before));
            });
        };
        check(first, job.count, true);
        check(second, job.secondCount, false);
        distance.Add(job, model::WithHalfRing(form, first, job.count,
                                              std::vector<float>(HalfRingFloats(form, job.count))));
    }
}

void CheckWallOutline(KernelsInput& input) {
    const Outline job = NextOutline(input, 10.0F, 90.0F, 16);
    const model::WallOutline outline{job.centerX, job.centerY, job.radiusX, job.radiusY, job.shape};
    // The lanes' arctangent is off by 0.0029 radians of a quarter turn.
    FormDistance distance(
        job.isWild || job.count % 16 != 0 ? kAnything : 2e-5 + 0.0029 * job.Radius() / (kPi / 2.0));
    for (const ListForm form : kListForms) {
        const int count = CountFor(form, job.count);
        const auto expected = model::WallOutlinePoints(form, outline, count);
        CheckFirstPoints(job, form, count, expected, [&](float* points) {
            WallOutlineOf(form)(job.centerX, job.centerY, job.radiusX, job.radiusY, job.shape,
                                points, count);
        });
        distance.Add(job, expected);
    }
}

void CheckVCamOutline(KernelsInput& input) {
    const Outline given = NextOutline(input, 0.0F, 1.0F, 16);
    VCamFrame view;
    view.dstWidth = input.Side(70);
    view.dstHeight = input.Side(70);
    const bool isUsual = SetCamera(input, view) && !given.isWild && given.count % 16 == 0;
    const ViewOutlineJob job{{given.centerX, given.radiusX, given.radiusY, view.eyeZ,
                              view.fieldOfView, view.aspect, view.nearPlane, view.matrix,
                              given.isWindows}};
    const double scale = 2.0 * given.Radius() * (1.0 + static_cast<double>(view.eyeZ)) / kPi;
    FormDistance distance(isUsual ? 1e-5 + scale * (kErrorOfArccosine + kErrorOfRounding)
                                  : kAnything);
    const MatrixOf matrix(job);
    for (const ListForm form : kListForms) {
        const int count = CountFor(form, given.count);
        const auto expected = model::ViewOutlinePoints(form, job, count);
        CheckFirstPoints(job, form, count, expected, [&](float* points) {
            VCamOutlineOf(form, given.Orientation())(
                job.center, job.center, job.radiusX, job.radiusY, job.eyeZ, job.fieldOfView,
                job.aspect, job.nearPlane, matrix.elements, points, count);
        });
        distance.Add(job, expected);
    }
}
