#include <gtest/gtest.h>

#include "GoodRun.h"
#include "HelpText.h"
#include "ToolError.h"
#include "VideoFile.h"

namespace {

const std::vector<std::string> kCommands = {"aim",   "dewarp", "info",     "mesh",  "outline",
                                            "scene", "sheet",  "snapshot", "sweep", "help"};

std::string HelpOf(const TemporaryFolder& folder, const std::string& command) {
    return OutputOfGoodRun(folder, {"help", command});
}

/// Makes the files that examples read, small enough to be quick.
void MakeInputs(const TemporaryFolder& folder) {
    OutputOfGoodRun(folder, {"scene", "room.png", "--size", "64x64"});
    OutputOfGoodRun(folder, {"scene", "hall.png", "--size", "64x64", "--mount", "wall"});
    VideoFile::Write(folder.File("yours.mkv"), {}, VideoFile::WaveFrames(64, 64, 3));
}

}  // namespace

TEST(Help, IsWhatTheOptionPrints) {
    const TemporaryFolder folder;
    EXPECT_EQ(OutputOfGoodRun(folder, {"help"}), OutputOfGoodRun(folder, {"--help"}));
    for (const std::string& command : kCommands) {
        EXPECT_EQ(HelpOf(folder, command), OutputOfGoodRun(folder, {command, "--help"}));
    }
}

TEST(Help, NamesEveryCommand) {
    const TemporaryFolder folder;
    EXPECT_EQ(CommandsInHelp(folder), kCommands);
}

TEST(Help, NamesEveryOption) {
    const TemporaryFolder folder;
    EXPECT_EQ(
        OptionsInHelp(HelpOf(folder, "dewarp")),
        (std::vector<std::string>{"-h", "--help", "--view", "--pan", "--tilt", "--aim", "--zoom",
                                  "--fov", "--mount", "--size", "--radius-x", "--radius-y",
                                  "--wall-view-angle", "--inner-radius", "--format", "--explain"}));
    EXPECT_EQ(OptionsInHelp(HelpOf(folder, "sweep")),
              (std::vector<std::string>{"-h", "--help", "--view", "--from", "--to", "--frames",
                                        "--fps", "--mount", "--size", "--radius-x", "--radius-y",
                                        "--wall-view-angle", "--inner-radius", "--format"}));
}

TEST(Help, KnowsNoOtherCommand) {
    const TemporaryFolder folder;
    ExpectOneSentence(RunTool(folder, {"help", "flatten"}), kUsage,
                      "there is no command 'flatten': aim, dewarp, info, mesh, outline, scene, "
                      "sheet, snapshot, sweep or help\n");
    ExpectOneSentence(RunTool(folder, {"help", ""}), kUsage, "there is no command ''");
    ExpectOneSentence(RunTool(folder, {"help", "aim", "dewarp"}), kUsage,
                      "not expected by help: dewarp\n");
}

TEST(Help, BreaksItsLines) {
    const TemporaryFolder folder;
    for (const std::string& command : kCommands) {
        for (const std::string& line : Lines(HelpOf(folder, command))) {
            const bool isExample = line.rfind("    kivfisheye ", 0) == 0;
            const bool isUsage = line.rfind("Usage:", 0) == 0;
            EXPECT_TRUE(isExample || isUsage || line.size() <= 90) << line;
        }
    }
}

TEST(Help, EndsWithExamples) {
    const TemporaryFolder folder;
    for (const std::string& command : kCommands) {
        const std::string help = HelpOf(folder, command);
        const std::vector<std::string> examples = ExamplesInHelp(help);
        ASSERT_GE(examples.size(), 1U) << help;
        EXPECT_LE(examples.size(), 4U) << help;
        EXPECT_EQ(Lines(help).back(), "    " + examples.back());
    }
}

TEST(Help, HasExamplesThatWork) {
    for (const std::string& command : kCommands) {
        const TemporaryFolder folder;
        MakeInputs(folder);
        for (const std::string& example : ExamplesInHelp(HelpOf(folder, command))) {
            std::vector<std::string> words = Words(example);
            EXPECT_EQ(words[0], "kivfisheye");
            EXPECT_EQ(words[1], command);
            words.erase(words.begin());
            SCOPED_TRACE(example);
            OutputOfGoodRun(folder, words);
        }
    }
}

