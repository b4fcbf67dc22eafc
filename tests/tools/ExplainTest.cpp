#include <gtest/gtest.h>

#include <cmath>

#include "ExplainedRun.h"
#include "FlattenedByLibrary.h"
#include "GoodRun.h"
#include "PlainPicture.h"
#include "ToolError.h"
#include "VideoFile.h"

using KivFisheyeTools::Picture;

namespace {

constexpr const char* kAcross = "source pixels for each output pixel across";
constexpr const char* kDown = "source pixels for each output pixel down";

class Explain : public testing::Test {
protected:
    Explain() {
        WritePlain(m_folder, "square.png", 1024, 1024, 90);
        WritePlain(m_folder, "wide.png", 640, 480, 90);
    }

    ExplainedRun Square(const std::vector<std::string>& view) const {
        return {m_folder, Joined({"square.png"}, view)};
    }

    TemporaryFolder m_folder;
};

/// A picture whose pixels are their own numbers, from 1 on, in 3 bytes.
Picture Numbered(std::uint32_t side) {
    Picture picture(side, side, 3);
    for (std::uint32_t number = 0; number < side * side; ++number) {
        std::uint8_t* pixel = picture.Row(number / side) + std::size_t{3} * (number % side);
        for (unsigned byte = 0; byte < 3; ++byte) {
            pixel[byte] = static_cast<std::uint8_t>((number + 1) >> (8 * byte));
        }
    }
    return picture;
}

std::uint32_t NumberAt(const Picture& view, std::uint32_t column, std::uint32_t row) {
    const std::uint8_t* pixel = view.Row(row) + std::size_t{3} * column;
    return pixel[0] + 256U * pixel[1] + 65536U * pixel[2];
}

/// Which percentage of a round lens's pixels a view shows, counted in the picture that the library
/// makes of numbers.
double PercentageShown(std::uint32_t side, const LibraryView& view, std::uint32_t width,
                       std::uint32_t height) {
    const Picture output = FlattenedByLibrary(Numbered(side), view, width, height);
    std::set<std::uint32_t> shown;
    for (std::uint32_t i = 0; i < width * height; ++i) {
        const std::uint32_t number = NumberAt(output, i % width, i / width);
        if (number > 0) {
            shown.insert(number - 1);
        }
    }
    double lens = 0.0;
    double lensShown = 0.0;
    for (std::uint32_t number = 0; number < side * side; ++number) {
        const double x = (number % side) / (side - 1.0) - 0.5;
        const double y = (number / side) / (side - 1.0) - 0.5;
        if (std::hypot(x, y) <= 0.5000001) {
            lens += 1.0;
            lensShown += static_cast<double>(shown.count(number));
        }
    }
    return 100.0 * lensShown / lens;
}

}  // namespace

TEST_F(Explain, TellsOfTheFrameAndTheLens) {
    const ExplainedRun square = Square(View("ceiling", "full"));
    EXPECT_EQ(square.On("input"), "square.png, a picture");
    EXPECT_EQ(square.On("frame"), "1024x1024 pixels");
    EXPECT_EQ(square.On("lens"),
              "centre at 512, 512 from the top left, rim 512 pixels to each side and 512 up and "
              "down");
    const ExplainedRun wide(m_folder,
                            Joined({"wide.png"}, View("ceiling", "full", {"--radius-x", "0.375"})));
    EXPECT_EQ(wide.On("frame"), "640x480 pixels");
    EXPECT_EQ(wide.On("lens"),
              "centre at 320, 240 from the top left, rim 240 pixels to each side and 240 up and "
              "down");
}

