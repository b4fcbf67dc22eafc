#include <gtest/gtest.h>

#include "ToolError.h"

namespace {

std::vector<std::string> Dewarp(const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"dewarp",  "input.png", "output.png", "--mount",
                                          "ceiling", "--view",    "full"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

std::vector<std::string> DewarpFiles(const std::string& input, const std::string& output) {
    return {"dewarp", input, output, "--mount", "ceiling", "--view", "full"};
}

std::vector<std::string> Sheet(const std::vector<std::string>& words) {
    std::vector<std::string> arguments = {"sheet", "--output", "output.png"};
    arguments.insert(arguments.end(), words.begin(), words.end());
    return arguments;
}

std::vector<std::string> DewarpView(const std::string& mount, const std::string& view) {
    return {"dewarp", "input.png", "output.png", "--mount", mount, "--view", view};
}

std::vector<std::string> DewarpVcam(const std::vector<std::string>& options) {
    std::vector<std::string> arguments = DewarpView("ceiling", "vcam");
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

std::vector<std::string> DewarpWall(const std::vector<std::string>& options) {
    std::vector<std::string> arguments = DewarpView("wall", "full");
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

/// A JPEG picture may be wider, but FFmpeg writes only 65500 columns.
std::vector<std::string> DewarpTooWideForJpeg() {
    std::vector<std::string> arguments = DewarpFiles("input.png", "output.jpg");
    arguments.insert(arguments.end(), {"--size", "65528x8"});
    return arguments;
}

std::vector<std::string> DewarpOddVideo() {
    std::vector<std::string> arguments = DewarpFiles("input.png", "output.mp4");
    arguments.insert(arguments.end(), {"--size", "64x33"});
    return arguments;
}

const std::vector<ErrorCase> kErrorCases = {
    {"NoCommand",
     {},
     kUsage,
     "aim, dewarp, info, mesh, outline, scene, sheet, snapshot, sweep or help"},
    {"UnknownCommand",
     {"flatten"},
     kUsage,
     "there is no command 'flatten'; the commands are aim, dewarp, info, mesh, outline, scene, "
     "sheet, snapshot, sweep and help\n"},
    {"UnknownCommandWithFiles",
     {"dewrap", "input.png", "o.png", "--view", "full"},
     kUsage,
     "there is no command 'dewrap'; the commands are aim, dewarp, "},
    {"UnknownCommandBeforeACommand",
     {"flatten", "dewarp", "input.png"},
     kUsage,
     "there is no command 'flatten'; "},
    {"UnknownOptionWithoutACommand", {"--speed", "3"}, kUsage, "not expected: --speed 3\n"},
    {"UnknownLetterWithoutAView",
     {"dewarp", "-o", "o.png"},
     kUsage,
     "not expected by dewarp: -o; -o goes with sheet\n"},
    {"UnknownOptionWithoutAMount",
     {"dewarp", "input.png", "o.png", "--mounts=wall", "--view", "full"},
     kUsage,
     "not expected by dewarp: --mounts=wall\n"},
    {"UnknownOptionWhoseValueIsTakenForTheOutput",
     {"dewarp", "room.png", "--mount", "ceiling", "--view", "full", "--bits", "24"},
     kUsage,
     "not expected by dewarp: --bits\n"},
    {"MisspeltOptionWhoseValueIsTakenForTheOutput",
     {"scene", "--mont", "wall", "s.png"},
     kUsage,
     "not expected by scene: --mont"},
    {"OptionTwice",
     {"dewarp", "in.png", "o.png", "--mount", "wall", "--view", "vcam", "--pan", "1", "--pan", "2"},
     kUsage,
     "--pan is given more than once\n"},
    {"OptionWithoutItsValue",
     {"dewarp", "in.png", "o.png", "--mount", "wall", "--view"},
     kUsage,
     "--view needs a value\n"},
    {"UnknownOptionWithoutAnInput", {"info", "--speed"}, kUsage, "not expected by info: --speed\n"},
    {"UnknownOption", Dewarp({"--speed", "3"}), kUsage, "--speed"},
    {"NoInput", {"dewarp"}, kUsage, "INPUT"},
    {"NoOutput",
     {"dewarp", "input.png", "--mount", "table", "--view", "full"},
     kUsage,
     "OUTPUT is required; only --explain goes without it"},
    {"WordTooManyWithoutAView",
     {"dewarp", "input.png", "o.png", "full", "--mount", "table"},
     kUsage,
     "--view is required"},
    {"NoMount", {"dewarp", "input.png", "output.png", "--view", "full"}, kUsage, "--mount"},
    {"NoView", {"dewarp", "input.png", "output.png", "--mount", "table"}, kUsage, "--view"},
    {"UnknownMount", DewarpView("floor", "full"), kUsage, "floor"},
    {"MountByNumber", DewarpView("1", "full"), kUsage,
     "--mount: there is no mount '1': wall, ceiling or table\n"},
    {"UnknownView", DewarpView("table", "half"), kUsage, "half"},
    {"WallDual", DewarpView("wall", "dual"), kUsage, "a wall camera has no dual panorama"},
    {"TiltOfAWallPanorama", DewarpWall({"--tilt", "10"}), kUsage,
     "only --view vcam takes --tilt\n"},
    {"InnerRadiusOfAWallPanorama", DewarpWall({"--inner-radius", "0"}), kUsage,
     "--inner-radius goes with panoramas of ceiling and table cameras alone"},
    {"InnerRadiusOfAVirtualCamera", DewarpVcam({"--inner-radius", "0.3"}), kUsage,
     "--inner-radius goes with"},
    {"WallViewAngleOfACeilingPanorama", Dewarp({"--wall-view-angle", "45"}), kUsage,
     "--wall-view-angle goes with the panorama of a wall camera alone"},
    {"WallViewAngleOfAWallsVirtualCamera",
     {"dewarp", "input.png", "o.png", "--mount", "wall", "--view", "vcam", "--wall-view-angle",
      "60"},
     kUsage,
     "--wall-view-angle goes with"},
    {"WallPanoramaWithoutLens", DewarpWall({"--radius-y", "0"}), kFailure,
     "lens image is too small"},
    {"WallPanoramaNoMultipleOfEight", DewarpWall({"--size", "100x50"}), kUsage, "multiple of 8"},
    {"DualPanoramaOfAStillAsVideo",
     {"dewarp", "input.png", "o.mp4", "--mount", "table", "--view", "dual"},
     kFailure,
     "input.png is a still picture"},
    {"ExtraArgument", Dewarp({"more.png"}), kUsage, "more.png"},
    {"OptionWithoutValue", Dewarp({"--pan"}), kUsage, "--pan"},
    {"PanNan", Dewarp({"--pan", "nan"}), kUsage, "finite"},
    {"PanInfinite", Dewarp({"--pan", "inf"}), kUsage, "finite"},
    {"PanMinusInfinite", Dewarp({"--pan", "-inf"}), kUsage, "finite"},
    {"PanBeyondFloat", Dewarp({"--pan", "1e39"}), kUsage, "finite"},
    {"PanBeyondDouble", Dewarp({"--pan", "1e999"}), kUsage, "finite"},
    {"PanNoNumber", Dewarp({"--pan", "12x"}), kUsage, "12x"},
    {"PanOfTwoSigns", Dewarp({"--pan", "+-12"}), kUsage, "+-12"},
    {"PanOfTwoPluses", Dewarp({"--pan", "++12"}), kUsage, "++12"},
    {"PanOfASign", Dewarp({"--pan", "+"}), kUsage, "finite"},
    {"PanPlusInfinite", Dewarp({"--pan", "+inf"}), kUsage, "finite"},
    {"TiltNan", Dewarp({"--tilt", "NaN"}), kUsage, "finite"},
    {"ZoomTooSmall", Dewarp({"--zoom", "0.99"}), kUsage, "from 1 to 10"},
    {"ZoomTooLarge", Dewarp({"--zoom", "10.1"}), kUsage, "from 1 to 10"},
    {"ZoomNan", Dewarp({"--zoom", "nan"}), kUsage, "from 1 to 10"},
    {"RadiusXTooLarge", Dewarp({"--radius-x", "1.01"}), kUsage, "from 0 to 1"},
    {"RadiusYNegative", Dewarp({"--radius-y", "-0.1"}), kUsage, "from 0 to 1"},
    {"RadiusYNan", Dewarp({"--radius-y", "nan"}), kUsage, "from 0 to 1"},
    {"WallViewAngleTooSmall", Dewarp({"--wall-view-angle", "9"}), kUsage, "from 10 to 90"},
    {"WallViewAngleTooLarge", Dewarp({"--wall-view-angle", "91"}), kUsage, "from 10 to 90"},
    {"InnerRadiusTooLarge", Dewarp({"--inner-radius", "0.81"}), kUsage, "from 0 to 0.8"},
    {"InnerRadiusInfinite", Dewarp({"--inner-radius", "inf"}), kUsage, "from 0 to 0.8"},
    {"TiltOfAPanorama", Dewarp({"--tilt", "30"}), kUsage, "only --view vcam takes --tilt\n"},
    {"ZoomOfAPanorama", Dewarp({"--zoom", "3"}), kUsage, "only --view vcam takes --zoom\n"},
    {"AimOfAPanorama", Dewarp({"--aim", "0.5,0.5"}), kUsage, "only --view vcam takes --aim\n"},
    {"FieldOfViewOfAPanorama", Dewarp({"--fov", "90"}), kUsage, "only --view vcam takes --fov\n"},
    {"FieldOfViewAndTiltOfAPanorama", Dewarp({"--fov", "90", "--tilt", "30"}), kUsage,
     "only --view vcam takes --tilt and --fov\n"},
    {"AimWithPan", DewarpVcam({"--aim", "0.5,0.5", "--pan", "3"}), kUsage, "excludes"},
    {"AimWithTilt", DewarpVcam({"--tilt", "3", "--aim", "0.5,0.5"}), kUsage, "--aim"},
    {"AimOfOneNumber", DewarpVcam({"--aim", "0.5"}), kUsage,
     "is not two numbers with a comma between them"},
    {"AimOfThreeNumbers", DewarpVcam({"--aim", "0.5,0.5,0.5"}), kUsage,
     "is not two numbers with a comma between them"},
    {"AimNan", DewarpVcam({"--aim", "0.5,nan"}), kUsage,
     "is not two numbers with a comma between them"},
    {"AimOfWords", DewarpVcam({"--aim", "left,top"}), kUsage,
     "is not two numbers with a comma between them"},
    {"AimBesideTheFrame", DewarpVcam({"--aim", "0.5,1.01"}), kUsage, "from 0 to 1"},
    {"AimBeforeTheFrame", DewarpVcam({"--aim", "-0.01,0.5"}), kUsage, "from 0 to 1"},
    {"AimWithoutLens", DewarpVcam({"--aim", "0.5,0.5", "--radius-x", "0", "--size", "64x64"}),
     kFailure, "too small to look at"},
    {"VirtualCameraWithoutLens", DewarpVcam({"--radius-y", "0"}), kFailure,
     "lens image is too small"},
    {"FieldOfViewWithZoom", DewarpVcam({"--fov", "90", "--zoom", "2"}), kUsage, "--zoom"},
    {"FieldOfViewTooSmall", DewarpVcam({"--fov", "9.9"}), kUsage, "from 10 to 180"},
    {"FieldOfViewTooLarge", DewarpVcam({"--fov", "181"}), kUsage, "from 10 to 180"},
    {"FieldOfViewNan", DewarpVcam({"--fov", "nan"}), kUsage, "from 10 to 180"},
    {"UnknownFormat", Dewarp({"--format", "rgb16"}), kUsage,
     "--format: there is no format 'rgb16': rgb24 or rgb32\n"},
    {"WidthNoMultipleOfEight", Dewarp({"--size", "100x50"}), kUsage, "multiple of 8"},
    {"SizeWithoutHeight", Dewarp({"--size", "104"}), kUsage, "104"},
    {"SizeOfNothing", Dewarp({"--size", "0x50"}), kUsage, "0x50"},
    {"SizeNegative", Dewarp({"--size", "8x-8"}), kUsage, "8x-8"},
    {"SizeOverflows", Dewarp({"--size", "4294967304x8"}), kUsage, "4294967304x8"},
    {"SizeTooLarge", Dewarp({"--size", "65528x65535"}), kUsage, "at most 134217728 pixels"},
    {"SizeJustTooLarge", Dewarp({"--size", "16384x8193"}), kUsage, "at most 134217728 pixels"},
    {"SizeOfTheLimit",
     {"dewarp", "none.png", "o.png", "--mount", "table", "--view", "full", "--size", "16384x8192"},
     kFailure,
     "none.png"},
    {"LensWithoutExtent", Dewarp({"--radius-x", "0", "--radius-y", "0"}), kFailure,
     "lens image is too small"},
    {"LensWithoutWidth", Dewarp({"--radius-x", "0"}), kFailure, "lens image is too small"},
    {"LensWithoutHeight", Dewarp({"--radius-y", "0"}), kFailure, "lens image is too small"},
    {"JpegOfTooWide", DewarpTooWideForJpeg(), kFailure,
     "cannot write output.jpg: the encoder refuses a picture of 65528x8"},
    {"UnknownEnding", DewarpFiles("input.png", "output.bmp"), kUsage, ".png, .jpg, .jpeg or .mp4"},
    {"NoEnding", DewarpFiles("input.png", "output"), kUsage, ".png, .jpg, .jpeg or .mp4"},
    {"NothingButAnEnding", DewarpFiles("input.png", ".mp4"), kUsage, ".png, .jpg, .jpeg or .mp4"},
    {"SceneAsVideo", {"scene", "output.mp4"}, kUsage, ".png, .jpg or .jpeg"},
    {"StillAsVideo", DewarpFiles("input.png", "output.mp4"), kFailure,
     "input.png is a still picture"},
    {"VideoOfOddHeight", DewarpOddVideo(), kUsage, "height of a video must be even"},
    {"VideoIsInput", DewarpFiles("link.mp4", "link.mp4"), kUsage, "replace the input link.mp4"},
    {"OutputIsInput", DewarpFiles("input.png", "input.png"), kUsage, "replace the input input.png"},
    {"OutputIsInputElsewhere", DewarpFiles("input.png", "folder.png/../input.png"), kUsage,
     "replace the input input.png"},
    {"OutputIsLinkToInput", DewarpFiles("input.png", "link.png"), kUsage,
     "replace the input input.png"},
    {"OutputIsTargetOfInput", DewarpFiles("link.png", "input.png"), kUsage,
     "replace the input link.png"},
    {"OutputIsEndlessLink", DewarpFiles("input.png", "endless.png"), kFailure, "endless.png"},
    {"InputWithoutName", DewarpFiles("", "output.png"), kUsage, "the name of the input is empty"},
    {"OutputWithoutName", DewarpFiles("input.png", ""), kUsage, "the name of the output is empty"},
    {"InfoOfNoName", {"info", ""}, kUsage, "the name of the input is empty"},
    {"SceneWithoutName", {"scene", ""}, kUsage, "the name of the output is empty"},
    {"SheetOfNoName", Sheet({"input.png", ""}), kUsage, "the name of the input is empty"},
    {"SheetWithoutName",
     {"sheet", "input.png", "-o", ""},
     kUsage,
     "the name of the output is empty"},
    {"MissingInput", DewarpFiles("missing.png", "output.png"), kFailure, "missing.png"},
    {"DirectoryAsInput", DewarpFiles("folder.png", "output.png"), kFailure, "directory"},
    {"TextAsInput", DewarpFiles("text.png", "output.png"), kFailure,
     "text.png is not a picture or video"},
    {"EmptyInput", DewarpFiles("empty.png", "output.png"), kFailure,
     "empty.png is not a picture or video"},
    {"CutOffPng", DewarpFiles("cut.png", "output.png"), kFailure, "cut.png"},
    {"CutOffJpeg", DewarpFiles("cut.jpg", "output.png"), kFailure, "cut.jpg"},
    {"MissingDirectory", DewarpFiles("input.png", "none/output.png"), kFailure, "none/output"},
    {"FileAsDirectory", DewarpFiles("input.png", "text.png/o.png"), kFailure, "text.png/o.png"},
    {"DirectoryAsOutput", DewarpFiles("input.png", "folder.png"), kFailure, "folder.png"},
    {"LineBreakInName", DewarpFiles("mis\nsing.png", "output.png"), kFailure, "sing.png"},
    {"InfoOfMissing", {"info", "missing.png"}, kFailure, "missing.png"},
    {"InfoOfImpossibleLens",
     {"info", "input.png", "--inner-radius", "0.81"},
     kUsage,
     "from 0 to 0.8"},
    {"InfoOfTwo", {"info", "input.png", "text.png"}, kUsage, "text.png"},
    {"SceneWithoutOutput", {"scene"}, kUsage, "OUTPUT"},
    {"SceneOfUnknownMount", {"scene", "output.png", "--mount", "sky"}, kUsage, "sky"},
    {"SceneWithoutLens", {"scene", "output.png", "--radius-x", "0"}, kUsage, "--radius-x"},
    {"SceneTooLarge",
     {"scene", "output.png", "--size", "65535x65535"},
     kUsage,
     "at most 134217728 pixels"},
    {"SceneInNoDirectory",
     {"scene", "none/output.png", "--size", "8x8"},
     kFailure,
     "none/output.png"},
    {"SheetOfNothing", Sheet({}), kUsage, "INPUT"},
    {"SheetWithoutOutput", {"sheet", "input.png", "link.png"}, kUsage, "--output"},
    {"SheetOfItsOutput",
     {"sheet", "text.png", "input.png", "-o", "./input.png"},
     kUsage,
     "replace the input input.png"},
    {"SheetOfMissing", Sheet({"input.png", "missing.png"}), kFailure, "missing.png"},
    {"SheetWithoutColumns", Sheet({"input.png", "--columns", "0"}), kUsage, "--columns"},
    {"SheetOfHalfAColumn", Sheet({"input.png", "--columns", "1.5"}), kUsage,
     "'1.5' is not a whole number from 1 to 1000"},
    {"SheetWithARowWithoutColumns", Sheet({"input.png", "--columns", "2,0"}), kUsage,
     "'0' is not a whole number from 1 to 1000"},
    {"SheetWithAnEmptyNumberOfColumns", Sheet({"input.png", "--columns", "2,"}), kUsage,
     "'' is not a whole number"},
    {"SheetWithALaterRowTooNarrow", Sheet({"input.png", "--columns", "1,90"}), kUsage,
     "too narrow for 90 columns"},
    {"SheetOfNoQuality", Sheet({"input.png", "--quality", "0"}), kUsage, "from 1 to 100"},
    {"SheetOfTooMuchQuality", Sheet({"input.png", "--quality", "101"}), kUsage, "from 1 to 100"},
    {"SheetOfQualityAsPng", Sheet({"input.png", "--quality", "50"}), kUsage,
     "--quality goes with a JPEG file"},
    {"SheetTooNarrow", Sheet({"input.png", "--columns", "90"}), kUsage, "too narrow"},
    {"SheetWithCaptionTooMany", Sheet({"input.png", "--captions", "a,b"}), kUsage, "captions"},
};

}  // namespace

INSTANTIATE_TEST_SUITE_P(Tool, ToolError, testing::ValuesIn(kErrorCases),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(ToolError, AFullDiskLeavesTheOlderFileAlone) {
    const TemporaryFolder folder;
    FillFolder(folder);
    WriteContent(folder.File("output.png"), "older");
    const std::set<std::string> before = folder.Names();
    ToolConditions conditions;
    conditions.fileBytes = 600;
    const ToolRun run =
        RunTool(folder, {"scene", "output.png", "--mount", "table", "--size", "64x64"}, conditions);
    ExpectOneSentence(run, kFailure, "output.png");
    EXPECT_EQ(ContentOf(folder.File("output.png")), "older");
    EXPECT_EQ(folder.Names(), before);
}

TEST(ToolError, AFileThatMustNotBeWrittenStays) {
    const TemporaryFolder folder;
    WriteContent(folder.File("output.png"), "older");
    std::filesystem::permissions(folder.File("output.png"), std::filesystem::perms::owner_read);
    ToolConditions conditions;
    conditions.bindsSuperuser = true;
    const ToolRun run = RunTool(folder, {"scene", "output.png", "--size", "8x8"}, conditions);
    ExpectOneSentence(run, kFailure, "cannot write output.png: Permission denied");
    EXPECT_EQ(ContentOf(folder.File("output.png")), "older");
    EXPECT_EQ(folder.Names(), std::set<std::string>{"output.png"});
}