TEST(Help, OfTheProgramHasExamplesThatWork) {
    const TemporaryFolder folder;
    const std::vector<std::string> examples = ExamplesInHelp(OutputOfGoodRun(folder, {"help"}));
    EXPECT_EQ(examples.size(), 4U);
    for (const std::string& example : examples) {
        std::vector<std::string> words = Words(example);
        words.erase(words.begin());
        SCOPED_TRACE(example);
        OutputOfGoodRun(folder, words);
    }
}

TEST(Help, OfTheProgramEndsWithTheExitStatuses) {
    const TemporaryFolder folder;
    const std::string help = OutputOfGoodRun(folder, {"help"});
    const std::string statuses = OneLine(help.substr(help.find("\nExit status:\n")));
    EXPECT_EQ(statuses.rfind("Exit status: 0 The work is done. 1 The work failed. No output was "
                             "written;",
                             0),
              0U)
        << statuses;
    EXPECT_NE(statuses.find(" 2 The command line is wrong,"), std::string::npos) << statuses;
    EXPECT_NE(statuses.find(" 128+n Signal n ended the work."), std::string::npos) << statuses;
}

TEST(Help, SaysWhatAnOptionActsOn) {
    const TemporaryFolder folder;
    const std::string help = OutputOfGoodRun(folder, {"help", "dewarp"});
    for (const auto& [option, words] :
         {std::pair("--tilt", "Virtual camera:"), std::pair("--zoom", "Virtual camera:"),
          std::pair("--aim", "Virtual camera:"), std::pair("--fov", "Virtual camera:"),
          std::pair("--pan", "ceiling 0 looks to the picture's top and runs clockwise"),
          std::pair("--pan", "table 0 looks to its bottom and runs anticlockwise"),
          std::pair("--pan", "wall has the right positive"),
          std::pair("--tilt", "Positive for a ceiling, negative for a table"),
          std::pair("--wall-view-angle", "Wall panoramas alone:"),
          std::pair("--wall-view-angle", "need a height of width * angle / 90"),
          std::pair("--size", "its height even for a video or a dual panorama"),
          std::pair("--inner-radius", "Ceiling and table panoramas alone:"),
          std::pair("--radius-x", "0.5 * height / width"),
          std::pair("--radius-y", "0.5 * width / height"),
          std::pair("--aim",
                    "towards its corners it is up to 4 degrees off halfway to the rim, and 25 at "
                    "the rim"),
          std::pair("--pan", "clockwise seen from above"),
          std::pair("--pan", "that of a wall camera does not turn"),
          std::pair("--explain", "the centre of 1024 pixels is 512"),
          std::pair("--view", "which wall cameras have not")}) {
        EXPECT_NE(HelpOn(option, help).find(words), std::string::npos) << option << " in " << help;
    }
}

TEST(Help, SaysWhereASweepOfADualPanoramaJumps) {
    const TemporaryFolder folder;
    const std::string help = OutputOfGoodRun(folder, {"help", "sweep"});
    EXPECT_NE(HelpOn("--from", help).find("A dual panorama at exactly 180 is that at 0"),
              std::string::npos)
        << help;
}

TEST(Help, OffersTheMeshOfPanoramasAlone) {
    const TemporaryFolder folder;
    const std::string help = HelpOf(folder, "mesh");
    EXPECT_NE(help.find("--view VIEW:{dual,full}"), std::string::npos) << help;
    EXPECT_EQ(help.find("vcam"), std::string::npos) << help;
    EXPECT_EQ(OneLine(help).find("virtual camera"), std::string::npos) << help;
}

TEST(Help, TellsWhatHasASurprise) {
    const TemporaryFolder folder;
    EXPECT_NE(OneLine(HelpOf(folder, "aim")).find("near the rim need a small one"),
              std::string::npos);
    EXPECT_NE(OneLine(HelpOf(folder, "outline")).find("an inner radius of 0 has no inner outline"),
              std::string::npos);
}
