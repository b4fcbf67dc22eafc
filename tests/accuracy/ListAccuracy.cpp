#include "accuracy/ListAccuracy.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "DownwardFisheyeOpenGLAlgo_C.h"
#include "FisheyeAlgoCommon_C.h"
#include "FrontwardFisheyeOpenGLAlgo.h"
#include "FrontwardFisheyeOpenGLAlgo_C.h"
#include "MemoryUtils.h"
#include "accuracy/ListCheck.h"
#include "support/OutlineGeometry.h"
#include "support/RingMeshForms.h"
#include "support/RingModel.h"
#include "support/VCamForms.h"
#include "support/VCamOutlineForms.h"
#include "support/WallModel.h"
#if defined(__x86_64__)
#include "DownwardFisheyeOpenGLAlgo_SSE2.h"
#include "FisheyeAlgoCommon_SSE2.h"
#include "FrontwardFisheyeOpenGLAlgo_SSE2.h"
#endif

using namespace KivFisheyeLib;

namespace {

namespace RingScalars = DownwardFisheyeAlgoNS::C;
namespace WallScalars = FrontwardFisheyeAlgoNS::C;
#if defined(__x86_64__)
namespace EllipseLanes = ::SSE2;
namespace RingLanes = DownwardFisheyeAlgoNS::SSE2;
namespace WallLanes = FrontwardFisheyeAlgoNS::SSE2;
#else
namespace EllipseLanes = ::C;
namespace RingLanes = RingScalars;
namespace WallLanes = WallScalars;
#endif

constexpr auto kWindows = CoordinateOrientationWindows;
constexpr float kCenter = 0.5F;
constexpr int kMeshRows = 8;

// Of one operation in single precision, relative to its result.
const double kRounding = std::ldexp(1.0, -24);
const double kQuarterTurn = std::acos(0.0);
constexpr double kArctangentError = 0.0029;

/// What `fill(float* list)` leaves in a list of `floats`.
template <class Fill>
std::vector<float> Filled(int floats, Fill&& fill) {
    CAlignedBufferT<float, 32> list;
    list.Allocate(static_cast<unsigned long long>(floats));
    fill(list.data());
    return {list.data(), list.data() + list.count()};
}

std::vector<double> Flat(const std::vector<Point>& points) {
    std::vector<double> values;
    for (const Point& point : points) {
        values.push_back(point.x);
        values.push_back(point.y);
    }
    return values;
}

double LargerRadius(const DewarpParams& lens) {
    return static_cast<double>(std::max(lens.radiusX, lens.radiusY));
}

// A turn rounds each product and their sum, and the step itself is rounded.
double RotationError(const DewarpParams& lens, int length) {
    return LargerRadius(lens) * kRounding * (4.0 * length + 4.0);
}

void AddEllipse(const DewarpParams& lens, int length, ListFigures& figures) {
    const auto by = [&](auto& fill) {
        return Filled(2 * length, [&](float* points) {
            fill(kCenter, kCenter, lens.radiusX, lens.radiusY, points, length);
        });
    };
    const double bound = RotationError(lens, length);
    AddTo(
        figures,
        {List::Ellipse, length, by(C::CalculateEllipseCoordinate<kWindows>),
         by(EllipseLanes::CalculateEllipseCoordinate<kWindows>), Flat(Ellipse(lens, 1.0, length))},
        {bound, bound});
}

void AddHalfRing(const DewarpParams& lens, float degrees, int length, ListFigures& figures) {
    const auto by = [&](auto& fill) {
        return Filled(2 * length, [&](float* points) {
            fill(kCenter, lens.radiusX, lens.radiusY, lens.radiusX * lens.innerRadiusRatio,
                 lens.radiusY * lens.innerRadiusRatio, length, points, degrees * 0.0174532924F);
        });
    };
    const double bound =
        RotationError(lens, length) + LargerRadius(lens) * 2.0 * kRounding * 4.0 * kQuarterTurn;
    AddTo(figures,
          {List::HalfRing, length,
           by(RingScalars::calculate_outer_inner_ellipse_coordinate<kWindows>),
           by(RingLanes::calculate_outer_inner_ellipse_coordinate<kWindows>),
           Flat(HalfRing(lens, static_cast<double>(degrees), length))},
          {bound, bound});
}

void AddWallOutline(const DewarpParams& lens, int length, ListFigures& figures) {
    const auto by = [&](auto& fill) {
        return Filled(2 * length, [&](float* points) {
            fill(kCenter, kCenter, lens.radiusX, lens.radiusY, lens.wallViewAngle, points, length);
        });
    };
    constexpr double kOfSums = 2e-5;
    AddTo(
        figures,
        {List::WallOutline, length, by(WallScalars::CalculatePanoramaBoundaryCoordinate<kWindows>),
         by(WallLanes::CalculatePanoramaBoundaryCoordinate<kWindows>),
         Flat(WallOutline(lens, length))},
        {kOfSums, kOfSums + kArctangentError * LargerRadius(lens) / kQuarterTurn});
}

void AddVCamOutline(const DewarpParams& lens, const AimedView& aim, float aspect, int length,
                    ListFigures& figures) {
    model::ViewOutline view = ViewOf(aim);
    view.radiusX = lens.radiusX;
    view.radiusY = lens.radiusY;
    view.aspect = aspect;
    const MatrixOf matrix(view);
    const auto by = [&](ListForm form) {
        return Filled(2 * length, [&](float* points) {
            VCamOutlineOf(form, kWindows)(kCenter, kCenter, view.radiusX, view.radiusY, view.eyeZ,
                                          view.fieldOfView, view.aspect, view.nearPlane,
                                          matrix.elements, points, length);
        });
    };
    const VCamSettings settings = SettingsOf(aim.mount, aim.pan, aim.tilt, aim.zoom);
    const double radius =
        LargerRadius(lens) * (1.0 + static_cast<double>(view.eyeZ)) / kQuarterTurn;
    // A cosine in single precision leaves 3.5e-4 radians next to the axis.
    AddTo(figures,
          {List::VCamOutline, length, by(ListForm::C), by(ListForm::SSE2),
           Flat(ViewOutline(aim.mount, lens, {settings.pan, settings.tilt, settings.zoom},
                            static_cast<double>(aspect), length))},
          {5e-4 * radius, (0.0058 + 5e-4) * radius});
}

Ring MeshRing(int columns, float ratio) {
    Ring ring = PackedRing(2, 2, columns, kMeshRows, 4);
    ring.innerRadiusRatio = ratio;
    return ring;
}

std::vector<double> ExactMesh(const ExactRing& exact, const Ring& ring) {
    std::vector<double> vertices;
    for (int y = 0; y < ring.dstHeight; ++y) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const ExactPoint point = exact.PointAt(x, y);
            vertices.push_back(static_cast<double>(kCenter) + point.u);
            vertices.push_back(static_cast<double>(kCenter) - point.v);
        }
    }
    return vertices;
}

