#include <cmath>
#include <initializer_list>

#include "ClientList.h"
#include "SurfaceClient.h"

// Recommendations, aims and outlines.

using namespace KivFisheyeLib;

namespace {

void ExpectLists(ResultCode result, bool isWritten, bool isInFrame,
                 std::initializer_list<const ClientList*> lists) {
    for (const ClientList* const list : lists) {
        if (result == kResultOk && isWritten) {
            list->ExpectOutline(isInFrame);
        } else {
            list->ExpectUntouched();
        }
    }
}

/// Pan and tilt within the roundings of degrees; a full turn more or less is the same pan.
void ExpectAim(const Aim& actual, const Aim& expected) {
    const bool isAcrossZero = std::fabs(std::fabs(actual.pan - expected.pan) - 360.0F) < 0.01F;
    if (!isAcrossZero) {
        ExpectClose(actual.pan, expected.pan, 1e-4F, "pan");
    }
    ExpectClose(actual.tilt, expected.tilt, 1e-4F, "tilt");
}

}  // namespace

void SurfaceClient::RecommendSize() {
    constexpr unsigned int kUntouched = 0x12345678;
    unsigned int width = kUntouched;
    unsigned int height = kUntouched;
    const bool hasWidth = !m_play.choices.OnceIn(8);
    const bool hasHeight = !m_play.choices.OnceIn(8);
    const bool isSet = m_model.input.buffer != nullptr;
    const ResultCode result = Run(
        [&] {
            return m_camera->GetRecommendOutputVideoSize(hasWidth ? &width : nullptr,
                                                         hasHeight ? &height : nullptr);
        },
        [&](bool) {
            return !hasWidth || !hasHeight ? kResultInvalidArgument
                   : isSet                 ? kResultOk
                                           : kResultNotReady;
        });
    const FrameSize due = result == kResultOk ? SnapshotSize() : FrameSize{kUntouched, kUntouched};
    ExpectEqual(width, due.width, "the recommended width");
    ExpectEqual(height, due.height, "the recommended height");
}

void SurfaceClient::RecommendRatio() {
    constexpr float kUntouched = -54321.0F;
    float ratio = kUntouched;
    const bool hasRatio = !m_play.choices.OnceIn(8);
    Run([&] { return m_camera->GetRecommendOutputVideoRatio(hasRatio ? &ratio : nullptr); },
        [&](bool) { return hasRatio ? kResultOk : kResultInvalidArgument; });
    ExpectNumber(
        ratio,
        hasRatio ? RecommendedRatio(m_model.InputSize(), m_model.mount, m_model.view, m_model.lens)
                 : kUntouched,
        "the ratio");
}

void SurfaceClient::RecommendRatioOf() {
    constexpr float kUntouched = -54321.0F;
    float ratio = kUntouched;
    FuzzInput& choices = m_play.choices;
    const bool hasRatio = !choices.OnceIn(8);
    const FrameSize size{choices.Bits(choices.OnceIn(4) ? 4 : 2), choices.Bits(2)};
    const MountType mount = MakeMount();
    const ViewType view = MakeView();
    const DewarpParams lens = MakeLens();
    const bool isAccepted = hasRatio && IsAllowed(mount, view) && IsValidLens(lens);
    Run(
        [&] {
            return m_camera->GetRecommendOutputVideoRatio(size.width, size.height, mount, view,
                                                          lens, hasRatio ? &ratio : nullptr);
        },
        [&](bool) { return isAccepted ? kResultOk : kResultInvalidArgument; });
    ExpectNumber(ratio, isAccepted ? RecommendedRatio(size, mount, view, lens) : kUntouched,
                 "the ratio");
}

void SurfaceClient::AimAtPoint() {
    FuzzInput& choices = m_play.choices;
    const float x = choices.Number(0.0F, 1.0F);
    const float y = choices.Number(0.0F, 1.0F);
    Aim aim{};
    Run([&] { return m_camera->CvtXYToVCamPanTilt(x, y, aim.pan, aim.tilt); },
        [](bool) { return kResultOk; });
    ExpectAim(aim, AimAt(m_model.mount, m_model.lens, x, y, 1.0F));
}

void SurfaceClient::AimAtPointAndZoom() {
    FuzzInput& choices = m_play.choices;
    const float x = choices.Number(0.0F, 1.0F);
    const float y = choices.Number(0.0F, 1.0F);
    const float fieldOfView = choices.Number(0.1F, 3.3F);
    Aim aim{};
    Run(
        [&] {
            return m_camera->CvtXYToVCamPanTiltZoom(x, y, fieldOfView, aim.pan, aim.tilt, aim.zoom);
        },
        [](bool) { return kResultOk; });
    const Aim due = AimAt(m_model.mount, m_model.lens, x, y, fieldOfView);
    ExpectAim(aim, due);
    ExpectClose(aim.zoom, due.zoom, 1e-5F, "zoom");
}