TEST_F(Explain, TellsOfACeilingsFullPanorama) {
    const ExplainedRun run = Square(View("ceiling", "full"));
    EXPECT_EQ(run.On("view"), "full panorama of a ceiling camera");
    EXPECT_EQ(run.On("angles"), "pan 0");
    // Twice the lens's diameter wide, and as high as its radius.
    EXPECT_EQ(run.On("output"), "2048x512 pixels, the recommended size");
    EXPECT_EQ(run.On("left edge"), "the lens's right, 90 degrees clockwise from its top");
    EXPECT_EQ(run.On("top row"), "the lens's rim, 90 degrees off its axis");
    EXPECT_EQ(run.On("bottom row"), "the lens's centre");
    // The rim is pi diameters long.
    EXPECT_NEAR(run.NumberOn(kAcross, 0), 0.0, 0.01);
    EXPECT_NEAR(run.NumberOn(kAcross, 1), 3.14159265 / 2.0, 0.02);
    EXPECT_NEAR(run.NumberOn(kAcross, 2), 3.14159265 / 4.0, 0.02);
    EXPECT_NEAR(run.NumberOn(kDown), 1.0, 0.01);
    EXPECT_EQ(run.On("black"), "0% of the output");
    EXPECT_EQ(run.Warnings(), std::vector<std::string>{}) << run.Text();
}

TEST_F(Explain, CountsTheLensPixelsThatAppear) {
    WritePlain(m_folder, "small.png", 256, 256, 90);
    const auto percentage = [&](const std::vector<std::string>& view) {
        return ExplainedRun(m_folder, Joined({"small.png"}, view)).NumberOn("used");
    };
    using namespace KivFisheyeLib;
    EXPECT_NEAR(percentage(View("ceiling", "full")),
                PercentageShown(256, {MountTypeCeiling, ViewTypeFullPanorama}, 512, 128), 0.6);
    EXPECT_NEAR(percentage(View("ceiling", "full", {"--size", "128x64"})),
                PercentageShown(256, {MountTypeCeiling, ViewTypeFullPanorama}, 128, 64), 0.6);
    EXPECT_NEAR(percentage(View("table", "vcam", {"--pan", "40", "--tilt", "-30", "--zoom", "4"})),
                PercentageShown(256, {MountTypeTable, ViewTypeVCam, 40.0F, -30.0F, 4.0F}, 256, 256),
                0.6);
}

TEST_F(Explain, TellsWhichPartOfTheLensAPanoramaHas) {
    const auto part = [&](const std::vector<std::string>& view) {
        const std::string used = Square(view).On("used");
        return used.substr(used.find("frame"));
    };
    EXPECT_EQ(part(View("ceiling", "full")), "frame, from the centre to the rim");
    EXPECT_EQ(part(View("table", "dual", {"--inner-radius", "0.25"})),
              "frame, between 0.25 of the radius and the rim");
    EXPECT_EQ(part(View("wall", "full", {"--wall-view-angle", "62.5"})),
              "frame, up to 62.5 degrees above and below the horizon");
    EXPECT_EQ(part(View("wall", "vcam")), "frame");
}

TEST_F(Explain, TellsWhatThePanLooksAt) {
    // Clockwise seen from above is clockwise on a ceiling camera's picture, and anticlockwise on
    // that of a table camera.
    EXPECT_EQ(Square(View("ceiling", "full", {"--pan", "30"})).On("left edge"),
              "the lens's lower right, 120 degrees clockwise from its top");
    EXPECT_EQ(Square(View("table", "full", {"--pan", "30"})).On("left edge"),
              "the lens's upper right, 60 degrees clockwise from its top");
    EXPECT_EQ(Square(View("ceiling", "full", {"--pan", "270"})).On("left edge"),
              "the lens's top, 0 degrees clockwise from its top");
}

