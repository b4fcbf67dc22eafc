#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "GoodRun.h"
#include "LibraryOutlines.h"
#include "Picture.h"
#include "ToolRun.h"

using KivFisheyeTools::Picture;
using namespace KivFisheyeLib;

namespace {

constexpr std::uint32_t kSide = 401;

struct Rgb {
    int red;
    int green;
    int blue;

    bool operator==(const Rgb& other) const {
        return red == other.red && green == other.green && blue == other.blue;
    }
};

void PrintTo(const Rgb& color, std::ostream* stream) {
    *stream << color.red << ' ' << color.green << ' ' << color.blue;
}

constexpr Rgb kWhite{255, 255, 255};
constexpr Rgb kYellow{255, 217, 26};
constexpr Rgb kCyan{77, 242, 255};

Rgb At(const Picture& picture, long column, long row) {
    const std::uint8_t* pixel = picture.Row(static_cast<std::uint32_t>(row)) + 3 * column;
    return {pixel[0], pixel[1], pixel[2]};
}

/// Runs the tool on pictures of one grey.
class Outline : public testing::Test {
protected:
    Outline() { WriteGround(128, kSide, kSide); }

    void WriteGround(int grey, std::uint32_t width, std::uint32_t height) const {
        Picture ground(width, height, 3);
        std::fill(ground.pixels.begin(), ground.pixels.end(), static_cast<std::uint8_t>(grey));
        KivFisheyeTools::WritePicture(m_folder.File("input.png"), ground);
    }

    Picture Drawn(const std::vector<std::string>& options) const {
        OutputOfGoodRun(m_folder, Joined({"outline", "input.png", "drawn.png"}, options));
        return KivFisheyeTools::ReadPicture(m_folder.File("drawn.png"), 3);
    }

    /// The picture with the outline, flattened with the same options.
    Picture DrawnAndFlattened(const std::vector<std::string>& options) const {
        Drawn(options);
        OutputOfGoodRun(m_folder, Joined({"dewarp", "drawn.png", "flat.png"}, options));
        return KivFisheyeTools::ReadPicture(m_folder.File("flat.png"), 3);
    }

private:
    TemporaryFolder m_folder;
};

const std::vector<std::string> kSmallRing = {"--mount",    "ceiling", "--view",     "full",
                                             "--radius-x", "0.25",    "--radius-y", "0.25"};

/// Expects the ground all over a block of pixels, or nowhere in it.
void ExpectGround(const Picture& picture, std::uint32_t left, std::uint32_t top,
                  std::uint32_t right, std::uint32_t bottom, bool isGround) {
    const Rgb ground{128, 128, 128};
    int wrong = 0;
    for (std::uint32_t row = top; row < bottom; ++row) {
        for (std::uint32_t column = left; column < right; ++column) {
            wrong += (At(picture, column, row) == ground) != isGround ? 1 : 0;
        }
    }
    EXPECT_EQ(wrong, 0) << left << ' ' << top << ' ' << right << ' ' << bottom << ' ' << isGround;
}

/// Expects that the outline runs along all four edges of a block, and not far from them.
void ExpectFramed(const Picture& picture, std::uint32_t top, std::uint32_t height,
                  std::uint32_t margin) {
    const std::uint32_t width = picture.width;
    const std::uint32_t bottom = top + height;
    ExpectGround(picture, 0, top, width, top + 1, false);
    ExpectGround(picture, 0, bottom - 1, width, bottom, false);
    ExpectGround(picture, 0, top, 1, bottom, false);
    ExpectGround(picture, width - 1, top, width, bottom, false);
    ExpectGround(picture, margin, top + margin, width - margin, bottom - margin, true);
}

}  // namespace

