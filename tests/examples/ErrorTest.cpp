#include <gtest/gtest.h>

#include "ExampleFolder.h"
#include "LiveExample.h"
#include "TestPicture.h"

namespace {

struct Program {
    const char* name;
    /// Good arguments. "IN" stands for the picture, "OUT" for a new file, "LIB" for the library.
    std::vector<std::string> arguments;
};

void PrintTo(const Program& program, std::ostream* out) {
    *out << program.name;
}

const std::vector<Program> kPrograms = {
    {"convert-frame", {"table", "full", "IN", "OUT"}},
    {"live-ptz", {"table", "IN"}},
    {"click-to-aim", {"table", "IN", "0.5", "0.25", "OUT"}},
    {"draw-outlines", {"table", "full", "IN", "OUT"}},
    {"two-views", {"table", "IN", "OUT", "OUT"}},
    {"load-at-run-time", {"LIB", "table", "IN", "OUT"}},
#ifdef KIVFISHEYE_TESTS_DRAW
    {"gpu-panorama", {"table", "full", "IN", "OUT"}},
#endif
};

/// Every program, with one thing wrong at a time.
class ExampleErrors : public testing::TestWithParam<Program> {
protected:
    /// Runs the program with the places of words exchanged for what stands there.
    ProgramRun RunWith(const std::string& word, const std::string& replacement) const {
        std::vector<std::string> arguments;
        for (std::string argument : GetParam().arguments) {
            argument = argument == word ? replacement : argument;
            arguments.push_back(argument == "IN"    ? folder.Fisheye()
                                : argument == "OUT" ? folder.File("out.png")
                                : argument == "LIB" ? KIVFISHEYE_LIBRARY
                                                    : argument);
        }
        return RunProgram(PathOfExample(GetParam().name), arguments);
    }

    bool Takes(const std::string& word) const {
        const auto& words = GetParam().arguments;
        return std::find(words.begin(), words.end(), word) != words.end();
    }

    void ExpectError(const ProgramRun& run, int status, const std::string& words) const {
        ExpectOneSentence(GetParam().name, run, status, words);
        EXPECT_FALSE(std::filesystem::exists(folder.File("out.png")));
    }

