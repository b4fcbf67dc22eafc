#include <gtest/gtest.h>

#if defined(__x86_64__)

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "DownwardFisheyeOpenGLAlgo.h"
#include "DownwardFisheyeOpenGLAlgo_C.h"
#include "DownwardFisheyeOpenGLAlgo_SSE2.h"
#include "FisheyeAlgoCommon_C.h"
#include "FisheyeAlgoCommon_SSE2.h"
#include "FisheyeVCamAlgo_C.h"
#include "FisheyeVCamAlgo_SSE2.h"
#include "ForcedLevel.h"
#include "FrontwardFisheyeOpenGLAlgo.h"
#include "FrontwardFisheyeOpenGLAlgo_C.h"
#include "FrontwardFisheyeOpenGLAlgo_SSE2.h"
#include "PanoramaOutlines.h"
#include "UpwardFisheyeOpenGLAlgo.h"
#include "ring/RingMesh.h"

// Outlines and meshes take the form in four lanes from level 2 on, and the scalar one below.

namespace {

namespace Ceiling = DownwardFisheyeAlgoNS;
namespace Table = UpwardFisheyeAlgoNS;
namespace WallView = FrontwardFisheyeAlgoNS;
namespace VCam = FisheyeVCamAlgoNS;

constexpr int kPoints = 320;
constexpr auto kWindows = CoordinateOrientationWindows;
constexpr auto kTexture = CoordinateOrientationTexture;

using Points = std::vector<float>;

template <class Fill>
Points Filled(Fill&& fill) {
    Points points(2 * kPoints);
    fill(points.data());
    return points;
}

/// What an entry and the forms that it chooses from make of the same arguments.
struct Family {
    std::string name;
    Points entry;
    Points scalar;
    Points lanes;

