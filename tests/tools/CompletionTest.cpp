#include <gtest/gtest.h>

#include <algorithm>

#include "GoodRun.h"
#include "HelpText.h"
#include "support/ProgramRun.h"

namespace {

using Strings = std::vector<std::string>;

/// What bash runs at the key for completion, with the script as the only thing that it has read.
Strings Script(const std::string& body, const Strings& arguments) {
    return Joined(
        {"--norc", "--noprofile", "-c", R"(source "$1" && cd "$2" || exit; shift 2; )" + body,
         "bash", KIVFISHEYE_COMPLETION},
        arguments);
}

class Completion : public testing::Test {
protected:
    Completion() {
        for (const char* name : {"room.png", "film.MP4", "two words.jpg", "mesh.obj", "lines.svg",
                                 "notes.txt", ".hidden.png"}) {
            WriteContent(m_folder.File(name), "");
        }
        std::filesystem::create_directory(m_folder.File("views"));
    }

    /// What is offered in place of the last word, in the order of the alphabet.
    Strings Offered(const Strings& words) const {
        const ProgramRun run = RunProgram(
            KIVFISHEYE_BASH, Script(R"(COMP_WORDS=(kivfisheye "$@"); COMP_CWORD=$#; _kivfisheye
                printf '%s\n' "${COMPREPLY[@]}")",
                                    Joined({m_folder.Path().string()}, words)));
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.errors, "");
        Strings offered = Lines(run.output);
        if (offered == Strings{""}) {
            offered.clear();
        }
        std::sort(offered.begin(), offered.end());
        return offered;
    }

    TemporaryFolder m_folder;
};

Strings Sorted(Strings words) {
    std::sort(words.begin(), words.end());
    return words;
}

}  // namespace

TEST_F(Completion, IsRegisteredForTheProgram) {
    const ProgramRun run =
        RunProgram(KIVFISHEYE_BASH, Script("complete -p kivfisheye", {m_folder.Path().string()}));
    EXPECT_EQ(run.output, "complete -F _kivfisheye kivfisheye\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(Completion, OffersCommands) {
    EXPECT_EQ(Offered({""}), Sorted(CommandsInHelp(m_folder)));
    EXPECT_EQ(Offered({"s"}), (Strings{"scene", "sheet", "snapshot", "sweep"}));
    EXPECT_EQ(Offered({"x"}), Strings{});
    EXPECT_EQ(Offered({"--"}), (Strings{"--help", "--version"}));
}

TEST_F(Completion, OffersTheOptionsOfEachCommand) {
    for (const std::string& command : CommandsInHelp(m_folder)) {
        EXPECT_EQ(Offered({command, "-"}),
                  Sorted(OptionsInHelp(OutputOfGoodRun(m_folder, {"help", command}))))
            << command;
    }
    EXPECT_EQ(Offered({"dewarp", "room.png", "--ra"}), (Strings{"--radius-x", "--radius-y"}));
}

TEST_F(Completion, OffersCommandsAfterHelp) {
    EXPECT_EQ(Offered({"help", ""}), Sorted(CommandsInHelp(m_folder)));
    EXPECT_EQ(Offered({"help", "de"}), Strings{"dewarp"});
}

TEST_F(Completion, OffersTheValuesOfAnOption) {
    for (const char* command : {"aim", "dewarp", "mesh", "outline", "scene", "snapshot", "sweep"}) {
        EXPECT_EQ(Offered({command, "--mount", ""}), (Strings{"ceiling", "table", "wall"}));
    }
    EXPECT_EQ(Offered({"dewarp", "--view", ""}), (Strings{"dual", "full", "vcam"}));
    EXPECT_EQ(Offered({"mesh", "--view", ""}), (Strings{"dual", "full"}));
    EXPECT_EQ(Offered({"sweep", "--format", "rgb3"}), Strings{"rgb32"});
    EXPECT_EQ(Offered({"dewarp", "--pan", ""}), Strings{});
}

TEST_F(Completion, OffersValuesBehindAnEqualsSign) {
    EXPECT_EQ(Offered({"dewarp", "--mount", "="}), (Strings{"ceiling", "table", "wall"}));
    EXPECT_EQ(Offered({"dewarp", "--mount", "=", "t"}), Strings{"table"});
    EXPECT_EQ(Offered({"dewarp", "--mount", "=", "table", "ro"}), Strings{"room.png"});
}

TEST_F(Completion, OffersFilesToRead) {
    const Strings readable = {"film.MP4", "room.png", "two words.jpg", "views"};
    for (const char* command : {"dewarp", "info", "outline", "sheet", "snapshot", "sweep"}) {
        const Strings offered = Offered({command, ""});
        for (const std::string& name : readable) {
            EXPECT_EQ(std::count(offered.begin(), offered.end(), name), 1) << command << name;
        }
        EXPECT_EQ(std::count(offered.begin(), offered.end(), "notes.txt"), 0) << command;
        EXPECT_EQ(std::count(offered.begin(), offered.end(), "mesh.obj"), 0) << command;
    }
    EXPECT_EQ(Offered({"dewarp", "two"}), Strings{"two words.jpg"});
}

TEST_F(Completion, OffersFilesToWrite) {
    const auto offered = [&](const Strings& words) {
        Strings names = Offered(words);
        names.erase(std::remove(names.begin(), names.end(), ".hidden.png"), names.end());
        return names;
    };
    EXPECT_EQ(offered({"dewarp", "in.png", ""}),
              (Strings{"film.MP4", "room.png", "two words.jpg", "views"}));
    EXPECT_EQ(offered({"snapshot", "in.png", ""}), (Strings{"room.png", "two words.jpg", "views"}));
    EXPECT_EQ(offered({"outline", "in.png", ""}),
              (Strings{"lines.svg", "room.png", "two words.jpg", "views"}));
    EXPECT_EQ(offered({"sweep", "in.png", ""}), (Strings{"film.MP4", "views"}));
    EXPECT_EQ(offered({"mesh", ""}), (Strings{"mesh.obj", "views"}));
    for (const char* option : {"-o", "--output"}) {
        EXPECT_EQ(offered({"sheet", option, ""}), (Strings{"room.png", "two words.jpg", "views"}));
    }
}

TEST_F(Completion, OffersEveryFileWhereNoneHasAKnownEnding) {
    EXPECT_EQ(Offered({"dewarp", "notes"}), Strings{"notes.txt"});
}

TEST_F(Completion, TakesAValueForNoFile) {
    EXPECT_EQ(Offered({"dewarp", "--pan", "-90", "ro"}), Strings{"room.png"});
    EXPECT_EQ(Offered({"dewarp", "--explain", "ro"}), Strings{"room.png"});
    EXPECT_EQ(Offered({"mesh", "--columns", "8", "m"}), Strings{"mesh.obj"});
}

TEST_F(Completion, OffersAnyNumberOfPicturesForASheet) {
    EXPECT_EQ(Offered({"sheet", "a.png", "b.png", "c.png", "ro"}), Strings{"room.png"});
}

TEST_F(Completion, OffersOptionsBehindTheLastFile) {
    EXPECT_EQ(Offered({"dewarp", "in.png", "out.png", ""}), Offered({"dewarp", "-"}));
}

TEST_F(Completion, KnowsNothingOfOtherCommands) {
    EXPECT_EQ(Offered({"flatten", ""}), Strings{});
    EXPECT_EQ(Offered({"flatten", "-"}), Strings{});
}