TEST_F(Explain, TellsWhatBothHalvesShow) {
    const ExplainedRun table = Square(View("table", "dual", {"--inner-radius", "0.3"}));
    EXPECT_EQ(table.On("view"), "dual panorama of a table camera");
    EXPECT_EQ(table.On("upper half, left edge"),
              "the lens's right, 90 degrees clockwise from its top");
    EXPECT_EQ(table.On("lower half, left edge"),
              "the lens's left, 270 degrees clockwise from its top");
    for (const char* half : {"upper half, ", "lower half, "}) {
        EXPECT_EQ(table.On(half + std::string("top row")),
                  "0.3 of the lens's radius, 27 degrees off its axis");
        EXPECT_EQ(table.On(half + std::string("bottom row")),
                  "the lens's rim, 90 degrees off its axis");
    }
    const ExplainedRun ceiling = Square(View("ceiling", "dual"));
    EXPECT_EQ(ceiling.On("upper half, left edge"),
              "the lens's left, 270 degrees clockwise from its top");
    EXPECT_EQ(ceiling.On("upper half, top row"), "the lens's rim, 90 degrees off its axis");
    // Half a turn is one diameter wide, and 1 / 2 of the rim's length.
    EXPECT_EQ(ceiling.On("output"), "1024x1024 pixels, the recommended size");
    EXPECT_NEAR(ceiling.NumberOn(kAcross, 1), 3.14159265 / 2.0, 0.02);
    EXPECT_NEAR(ceiling.NumberOn(kDown), 1.0, 0.02);
}

TEST_F(Explain, TellsOfAWallPanorama) {
    const ExplainedRun run =
        Square(View("wall", "full", {"--wall-view-angle", "60", "--size", "720x240"}));
    EXPECT_EQ(run.On("angles"), "none, this panorama does not turn");
    EXPECT_EQ(run.On("output"), "720x240 pixels, as --size says");
    EXPECT_EQ(run.On("left and right edge"), "90 degrees to the left and to the right");
    EXPECT_EQ(run.On("top and bottom row"), "60 degrees above and below the horizon");
    EXPECT_EQ(run.On("scale"), "4 pixels for each degree across, 2 down");
}

TEST_F(Explain, TellsTheFieldOfViewOfAVirtualCamera) {
    const auto fieldOfView = [&](const std::vector<std::string>& options) {
        return Square(View("ceiling", "vcam", options)).On("field of view");
    };
    // The eye lies 0.01 behind the middle of the lens, which has 1.01 times its angles.
    EXPECT_EQ(fieldOfView({"--zoom", "4", "--size", "512x512"}),
              "71 degrees of the lens across, 71 down");
    // The tangent of half the view is twice as large across: atan(2 tan 35) is 54.5 degrees.
    EXPECT_EQ(fieldOfView({"--zoom", "4", "--size", "512x256"}),
              "110 degrees of the lens across, 71 down");
    EXPECT_EQ(fieldOfView({"--fov", "40", "--size", "512x512"}),
              "40 degrees of the lens across, 40 down");
    EXPECT_EQ(fieldOfView({}), "180 degrees of the lens across, 180 down");
    EXPECT_EQ(fieldOfView({"--fov", "135"}), "135 degrees of the lens across, 135 down");
    // There the eye lies 0.505 behind: 1.505 * 2 * atan(1 / 2) is 80.0 degrees.
    EXPECT_EQ(fieldOfView({"--fov", "135", "--size", "256x512"}),
              "80 degrees of the lens across, 135 down");
}

TEST_F(Explain, FieldOfViewDoesNotJumpWhereTheEyeArrivesInTheMiddle) {
    for (const char* const zoom : {"1.999", "2"}) {
        EXPECT_EQ(Square(View("ceiling", "vcam", {"--zoom", zoom})).On("field of view"),
                  "91 degrees of the lens across, 91 down")
            << zoom;
    }
}

TEST_F(Explain, FieldOfViewIsThatOfThePicture) {
    constexpr std::uint32_t kSide = 1001;
    constexpr double kRadius = 500.0;
    const auto degreesOffAxis = [&](std::uint32_t number) {
        return 90.0 / kRadius *
               std::hypot((number - 1) % kSide - kRadius, (number - 1) / kSide - kRadius);
    };
    for (const char* const zoom : {"1", "1.25", "1.5", "1.99", "2", "4", "10"}) {
        const ExplainedRun run =
            Square(View("ceiling", "vcam", {"--zoom", zoom, "--size", "512x511"}));
        const LibraryView view{KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::ViewTypeVCam, 0.0F,
                               0.0F, std::stof(zoom)};
        const Picture shown = FlattenedByLibrary(Numbered(kSide), view, 512, 511);
        // What is told has no decimals, and a pixel is a fifth of a degree.
        EXPECT_NEAR(
            run.NumberOn("field of view", 0),
            degreesOffAxis(NumberAt(shown, 1, 255)) + degreesOffAxis(NumberAt(shown, 510, 255)),
            1.4)
            << zoom;
        EXPECT_NEAR(
            run.NumberOn("field of view", 1),
            degreesOffAxis(NumberAt(shown, 256, 1)) + degreesOffAxis(NumberAt(shown, 256, 509)),
            1.4)
            << zoom;
    }
}

