#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/OutlineTruth.h"

using namespace KivFisheyeLib;

namespace {

// What the forms may be off, in fractions of twice the lens's semi-axes.
constexpr double kWallError = 2e-3;
constexpr double kRingError = 1e-4;
constexpr double kHalfTurn = 3.141592653589793;

TEST(WallOutlineTruth, HoldsForRandomLenses) {
    std::mt19937 engine(11);
    for (int i = 0; i < 12; ++i) {
        RandomCamera random(engine, MountTypeWall, ViewTypeFullPanorama);
        SCOPED_TRACE(random.Description());
        PointList list(512);
        ASSERT_EQ(random.camera.GetWallPanoramaROI(list.Floats(), list.Count()), kResultOk);
        const Outline outline = random.OutlineOf(list);
        const SampledPicture shown = random.Shown();
        // Picture and outline each have the error.
        const double tolerance =
            kPixelDiagonal + outline.ChordError() + 2.0 * random.LensPixels(2.0 * kWallError);
        ExpectNothingOutside(shown, outline, tolerance);
        ExpectNothingMissing(shown, outline, nullptr, tolerance + shown.Spacing());
    }
}

class RingOutlineTruth : public testing::TestWithParam<MountType> {
protected:
    /// The distance between output columns at the rim.
    static double ColumnOf(const RandomCamera& random, double turn) {
        return random.LensPixels(turn / (random.output.Width() - 1));
    }

    static double ToleranceOf(const RandomCamera& random, const Outline& outline) {
        return kPixelDiagonal + outline.ChordError() + random.LensPixels(2.0 * kRingError);
    }

    /// Each list is filled, and the halves of the picture show what is inside the lists in this
    /// order. The picture turns by whole columns, and repeats one where the ring is closed: so it
    /// may be a column ahead of the outline, and two behind.
    void HalvesAre(RandomCamera& random, int upper, int lower) {
        SCOPED_TRACE(random.Description());
        PointList lists[2]{PointList(512), PointList(512)};
        ASSERT_EQ(random.camera.GetDualPanoramaROI(lists[0].Floats(), 512, lists[1].Floats(), 512),
                  kResultOk);
        const int half = random.output.Height() / 2;
        const int listOf[] = {upper, lower};
        for (int i = 0; i < 2; ++i) {
            const Outline outline = random.OutlineOf(lists[listOf[i]]);
            const SampledPicture shown = random.Shown(i * half, half);
            const double tolerance = ToleranceOf(random, outline);
            const double column = ColumnOf(random, kHalfTurn);
            ExpectNothingOutside(shown, outline, tolerance + column);
            ExpectNothingMissing(shown, outline, nullptr,
                                 tolerance + 2.0 * column + shown.Spacing());
        }
    }
};

TEST_P(RingOutlineTruth, HoldsForFullPanoramasOfRandomLensesAtAnyPan) {
    std::mt19937 engine(13);
    for (int i = 0; i < 12; ++i) {
        RandomCamera random(engine, GetParam(), ViewTypeFullPanorama);
        ASSERT_EQ(random.camera.SetAbsolutePTZ(Between(engine, 0.0F, 360.0F), 0.0F, 1.0F),
                  kResultOk);
        SCOPED_TRACE(random.Description());
        PointList inner(512);
        PointList outer(512);
        ASSERT_EQ(
            random.camera.GetCeilingTablePanoramaROI(inner.Floats(), 512, outer.Floats(), 512),
            kResultOk);
        const Outline rim = random.OutlineOf(outer);
        const Outline hole = random.OutlineOf(inner);
        const SampledPicture shown = random.Shown();
        const double tolerance = ToleranceOf(random, rim);
        ExpectNothingOutside(shown, rim, tolerance);
        EXPECT_LE(shown.Largest([&](const Point& point) { return hole.DistanceInside(point); }),
                  tolerance);
        ExpectNothingMissing(shown, rim, &hole, tolerance + shown.Spacing());
        ExpectNothingMissing(shown, hole, &hole, tolerance + shown.Spacing());
    }
}

TEST_P(RingOutlineTruth, HoldsForTheHalvesOfDualPanoramasAtAnyPan) {
    std::mt19937 engine(17);
    for (int i = 0; i < 12; ++i) {
        RandomCamera random(engine, GetParam(), ViewTypeDualPanorama);
        ASSERT_EQ(random.camera.SetAbsolutePTZ(Between(engine, 0.0F, 360.0F), 0.0F, 1.0F),
                  kResultOk);
        HalvesAre(random, 0, 1);
    }
}

TEST_P(RingOutlineTruth, HoldsForPansAtTheEndsOfTheHalfTurns) {
    std::mt19937 engine(19);
    for (const float pan : {0.0F, 0.01F, 90.0F, 179.99F, 180.01F, 270.0F, 359.99F}) {
        RandomCamera random(engine, GetParam(), ViewTypeDualPanorama);
        ASSERT_EQ(random.camera.SetAbsolutePTZ(pan, 0.0F, 1.0F), kResultOk);
        HalvesAre(random, 0, 1);
    }
}

TEST_P(RingOutlineTruth, HasTheHalvesExchangedAtAPanOfExactly180) {
    std::mt19937 engine(23);
    for (int i = 0; i < 3; ++i) {
        RandomCamera random(engine, GetParam(), ViewTypeDualPanorama);
        ASSERT_EQ(random.camera.Process(0), kResultOk);
        const std::vector<unsigned char> unturned = random.output.bytes;
        ASSERT_EQ(random.camera.SetAbsolutePTZ(180.0F, 0.0F, 1.0F), kResultOk);
        HalvesAre(random, 1, 0);
        EXPECT_TRUE(random.output.bytes == unturned);
    }
}

INSTANTIATE_TEST_SUITE_P(Mounts, RingOutlineTruth,
                         testing::Values(MountTypeCeiling, MountTypeTable));

}  // namespace
