#include "SourceUse.h"

#include <gtest/gtest.h>

#include <cstring>

#include "RoundedNumbers.h"
#include "WrappedText.h"

using KivFisheyeTools::Lens;
using KivFisheyeTools::MeasureUse;
using KivFisheyeTools::Picture;
using KivFisheyeTools::Size;
using KivFisheyeTools::SourceMap;
using KivFisheyeTools::SourceUse;

namespace {

constexpr Size kFrame{100, 100};
constexpr Lens kLens{100, 100, 0.5, 0.5};

/// A view that shows the pixel of the frame that `place` gives for a column and a row, or is black
/// where that is beyond the frame.
template <class PlaceOf>
Picture ViewOf(std::uint32_t width, std::uint32_t height, PlaceOf placeOf) {
    Picture view(width, height, 4);
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column) {
            const Size place = placeOf(column, row);
            const std::uint32_t number = place.width < kFrame.width && place.height < kFrame.height
                                             ? place.height * kFrame.width + place.width + 1
                                             : 0;
            std::memcpy(view.Row(row) + std::size_t{4} * column, &number, sizeof number);
        }
    }
    return view;
}

}  // namespace

TEST(SourceMap, FindsEveryPixelOfANumberedPicture) {
    Picture picture(3, 2, 4);
    KivFisheyeTools::NumberPixels(&picture);
    const SourceMap map(picture, {3, 2});
    EXPECT_EQ(map.NumberAt(0, 0), 0U);
    EXPECT_EQ(map.NumberAt(2, 1), 5U);
    EXPECT_EQ(map.PlaceAt(2, 1)->x, 2.5);
    EXPECT_EQ(map.PlaceAt(2, 1)->y, 1.5);
}

TEST(SourceMap, FindsNothingInBlack) {
    const Picture black(3, 2, 4);
    const SourceMap map(black, {3, 2});
    EXPECT_FALSE(map.NumberAt(1, 1));
    EXPECT_FALSE(map.PlaceAt(1, 1));
}

TEST(SourceUse, CountsWhatIsShownAndHowOften) {
    // Each source pixel of a square of 8 by 8 appears twice in a row, and a quarter is black.
    const Picture view = ViewOf(16, 8, [](std::uint32_t column, std::uint32_t row) {
        return row < 6 ? Size{column / 2, row} : Size{1000, 0};
    });
    const SourceUse use = MeasureUse(SourceMap(view, kFrame), kLens, 1);
    EXPECT_EQ(use.outputPixels, 128U);
    EXPECT_EQ(use.shown, 96U);
    EXPECT_EQ(use.differentShown, 48U);
}

TEST(SourceUse, CountsThePixelsOfTheLens) {
    // Of 3 by 3 pixels the corners lie outside, and the middles of the sides on the rim.
    Picture view(3, 3, 4);
    KivFisheyeTools::NumberPixels(&view);
    const SourceUse all = MeasureUse(SourceMap(view, {3, 3}), {3, 3, 0.5, 0.5}, 1);
    EXPECT_EQ(all.lensPixels, 5U);
    EXPECT_EQ(all.lensShown, 5U);
    std::memset(view.Row(1), 0, view.stride);
    const SourceUse some = MeasureUse(SourceMap(view, {3, 3}), {3, 3, 0.5, 0.5}, 1);
    EXPECT_EQ(some.lensPixels, 5U);
    EXPECT_EQ(some.lensShown, 2U);
}

TEST(SourceUse, MeasuresStepsAcrossAndDown) {
    const Picture view = ViewOf(24, 32, [](std::uint32_t column, std::uint32_t row) {
        return Size{3 * column, row / 2};
    });
    const SourceUse use = MeasureUse(SourceMap(view, kFrame), kLens, 1);
    ASSERT_TRUE(use.across && use.down);
    EXPECT_NEAR(use.across->least, 3.0, 1e-9);
    EXPECT_NEAR(use.across->most, 3.0, 1e-9);
    EXPECT_NEAR(use.down->mean, 0.5, 1e-9);
}