TEST_F(Explain, NamesTheCentreWhereItHasNoDirection) {
    const ExplainedRun run = Square(View("table", "dual", {"--size", "8x2"}));
    EXPECT_EQ(run.On("upper half, top row"), "the lens's centre");
    EXPECT_EQ(run.Text().find("left edge"), std::string::npos) << run.Text();
}

TEST_F(Explain, KnowsAWallPanoramaOfOneRow) {
    EXPECT_EQ(Square(View("wall", "full", {"--size", "8x1"})).On("only row"),
              "45 degrees above the horizon");
}

TEST_F(Explain, TellsWhereAVirtualCameraLooks) {
    const auto middle = [&](const std::string& mount, const std::vector<std::string>& options) {
        return Square(View(mount, "vcam", options));
    };
    const auto expectMiddle = [&](const ExplainedRun& run, double x, double y) {
        EXPECT_NEAR(run.NumberOn("middle", 0), x, 5.0) << run.Text();
        EXPECT_NEAR(run.NumberOn("middle", 1), y, 5.0) << run.Text();
        EXPECT_NEAR(run.NumberOn("middle", 2), x / 1024.0, 0.01) << run.Text();
        EXPECT_NEAR(run.NumberOn("middle", 3), y / 1024.0, 0.01) << run.Text();
    };
    // 45 degrees off the axis is half of the radius.
    expectMiddle(middle("ceiling", {"--pan", "90", "--tilt", "45", "--zoom", "4"}), 768.0, 512.0);
    expectMiddle(middle("table", {"--pan", "0", "--tilt", "-45", "--zoom", "4"}), 512.0, 768.0);
    expectMiddle(middle("wall", {"--pan", "-45", "--tilt", "0", "--zoom", "4"}), 256.0, 512.0);
    expectMiddle(middle("ceiling", {"--aim", "0.7,0.3", "--fov", "60"}), 716.8, 307.2);
}

TEST_F(Explain, TellsTheAnglesAskedForAndTaken) {
    EXPECT_EQ(Square(View("ceiling", "full", {"--pan", "370"})).On("angles"),
              "pan 10; asked for: pan 370");
    EXPECT_EQ(Square(View("table", "full", {"--pan", "-720"})).On("angles"),
              "pan 0; asked for: pan -720");
    // A view 80 degrees high stays 40 degrees from the rim.
    EXPECT_EQ(Square(View("ceiling", "vcam", {"--tilt", "80", "--zoom", "3"})).On("angles"),
              "pan 0, tilt 50 and zoom 3; asked for: pan 0, tilt 80 and zoom 3");
}

TEST_F(Explain, TellsHowMuchStaysBlack) {
    // A circle leaves 1 - pi / 4 of its square.
    EXPECT_NEAR(Square(View("ceiling", "vcam")).NumberOn("black"), 21.46, 1.0);
    EXPECT_EQ(Square(View("ceiling", "vcam", {"--zoom", "2"})).On("black"), "0% of the output");
}

