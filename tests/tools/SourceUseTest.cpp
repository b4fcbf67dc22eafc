#include "SourceUse.h"

#include <gtest/gtest.h>

#include <cstring>

#include "RoundedNumbers.h"
#include "WrappedText.h"

using KivFisheyeTools::Lens;
using KivFisheyeTools::MeasureUse;
using KivFisheyeTools::Picture;
using KivFisheyeTools::Range;
using KivFisheyeTools::Size;
using KivFisheyeTools::SourceMap;
using KivFisheyeTools::SourcePlaces;
using KivFisheyeTools::SourceUse;

namespace {

constexpr Size kFrame{101, 101};
constexpr Lens kLens{101, 101, 0.5, 0.5};

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

/// The use of an input of this size, when the frame's sides stand for it.
SourceUse UseOf(const Picture& view, std::uint32_t parts, const Size& input = kFrame) {
    const SourceMap map(view, kFrame);
    return MeasureUse(map, SourcePlaces(map, map, input), kLens, parts);
}

/// Counts what a view of 3 by 3 pixels shows of an input that is as large.
SourceUse UseOfNine(const Picture& view) {
    const SourceMap map(view, {3, 3});
    return MeasureUse(map, SourcePlaces(map, map, {3, 3}), {3, 3, 0.5, 0.5}, 1);
}

void ExpectRange(const std::optional<Range>& range, double least, double mean, double most) {
    ASSERT_TRUE(range);
    EXPECT_NEAR(range->least, least, 1e-9);
    EXPECT_NEAR(range->mean, mean, 1e-9);
    EXPECT_NEAR(range->most, most, 1e-9);
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
    const SourceUse use = UseOf(view, 1);
    EXPECT_EQ(use.outputPixels, 128U);
    EXPECT_EQ(use.shown, 96U);
    EXPECT_EQ(use.differentShown, 48U);
}

TEST(SourceUse, CountsThePixelsOfTheLens) {
    // Of 3 by 3 pixels the corners lie outside, and the middles of the sides on the rim.
    Picture view(3, 3, 4);
    KivFisheyeTools::NumberPixels(&view);
    const SourceUse all = UseOfNine(view);
    EXPECT_EQ(all.lensPixels, 5U);
    EXPECT_EQ(all.lensShown, 5U);
    std::memset(view.Row(1), 0, view.stride);
    const SourceUse some = UseOfNine(view);
    EXPECT_EQ(some.lensPixels, 5U);
    EXPECT_EQ(some.lensShown, 2U);
}

TEST(SourcePlaces, LieBetweenPixels) {
    const Picture view = ViewOf(2, 1, [](std::uint32_t column, std::uint32_t) {
        return column == 0 ? Size{0, 100} : Size{51, 1};
    });
    const SourceMap map(view, kFrame);
    // 100 steps of the frame are 50 across and 200 down.
    const SourcePlaces places(map, map, {51, 201});
    EXPECT_NEAR(places.PlaceAt(0, 0)->x, 0.5, 1e-9);
    EXPECT_NEAR(places.PlaceAt(0, 0)->y, 200.5, 1e-9);
    EXPECT_NEAR(places.PlaceAt(1, 0)->x, 26.0, 1e-9);
    EXPECT_NEAR(places.PlaceAt(1, 0)->y, 2.5, 1e-9);
}

TEST(SourcePlaces, AreNoneWhereEitherMapIsBlack) {
    const Picture shown = ViewOf(1, 1, [](std::uint32_t, std::uint32_t) { return Size{5, 6}; });
    const Picture black(1, 1, 4);
    const SourceMap shownMap(shown, kFrame);
    const SourceMap blackMap(black, kFrame);
    EXPECT_TRUE(SourcePlaces(shownMap, shownMap, kFrame).PlaceAt(0, 0));
    EXPECT_FALSE(SourcePlaces(shownMap, blackMap, kFrame).PlaceAt(0, 0));
    EXPECT_FALSE(SourcePlaces(blackMap, shownMap, kFrame).PlaceAt(0, 0));
}

TEST(SourceUse, MeasuresStepsAcrossAndDown) {
    const Picture view = ViewOf(24, 32, [](std::uint32_t column, std::uint32_t row) {
        return Size{3 * column, row};
    });
    const SourceUse use = UseOf(view, 1, {101, 51});
    ExpectRange(use.across, 3.0, 3.0, 3.0);
    ExpectRange(use.down, 0.5, 0.5, 0.5);
}

TEST(SourceUse, TellsTheDensestRowFromTheOthers) {
    const Picture view = ViewOf(24, 4, [](std::uint32_t column, std::uint32_t row) {
        return Size{row * column, 0};
    });
    const SourceUse use = UseOf(view, 1);
    ExpectRange(use.across, 0.0, 1.5, 3.0);
}

TEST(SourceUse, TellsTheDensestPlaceInARowFromTheOthers) {
    // The steps from square to square are the odd numbers.
    const Picture view = ViewOf(8, 2, [](std::uint32_t column, std::uint32_t row) {
        return Size{column * column, row};
    });
    const SourceUse use = UseOf(view, 1);
    ExpectRange(use.across, 1.0, 7.0, 13.0);
}

TEST(SourceUse, MeasuresOverAThirtySecondOfTheView) {
    // Steps are 0 and 2 by turns, which two of them together do not show.
    const auto places = [](std::uint32_t column, std::uint32_t row) {
        return Size{column / 2 * 2, row / 2 * 2};
    };
    const SourceUse large = UseOf(ViewOf(64, 95, places), 1);
    ExpectRange(large.across, 1.0, 1.0, 1.0);
    ExpectRange(large.down, 1.0, 1.0, 1.0);
    const SourceUse small = UseOf(ViewOf(63, 63, places), 1);
    ExpectRange(small.across, 0.0, 1.0, 2.0);
    ExpectRange(small.down, 0.0, 1.0, 2.0);
}

TEST(SourceUse, MeasuresSpansWithBothEndsVisible) {
    const Picture view = ViewOf(64, 1, [](std::uint32_t column, std::uint32_t) {
        return column < 3 ? Size{7 * column, 0} : Size{1000, 0};
    });
    const SourceUse use = UseOf(view, 1);
    ExpectRange(use.across, 7.0, 7.0, 7.0);
}

TEST(SourceUse, MeasuresNoStepFromOneHalfToTheOther) {
    const Picture view = ViewOf(8, 32, [](std::uint32_t column, std::uint32_t row) {
        return Size{column, row < 16 ? row : 2 * row + 30};
    });
    const SourceUse whole = UseOf(view, 1);
    const SourceUse halves = UseOf(view, 2);
    ASSERT_TRUE(whole.down && halves.down);
    EXPECT_NEAR(whole.down->most, 47.0, 1e-9);
    ExpectRange(halves.down, 1.0, 1.5, 2.0);
}

TEST(SourceUse, HasNoStepsWhereNothingIsBesideAnything) {
    const Picture line = ViewOf(8, 1, [](std::uint32_t column, std::uint32_t row) {
        return Size{column, row};
    });
    const SourceUse use = UseOf(line, 1);
    EXPECT_TRUE(use.across);
    EXPECT_FALSE(use.down);
    const Picture black(8, 8, 4);
    const SourceUse nothing = UseOf(black, 2);
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