TEST_F(Outline, IsALightLineWithDarkEdgesWhereTheRingEnds) {
    const Picture drawn = Drawn(kSmallRing);
    // The ring's radius is 100 pixels around the pixel in the middle, the line 2 pixels wide and 4
    // with its edges.
    EXPECT_EQ(At(drawn, 300, 200), kYellow);
    EXPECT_EQ(At(drawn, 200, 100), kYellow);
    EXPECT_EQ(At(drawn, 100, 200), kYellow);
    EXPECT_EQ(At(drawn, 200, 300), kYellow);
    for (const long away : {-4L, 4L}) {
        EXPECT_EQ(At(drawn, 300 + away, 200), (Rgb{128, 128, 128})) << away;
    }
    for (const long away : {-2L, 2L}) {
        EXPECT_LT(At(drawn, 300 + away, 200).red, 100) << away;
    }
    ExpectGround(drawn, 140, 140, 260, 260, true);
    ExpectGround(drawn, 0, 0, kSide, 96, true);
}

TEST_F(Outline, LeadsFromItsLastPointBackToTheFirst) {
    const Picture drawn = Drawn(Joined(kSmallRing, {"--points", "4"}));
    // Four points make a square that stands on its corner.
    for (const long column : {150L, 250L}) {
        for (const long row : {150L, 250L}) {
            EXPECT_EQ(At(drawn, column, row), kYellow) << column << ' ' << row;
        }
    }
}

TEST_F(Outline, CoversAsMuchAsItIsWideOnAnyGround) {
    constexpr double kLine = kSide / 200.0;
    double red = 0.0;
    WriteGround(0, kSide, kSide);
    const Picture onBlack = Drawn(kSmallRing);
    for (long column = 280; column < 320; ++column) {
        red += At(onBlack, column, 200).red / 255.0;
    }
    // The red of the line, and the little that its edges have.
    EXPECT_NEAR(red, kLine + 0.06 * kLine, 0.05);
    double missing = 0.0;
    WriteGround(255, kSide, kSide);
    const Picture onWhite = Drawn(kSmallRing);
    for (long column = 280; column < 320; ++column) {
        missing += 1.0 - At(onWhite, column, 200).red / 255.0;
    }
    EXPECT_NEAR(missing, 0.94 * kLine, 0.05);
}

TEST_F(Outline, IsSmooth) {
    const Picture drawn = Drawn(kSmallRing);
    std::set<int> shades;
    for (long row = 120; row < 160; ++row) {
        for (long column = 200; column < 320; ++column) {
            shades.insert(At(drawn, column, row).blue);
        }
    }
    EXPECT_GT(shades.size(), 40U);
}

TEST_F(Outline, RunsThroughEveryPointOfTheLibrary) {
    const std::vector<LibraryView> views = {{MountTypeWall, ViewTypeVCam, 20.0F, -10.0F, 4.0F},
                                            {MountTypeCeiling, ViewTypeVCam, 45.0F, 30.0F, 5.0F},
                                            {MountTypeTable, ViewTypeVCam, 200.0F, -40.0F, 3.0F}};
    const std::vector<std::string> mounts = {"wall", "ceiling", "table"};
    for (const LibraryView& view : views) {
        const Picture drawn =
            Drawn({"--mount", mounts.at(view.mount), "--view", "vcam", "--pan",
                   std::to_string(view.pan), "--tilt", std::to_string(view.tilt), "--zoom",
                   std::to_string(view.zoom), "--size", "320x200", "--points", "64"});
        for (const auto& [x, y] : LibraryOutlines(view).OfVirtualCamera(320, 200, 64)) {
            // The nearest pixel is less than a pixel from the line's middle.
            const Rgb color = At(drawn, std::lround(x * 400.0F), std::lround(y * 400.0F));
            EXPECT_GT(color.red, 150) << x << ' ' << y;
            EXPECT_LT(color.blue, 110) << x << ' ' << y;
        }
        EXPECT_EQ(At(drawn, 200, 0), kWhite);
    }
}

TEST_F(Outline, FramesWhatAVirtualCameraShows) {
    WriteGround(128, 1001, 1001);
    for (const std::vector<std::string>& view : {std::vector<std::string>{"wall", "20", "-15"},
                                                 {"ceiling", "130", "40"},
                                                 {"table", "250", "-35"}}) {
        const Picture flat =
            DrawnAndFlattened({"--mount", view[0], "--view", "vcam", "--pan", view[1], "--tilt",
                               view[2], "--zoom", "5", "--size", "400x300"});
        ExpectFramed(flat, 0, 300, 12);
    }
}

