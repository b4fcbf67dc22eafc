#include <KivFisheyeLib.h>
#include <KivFisheyeVersion.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "Picture.h"
#include "ToolRun.h"

using KivFisheyeTools::Picture;

namespace {

std::vector<std::string> Words(const std::string& line) {
    std::istringstream stream(line);
    std::vector<std::string> words;
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

std::vector<std::string> Lines(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// A picture of one colour.
void WritePlain(const TemporaryFolder& folder, const std::string& name, std::uint32_t width,
                std::uint32_t height, std::uint8_t red) {
    Picture picture(width, height, 3);
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column) {
            picture.Row(row)[std::size_t{3} * column] = red;
        }
    }
    KivFisheyeTools::WritePicture(folder.File(name), picture);
}

}  // namespace

TEST(Version, IsThatOfTheHeader) {
    const TemporaryFolder folder;
    const ToolRun run = RunTool(folder, {"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "kivfisheye " KIVFISHEYE_VERSION "\n");
    EXPECT_EQ(run.errors, "");
}

TEST(Help, NamesEveryCommandAndOption) {
    const TemporaryFolder folder;
    const ToolRun all = RunTool(folder, {"--help"});
    EXPECT_EQ(all.status, 0);
    for (const char* command : {"dewarp", "info", "scene", "sheet"}) {
        EXPECT_NE(all.output.find(command), std::string::npos) << command;
        EXPECT_EQ(RunTool(folder, {command, "--help"}).status, 0) << command;
    }
    const std::string dewarp = RunTool(folder, {"dewarp", "--help"}).output;
    for (const char* option :
         {"--mount", "--view", "--pan", "--tilt", "--zoom", "--size", "--radius-x", "--radius-y",
          "--wall-view-angle", "--inner-radius", "--format"}) {
        EXPECT_NE(dewarp.find(option), std::string::npos) << option;
    }
}

TEST(Info, TellsVersionAndInstructionSet) {
    const TemporaryFolder folder;
    const ToolRun run = RunTool(folder, {"info"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    const std::vector<std::string> names = {"386",    "SSE",    "SSE2", "SSE3", "SSSE3",
                                            "SSE4.1", "SSE4.2", "AVX",  "AVX2"};
    const auto level = static_cast<std::size_t>(GetCPUInstructionSet());
    ASSERT_LT(level, names.size());
    EXPECT_EQ(run.output,
              "version: " KIVFISHEYE_VERSION "\ninstruction set: " + names[level] + "\n");
}

TEST(Info, ListsEveryMountAndViewOnce) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 640, 480, 90);
    const ToolRun run = RunTool(folder, {"info", "input.png"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(run.output.find("input: 640x480\n"), std::string::npos);
    std::set<std::string> rows;
    int views = 0;
    for (const std::string& line : Lines(run.output)) {
        const std::vector<std::string> words = Words(line);
        const bool isView = words.size() > 2 &&
                            (words[0] == "wall" || words[0] == "ceiling" || words[0] == "table");
        if (isView) {
            rows.insert(words[0] + ' ' + words[1]);
            ++views;
        }
    }
    EXPECT_EQ(views, 8);
    EXPECT_EQ(rows,
              (std::set<std::string>{"wall vcam", "wall full", "ceiling vcam", "ceiling dual",
                                     "ceiling full", "table vcam", "table dual", "table full"}));
}

TEST(Info, RecommendsWhatTheViewsAreMadeIn) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 640, 480, 90);
    int recommended = 0;
    for (const std::string& line : Lines(RunTool(folder, {"info", "input.png"}).output)) {
        const std::vector<std::string> words = Words(line);
        if (words.size() < 4 || words[2].find('x') == std::string::npos) {
            continue;
        }
        const double width = std::stod(words[2]);
        const double height = std::stod(words[2].substr(words[2].find('x') + 1));
        // The ratio is that of the lens, the sides are whole pixels and the width whole eights.
        EXPECT_NEAR(std::stod(words[3]), width / height, 0.03 * width / height) << line;
        EXPECT_EQ(std::fmod(width, 8.0), 0.0) << line;
        ++recommended;
    }
    EXPECT_EQ(recommended, 5);
}

TEST(Info, SaysTheSameOfAViewAsDewarpDoes) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 64, 64, 90);
    int views = 0;
    for (const std::string& line : Lines(RunTool(folder, {"info", "input.png"}).output)) {
        const std::vector<std::string> words = Words(line);
        if (words.size() < 4 || words[0] == "mount" || words[0].back() == ':') {
            continue;
        }
        const bool isAvailable = words.back() == "available";
        const ToolRun run = RunTool(
            folder, {"dewarp", "input.png", "output.png", "--mount", words[0], "--view", words[1]});
        EXPECT_EQ(run.status, isAvailable ? 0 : 1) << line;
        ++views;
    }
    EXPECT_EQ(views, 8);
}

