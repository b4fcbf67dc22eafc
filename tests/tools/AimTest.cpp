#include <KivFisheyeLib.h>
#include <gtest/gtest.h>

#include <sstream>

#include "GoodRun.h"
#include "PlainPicture.h"
#include "ToolRun.h"

using namespace KivFisheyeLib;

namespace {

struct Aim {
    float pan = -1.0F;
    float tilt = -1.0F;
    float zoom = -1.0F;
};

/// Expects one line of three numbers and nothing else.
Aim AimOf(const std::string& line) {
    std::istringstream stream(line);
    Aim aim;
    EXPECT_TRUE(stream >> aim.pan >> aim.tilt >> aim.zoom) << line;
    std::string rest;
    std::getline(stream, rest);
    EXPECT_EQ(rest, "") << line;
    EXPECT_EQ(stream.peek(), std::istringstream::traits_type::eof()) << line;
    return aim;
}

Aim AimedAt(const std::vector<std::string>& options) {
    const TemporaryFolder folder;
    return AimOf(OutputOfGoodRun(folder, Joined({"aim"}, options)));
}

}  // namespace

TEST(AimCommand, LooksAlongTheWaysOfEveryMount) {
    const auto expect = [](const std::string& point, const std::string& mount, float pan,
                           float tilt) {
        const Aim aim = AimedAt({point, "--mount", mount, "--zoom", "10"});
        EXPECT_NEAR(aim.pan, pan, 1e-4) << mount << point;
        EXPECT_NEAR(aim.tilt, tilt, 1e-4) << mount << point;
        EXPECT_EQ(aim.zoom, 10.0F);
    };
    // Halfway from the middle to the rim is 45 degrees off the axis.
    expect("0.5,0.25", "ceiling", 0.0F, 45.0F);
    expect("0.75,0.5", "ceiling", 90.0F, 45.0F);
    expect("0.5,0.75", "table", 0.0F, -45.0F);
    expect("0.75,0.5", "table", 90.0F, -45.0F);
    expect("0.25,0.5", "wall", -45.0F, 0.0F);
    expect("0.5,0.25", "wall", 0.0F, 45.0F);
}

TEST(AimCommand, KnowsTheLens) {
    const Aim aim = AimedAt({"0.625,0.5", "--mount", "ceiling", "--zoom", "10", "--radius-x",
                             "0.25", "--radius-y", "0.4"});
    EXPECT_NEAR(aim.pan, 90.0, 1e-4);
    EXPECT_NEAR(aim.tilt, 45.0, 1e-4);
}

TEST(AimCommand, TakesAFieldOfViewAndHasAUsualZoom) {
    const std::vector<std::string> point = {"0.5,0.45", "--mount", "ceiling"};
    EXPECT_EQ(AimedAt(point).zoom, 2.0F);
    EXPECT_NEAR(AimedAt(Joined(point, {"--fov", "90"})).zoom, 2.0, 1e-4);
    EXPECT_NEAR(AimedAt(Joined(point, {"--fov", "60"})).zoom, 5.0, 1e-4);
    EXPECT_EQ(AimedAt(Joined(point, {"--zoom", "3.5"})).zoom, 3.5F);
}

TEST(AimCommand, PrintsEveryBitOfTheLibrarysAngles) {
    void* context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* camera = GetCameraAPI(context);
    camera->SetMountAndViewType(MountTypeTable, ViewTypeVCam);
    for (const char* x : {"0.37", "0.5123", "0.61"}) {
        Aim library;
        camera->CvtXYToVCamPanTilt(std::stof(x), 0.47F, library.pan, library.tilt);
        const Aim aim = AimedAt({std::string(x) + ",0.47", "--mount", "table", "--zoom", "4"});
        EXPECT_EQ(aim.pan, library.pan) << x;
        EXPECT_EQ(aim.tilt, library.tilt) << x;
    }
    DeleteKivFisheyeCameraContext(context);
}

TEST(AimCommand, PrintsWhatDewarpTakesForTheSamePicture) {
    const TemporaryFolder folder;
    KivFisheyeTools::WritePicture(folder.File("input.png"), Slopes());
    for (const char* mount : {"wall", "ceiling", "table"}) {
        const std::vector<std::string> view = {"--mount", mount,    "--view",
                                               "vcam",    "--size", "160x120"};
        const std::string line =
            OutputOfGoodRun(folder, {"aim", "0.41,0.58", "--mount", mount, "--fov", "55"});
        std::istringstream words(line);
        std::string pan;
        std::string tilt;
        std::string zoom;
        words >> pan >> tilt >> zoom;
        OutputOfGoodRun(folder, Joined({"dewarp", "input.png", "pasted.png", "--pan", pan, "--tilt",
                                        tilt, "--zoom", zoom},
                                       view));
        OutputOfGoodRun(folder, Joined({"dewarp", "input.png", "aimed.png", "--aim", "0.41,0.58",
                                        "--fov", "55"},
                                       view));
        const std::string pasted = ContentOf(folder.File("pasted.png"));
        EXPECT_FALSE(pasted.empty());
        EXPECT_EQ(pasted, ContentOf(folder.File("aimed.png"))) << mount;
    }
}