TEST(SourceUse, TellsTheDensestRowFromTheOthers) {
    const Picture view = ViewOf(24, 4, [](std::uint32_t column, std::uint32_t row) {
        return Size{row * column, 0};
    });
    const SourceUse use = MeasureUse(SourceMap(view, kFrame), kLens, 1);
    ASSERT_TRUE(use.across);
    EXPECT_NEAR(use.across->least, 0.0, 1e-9);
    EXPECT_NEAR(use.across->mean, 1.5, 1e-9);
    EXPECT_NEAR(use.across->most, 3.0, 1e-9);
}

TEST(SourceUse, MeasuresNoStepFromOneHalfToTheOther) {
    const Picture view = ViewOf(8, 32, [](std::uint32_t column, std::uint32_t row) {
        return Size{column, row < 16 ? row : 2 * row + 30};
    });
    const SourceUse whole = MeasureUse(SourceMap(view, kFrame), kLens, 1);
    const SourceUse halves = MeasureUse(SourceMap(view, kFrame), kLens, 2);
    ASSERT_TRUE(whole.down && halves.down);
    EXPECT_GT(whole.down->mean, 3.0);
    EXPECT_NEAR(halves.down->least, 1.0, 1e-9);
    EXPECT_NEAR(halves.down->mean, 1.5, 1e-9);
    EXPECT_NEAR(halves.down->most, 2.0, 1e-9);
}

TEST(SourceUse, HasNoStepsWhereNothingIsBesideAnything) {
    const Picture line = ViewOf(8, 1, [](std::uint32_t column, std::uint32_t row) {
        return Size{column, row};
    });
    const SourceUse use = MeasureUse(SourceMap(line, kFrame), kLens, 1);
    EXPECT_TRUE(use.across);
    EXPECT_FALSE(use.down);
    const Picture black(8, 8, 4);
    const SourceUse nothing = MeasureUse(SourceMap(black, kFrame), kLens, 2);
    EXPECT_FALSE(nothing.across);
    EXPECT_FALSE(nothing.down);
}

TEST(RoundedNumbers, HaveNoZerosAtTheEnd) {
    using KivFisheyeTools::Rounded;
    EXPECT_EQ(Rounded(512.0, 1), "512");
    EXPECT_EQ(Rounded(511.96, 1), "512");
    EXPECT_EQ(Rounded(65535.5, 1), "65535.5");
    EXPECT_EQ(Rounded(-0.001, 2), "0");
    EXPECT_EQ(Rounded(1.256, 2), "1.26");
}

TEST(RoundedNumbers, CallNoPartNothingOrAll) {
    using KivFisheyeTools::Percentage;
    EXPECT_EQ(Percentage(0, 1000), "0%");
    EXPECT_EQ(Percentage(1, 1000), "less than 1%");
    EXPECT_EQ(Percentage(214, 1000), "21%");
    EXPECT_EQ(Percentage(999, 1000), "more than 99%");
    EXPECT_EQ(Percentage(1000, 1000), "100%");
}

TEST(RoundedNumbers, NameDirections) {
    using KivFisheyeTools::DirectionName;
    EXPECT_EQ(DirectionName(0.0), "top");
    EXPECT_EQ(DirectionName(22.0), "top");
    EXPECT_EQ(DirectionName(23.0), "upper right");
    EXPECT_EQ(DirectionName(90.0), "right");
    EXPECT_EQ(DirectionName(200.0), "bottom");
    EXPECT_EQ(DirectionName(359.0), "top");
}

TEST(WrappedText, BreaksBetweenWords) {
    using KivFisheyeTools::WrappedText;
    EXPECT_EQ(WrappedText("one two three", 7), "one two\nthree");
    EXPECT_EQ(WrappedText("one two three", 6), "one\ntwo\nthree");
    EXPECT_EQ(WrappedText("one-word-too-long on", 6), "one-word-too-long\non");
    EXPECT_EQ(WrappedText("", 6), "");
}
