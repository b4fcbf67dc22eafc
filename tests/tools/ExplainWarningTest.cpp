#include <gtest/gtest.h>

#include <algorithm>

#include "ExplainedRun.h"
#include "GoodRun.h"
#include "PlainPicture.h"

namespace {

/// A view that is warned of, and one beside it that is not. A # in the warning is a number that is
/// measured, and so is not known to its last digit.
struct WarningCase {
    const char* name;
    const char* warning;
    std::vector<std::string> surprising;
    std::vector<std::string> plain;
};

void PrintTo(const WarningCase& warningCase, std::ostream* stream) {
    *stream << warningCase.name;
}

std::vector<std::string> Square(const std::string& mount, const std::string& view,
                                const std::vector<std::string>& more = {}) {
    return Joined({"square.png"}, View(mount, view, more));
}

std::vector<std::string> Wide(const std::vector<std::string>& more) {
    return Joined({"wide.png"}, View("ceiling", "full", more));
}

constexpr const char* kDigits = "0123456789.";

/// Whether the text is the pattern with a number for each #.
bool IsLike(const std::string& pattern, const std::string& text) {
    const std::size_t mark = pattern.find('#');
    if (mark == std::string::npos) {
        return text == pattern;
    }
    const std::size_t end = text.find_first_not_of(kDigits, mark);
    return end != mark && end != std::string::npos &&
           text.substr(0, mark) == pattern.substr(0, mark) &&
           IsLike(pattern.substr(mark + 1), text.substr(end));
}

class Warning : public testing::TestWithParam<WarningCase> {};

/// The square frame has 256 pixels to a side, the wide one 320 and 240.
const std::vector<WarningCase> kWarnings = {
    {"LensBeyondTheSides",
     "the lens reaches 51 pixels beyond the frame, which crops it at its left and right",
     Square("table", "full", {"--radius-x", "0.7"}),
     Square("table", "full", {"--radius-x", "0.5", "--radius-y", "0.4"})},
    {"LensBeyondTopAndBottom",
     "the lens reaches 26 pixels beyond the frame, which crops it at its top and bottom",
     Square("wall", "vcam", {"--radius-y", "0.6"}), Square("wall", "vcam", {"--radius-y", "0.5"})},
    {"EllipseForARoundLens",
     "the lens is taken for an ellipse. A round lens as high as this picture needs --radius-x "
     "0.375",
     Wide({}), Wide({"--radius-x", "0.375"})},
    {"WidthUpsampled",
     "the output upsamples the source: for each of its pixels there are at most # source pixels "
     "across",
     Square("ceiling", "full", {"--size", "1024x128"}),
     Square("ceiling", "full", {"--size", "800x128"})},
    {"HeightUpsampled",
     "the output upsamples the source: for each of its pixels there are at most # source pixels "
     "down",
     Square("ceiling", "full", {"--size", "512x256"}),
     Square("ceiling", "full", {"--size", "512x128"})},
    {"PixelsSkippedAcross",
     "the output skips source pixels: for each of its pixels, which shows one, there are on "
     "average # source pixels across",
     Square("ceiling", "full", {"--size", "256x128"}),
     Square("ceiling", "full", {"--size", "512x128"})},
    {"PixelsSkippedDown",
     "the output skips source pixels: for each of its pixels, which shows one, there are on "
     "average # source pixels down",
     Square("ceiling", "full", {"--size", "512x64"}),
     Square("ceiling", "full", {"--size", "512x100"})},
    {"MuchBlack", "#% of the output stays black, because it lies outside the lens or the frame",
     Square("ceiling", "vcam", {"--size", "320x256", "--radius-y", "0.5"}),
     Square("ceiling", "vcam")},
    {"MuchBlackButNotForALastRow",
     "#% of the output stays black, because it lies outside the lens or the frame",
     Square("table", "full", {"--radius-x", "1", "--radius-y", "1"}),
     Square("table", "dual", {"--size", "64x3"})},
    {"PanOfAWall",
     "the view is limited to pan 0 instead of pan 20; the panorama of a wall camera does not turn",
     Square("wall", "full", {"--pan", "20"}), Square("wall", "full", {"--pan", "0"})},
    {"TiltBeyondTheRim",
     "the view is limited to pan 0, tilt 50 and zoom 3 instead of pan 0, tilt 80 and zoom 3; --fov "
     "20 is the widest that looks there",
     Square("ceiling", "vcam", {"--tilt", "80", "--zoom", "3"}),
     Square("ceiling", "vcam", {"--tilt", "50", "--zoom", "3"})},
    {"AimBesideTheLens", "the point lies outside the lens image",
     Square("ceiling", "vcam", {"--aim", "0.01,0.01", "--fov", "10"}),
     Square("ceiling", "vcam", {"--aim", "0.5,0.2", "--fov", "10"})},
    // Pan and tilt are 36 degrees, so the view looks acos(cos² 36) = 49.1 degrees off the axis, and
    // atan2(sin 36, sin 36 cos 36) = 51.0 degrees up from the right. With 1.01 times that angle the
    // lens has it at 0.347 and 0.429 of its radius instead of 0.4 and 0.4: 0.060, or 5.4 degrees.
    {"AimOfAWall",
     "the point of --aim lies # degrees beside the middle; on a wall the library aims exactly "
     "along "
     "the lens's two axes alone",
     Square("wall", "vcam", {"--aim", "0.7,0.3", "--fov", "30"}),
     Square("wall", "vcam", {"--aim", "0.7,0.5", "--fov", "30"})},
    {"AimOfACeiling",
     "the point of --aim lies # degrees beside the middle; on a wall the library aims exactly "
     "along "
     "the lens's two axes alone",
     Square("wall", "vcam", {"--aim", "0.7,0.7", "--fov", "30"}),
     Square("ceiling", "vcam", {"--aim", "0.7,0.7", "--fov", "30"})},
    {"HalfTurnOfADualPanorama", "a dual panorama at a pan of exactly 180 is that at 0",
     Square("table", "dual", {"--pan", "180"}), Square("table", "dual", {"--pan", "179"})},
    {"HalfTurnOfAFullPanorama", "a dual panorama at a pan of exactly 180 is that at 0",
     Square("ceiling", "dual", {"--pan", "180"}), Square("ceiling", "full", {"--pan", "180"})},
    {"OddHeightOfADualPanorama",
     "the last row of a dual panorama stays black when its height is odd",
     Square("table", "dual", {"--size", "256x255"}),
     Square("table", "dual", {"--size", "256x256"})},
    {"LensWithoutExtent", "the lens has no extent, so that the output shows one line or point",
     Square("table", "full", {"--radius-x", "0", "--size", "64x64"}),
     Square("table", "full", {"--radius-x", "0.1", "--size", "64x64"})},
};

}  // namespace

