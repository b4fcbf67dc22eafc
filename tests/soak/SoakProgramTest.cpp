#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/ProgramRun.h"

// The soak would notice: it tells a loss when there is one, and only then.

namespace {

ProgramRun Soak(const std::vector<std::string>& arguments) {
    return RunProgram(KIVFISHEYE_SOAK, arguments);
}

TEST(SoakProgram, FindsNothingThatGrows) {
    const ProgramRun run = Soak({"300"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output.find("300 frames of each of 3 contexts: "), 0U) << run.output;
    EXPECT_NE(run.output.find("; file descriptors "), std::string::npos) << run.output;
}

#if defined(KIVFISHEYE_COUNTS_HEAP)
TEST(SoakProgram, SaysHowMuchOfTheHeapWasInUse) {
    const std::string output = Soak({"300"}).output;
    EXPECT_NE(output.find(" bytes of the heap in "), std::string::npos) << output;
    EXPECT_EQ(output.find("left to the sanitizer"), std::string::npos) << output;
}

// A picture of 80 by 80 makes a block of a few kilobytes.
TEST(SoakProgram, FindsASingleSnapshotThatIsNotGivenBack) {
    const ProgramRun run = Soak({"--lose-snapshot", "300"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors.find("KivFisheyeSoak: the bytes of the heap went from "), 0U)
        << run.errors;
}
#endif

TEST(SoakProgram, RefusesWhatIsNoCountWithASentence) {
    const std::vector<std::vector<std::string>> refused = {
        {"9"},     {"-300"},       {"300x"},
        {""},      {"1000000001"}, {"x"},
        {"--all"}, {"300", "300"}, {"--lose-snapshot", "x"}};
    for (const auto& arguments : refused) {
        const ProgramRun run = Soak(arguments);
        EXPECT_EQ(run.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(run.output, "") << testing::PrintToString(arguments);
        EXPECT_EQ(run.errors,
                  "KivFisheyeSoak: give a number of frames from 10 to 1000000000, or nothing.\n");
    }
}

TEST(SoakProgram, SaysHowItIsCalled) {
    const ProgramRun run = Soak({"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output.find("Usage: KivFisheyeSoak "), 0U);
    EXPECT_EQ(run.errors, "");
}

}  // namespace
