#include <KivFisheyeVersion.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "GoodRun.h"
#include "HelpText.h"
#include "RoffText.h"
#include "support/ProgramRun.h"

namespace {

std::string PathOf(const std::string& page) {
    return std::string(KIVFISHEYE_MANUAL) + "/" + page + ".1";
}

std::vector<std::string> Pages() {
    std::vector<std::string> pages = {"kivfisheye"};
    for (const std::string& command : CommandsInHelp(TemporaryFolder())) {
        pages.push_back("kivfisheye-" + command);
    }
    return pages;
}

std::string HelpOf(const std::string& page) {
    const TemporaryFolder folder;
    return page == "kivfisheye"
               ? OutputOfGoodRun(folder, {"help"})
               : OutputOfGoodRun(folder, {"help", page.substr(std::string("kivfisheye-").size())});
}

/// What a reader sees, without bold and underlined letters.
std::string Rendered(const std::string& path) {
    const ProgramRun run = RunProgram(KIVFISHEYE_GROFF, {"-man", "-Tascii", "-P-cbou", path});
    EXPECT_EQ(run.status, 0);
    return run.output;
}

void ExpectClean(const std::string& path) {
    const ProgramRun run = RunProgram(KIVFISHEYE_GROFF, {"-man", "-ww", "-z", path});
    EXPECT_EQ(run.status, 0) << path;
    EXPECT_EQ(run.output, "") << path;
    EXPECT_EQ(run.errors, "") << path;
}

/// A page of nothing but the text, as a reader sees it.
std::string RenderedText(const std::string& roff) {
    const TemporaryFolder folder;
    WriteContent(folder.File("text.1"), ".TH TEXT 1\n.SH NAME\n.nf\n" + roff + "\n");
    ExpectClean(folder.File("text.1"));
    const std::string page = Rendered(folder.File("text.1"));
    const std::size_t start = page.find("NAME\n") + 5;
    return OneLine(page.substr(start, page.find("\n\n", start) - start));
}

bool HasLine(const std::string& text, const std::string& start) {
    return text.find("\n       " + start + ' ') != std::string::npos ||
           text.find("\n       " + start + '\n') != std::string::npos;
}

}  // namespace

TEST(Manual, HasAPageForEveryCommandAndTheProgram) {
    std::set<std::string> expected;
    for (const std::string& page : Pages()) {
        expected.insert(page + ".1");
    }
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(KIVFISHEYE_MANUAL)) {
        names.insert(entry.path().filename().string());
    }
    EXPECT_EQ(expected.size(), 11U);
    EXPECT_EQ(names, expected);
}

TEST(Manual, IsCleanRoff) {
    for (const std::string& page : Pages()) {
        ExpectClean(PathOf(page));
    }
}

TEST(Manual, IsPlainLettersWithRealMinuses) {
    for (const std::string& page : Pages()) {
        const std::string roff = ContentOf(PathOf(page));
        EXPECT_TRUE(std::all_of(roff.begin(), roff.end(), [](char letter) {
            return letter == '\n' || (letter >= ' ' && letter <= '~');
        })) << page;
        EXPECT_EQ(roff.find("--"), std::string::npos) << page;
    }
}

TEST(Manual, HasTheUsualSections) {
    for (const std::string& page : Pages()) {
        const std::string text = Rendered(PathOf(page));
        std::size_t place = 0;
        for (const char* title : {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "EXAMPLES",
                                  "EXIT STATUS", "SEE ALSO"}) {
            const std::size_t found = text.find("\n" + std::string(title) + "\n", place);
            ASSERT_NE(found, std::string::npos) << title << " in " << text;
            place = found;
        }
        EXPECT_NE(text.find("\n       " + page + " - "), std::string::npos) << text;
    }
}