std::vector<float> RingMeshBy(const MeshForm& form, const Ring& ring, bool isDual) {
    return Filled(2 * ring.dstWidth * ring.dstHeight, [&](float* vertices) {
        if (isDual) {
            form.dual(ring.dstWidth, ring.dstHeight / 2, ring.dstHeight / 2, ring.innerRadiusRatio,
                      false, vertices);
        } else {
            form.full(ring.dstWidth, ring.dstHeight, ring.innerRadiusRatio, false, vertices);
        }
    });
}

const MeshForm& MeshFormOf(Mount mount, ListForm form) {
    return *std::find_if(std::begin(kMeshForms), std::end(kMeshForms), [&](const MeshForm& other) {
        return other.mount == mount && other.form == form;
    });
}

void AddRingMesh(Mount mount, bool isDual, float ratio, int columns, ListFigures& figures) {
    const Ring ring = MeshRing(columns, ratio);
    const auto exact = [&](KernelForm form) {
        return isDual ? ExactRing::DualTable(mount, ring, form)
                      : ExactRing::Table(mount, ring, form);
    };
    AddTo(figures,
          {List::RingMesh, columns, RingMeshBy(MeshFormOf(mount, ListForm::C), ring, isDual),
           RingMeshBy(MeshFormOf(mount, ListForm::SSE2), ring, isDual),
           ExactMesh(exact(KernelForm::C), ring)},
          {exact(KernelForm::C).ErrorOfFraction() + kRounding,
           exact(KernelForm::SSE41).ErrorOfFraction() + kRounding});
}

void AddWallMesh(float wallViewAngle, int columns, ListFigures& figures) {
    // A source whose lens circle fills it.
    Wall wall = PackedWall(2, 2, columns, kMeshRows, 4);
    wall.wallViewAngle = wallViewAngle;
    const auto by = [&](auto& fill) {
        return Filled(2 * columns * kMeshRows, [&](float* vertices) {
            fill(columns, kMeshRows, wallViewAngle, false, vertices);
        });
    };
    std::vector<double> exact;
    for (int y = 0; y < kMeshRows; ++y) {
        for (int x = 0; x < columns; ++x) {
            const ExactLook look = LookOf(wall, x, y);
            exact.push_back(static_cast<double>(kCenter) + look.u);
            exact.push_back(static_cast<double>(kCenter) + look.v);
        }
    }
    constexpr double kOfSums = 1e-5;
    AddTo(figures,
          {List::WallMesh, columns, by(WallScalars::CalculatePanoramaTextureCoordinate),
           by(WallLanes::CalculatePanoramaTextureCoordinate), exact},
          {kOfSums, kOfSums + kArctangentError * 0.5 / kQuarterTurn});
}

}  // namespace

void AddLists(GeometryGenerator& random, ListFigures& figures) {
    constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable};
    DewarpParams lens{};
    random.SetLens(lens);
    lens.wallViewAngle = random.Between(10.0F, 90.0F);
    lens.innerRadiusRatio = random.Between(0.0F, 0.8F);
    const float pan = random.Between(0.0F, 360.0F);
    const AimedView aim{kMounts[random.Whole(0, 2)], random.Between(-180.0F, 180.0F),
                        random.Between(-90.0F, 90.0F), random.Between(1.0F, 10.0F)};
    const float aspect = random.Between(1.0F, 2.0F);
    for (const int length : kListLengths) {
        AddEllipse(lens, length, figures);
        AddHalfRing(lens, pan, length, figures);
        AddWallOutline(lens, length, figures);
        AddVCamOutline(lens, aim, aspect, length, figures);
        for (const Mount mount : {Mount::Table, Mount::Ceiling}) {
            AddRingMesh(mount, false, lens.innerRadiusRatio, length, figures);
            AddRingMesh(mount, true, lens.innerRadiusRatio, length, figures);
        }
        AddWallMesh(lens.wallViewAngle, length, figures);
    }
}