TEST_P(Warning, IsGivenWhereItHolds) {
    const TemporaryFolder folder;
    WritePlain(folder, "square.png", 256, 256, 90);
    WritePlain(folder, "wide.png", 320, 240, 90);
    const auto isWarned = [&](const ExplainedRun& run) {
        const std::vector<std::string> warnings = run.Warnings();
        return std::count_if(warnings.begin(), warnings.end(), [](const std::string& warning) {
                   return IsLike(GetParam().warning, warning);
               }) == 1;
    };
    const ExplainedRun surprising(folder, GetParam().surprising);
    EXPECT_TRUE(isWarned(surprising)) << surprising.Text();
    const ExplainedRun plain(folder, GetParam().plain);
    EXPECT_FALSE(isWarned(plain)) << plain.Text();
}

INSTANTIATE_TEST_SUITE_P(Explain, Warning, testing::ValuesIn(kWarnings),
                         [](const auto& instance) { return std::string(instance.param.name); });

namespace {

/// The first number of the only warning.
double NumberWarnedOf(const std::vector<std::string>& words) {
    const TemporaryFolder folder;
    WritePlain(folder, "square.png", 256, 256, 90);
    const ExplainedRun run(folder, words);
    EXPECT_EQ(run.Warnings().size(), 1U) << run.Text();
    return run.NumberOn("warning");
}

}  // namespace

TEST(WarningNumbers, AreMeasured) {
    // The rim is a circle of 127.5 pixels' radius, and 1024 columns have 1023 steps.
    EXPECT_NEAR(NumberWarnedOf(Square("ceiling", "full", {"--size", "1024x128"})), 0.783, 0.02);
    EXPECT_NEAR(NumberWarnedOf(Square("ceiling", "full", {"--size", "512x256"})), 0.5, 0.02);
    // 64 rows have 63 steps of 127.5 pixels together.
    EXPECT_NEAR(NumberWarnedOf(Square("ceiling", "full", {"--size", "512x64"})), 2.02, 0.02);
    EXPECT_NEAR(NumberWarnedOf(
                    Square("wall", "vcam", {"--aim", "0.7,0.3", "--fov", "30", "--size", "40x40"})),
                5.4, 0.2);
    // A circle as high as a picture that is 1.25 times as wide.
    EXPECT_NEAR(NumberWarnedOf(Square("ceiling", "vcam", {"--size", "320x256"})),
                100.0 * (1.0 - 3.14159265 / 4.0 / 1.25), 1.0);
}

TEST(RecommendedSizes, SkipNothing) {
    const TemporaryFolder folder;
    WritePlain(folder, "square.png", 256, 256, 90);
    for (const char* mount : {"wall", "ceiling", "table"}) {
        for (const char* view : {"vcam", "full", "dual"}) {
            if (mount == std::string("wall") && view == std::string("dual")) {
                continue;
            }
            for (const std::string& warning :
                 ExplainedRun(folder, Square(mount, view)).Warnings()) {
                EXPECT_EQ(warning.find("skips"), std::string::npos)
                    << mount << ' ' << view << ": " << warning;
            }
        }
    }
}
