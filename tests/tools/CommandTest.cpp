#include <KivFisheyeLib.h>
#include <KivFisheyeVersion.h>
#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "HelpText.h"
#include "Picture.h"
#include "PlainPicture.h"
#include "ToolRun.h"

using KivFisheyeTools::Picture;

namespace {

const std::vector<std::pair<const char*, const char*>> kViewsOfMounts = {
    {"wall", "vcam"},    {"wall", "full"},  {"ceiling", "vcam"}, {"ceiling", "dual"},
    {"ceiling", "full"}, {"table", "vcam"}, {"table", "dual"},   {"table", "full"}};

/// The words of the line that `info` prints about a mount and view.
std::vector<std::string> InfoOn(const std::string& mount, const std::string& view,
                                const std::string& info) {
    for (const std::string& line : Lines(info)) {
        const std::vector<std::string> words = Words(line);
        if (words.size() >= 4 && words[0] == mount && words[1] == view) {
            return words;
        }
    }
    ADD_FAILURE() << "nothing about " << mount << ' ' << view << " in " << info;
    return std::vector<std::string>(4);
}

}  // namespace

TEST(Version, IsThatOfTheHeader) {
    const TemporaryFolder folder;
    const ToolRun run = RunTool(folder, {"--version"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "kivfisheye " KIVFISHEYE_VERSION "\n");
    EXPECT_EQ(run.errors, "");
}

TEST(Info, TellsVersionAndInstructionSet) {
    const TemporaryFolder folder;
    const ToolRun run = RunTool(folder, {"info"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    const std::vector<std::string> names = {"none",   "SSE",    "SSE2", "SSE3", "SSSE3",
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
    std::set<std::string> expected;
    for (const auto& [mount, name] : kViewsOfMounts) {
        expected.insert(std::string(mount) + ' ' + name);
    }
    EXPECT_EQ(rows, expected);
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
    EXPECT_EQ(recommended, 8);
}

TEST(Info, RecommendsWhatSuitsTheLens) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 640, 480, 90);
    const std::string info =
        RunTool(folder, {"info", "input.png", "--radius-x", "0.3", "--radius-y", "0.4",
                         "--inner-radius", "0.5", "--wall-view-angle", "30"})
            .output;
    // The lens image is 384 columns wide and 384 rows high, and half of its radius is shown.
    for (const char* mount : {"ceiling", "table"}) {
        EXPECT_EQ(InfoOn(mount, "vcam", info)[2], "384x384");
        // Two diameters wide and as high as the ring; folded in two halves one diameter wide.
        EXPECT_EQ(InfoOn(mount, "full", info)[2], "768x96");
        EXPECT_EQ(InfoOn(mount, "full", info)[3], "8.000");
        EXPECT_EQ(InfoOn(mount, "dual", info)[2], "384x192");
        EXPECT_EQ(InfoOn(mount, "dual", info)[3], "2.000");
    }
    // From 30 degrees above the horizon to 30 below it lies the sine of 30 of the lens's height.
    const std::vector<std::string> wall = InfoOn("wall", "full", info);
    EXPECT_TRUE(wall[2] == "384x192" || wall[2] == "384x191") << wall[2];
    EXPECT_EQ(wall[3], "2.000");
}

TEST(Info, SaysInWhichSizeDewarpMakesEveryView) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 200, 150, 90);
    const std::vector<std::string> radii = {"--radius-x", "0.3", "--radius-y", "0.4"};
    const std::vector<std::string> innerRadius = {"--inner-radius", "0.2"};
    const std::vector<std::string> wallViewAngle = {"--wall-view-angle", "30"};
    const auto run = [&](std::vector<std::string> arguments,
                         const std::vector<std::vector<std::string>>& lens) {
        for (const std::vector<std::string>& options : lens) {
            arguments.insert(arguments.end(), options.begin(), options.end());
        }
        const ToolRun made = RunTool(folder, arguments);
        EXPECT_EQ(made.status, 0) << made.errors;
        EXPECT_EQ(made.errors, "");
        return made.output;
    };
    const std::string info = run({"info", "input.png"}, {radii, innerRadius, wallViewAngle});
    for (const auto& [mount, view] : kViewsOfMounts) {
        std::vector<std::vector<std::string>> lens = {radii};
        if (view != std::string("vcam")) {
            lens.push_back(mount == std::string("wall") ? wallViewAngle : innerRadius);
        }
        run({"dewarp", "input.png", "output.png", "--mount", mount, "--view", view}, lens);
        const Picture made = KivFisheyeTools::ReadPicture(folder.File("output.png"), 3);
        EXPECT_EQ(InfoOn(mount, view, info)[2],
                  std::to_string(made.width) + "x" + std::to_string(made.height))
            << mount << ' ' << view;
    }
}

TEST(Info, RecommendsNothingForALensWithoutExtent) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 640, 480, 90);
    for (const auto& [radiusX, radiusY] :
         {std::pair("0", "0"), std::pair("0", "0.5"), std::pair("0.5", "0")}) {
        const ToolRun run =
            RunTool(folder, {"info", "input.png", "--radius-x", radiusX, "--radius-y", radiusY});
        EXPECT_EQ(run.status, 0) << run.errors;
        for (const auto& [mount, view] : kViewsOfMounts) {
            const std::vector<std::string> words = InfoOn(mount, view, run.output);
            EXPECT_EQ(words[2], "none") << run.output;
            EXPECT_EQ(words[3], "-") << run.output;
        }
    }
}

TEST(Info, TellsTheRadiusOfARoundLensInALongPicture) {
    const TemporaryFolder folder;
    WritePlain(folder, "wide.png", 640, 480, 90);
    WritePlain(folder, "high.png", 90, 160, 90);
    WritePlain(folder, "square.png", 64, 64, 90);
    const auto infoOn = [&](const std::vector<std::string>& words) {
        std::vector<std::string> arguments = {"info"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        return RunTool(folder, arguments).output;
    };
    EXPECT_NE(infoOn({"wide.png"}).find("as high as this picture needs --radius-x 0.375 "),
              std::string::npos);
    EXPECT_NE(infoOn({"high.png"}).find("as wide as this picture needs --radius-y 0.28125 "),
              std::string::npos);
    EXPECT_EQ(infoOn({"square.png"}).find("radius"), std::string::npos);
    EXPECT_EQ(infoOn({"wide.png", "--radius-x", "0.5"}).find("radius"), std::string::npos);
    EXPECT_EQ(infoOn({"wide.png", "--radius-y", "0.5"}).find("radius"), std::string::npos);
}

TEST(Info, KeepsItsColumnsApart) {
    const TemporaryFolder folder;
    WritePlain(folder, "long.png", 65535, 1, 90);
    const std::string info = RunTool(folder, {"info", "long.png"}).output;
    for (const char* mount : {"wall", "ceiling", "table"}) {
        const std::string ratio = InfoOn(mount, "vcam", info)[3];
        EXPECT_GE(ratio.size(), 7U) << info;
        EXPECT_EQ(ratio.find_first_not_of("0123456789."), std::string::npos) << info;
    }
}

TEST(Info, HasAVirtualCameraOfEveryMount) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 640, 480, 90);
    const std::string info = RunTool(folder, {"info", "input.png"}).output;
    for (const char* mount : {"wall", "ceiling", "table"}) {
        EXPECT_EQ(InfoOn(mount, "vcam", info)[2], "640x480") << info;
    }
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