TEST_F(Outline, FramesWhatAWallPanoramaShows) {
    WriteGround(128, 1001, 1001);
    const Picture flat =
        DrawnAndFlattened({"--mount", "wall", "--view", "full", "--wall-view-angle", "60"});
    ExpectFramed(flat, 0, flat.height, 60);
}

TEST_F(Outline, FramesTheHalvesOfADualPanoramaEachInItsColour) {
    WriteGround(128, 1001, 1001);
    for (const char* mount : {"ceiling", "table"}) {
        for (const char* pan : {"0", "70", "180", "300"}) {
            // A rim inside the frame leaves no pixel out.
            const Picture flat =
                DrawnAndFlattened({"--mount", mount, "--view", "dual", "--pan", pan, "--radius-x",
                                   "0.48", "--radius-y", "0.48", "--inner-radius", "0.4"});
            const std::uint32_t half = flat.height / 2;
            ExpectFramed(flat, 0, half, 20);
            ExpectFramed(flat, half, half, 20);
            const long middle = flat.width / 2;
            const long rimOfUpper = mount == std::string("ceiling") ? 0 : half - 1;
            EXPECT_EQ(At(flat, middle, rimOfUpper), kYellow) << mount << pan;
            EXPECT_EQ(At(flat, middle, rimOfUpper + half), kCyan) << mount << pan;
        }
    }
}

TEST_F(Outline, MayLieInPartBesideThePicture) {
    const Picture drawn =
        Drawn({"--mount", "table", "--view", "full", "--radius-x", "1", "--radius-y", "0.4"});
    EXPECT_EQ(At(drawn, 200, 40), kYellow);
    EXPECT_EQ(At(drawn, 200, 360), kYellow);
    // At the picture's sides the ellipse is as high as at half of its width: 0.4 * sqrt(3) / 2.
    EXPECT_LT(At(drawn, 0, 200 - 139).blue, 100);
    EXPECT_LT(At(drawn, 400, 200 + 139).blue, 100);
    ExpectGround(drawn, 0, 70, kSide, 331, true);
}

TEST_F(Outline, FitsPicturesThatAreLineThin) {
    for (const auto& [width, height] : {std::pair(200U, 1U), std::pair(1U, 200U)}) {
        WriteGround(128, width, height);
        const Picture drawn = Drawn({"--mount", "ceiling", "--view", "full"});
        EXPECT_EQ(drawn.width, width);
        EXPECT_EQ(drawn.height, height);
    }
}

TEST_F(Outline, TellsWhatTheLibraryDidNotTake) {
    const TemporaryFolder folder;
    KivFisheyeTools::WritePicture(folder.File("input.png"), Picture(64, 64, 3));
    const ToolRun run = RunTool(folder, {"outline", "input.png", "o.svg", "--mount", "ceiling",
                                         "--view", "vcam", "--tilt", "80", "--zoom", "3"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.errors.find("the view is limited to pan 0, tilt 50 and zoom 3"),
              std::string::npos)
        << run.errors;
}

TEST_F(Outline, LeavesThePictureOtherwiseAsItWas) {
    const Picture drawn = Drawn({"--mount", "ceiling", "--view", "vcam", "--tilt", "40", "--zoom",
                                 "6", "--size", "320x240"});
    const Rgb ground{128, 128, 128};
    long others = 0;
    for (long row = 0; row < 401; ++row) {
        for (long column = 0; column < 401; ++column) {
            others += At(drawn, column, row) == ground ? 0 : 1;
        }
    }
    // The rim is 2 * pi * 200 pixels long, the view about 400 around, and both at most 6 wide.
    EXPECT_LT(others, 6 * (1257 + 450));
    EXPECT_GT(others, 3 * 1257);
}