TEST_F(Explain, TellsWhereTheSizeOfAVideoComesFrom) {
    VideoFile::Write(m_folder.File("film.avi"), {}, VideoFile::WaveFrames(80, 80, 3));
    // A ring of 25 pixels: 40 less three eighths.
    const std::vector<std::string> ring = View("table", "full", {"--inner-radius", "0.375"});
    const ExplainedRun film(m_folder, Joined({"film.avi", "flat.mp4"}, ring));
    EXPECT_EQ(film.On("input"), "film.avi, a video");
    EXPECT_EQ(film.On("frame"), "80x80 pixels");
    EXPECT_EQ(film.On("output"), "160x26 pixels, the recommended size with its height made even");
    const ExplainedRun picture(m_folder, Joined({"film.avi"}, ring));
    EXPECT_EQ(picture.On("output"), "160x25 pixels, the recommended size");
}

TEST_F(Explain, IsTheSameWithAndWithoutAnOutput) {
    EXPECT_EQ(
        Square(View("ceiling", "full")).Text(),
        ExplainedRun(m_folder, Joined({"square.png", "o.jpg"}, View("ceiling", "full"))).Text());
    EXPECT_EQ(Square(View("ceiling", "dual", {"--format", "rgb24"})).Text(),
              Square(View("ceiling", "dual")).Text());
}

TEST_F(Explain, WritesNothing) {
    WriteContent(m_folder.File("old.png"), "older");
    const std::set<std::string> before = m_folder.Names();
    const ExplainedRun run(m_folder, Joined({"square.png", "old.png"}, View("table", "full")));
    const ExplainedRun other(m_folder, Joined({"square.png", "new.png"}, View("table", "full")));
    const ExplainedRun none(m_folder,
                            Joined({"square.png", "no/folder/o.png"}, View("table", "full")));
    EXPECT_EQ(ContentOf(m_folder.File("old.png")), "older");
    EXPECT_EQ(m_folder.Names(), before);
}

TEST_F(Explain, TellsOfPicturesOfOnePixelAndOfOneRow) {
    WritePlain(m_folder, "one.png", 1, 1, 90);
    const ExplainedRun one(m_folder, Joined({"one.png"}, View("wall", "vcam")));
    EXPECT_EQ(one.On("frame"), "1x1 pixels");
    EXPECT_EQ(one.On("middle"), "at 1, 1 of the input, 0.5 of its width and 0.5 of its height");
    const ExplainedRun row = Square(View("ceiling", "full", {"--size", "8x1"}));
    EXPECT_TRUE(row.Has(kAcross)) << row.Text();
    EXPECT_FALSE(row.Has(kDown)) << row.Text();
}

namespace {

const std::vector<ErrorCase> kExplainErrors = {
    {"ExplainMissing", Joined({"dewarp", "none.png", "--explain"}, View("table", "full")), kFailure,
     "cannot open none.png"},
    {"ExplainText", Joined({"dewarp", "text.png", "--explain"}, View("table", "full")), kFailure,
     "text.png is not a picture or video"},
    {"ExplainCutOff", Joined({"dewarp", "cut.jpg", "--explain"}, View("table", "full")), kFailure,
     "cut.jpg"},
    {"ExplainStillAsVideo",
     Joined({"dewarp", "input.png", "o.mp4", "--explain"}, View("table", "full")), kFailure,
     "input.png is a still picture"},
    {"ExplainLensWithoutExtent",
     Joined({"dewarp", "input.png", "--explain", "--radius-x", "0"}, View("table", "full")),
     kFailure, "lens image is too small"},
    {"ExplainOtherEnding",
     Joined({"dewarp", "input.png", "o.gif", "--explain"}, View("table", "full")), kUsage,
     "cannot write o.gif"},
    {"ExplainInputAsOutput",
     Joined({"dewarp", "input.png", "link.png", "--explain"}, View("table", "full")), kUsage,
     "replace the input"},
    {"ExplainWallDual", Joined({"dewarp", "input.png", "--explain"}, View("wall", "dual")), kUsage,
     "a wall camera has no dual panorama"},
    {"ExplainNoInput", Joined({"dewarp", "--explain"}, View("table", "full")), kUsage, "INPUT"},
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Explain, ToolError, testing::ValuesIn(kExplainErrors),
                         [](const auto& instance) { return std::string(instance.param.name); });