TEST(AimCommand, TellsBesideTheAnglesThatTheyAreLimited) {
    const TemporaryFolder folder;
    const ToolRun run = RunTool(folder, {"aim", "0.9,0.5", "--mount", "ceiling"});
    EXPECT_EQ(run.status, 0);
    const Aim aim = AimOf(run.output);
    EXPECT_NEAR(aim.pan, 90.0, 1e-4);
    EXPECT_NEAR(aim.tilt, 72.0, 1e-4);
    EXPECT_EQ(run.errors,
              "kivfisheye: a view with these angles is limited to pan 90, tilt 45 and zoom 2 "
              "instead of pan 90, tilt 72 and zoom 2; --fov 36 is the widest that looks there\n");
}

namespace {

/// The degrees that an aim at the point is told are the widest, or nothing.
std::string WidestFieldToldFor(const std::string& point, const std::string& mount,
                               const std::vector<std::string>& options = {}) {
    const TemporaryFolder folder;
    const std::string before = "; --fov ";
    const std::string after = " is the widest that looks there\n";
    const ToolRun run = RunTool(folder, Joined({"aim", point, "--mount", mount}, options));
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.errors.find("a view with these angles is limited"), std::string::npos)
        << point << run.errors;
    const std::size_t start = run.errors.find(before);
    if (start == std::string::npos) {
        return "";
    }
    const std::size_t end = run.errors.find(after, start);
    EXPECT_NE(end, std::string::npos) << run.errors;
    return run.errors.substr(start + before.size(), end - start - before.size());
}

}  // namespace

TEST(AimCommand, TellsTheWidestFieldOfViewThatReachesThePoint) {
    struct Case {
        const char* point;
        const char* mount;
        const char* widest;
    };
    // The distance from the rim is that many ninetieths of half the frame: 17.1 degrees of 0.095.
    for (const Case& each : {Case{"0.905,0.5", "ceiling", "34"}, Case{"0.5,0.095", "ceiling", "34"},
                             Case{"0.905,0.5", "table", "34"}, Case{"0.5,0.905", "wall", "34"},
                             Case{"0.095,0.5", "wall", "34"}, Case{"0.5,0.968", "table", "11"}}) {
        const TemporaryFolder folder;
        EXPECT_EQ(WidestFieldToldFor(each.point, each.mount), each.widest) << each.point;
        OutputOfGoodRun(folder, {"aim", each.point, "--mount", each.mount, "--fov", each.widest});
        const std::string wider = std::to_string(std::stoi(each.widest) + 1);
        EXPECT_EQ(WidestFieldToldFor(each.point, each.mount, {"--fov", wider}), each.widest);
    }
}

TEST(AimCommand, TellsOfNoMoreThanTheDegreesThatTurn) {
    EXPECT_EQ(WidestFieldToldFor("0.6,0.5", "wall", {"--fov", "120"}), "90");
    OutputOfGoodRun(TemporaryFolder(), {"aim", "0.6,0.5", "--mount", "wall", "--fov", "90"});
}

TEST(AimCommand, TellsOfNoFieldOfViewWhereNoneIsNarrowEnough) {
    for (const char* mount : {"ceiling", "table", "wall"}) {
        // 4.5 degrees from the rim.
        EXPECT_EQ(WidestFieldToldFor("0.975,0.5", mount), "");
    }
}

TEST(AimCommand, TellsThatAPointLiesOutsideTheLensImage) {
    const TemporaryFolder folder;
    const std::string sentence = "the point lies outside the lens image\n";
    for (const char* mount : {"ceiling", "table", "wall"}) {
        const ToolRun run = RunTool(folder, {"aim", "0.9,0.9", "--mount", mount});
        EXPECT_EQ(run.status, 0);
        AimOf(run.output);
        EXPECT_NE(run.errors.find(sentence), std::string::npos) << run.errors;
        EXPECT_EQ(run.errors.find("--fov"), std::string::npos) << run.errors;
    }
    const std::vector<std::string> lens = {"--mount", "wall", "--radius-x", "0.3"};
    EXPECT_NE(RunTool(folder, Joined({"aim", "0.81,0.5"}, lens)).errors.find(sentence),
              std::string::npos);
    EXPECT_EQ(RunTool(folder, Joined({"aim", "0.8,0.5"}, lens)).errors.find(sentence),
              std::string::npos);
}

TEST(AimCommand, CallsNoPointOfTheRimOutside) {
    const TemporaryFolder folder;
    for (const char* point : {"0,0.5", "1,0.5", "0.5,0", "0.5,1"}) {
        const ToolRun run = RunTool(folder, {"aim", point, "--mount", "table"});
        EXPECT_EQ(run.errors.find("outside"), std::string::npos) << point << run.errors;
    }
}
