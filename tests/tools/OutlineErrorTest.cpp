#include "GoodRun.h"
#include "ToolError.h"

namespace {

using Words = std::vector<std::string>;

Words Outline(const std::string& view, const Words& options, const std::string& output = "o.svg") {
    return Joined({"outline", "input.png", output, "--mount", "table", "--view", view}, options);
}

Words Snapshot(const Words& options, const std::string& output = "o.png") {
    return Joined({"snapshot", "input.png", output, "--mount", "table", "--view", "full"}, options);
}

Words Mesh(const Words& options, const std::string& output = "o.obj") {
    return Joined({"mesh", output, "--mount", "table"}, options);
}

Words Aim(const std::string& point, const Words& options = {}) {
    return Joined({"aim", point, "--mount", "ceiling"}, options);
}

const std::vector<ErrorCase> kOutlineCases = {
    {"OutlineWithoutOutput", {"outline", "input.png"}, kUsage, "OUTPUT"},
    {"OutlineOfNoView", {"outline", "input.png", "o.png", "--mount", "wall"}, kUsage, "--view"},
    {"OutlineOfAWallsDual",
     {"outline", "input.png", "o.png", "--mount", "wall", "--view", "dual"},
     kUsage,
     "a wall camera has no dual panorama"},
    {"OutlineAsVideo", Outline("full", {}, "o.mp4"), kUsage,
     "cannot write o.mp4: it needs a name with the ending .png, .jpg, .jpeg, .svg or .json"},
    {"OutlineAsNothing", Outline("full", {}, ".svg"), kUsage, ".svg or .json"},
    {"OutlineOfItself", Outline("full", {}, "link.png"), kUsage, "replace the input input.png"},
    {"OutlineOfVcamPoints", Outline("vcam", {"--points", "24"}), kUsage,
     "--points: the outline of this view takes a multiple of 16 points"},
    {"OutlineOfWallPoints",
     {"outline", "input.png", "o.svg", "--mount", "wall", "--view", "full", "--points", "24"},
     kUsage,
     "a multiple of 16 points"},
    {"OutlineOfDualPoints", Outline("dual", {"--points", "12"}), kUsage, "a multiple of 8 points"},
    {"OutlineOfRingPoints", Outline("full", {"--points", "6"}), kUsage, "a multiple of 4 points"},
    {"OutlineOfNoPoints", Outline("full", {"--points", "0"}), kUsage, "from 4 to 1000000"},
    {"OutlineOfTooManyPoints", Outline("full", {"--points", "1000004"}), kUsage,
     "from 4 to 1000000"},
    {"OutlineOfASizedPanorama", Outline("full", {"--size", "64x64"}), kUsage,
     "--size goes with --view vcam alone"},
    {"OutlineOfAnOddWidth", Outline("vcam", {"--size", "60x64"}), kUsage, "multiple of 8"},
    {"OutlineOfATiltedPanorama", Outline("dual", {"--tilt", "5"}), kUsage,
     "only --view vcam takes --tilt\n"},
    {"OutlineOfAPointBesideTheFrame", Outline("vcam", {"--aim", "0.5,1.5"}), kUsage,
     "--aim: both numbers must be from 0 to 1"},
    {"OutlineOfAVcamsRing", Outline("vcam", {"--inner-radius", "0.5"}), kUsage, "--inner-radius"},
    {"OutlineWithoutLens", Outline("full", {"--radius-x", "0"}), kFailure,
     "the lens image is too small to outline a view in it"},
    {"OutlineOfASizedVcamWithoutLens",
     Outline("vcam", {"--radius-y", "0", "--size", "64x64"}, "o.json"), kFailure,
     "the lens image is too small"},
    {"OutlineOfMissing",
     {"outline", "missing.png", "o.json", "--mount", "wall", "--view", "full"},
     kFailure,
     "missing.png"},
    {"OutlineOfText",
     {"outline", "text.png", "o.svg", "--mount", "wall", "--view", "full"},
     kFailure,
     "text.png is not a picture or video"},
    {"OutlineInNoDirectory", Outline("full", {}, "none/o.svg"), kFailure, "none/o.svg"},
    {"OutlineOverADirectory", Outline("full", {}, "folder.png"), kFailure, "folder.png"},
};

const std::vector<ErrorCase> kOtherCases = {
    {"AimAtNothing", {"aim", "--mount", "wall"}, kUsage, "POINT"},
    {"AimOfNoMount", {"aim", "0.5,0.5"}, kUsage, "--mount"},
    {"AimAtOneNumber", Aim("0.5"), kUsage, "is not two numbers with a comma between them"},
    {"AimAtThreeNumbers", Aim("0.5,0.5,0.5"), kUsage,
     "is not two numbers with a comma between them"},
    {"AimAtNan", Aim("nan,0.5"), kUsage, "is not two numbers with a comma between them"},
    {"AimAtPixels", Aim("640,480"), kUsage, "POINT: both numbers must be from 0 to 1"},
    {"AimBeforeTheLeftEdge", Aim("-0.1,0.5"), kUsage, "POINT: both numbers must be from 0 to 1"},
    {"AimWithZoomAndFieldOfView", Aim("0.5,0.5", {"--zoom", "3", "--fov", "60"}), kUsage,
     "excludes"},
    {"AimInALensWithoutExtent", Aim("0.5,0.5", {"--radius-y", "0"}), kFailure,
     "too small to look at"},
    {"SnapshotWithoutOutput", {"snapshot", "input.png"}, kUsage, "OUTPUT"},
    {"SnapshotAsVideo", Snapshot({}, "o.mp4"), kUsage, ".png, .jpg or .jpeg"},
    {"SnapshotOfItself", Snapshot({}, "input.png"), kUsage, "replace the input input.png"},
    {"SnapshotOfASize", Snapshot({"--size", "64x64"}), kUsage,
     "not expected by snapshot: --size 64x64; --size goes with dewarp, outline, scene and sweep\n"},
    {"SnapshotTilted", Snapshot({"--tilt", "5"}), kUsage, "only --view vcam takes --tilt\n"},
    {"SnapshotOfAWallsDual",
     {"snapshot", "input.png", "o.png", "--mount", "wall", "--view", "dual"},
     kUsage,
     "a wall camera has no dual panorama"},
    {"SnapshotWithoutLens", Snapshot({"--radius-x", "0"}), kFailure,
     "the lens image is too small for a snapshot"},
    {"SnapshotOfMissing",
     {"snapshot", "missing.png", "o.png", "--mount", "wall", "--view", "full"},
     kFailure,
     "missing.png"},
    {"SnapshotInNoDirectory", Snapshot({}, "none/o.png"), kFailure, "none/o.png"},
    {"MeshWithoutView", Mesh({}), kUsage, "--view"},
    {"MeshOfAVirtualCamera", Mesh({"--view", "vcam"}), kUsage,
     "--view: there is no panorama 'vcam': dual or full\n"},
    {"MeshTurned", Mesh({"--view", "full", "--pan", "3"}), kUsage,
     "not expected by mesh: --pan 3; --pan goes with dewarp, outline and snapshot\n"},
    {"MeshOfAnOptionOfNobody", Mesh({"--view", "full", "--roll=3", "--yaw"}), kUsage,
     "not expected by mesh: --roll=3 --yaw\n"},
    {"MeshInTwoFiles", Mesh({"second.obj", "third.obj", "--view", "full"}), kUsage,
     "not expected by mesh: second.obj third.obj\n"},
    {"CommandOfNobody", {"dance", "input.png"}, kUsage, "there is no command 'dance'; "},
    {"OptionBeforeTheCommand",
     {"--zoom=3"},
     kUsage,
     "not expected: --zoom=3; --zoom goes with aim, dewarp, outline and snapshot\n"},
    {"OutlineOfNoMount",
     {"outline", "input.png", "o.svg", "--mount", "floor"},
     kUsage,
     "--mount: there is no mount 'floor': wall, ceiling or table\n"},
    {"OutlineOfAWideView", Outline("wide", {}), kUsage,
     "--view: there is no view 'wide': vcam, dual or full\n"},
    {"MeshWithoutLens", Mesh({"--view", "full", "--radius-x", "0"}), kFailure,
     "the lens image is too small for a mesh\n"},
    {"MeshOfALensWithoutHeight", Mesh({"--view", "dual", "--radius-y", "0"}, "o.json"), kFailure,
     "the lens image is too small for a mesh\n"},
    {"MeshOfALensThatFloatsLose", Mesh({"--view", "full", "--radius-y", "1e-9"}), kFailure,
     "the lens image is too small for a mesh\n"},
    {"MeshOfAWallsDual",
     {"mesh", "o.obj", "--mount", "wall", "--view", "dual"},
     kUsage,
     "a wall camera has no dual panorama"},
    {"MeshAsPicture", Mesh({"--view", "full"}, "o.png"), kUsage,
     "cannot write o.png: it needs a name with the ending .obj or .json"},
    {"MeshOfOneColumn", Mesh({"--view", "full", "--columns", "1"}), kUsage, "from 2 to 4096"},
    {"MeshOfTooManyRows", Mesh({"--view", "full", "--rows", "4097"}), kUsage, "from 2 to 4096"},
    {"MeshOfASecondGridOfOne", Mesh({"--view", "full", "--rows-second", "8"}), kUsage,
     "--rows-second goes with --view dual alone"},
    {"MeshOfAWallsRing",
     {"mesh", "o.obj", "--mount", "wall", "--view", "full", "--inner-radius", "0.2"},
     kUsage,
     "--inner-radius goes with"},
    {"MeshInNoDirectory", Mesh({"--view", "dual"}, "none/o.obj"), kFailure, "none/o.obj"},
};

std::string NameOf(const testing::TestParamInfo<ErrorCase>& instance) {
    return instance.param.name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Outline, ToolError, testing::ValuesIn(kOutlineCases), NameOf);
INSTANTIATE_TEST_SUITE_P(Others, ToolError, testing::ValuesIn(kOtherCases), NameOf);

TEST(ToolError, ATextThatDoesNotFitOnTheDiskLeavesTheOlderFileAlone) {
    const TemporaryFolder folder;
    FillFolder(folder);
    ToolConditions conditions;
    conditions.fileBytes = 600;
    for (const auto& [output, arguments] :
         {std::pair("o.svg", Outline("vcam", {})),
          std::pair("o.json", Outline("dual", {}, "o.json")),
          std::pair("o.obj", Mesh({"--view", "full"})),
          std::pair("m.json", Mesh({"--view", "dual", "--rows", "400"}, "m.json"))}) {
        WriteContent(folder.File(output), "older");
        const std::set<std::string> before = folder.Names();
        ExpectOneSentence(RunTool(folder, arguments, conditions), kFailure,
                          std::string("cannot write ") + output);
        EXPECT_EQ(ContentOf(folder.File(output)), "older");
        EXPECT_EQ(folder.Names(), before);
    }
}
