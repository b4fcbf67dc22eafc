#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>

#include "CameraRules.h"
#include "KivFisheyeCamera.h"
#include "support/RecordingScene.h"

using namespace KivFisheyeLib;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

struct Range {
    float DewarpParams::*field;
    float low;
    float high;
};

constexpr Range kRanges[] = {{&DewarpParams::radiusX, 0.0F, 1.0F},
                             {&DewarpParams::radiusY, 0.0F, 1.0F},
                             {&DewarpParams::wallViewAngle, 10.0F, 90.0F},
                             {&DewarpParams::innerRadiusRatio, 0.0F, 0.8F}};

/// The lens that touches the frame's edges, with one field replaced.
DewarpParams LensWith(float DewarpParams::*field, float value) {
    DewarpParams params{0.5F, 0.5F, 45.0F, 0.0F};
    params.*field = value;
    return params;
}

TEST(LensParameters, BoundsAreInside) {
    for (const Range& range : kRanges) {
        for (const float value : {range.low, range.high, (range.low + range.high) / 2.0F}) {
            EXPECT_TRUE(ValidateDewarpParams(LensWith(range.field, value))) << value;
        }
    }
}

TEST(LensParameters, TheNextFloatBeyondABoundIsOutside) {
    for (const Range& range : kRanges) {
        for (const float value : {std::nextafter(range.low, -kInfinity),
                                  std::nextafter(range.high, kInfinity), -kInfinity, kInfinity}) {
            EXPECT_FALSE(ValidateDewarpParams(LensWith(range.field, value))) << value;
        }
    }
}

TEST(LensParameters, NanIsNotRefusedInAnyField) {
    for (const Range& range : kRanges) {
        EXPECT_TRUE(ValidateDewarpParams(LensWith(range.field, kNan)));
    }
    EXPECT_TRUE(ValidateDewarpParams({kNan, kNan, kNan, kNan}));
    EXPECT_FALSE(ValidateDewarpParams({kNan, kNan, kNan, 0.81F})) << "the other fields still count";
}

TEST(LensParameters, MinusZeroIsZero) {
    EXPECT_TRUE(ValidateDewarpParams({-0.0F, -0.0F, 45.0F, -0.0F}));
}

TEST(SetDewarpParams, StoresEachFieldAndTellsTheScene) {
    RecordedCamera recorded;
    recorded.calls.inside = [&] {
        EXPECT_EQ(recorded.camera.m_dewarpParams.radiusX, 0.25F) << "the scene sees the new lens";
    };
    ASSERT_EQ(recorded.camera.SetDewarpParams({0.25F, 0.375F, 30.0F, 0.5F}), kResultOk);
    EXPECT_EQ(recorded.calls.dewarpChanges, 1);
    EXPECT_EQ(recorded.calls.videoChanges, 0);
    EXPECT_TRUE(recorded.calls.frameTags.empty()) << "it converts nothing";
    DewarpParams stored{};
    ASSERT_EQ(recorded.camera.GetDewarpParams(&stored), kResultOk);
    EXPECT_EQ(stored.radiusX, 0.25F);
    EXPECT_EQ(stored.radiusY, 0.375F);
    EXPECT_EQ(stored.wallViewAngle, 30.0F);
    EXPECT_EQ(stored.innerRadiusRatio, 0.5F);
}

TEST(SetDewarpParams, ThePresentValuesAreDoneWithoutTheScene) {
    RecordedCamera recorded;
    EXPECT_EQ(recorded.camera.SetDewarpParams({0.5F, 0.5F, 45.0F, 0.0F}), kResultOk);
    EXPECT_EQ(recorded.calls.dewarpChanges, 0);
}

TEST(SetDewarpParams, AChangeOfAnySingleFieldReachesTheScene) {
    for (const Range& range : kRanges) {
        RecordedCamera recorded;
        const float value = range.low + (range.high - range.low) / 4.0F;
        EXPECT_EQ(recorded.camera.SetDewarpParams(LensWith(range.field, value)), kResultOk);
        EXPECT_EQ(recorded.calls.dewarpChanges, 1);
        EXPECT_EQ(recorded.camera.m_dewarpParams.*range.field, value);
    }
}

TEST(SetDewarpParams, ValuesAreComparedAsBytes) {
    RecordedCamera recorded;
    EXPECT_EQ(recorded.camera.SetDewarpParams({0.5F, 0.5F, 45.0F, -0.0F}), kResultOk);
    EXPECT_EQ(recorded.calls.dewarpChanges, 1) << "-0 is another value than 0";
    EXPECT_TRUE(std::signbit(recorded.camera.m_dewarpParams.innerRadiusRatio));
    EXPECT_EQ(recorded.camera.SetDewarpParams({0.5F, kNan, 45.0F, 0.0F}), kResultOk);
    EXPECT_EQ(recorded.calls.dewarpChanges, 2);
    EXPECT_EQ(recorded.camera.SetDewarpParams({0.5F, kNan, 45.0F, 0.0F}), kResultOk);
    EXPECT_EQ(recorded.calls.dewarpChanges, 2) << "the same NaN is the same value";
}

TEST(SetDewarpParams, ARefusalChangesNothing) {
    RecordedCamera recorded;
    const DewarpParams before = recorded.camera.m_dewarpParams;
    const DewarpParams refused[] = {{1.5F, 0.25F, 30.0F, 0.5F},
                                    {0.25F, -0.5F, 30.0F, 0.5F},
                                    {0.25F, 0.25F, 9.99F, 0.5F},
                                    {0.25F, 0.25F, 90.01F, 0.5F},
                                    {0.25F, 0.25F, 30.0F, 0.81F}};
    for (const DewarpParams& params : refused) {
        EXPECT_EQ(recorded.camera.SetDewarpParams(params), kResultInvalidArgument);
    }
    EXPECT_EQ(recorded.calls.dewarpChanges, 0);
    EXPECT_EQ(std::memcmp(&recorded.camera.m_dewarpParams, &before, sizeof(before)), 0);
}

}  // namespace