void SurfaceClient::OutlineVCam() {
    ClientList points(m_play.choices, 16);
    const bool hasOutput = m_model.output.width != 0;
    const ResultCode result =
        Run([&] { return m_outlines->GetVCamROI(points.Points(), points.Count()); },
            [&](bool) {
                return !points.IsGood() ? kResultInvalidArgument
                       : hasOutput      ? kResultOk
                                        : kResultNotReady;
            });
    ExpectLists(result, IsKnownMount(m_model.mount), true, {&points});
}

void SurfaceClient::OutlineDual() {
    ClientList first(m_play.choices, 8);
    ClientList second(m_play.choices, 8);
    const ResultCode result = Run(
        [&] {
            return m_outlines->GetDualPanoramaROI(first.Points(), first.Count(), second.Points(),
                                                  second.Count());
        },
        [&](bool) {
            return !first.IsGood() || !second.IsGood() ? kResultInvalidArgument
                   : m_model.mount == MountTypeWall    ? kResultNotReady
                                                       : kResultOk;
        });
    ExpectLists(result, IsKnownMount(m_model.mount), true, {&first, &second});
}

void SurfaceClient::OutlineWall() {
    ClientList points(m_play.choices, 16);
    const ResultCode result =
        Run([&] { return m_outlines->GetWallPanoramaROI(points.Points(), points.Count()); },
            [&](bool) {
                return !points.IsGood()                 ? kResultInvalidArgument
                       : m_model.mount == MountTypeWall ? kResultOk
                                                        : kResultNotReady;
            });
    ExpectLists(result, true, true, {&points});
    if (result == kResultOk) {
        ClientList boundary(points.Count());
        ExpectResult(m_boundaries->CalculateWallPanoramaBoundary(&m_model.lens, boundary.Points(),
                                                                 boundary.Count()),
                     kResultOk);
        points.ExpectSame(boundary);
    }
}

void SurfaceClient::OutlineRing() {
    ClientList inner(m_play.choices, 4);
    ClientList outer(m_play.choices, 4);
    const ResultCode result = Run(
        [&] {
            return m_outlines->GetCeilingTablePanoramaROI(inner.Points(), inner.Count(),
                                                          outer.Points(), outer.Count());
        },
        [&](bool) {
            return !inner.IsGood() || !outer.IsGood() ? kResultInvalidArgument
                   : m_model.mount == MountTypeWall   ? kResultNotReady
                                                      : kResultOk;
        });
    ExpectLists(result, IsKnownMount(m_model.mount), true, {&inner, &outer});
    const DewarpParams& lens = m_model.lens;
    const bool hasBreadth =
        lens.radiusX > 0.05F && lens.radiusY > 0.05F && lens.innerRadiusRatio > 0.05F;
    if (result == kResultOk && IsKnownMount(m_model.mount) && hasBreadth) {
        outer.ExpectEllipse(lens.radiusX, lens.radiusY);
        inner.ExpectEllipse(lens.radiusX * lens.innerRadiusRatio,
                            lens.radiusY * lens.innerRadiusRatio);
    }
}

void SurfaceClient::BoundWall() {
    FuzzInput& choices = m_play.choices;
    ClientList points(choices, 16);
    const bool hasLens = choices.OnceIn(2);
    DewarpParams lens = MakeLens();
    if (choices.OnceIn(4)) {
        lens.wallViewAngle = choices.Number(-1e4F, 1e4F);
    }
    const ResultCode result = Run(
        [&] {
            return m_boundaries->CalculateWallPanoramaBoundary(hasLens ? &lens : nullptr,
                                                               points.Points(), points.Count());
        },
        [&](bool) { return points.IsGood() ? kResultOk : kResultInvalidArgument; });
    ExpectLists(result, true, !hasLens || IsValidLens(lens), {&points});
}

void SurfaceClient::BoundRing() {
    FuzzInput& choices = m_play.choices;
    ClientList inner(choices, 4);
    ClientList outer(choices, 4);
    const bool hasLens = choices.OnceIn(2);
    const DewarpParams lens = MakeLens();
    const ResultCode result = Run(
        [&] {
            return m_boundaries->CalculateCeilingTablePanoramaBoundary(
                hasLens ? &lens : nullptr, inner.Points(), inner.Count(), outer.Points(),
                outer.Count());
        },
        [&](bool) {
            return inner.IsGood() && outer.IsGood() ? kResultOk : kResultInvalidArgument;
        });
    ExpectLists(result, true, !hasLens || IsValidLens(lens), {&inner, &outer});
}
