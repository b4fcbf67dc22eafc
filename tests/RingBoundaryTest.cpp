#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "FisheyeAlgoCommon.h"
#include "PanoramaOutlines.h"
#include "support/FloatList.h"

// The ellipses that bound the ring of a ceiling or a table camera.

namespace {

namespace Outline = DownwardFisheyeAlgoNS;

constexpr auto kNeither = static_cast<CoordinateOrientationType>(2);

struct Lens {
    float radiusX;
    float radiusY;
    float innerRadiusRatio;
    bool centerAtOrigin = false;
};

struct Ellipses {
    std::vector<float> inner;
    std::vector<float> outer;
};

/// The ellipses around the ring, each in a list that ends at a guard page.
Ellipses Boundary(const Lens& lens, int innerCount, int outerCount,
                  CoordinateOrientationType orientation) {
    FloatList inner(2 * static_cast<std::size_t>(innerCount));
    FloatList outer(2 * static_cast<std::size_t>(outerCount));
    Outline::CalculatePanoramaBoundaryCoordinate(lens.radiusX, lens.radiusY, lens.innerRadiusRatio,
                                                 lens.centerAtOrigin, inner.data(), innerCount,
                                                 outer.data(), outerCount, orientation);
    return {inner.Values(), outer.Values()};
}

}  // namespace

TEST(RingBoundary, IsTheEllipsesOfBothEdges) {
    for (const bool centerAtOrigin : {false, true}) {
        for (const auto orientation :
             {CoordinateOrientationWindows, CoordinateOrientationTexture}) {
            const float center = centerAtOrigin ? 0.0F : 0.5F;
            const auto boundary =
                Boundary({0.5F, 0.375F, 0.3F, centerAtOrigin}, 36, 100, orientation);
            EXPECT_TRUE(AreSameFloats(boundary.inner, FilledList(72, [&](float* points) {
                                          CalculateEllipseCoordinate(center, center, 0.5F * 0.3F,
                                                                     0.375F * 0.3F, points, 36,
                                                                     orientation);
                                      })));
            EXPECT_TRUE(AreSameFloats(boundary.outer, FilledList(200, [&](float* points) {
                                          CalculateEllipseCoordinate(center, center, 0.5F, 0.375F,
                                                                     points, 100, orientation);
                                      })));
        }
    }
}

TEST(RingBoundary, StartsAtTheRightAndGoesByTheTop) {
    const auto boundary = Boundary({0.5F, 0.25F, 0.5F}, 4, 8, CoordinateOrientationWindows);
    ExpectPoint(boundary.inner, 0, 0.75, 0.5);
    ExpectPoint(boundary.inner, 1, 0.5, 0.375);
    ExpectPoint(boundary.inner, 2, 0.25, 0.5);
    ExpectPoint(boundary.outer, 0, 1.0, 0.5);
    ExpectPoint(boundary.outer, 2, 0.5, 0.25);
    ExpectPoint(boundary.outer, 6, 0.5, 0.75);
}

TEST(RingBoundary, OfARatioOfOneIsOneEllipseTwice) {
    const auto boundary = Boundary({0.4F, 0.3F, 1.0F}, 64, 64, CoordinateOrientationTexture);
    EXPECT_TRUE(AreSameFloats(boundary.inner, boundary.outer));
}

TEST(RingBoundary, FillsTheInnerListFirst) {
    FloatList shared(2 * 16);
    Outline::CalculatePanoramaBoundaryCoordinate(0.5F, 0.5F, 0.5F, true, shared.data(), 16,
                                                 shared.data(), 8, CoordinateOrientationWindows);
    const auto points = shared.Values();
    EXPECT_EQ(points[0], 0.5F) << "of the outer ellipse, which came last";
    ExpectPoint(points, 8, -0.25, 0.0);
}

TEST(RingBoundary, OtherOrientationsAndCountsBelowOneWriteNothing) {
    Outline::CalculatePanoramaBoundaryCoordinate(0.5F, 0.5F, 0.5F, false, nullptr, 16, nullptr, 16,
                                                 kNeither);
    for (const int count : {0, -1, -4}) {
        Outline::CalculatePanoramaBoundaryCoordinate(0.5F, 0.5F, 0.5F, false, nullptr, count,
                                                     nullptr, count, CoordinateOrientationWindows);
    }
}