    bool Takes(const Points& form) const { return entry == form && scalar != lanes; }
};

Points FullMesh(ring::MeshFunction& function) {
    return Filled([&](float* points) { function(64, 5, 0.3F, false, points); });
}

Points DualMesh(ring::DualMeshFunction& function) {
    return Filled([&](float* points) { function(64, 3, 2, 0.3F, false, points); });
}

Points WallMesh(void (&function)(int, int, float, bool, float*)) {
    return Filled([&](float* points) { function(64, 5, 50.0F, true, points); });
}

Points DualOutline(Ceiling::DualOutlineFunction& function, CoordinateOrientationType orientation) {
    return Filled([&](float* points) {
        function(0.5F, 0.4F, 0.3F, false, 77.0F, points, kPoints / 2, points + kPoints, kPoints / 2,
                 orientation);
    });
}

using CurveFunction = void(float, float, float, float, float*, int);

Points EllipseOf(CurveFunction& function) {
    return Filled([&](float* points) { function(0.5F, 0.5F, 0.5F, 0.4F, points, kPoints); });
}

Points WallOutlineOf(void (&function)(float, float, float, float, float, float*, int)) {
    return Filled([&](float* points) { function(0.5F, 0.5F, 0.5F, 0.4F, 50.0F, points, kPoints); });
}

constexpr float kMatrix[16] = {1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.8F, -0.6F, 0.0F,
                               0.0F, 0.6F, 0.8F, 0.0F, 0.0F, 0.0F, 0.0F,  1.0F};

Points ViewOutlineOf(vcam::OutlineFunction& function) {
    return Filled([&](float* points) {
        function(0.5F, 0.5F, 0.5F, 0.4F, 0.01F, 50.0F, 1.5F, 1.01F, kMatrix, points, kPoints);
    });
}

template <CoordinateOrientationType orientation>
std::vector<Family> OutlinesOf() {
    return {{"ellipse", Filled([](float* points) {
                 CalculateEllipseCoordinate(0.5F, 0.5F, 0.5F, 0.4F, points, kPoints, orientation);
             }),
             EllipseOf(C::CalculateEllipseCoordinate<orientation>),
             EllipseOf(SSE2::CalculateEllipseCoordinate<orientation>)},
            {"dual outline", DualOutline(Ceiling::CalculateDualPanoramaROICoordinate, orientation),
             DualOutline(Ceiling::C::CalculateDualPanoramaROICoordinate, orientation),
             DualOutline(Ceiling::SSE2::CalculateDualPanoramaROICoordinate, orientation)},
            // Both orientations are drawn as windows have it.
            {"wall outline", Filled([](float* points) {
                 WallView::CalculatePanoramaBoundaryCoordinate(0.5F, 0.4F, 50.0F, false, points,
                                                               kPoints, orientation);
             }),
             WallOutlineOf(WallView::C::CalculatePanoramaBoundaryCoordinate<kWindows>),
             WallOutlineOf(WallView::SSE2::CalculatePanoramaBoundaryCoordinate<kWindows>)},
            {"virtual camera's outline", Filled([](float* points) {
                 VCam::CalculateVCamROICoordinate(0.5F, 0.4F, 0.01F, 50.0F, 1.5F, 1.01F, kMatrix,
                                                  false, points, kPoints, orientation);
             }),
             ViewOutlineOf(VCam::C::CalculateVCamROICoordinate<orientation>),
             ViewOutlineOf(VCam::SSE2::CalculateVCamROICoordinate<orientation>)}};
}

std::vector<Family> Meshes() {
    return {{"full ceiling mesh", FullMesh(Ceiling::CalculatePanoramaTextureCoordinate),
             FullMesh(Ceiling::C::CalculatePanoramaTextureCoordinate),
             FullMesh(Ceiling::SSE2::CalculatePanoramaTextureCoordinate)},
            {"dual ceiling mesh", DualMesh(Ceiling::CalculateDualPanoramaTextureCoordinate),
             DualMesh(Ceiling::C::CalculateDualPanoramaTextureCoordinate),
             DualMesh(Ceiling::SSE2::CalculateDualPanoramaTextureCoordinate)},
            {"full table mesh", FullMesh(Table::CalculatePanoramaTextureCoordinate),
             FullMesh(Table::C::CalculatePanoramaTextureCoordinate),
             FullMesh(Table::SSE2::CalculatePanoramaTextureCoordinate)},
            {"dual table mesh", DualMesh(Table::CalculateDualPanoramaTextureCoordinate),
             DualMesh(Table::C::CalculateDualPanoramaTextureCoordinate),
             DualMesh(Table::SSE2::CalculateDualPanoramaTextureCoordinate)},
            {"wall mesh", WallMesh(WallView::CalculatePanoramaTextureCoordinate),
             WallMesh(WallView::C::CalculatePanoramaTextureCoordinate),
             WallMesh(WallView::SSE2::CalculatePanoramaTextureCoordinate)}};
}

/// In a process of its own, where no kernel is chosen yet: ends it with 0 when the first calls of
/// all entries, and those that come after, take the level's form.
[[noreturn]] void CallAllEntriesTwice(int level) {
    constexpr int kFirstLevelOfLanes = 2;
    forcedLevel = level;
    int others = 0;
    for (int call = 0; call < 2; ++call) {
        for (const auto& families : {Meshes(), OutlinesOf<kWindows>(), OutlinesOf<kTexture>()}) {
            for (const Family& family : families) {
                const bool isRight =
                    family.Takes(level < kFirstLevelOfLanes ? family.scalar : family.lanes);
                others += isRight ? 0 : 1;
                std::cerr << (isRight ? "" : family.name + " takes another form\n");
            }
        }
    }
    std::_Exit(others == 0 ? 0 : 1);
}

class OutlineLevels : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Level, OutlineLevels, testing::Range(0, 9));

}  // namespace

TEST_P(OutlineLevels, OfTheProcessorChooseTheForm) {
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(CallAllEntriesTwice(GetParam()), testing::ExitedWithCode(0), "");
}

#endif