TEST(Manual, NamesEveryOptionAndPositionalOfTheHelp) {
    for (const std::string& page : Pages()) {
        const std::string help = HelpOf(page);
        const std::string text = Rendered(PathOf(page));
        EXPECT_TRUE(HasLine(text, "-h, --help")) << text;
        for (const std::string& option : OptionsInHelp(help)) {
            const bool isPair = option == "-h" || option == "--help";
            const bool isOutput = option == "-o" || option == "--output";
            EXPECT_TRUE(isPair || HasLine(text, isOutput ? "-o, --output" : option))
                << option << " in " << text;
        }
        for (const std::string& positional : PositionalsInHelp(help)) {
            EXPECT_TRUE(HasLine(text, positional)) << positional << " in " << text;
        }
    }
}

TEST(Manual, NamesEveryCommandInTheProgramsPage) {
    const std::string text = Rendered(PathOf("kivfisheye"));
    for (const std::string& command : CommandsInHelp(TemporaryFolder())) {
        EXPECT_TRUE(HasLine(text, command)) << command << " in " << text;
        EXPECT_NE(text.find("kivfisheye-" + command + "(1)"), std::string::npos) << text;
    }
}

TEST(Manual, SaysWhatAnOptionTakes) {
    const std::string text = OneLine(Rendered(PathOf("kivfisheye-dewarp")));
    for (const char* words :
         {"kivfisheye dewarp INPUT [OUTPUT] --view VIEW --mount MOUNT [OPTION]...",
          "Where the camera hangs. Required. One of wall, ceiling or table.",
          "The name ends with .png, .jpg, .jpeg or .mp4.", "From 10 to 90. Default: 45.",
          "One of rgb24 or rgb32. Default: rgb32.", "Not together with --pan and --tilt.",
          "--size WIDTHxHEIGHT Output size", "wall has the right positive"}) {
        EXPECT_NE(text.find(words), std::string::npos) << words << " in " << text;
    }
    const std::string sheet = OneLine(Rendered(PathOf("kivfisheye-sheet")));
    EXPECT_NE(sheet.find("kivfisheye sheet INPUT... --output FILE [OPTION]..."), std::string::npos)
        << sheet;
}

TEST(Manual, HasTheExamplesAndStatusesOfTheHelp) {
    const std::string help = HelpOf("kivfisheye");
    const std::string statuses = OneLine(help.substr(help.find("\n  0 ")));
    for (const std::string& page : Pages()) {
        const std::string text = Rendered(PathOf(page));
        for (const std::string& example : ExamplesInHelp(HelpOf(page))) {
            EXPECT_NE(text.find("           " + example + "\n"), std::string::npos) << text;
        }
        EXPECT_NE(OneLine(text).find("EXIT STATUS " + statuses + " SEE ALSO"), std::string::npos)
            << text;
    }
}

TEST(Manual, IsOfThisVersionAndNoDate) {
    EXPECT_EQ(ContentOf(PathOf("kivfisheye-aim"))
                  .rfind(".TH KIVFISHEYE\\-AIM 1 \"\" \"kivfisheye " KIVFISHEYE_VERSION
                         "\" \"User Commands\"\n",
                         0),
              0U);
}

TEST(RoffText, ShowsEveryLetterThatIsTyped) {
    using KivFisheyeTools::RoffCode;
    for (const char* text : {".dot first", "'quote first", "back\\slash \\fB \\n", "--pan -90",
                             "\"quoted\" 'so' `or so`", "~/a^b", "dir/.mp4"}) {
        EXPECT_EQ(RenderedText(RoffCode(text)), text);
    }
}

TEST(RoffText, TellsHyphensFromMinuses) {
    using KivFisheyeTools::RoffProse;
    EXPECT_EQ(RoffProse("a cut-off view"), "a cut-off view");
    EXPECT_EQ(RoffProse("from -90 to 0"), "from \\-90 to 0");
    EXPECT_EQ(RoffProse("with --radius-x, or"), "with \\fB\\-\\-radius\\-x\\fR, or");
    EXPECT_EQ(RenderedText(RoffProse(".png is one")), ".png is one");
    EXPECT_EQ(RenderedText(RoffProse("'tis")), "'tis");
}
