#include <gtest/gtest.h>

#include <algorithm>

#include "Picture.h"
#include "ToolRun.h"

namespace {

constexpr int kFailure = 1;
constexpr int kUsage = 2;

struct ErrorCase {
    const char* name;
    std::vector<std::string> arguments;
    int status;
    /// Words that tell the user what is wrong.
    const char* words;
};

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

const std::vector<ErrorCase> kErrorCases = {
    {"NoCommand", {}, kUsage, "dewarp, info, scene or sheet"},
    {"UnknownCommand", {"flatten"}, kUsage, "flatten"},
    {"UnknownOption", Dewarp({"--speed", "3"}), kUsage, "--speed"},
    {"NoInput", {"dewarp"}, kUsage, "INPUT"},
    {"NoOutput", {"dewarp", "input.png"}, kUsage, "OUTPUT"},
    {"NoMount", {"dewarp", "input.png", "output.png", "--view", "full"}, kUsage, "--mount"},
    {"NoView", {"dewarp", "input.png", "output.png", "--mount", "table"}, kUsage, "--view"},
    {"UnknownMount", DewarpView("floor", "full"), kUsage, "floor"},
    {"MountByNumber", DewarpView("1", "full"), kUsage, "--mount"},
    {"UnknownView", DewarpView("table", "half"), kUsage, "half"},
    {"WallDual", DewarpView("wall", "dual"), kUsage, "no dual panorama"},
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
    {"UnknownFormat", Dewarp({"--format", "rgb16"}), kUsage, "rgb16"},
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
    {"LensWithoutExtent", Dewarp({"--radius-x", "0", "--radius-y", "0"}), kFailure, "lens"},
    {"UnknownEnding", DewarpFiles("input.png", "output.bmp"), kUsage, ".png, .jpg or .jpeg"},
    {"NoEnding", DewarpFiles("input.png", "output"), kUsage, ".png, .jpg or .jpeg"},
    {"NothingButAnEnding", DewarpFiles("input.png", ".png"), kUsage, ".png, .jpg or .jpeg"},
    {"OutputIsInput", DewarpFiles("input.png", "input.png"), kUsage, "replace the input input.png"},
    {"OutputIsInputElsewhere", DewarpFiles("input.png", "folder.png/../input.png"), kUsage,
     "replace the input input.png"},
    {"OutputIsLinkToInput", DewarpFiles("input.png", "link.png"), kUsage,
     "replace the input input.png"},
    {"OutputIsTargetOfInput", DewarpFiles("link.png", "input.png"), kUsage,
     "replace the input link.png"},
    {"OutputIsEndlessLink", DewarpFiles("input.png", "endless.png"), kFailure, "endless.png"},
    {"MissingInput", DewarpFiles("missing.png", "output.png"), kFailure, "missing.png"},
    {"DirectoryAsInput", DewarpFiles("folder.png", "output.png"), kFailure, "directory"},
    {"TextAsInput", DewarpFiles("text.png", "output.png"), kFailure, "text.png"},
    {"EmptyInput", DewarpFiles("empty.png", "output.png"), kFailure, "empty.png"},
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
    {"SheetTooNarrow", Sheet({"input.png", "--columns", "90"}), kUsage, "too narrow"},
    {"SheetWithCaptionTooMany", Sheet({"input.png", "--captions", "a,b"}), kUsage, "captions"},
};

/// Makes what the cases refer to: a good picture, and everything that is none.
void FillFolder(const TemporaryFolder& folder) {
    const KivFisheyeTools::Picture picture(64, 64, 3);
    KivFisheyeTools::WritePicture(folder.File("input.png"), picture);
    KivFisheyeTools::WritePicture(folder.File("cut.jpg"), picture);
    const std::string png = ContentOf(folder.File("input.png"));
    const std::string jpeg = ContentOf(folder.File("cut.jpg"));
    WriteContent(folder.File("cut.png"), png.substr(0, png.size() / 2));
    WriteContent(folder.File("cut.jpg"), jpeg.substr(0, jpeg.size() - 20));
    WriteContent(folder.File("empty.png"), "");
    WriteContent(folder.File("text.png"), "This is no picture.\n");
    std::filesystem::create_directory(folder.File("folder.png"));
    std::filesystem::create_symlink("input.png", folder.File("link.png"));
    std::filesystem::create_symlink("endless.png", folder.File("endless.png"));
}

void ExpectOneSentence(const ToolRun& run, const std::string& words) {
    EXPECT_EQ(run.errors.rfind("kivfisheye: ", 0), 0U) << run.errors;
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    EXPECT_EQ(run.errors.back(), '\n') << run.errors;
    EXPECT_NE(run.errors.find(words), std::string::npos) << run.errors;
}

}  // namespace

class ToolError : public testing::TestWithParam<ErrorCase> {};

TEST_P(ToolError, IsOneSentenceAndLeavesNothing) {
    const TemporaryFolder folder;
    FillFolder(folder);
    const std::set<std::string> before = folder.Names();
    const std::string input = ContentOf(folder.File("input.png"));
    const ToolRun run = RunTool(folder, GetParam().arguments);
    EXPECT_EQ(run.status, GetParam().status);
    EXPECT_EQ(run.output, "");
    ExpectOneSentence(run, GetParam().words);
    EXPECT_EQ(folder.Names(), before);
    EXPECT_EQ(ContentOf(folder.File("input.png")), input);
    EXPECT_TRUE(std::filesystem::is_empty(folder.File("folder.png")));
}

INSTANTIATE_TEST_SUITE_P(Tool, ToolError, testing::ValuesIn(kErrorCases),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(ToolError, ViewsWithoutASceneAreSaidToComeLater) {
    const TemporaryFolder folder;
    FillFolder(folder);
    const std::set<std::string> before = folder.Names();
    for (const auto& [mount, view] :
         {std::pair("wall", "vcam"), std::pair("wall", "full"), std::pair("ceiling", "vcam"),
          std::pair("ceiling", "dual"), std::pair("table", "vcam"), std::pair("table", "dual")}) {
        const ToolRun run = RunTool(folder, DewarpView(mount, view));
        EXPECT_EQ(run.status, kFailure) << mount << ' ' << view;
        ExpectOneSentence(run, "this version cannot show");
        EXPECT_EQ(folder.Names(), before);
    }
}

TEST(ToolError, AFullDiskLeavesTheOlderFileAlone) {
    const TemporaryFolder folder;
    FillFolder(folder);
    WriteContent(folder.File("output.png"), "older");
    const std::set<std::string> before = folder.Names();
    ToolConditions conditions;
    conditions.fileBytes = 600;
    const ToolRun run =
        RunTool(folder, {"scene", "output.png", "--mount", "table", "--size", "64x64"}, conditions);
    EXPECT_EQ(run.status, kFailure);
    ExpectOneSentence(run, "output.png");
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
    EXPECT_EQ(run.status, kFailure);
    ExpectOneSentence(run, "cannot write output.png: Permission denied");
    EXPECT_EQ(ContentOf(folder.File("output.png")), "older");
    EXPECT_EQ(folder.Names(), std::set<std::string>{"output.png"});
}