    const ExampleFolder folder{Slopes(64, 64)};
};

TEST_P(ExampleErrors, AreWrongNumbersOfArguments) {
    const std::string path = PathOfExample(GetParam().name);
    ExpectError(RunProgram(path, {}), 2, "usage: " + std::string(GetParam().name) + ' ');
    ExpectError(RunProgram(path, {"table"}), 2, "usage: ");
    ExpectError(RunProgram(path, std::vector<std::string>(9, "1")), 2, "usage: ");
}

TEST_P(ExampleErrors, AreUnknownMounts) {
    ExpectError(RunWith("table", "roof"), 2, "there is no mount named 'roof'; usage: ");
}

TEST_P(ExampleErrors, AreUnknownViewsAndThoseThatAMountDoesNotHave) {
    if (Takes("full")) {
        ExpectError(RunWith("full", "half"), 2, "there is no view named 'half'; usage: ");
        ExpectError(RunProgram(PathOfExample(GetParam().name),
                               {"wall", "dual", folder.Fisheye(), folder.File("out.png")}),
                    2, "a wall camera has no dual panorama; usage: ");
    } else {
        EXPECT_FALSE(Takes("dual") || Takes("vcam"));
    }
}

TEST_P(ExampleErrors, ArePicturesThatCannotBeRead) {
    ExpectError(RunWith("IN", folder.File("absent.png")), 1, "absent.png");
    WriteContent(folder.File("text.png"), "This is no picture.\n");
    ExpectError(RunWith("IN", folder.File("text.png")), 1, "text.png");
    const std::string content = ContentOf(folder.Fisheye());
    WriteContent(folder.File("cut.png"), content.substr(0, content.size() / 2));
    ExpectError(RunWith("IN", folder.File("cut.png")), 1, "cut.png");
}

TEST_P(ExampleErrors, AreFilesThatCannotBeWritten) {
    if (!Takes("OUT")) {
        EXPECT_STREQ(GetParam().name, "live-ptz");
        return;
    }
    ExpectError(RunWith("OUT", folder.File("absent/out.png")), 1, "absent/out.png");
    ExpectError(RunWith("OUT", "/dev/full"), 1, "cannot write /dev/full: ");
    EXPECT_TRUE(std::filesystem::exists("/dev/full"));
}

TEST_P(ExampleErrors, DoNotIncludeAskingForHelp) {
    const ProgramRun run = RunProgram(PathOfExample(GetParam().name), {"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output.rfind("usage: " + std::string(GetParam().name) + ' ', 0), 0U);
    EXPECT_EQ(run.errors, "");
}

INSTANTIATE_TEST_SUITE_P(Programs, ExampleErrors, testing::ValuesIn(kPrograms),
                         [](const auto& tested) {
                             std::string name = tested.param.name;
                             name.erase(std::remove(name.begin(), name.end(), '-'), name.end());
                             return name;
                         });

TEST(ExampleNumbers, AreWholeWordsAndFinite) {
    const ExampleFolder folder(Slopes(64, 64));
    for (const char* word : {"", "east", "1x", " 1", "nan", "inf", "1e99"}) {
        for (const char* name : {"convert-frame", "draw-outlines"}) {
            const ProgramRun run = RunProgram(
                PathOfExample(name),
                {"table", "vcam", folder.Fisheye(), folder.File("out.png"), "0", word, "1"});
            ExpectOneSentence(name, run, 2, std::string("'") + word + "' is not a number");
        }
    }
    for (const char* word : {"-0.1", "1.01", "150"}) {
        const ProgramRun run =
            RunProgram(PathOfExample("click-to-aim"),
                       {"table", folder.Fisheye(), "0.5", word, folder.File("out.png")});
        ExpectOneSentence("click-to-aim", run, 2, std::string("'") + word + "' is not from 0 to 1");
    }
}

TEST(ExampleFiles, AreNotLeftHalfWritten) {
    const ExampleFolder folder(Slopes(256, 256));
    // Files may not grow beyond a block, as on a full disk.
    const ProgramRun run =
        RunProgram("/bin/sh", {"-c", "trap '' XFSZ; ulimit -f 1; exec \"$0\" \"$@\"",
                               PathOfExample("convert-frame"), "table", "full", folder.Fisheye(),
                               folder.File("out.png")});
    ExpectOneSentence("convert-frame", run, 1, "out.png");
    EXPECT_EQ(folder.Names(), std::set<std::string>{"fisheye.png"});
}

TEST(ExampleTerminals, MustBeThere) {
    const ExampleFolder folder(Slopes(64, 64));
    for (const char* name : {"live-ptz", "click-to-aim"}) {
        const ProgramRun run = RunProgram(PathOfExample(name), {"wall", folder.Fisheye()});
        ExpectOneSentence(name, run, 1, "standard output is not a terminal");
        EXPECT_EQ(run.output, "");
    }
}

TEST(ExampleTerminals, MayBeTooSmall) {
    const ExampleFolder folder(Slopes(64, 64));
    for (const char* name : {"live-ptz", "click-to-aim"}) {
        for (const auto& [columns, rows] : {std::pair(7, 10), std::pair(80, 1)}) {
            LiveExample live(name, {"wall", folder.Fisheye()}, columns, rows);
            EXPECT_EQ(live.Wait(), 1);
            EXPECT_EQ(live.Errors().rfind(std::string(name) + ": the terminal is too small", 0), 0U)
                << live.Errors();
            EXPECT_TRUE(live.HasFirstMode());
            EXPECT_FALSE(live.Shown().HasMode(1049));
        }
    }
}

}  // namespace