TEST(Scene, IsTheSizeAskedFor) {
    const TemporaryFolder folder;
    for (const char* mount : {"wall", "ceiling", "table"}) {
        const ToolRun run =
            RunTool(folder, {"scene", "scene.jpg", "--mount", mount, "--size", "90x61"});
        EXPECT_EQ(run.status, 0) << run.errors;
        const Picture scene = KivFisheyeTools::ReadPicture(folder.File("scene.jpg"), 3);
        EXPECT_EQ(scene.width, 90U);
        EXPECT_EQ(scene.height, 61U);
    }
}

TEST(Sheet, ShowsEveryPictureOverItsCaption) {
    const TemporaryFolder folder;
    const std::vector<std::uint8_t> reds = {60, 120, 180};
    WritePlain(folder, "a.png", 40, 30, reds[0]);
    WritePlain(folder, "b.png", 40, 30, reds[1]);
    WritePlain(folder, "c.png", 40, 30, reds[2]);
    const ToolRun run = RunTool(folder, {"sheet", "sheet.png", "a.png", "b.png", "c.png",
                                         "--columns", "2", "--width", "400"});
    EXPECT_EQ(run.status, 0) << run.errors;
    const Picture sheet = KivFisheyeTools::ReadPicture(folder.File("sheet.png"), 3);
    EXPECT_EQ(sheet.width, 400U);

    struct Found {
        std::uint32_t count = 0;
        std::uint32_t left = 0;
        std::uint32_t top = 0;
    };
    std::vector<Found> found(reds.size());
    for (std::uint32_t row = sheet.height; row-- > 0;) {
        for (std::uint32_t column = sheet.width; column-- > 0;) {
            const std::uint8_t* pixel = sheet.Row(row) + std::size_t{3} * column;
            for (std::size_t i = 0; i < reds.size(); ++i) {
                if (pixel[0] == reds[i] && pixel[1] == 0 && pixel[2] == 0) {
                    found[i] = {found[i].count + 1, column, row};
                }
            }
        }
    }
    for (const Found& picture : found) {
        EXPECT_EQ(picture.count, 40U * 30U);
    }
    EXPECT_EQ(found[0].top, found[1].top);
    EXPECT_LT(found[0].left + 40, found[1].left);
    EXPECT_EQ(found[0].left, found[2].left);
    EXPECT_LT(found[0].top + 30, found[2].top);
}

TEST(Sheet, CaptionsAreInkUnderThePictures) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 300, 50, 200);
    const auto inkOf = [&](const std::string& caption) {
        EXPECT_EQ(RunTool(folder, {"sheet", "sheet.png", "input.png", "--width", "400",
                                   "--captions", caption})
                      .status,
                  0);
        const Picture sheet = KivFisheyeTools::ReadPicture(folder.File("sheet.png"), 3);
        double brightness = 0.0;
        for (std::uint32_t row = 0; row < sheet.height; ++row) {
            for (std::uint32_t column = 0; column < sheet.width; ++column) {
                brightness += sheet.Row(row)[std::size_t{3} * column];
            }
        }
        return -brightness;
    };
    const double none = inkOf(" ");
    const double one = inkOf("H") - none;
    EXPECT_GT(one, 20.0 * 255.0);
    EXPECT_NEAR(inkOf("HH") - none, 2.0 * one, 0.02 * one);
    EXPECT_LT(inkOf("i") - none, one);
}

TEST(Sheet, MakesLargePicturesFitTheirCells) {
    const TemporaryFolder folder;
    WritePlain(folder, "wide.png", 1000, 200, 200);
    WritePlain(folder, "high.png", 200, 1000, 100);
    const ToolRun run =
        RunTool(folder, {"sheet", "sheet.png", "wide.png", "high.png", "--width", "300"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(KivFisheyeTools::ReadPicture(folder.File("sheet.png"), 3).width, 300U);
}
