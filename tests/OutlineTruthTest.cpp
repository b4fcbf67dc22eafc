#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <vector>

#include "support/OutlineTruth.h"

using namespace KivFisheyeLib;

namespace {

/// What the lanes' arccosine may be off, in radians, in pictures and in outlines.
constexpr double kAngleError = 0.0058;
constexpr double kQuarterTurn = 1.5707963267948966;

/// Where a view reaches beyond the rim its edges are laid onto the rim, also at places that the
/// view leaves out.
std::vector<Point> PointsWithinRim(const RandomCamera& random, const Outline& outline) {
    std::vector<Point> points;
    std::copy_if(outline.Points().begin(), outline.Points().end(), std::back_inserter(points),
                 [&](const Point& point) { return !random.IsOnRim(point); });
    return points;
}

class VCamOutlineTruth : public testing::TestWithParam<MountType> {
protected:
    /// What is shown, and the outline of it, are the same.
    void IsTrue(RandomCamera& random) {
        SCOPED_TRACE(random.Description());
        PointList list(512);
        ASSERT_EQ(random.camera.GetVCamROI(list.Floats(), list.Count()), kResultOk);
        const Outline outline = random.OutlineOf(list);
        const SampledPicture shown = random.Shown();
        const double stretch = 1.0 + static_cast<double>(random.camera.m_vcamEyeZ);
        const double tolerance = kPixelDiagonal + outline.ChordError() +
                                 random.LensPixels(kAngleError * stretch / kQuarterTurn);
        ExpectNothingOutside(shown, outline, tolerance);
        ExpectPointsShown(shown, PointsWithinRim(random, outline), tolerance + shown.Spacing());
        ExpectInsideShown(shown, outline, nullptr, tolerance + shown.Spacing());
    }
};

TEST_P(VCamOutlineTruth, HoldsForRandomViews) {
    std::mt19937 engine(20250601);
    const float sign = GetParam() == MountTypeTable ? -1.0F : 1.0F;
    for (int i = 0; i < 12; ++i) {
        RandomCamera random(engine, GetParam(), ViewTypeVCam);
        const float zoom = i % 3 == 0 ? Between(engine, 1.0F, 2.0F) : Between(engine, 2.0F, 6.0F);
        const float tilt = GetParam() == MountTypeWall ? Between(engine, -90.0F, 90.0F)
                                                       : sign * Between(engine, 0.0F, 90.0F);
        const float pan = GetParam() == MountTypeWall ? Between(engine, -90.0F, 90.0F)
                                                      : Between(engine, 0.0F, 360.0F);
        ASSERT_EQ(random.camera.SetAbsolutePTZ(pan, tilt, zoom), kResultOk);
        IsTrue(random);
    }
}

TEST_P(VCamOutlineTruth, HoldsInTheQuartersOfPan) {
    std::mt19937 engine(7);
    for (const float pan : {0.0F, 90.0F, 180.0F, 270.0F}) {
        RandomCamera random(engine, GetParam(), ViewTypeVCam);
        ASSERT_EQ(
            random.camera.SetAbsolutePTZ(pan, GetParam() == MountTypeTable ? -40.0F : 40.0F, 4.0F),
            kResultOk);
        IsTrue(random);
    }
}

INSTANTIATE_TEST_SUITE_P(Mounts, VCamOutlineTruth,
                         testing::Values(MountTypeWall, MountTypeCeiling, MountTypeTable));

}  // namespace
