#include "accuracy/GeometryCheck.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "accuracy/AccuracyTables.h"

// What the accuracy program counts, and what it refuses.

namespace {

constexpr int kSide = 1024;
constexpr Reach kTight{0.01, 0.01};
constexpr FormBounds kBounds{kTight, {1.0, 1.0}};

/// A pixel that looks this far inside the frame.
ExactPlace Inside(double column, double row) {
    return {column, row, BeyondFrame(column, row, kSide)};
}

class GeometryChecks : public testing::Test {
protected:
    const FormFigures& Of(KernelForm form) {
        return figures.Of(Conversion::FullTable, kSide, form);
    }

    PictureFigures figures;
    GeometryCheck check{figures,
                        Conversion::FullTable,
                        kSide,
                        {Inside(10.25, 20.75), Inside(30.5, 40.0), Inside(-0.001, 7.0)}};
    const SourcePlaces scalar{PixelPlace{10, 20}, PixelPlace{30, 40}, std::nullopt};
    const SourcePlaces four{PixelPlace{10, 21}, PixelPlace{30, 40}, PixelPlace{0, 7}};
    const SourcePlaces eight{PixelPlace{10, 21}, PixelPlace{31, 40}, PixelPlace{0, 7}};
};

TEST_F(GeometryChecks, CountWhatDiffersFromTheScalarForm) {
    check.Add(KernelForm::C, scalar, kBounds);
    check.Add(KernelForm::SSE41, four, kBounds);
    check.Add(KernelForm::AVX, eight, kBounds);
    EXPECT_EQ(Of(KernelForm::SSE41).ShareDiffering(), 0.5);
    EXPECT_EQ(Of(KernelForm::SSE41).largestDistance, 1);
    EXPECT_EQ(Of(KernelForm::SSE41).shownByOne, 1);
    EXPECT_EQ(Of(KernelForm::SSE41).ties, 0);
    EXPECT_EQ(Of(KernelForm::AVX).ShareDiffering(), 1.0);
    EXPECT_EQ(Of(KernelForm::AVX).ties, 1);
}

TEST_F(GeometryChecks, CountErrorsOfColumnsAndRows) {
    check.Add(KernelForm::C, scalar, kBounds);
    check.Add(KernelForm::SSE41, four, kBounds);
    // -0.25, -0.75, -0.5 and 0.
    EXPECT_EQ(Of(KernelForm::C).lowestError, -0.75);
    EXPECT_EQ(Of(KernelForm::C).highestError, 0.0);
    EXPECT_EQ(Of(KernelForm::C).MeanError(), -0.375);
    EXPECT_EQ(Of(KernelForm::C).onWrongSide, 0);
    // -0.25, 0.25, -0.5, 0, 0.001 and 0.
    EXPECT_EQ(Of(KernelForm::SSE41).lowestError, -0.5);
    EXPECT_EQ(Of(KernelForm::SSE41).highestError, 0.25);
    EXPECT_NEAR(Of(KernelForm::SSE41).MeanSize(), 1.001 / 6.0, 1e-12);
    EXPECT_EQ(Of(KernelForm::SSE41).onWrongSide, 1);
    EXPECT_EQ(Of(KernelForm::SSE41).BeyondRounding(KernelForm::SSE41), 0.0);
}

// Of 10.25 the scalar form takes 10 alone, and 11 or 9 only where the position may be off so far.
TEST_F(GeometryChecks, RefuseWhatTheFormDoesNotRoundTo) {
    for (const int wrong : {9, 11}) {
        const SourcePlaces places{PixelPlace{wrong, 20}, scalar[1], std::nullopt};
        EXPECT_THROW(check.Add(KernelForm::C, places, kBounds), BoundExceeded) << wrong;
        EXPECT_NO_THROW(check.Add(KernelForm::C, places, {{0.76, 0.76}, kBounds.fromScalar}));
    }
}

TEST_F(GeometryChecks, RefuseARoundingOfTheOtherForms) {
    EXPECT_THROW(check.Add(KernelForm::C, four, kBounds), BoundExceeded);
    check.Add(KernelForm::C, scalar, kBounds);
    EXPECT_THROW(check.Add(KernelForm::SSE41, scalar, kBounds), BoundExceeded);
}

TEST_F(GeometryChecks, RefuseBlackWellInsideAndPixelsWellOutside) {
    EXPECT_THROW(check.Add(KernelForm::C, {std::nullopt, scalar[1], std::nullopt}, kBounds),
                 BoundExceeded);
    GeometryCheck outside(figures, Conversion::VCam, kSide, {Inside(1023.2, 5.0)});
    EXPECT_THROW(outside.Add(KernelForm::C, {PixelPlace{1023, 5}}, kBounds), BoundExceeded);
}

TEST_F(GeometryChecks, RefuseWhatIsTooFarFromTheScalarForm) {
    constexpr FormBounds kWide{{3.0, 3.0}, {1.0, 1.0}};
    check.Add(KernelForm::C, scalar, kWide);
    const SourcePlaces far{PixelPlace{12, 20}, scalar[1], std::nullopt};
    EXPECT_THROW(check.Add(KernelForm::SSE41, far, kWide), BoundExceeded);
}

TEST_F(GeometryChecks, RefuseEightLanesThatDifferByMoreThanTies) {
    check.Add(KernelForm::C, scalar, kBounds);
    check.Add(KernelForm::SSE41, {scalar[0], PixelPlace{31, 40}, four[2]},
              {{1.0, 1.0}, kBounds.fromScalar});
    EXPECT_THROW(check.Add(KernelForm::AVX, {scalar[0], PixelPlace{32, 40}, four[2]},
                           {{2.0, 2.0}, {2.0, 2.0}}),
                 BoundExceeded);
}

TEST_F(GeometryChecks, RefuseAPictureOfAnotherSize) {
    EXPECT_THROW(check.Add(KernelForm::C, {scalar[0]}, kBounds), BoundExceeded);
}

TEST(Percentage, HasTwoDigitsOrThree) {
    EXPECT_EQ(Percentage(0.0), "0 %");
    EXPECT_EQ(Percentage(0.7512), "75.1 %");
    EXPECT_EQ(Percentage(0.0123), "1.2 %");
    EXPECT_EQ(Percentage(0.0000123), "0.0012 %");
}

TEST(Decimal, IsNeverMinusZero) {
    EXPECT_EQ(Decimal(-0.004, 2), "0.00");
    EXPECT_EQ(Decimal(-0.006, 2), "-0.01");
}

}  // namespace
