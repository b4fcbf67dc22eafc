#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/ProgramRun.h"

// What the programs that print digests of frames do with their arguments, and with an output that
// takes nothing.

namespace {

constexpr const char* kPrograms[] = {KIVFISHEYE_FRAMES, KIVFISHEYE_FORCED_FRAMES};

void ExpectRefusal(const ProgramRun& run, int status) {
    EXPECT_EQ(run.status, status);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
}

/// The level is for the program that is forced to one.
std::vector<std::string> ArgumentsOf(const std::string& program) {
    return program == KIVFISHEYE_FRAMES ? std::vector<std::string>{}
                                        : std::vector<std::string>{"0"};
}

}  // namespace

TEST(FramePrograms, PrintALevelAndDigests) {
    for (const std::string program : kPrograms) {
        const ProgramRun run = RunProgram(program, ArgumentsOf(program));
        EXPECT_EQ(run.status, 0) << program;
        EXPECT_EQ(run.errors, "") << program;
        EXPECT_EQ(run.output.compare(0, 6, "level "), 0) << program;
        EXPECT_GT(std::count(run.output.begin(), run.output.end(), '/'), 100) << program;
    }
}

TEST(FramePrograms, FailWhereTheOutputTakesNothing) {
    for (const std::string program : kPrograms) {
        SCOPED_TRACE(program);
        std::vector<std::string> words = {"-c", R"(exec "$0" "$@" >/dev/full)", program};
        for (const std::string& argument : ArgumentsOf(program)) {
            words.push_back(argument);
        }
        ExpectRefusal(RunProgram("/bin/sh", words), 1);
    }
}

TEST(FramePrograms, OfThisProcessorTakeNoArguments) {
    ExpectRefusal(RunProgram(KIVFISHEYE_FRAMES, {"0"}), 2);
    ExpectRefusal(RunProgram(KIVFISHEYE_FRAMES, {""}), 2);
}

TEST(FramePrograms, OfAForcedLevelTakeOneLevelAndNothingElse) {
    const std::vector<std::vector<std::string>> refused = {{},     {""},    {"9"},     {"-1"},
                                                           {"07"}, {"AVX"}, {"0", "0"}};
    for (const auto& arguments : refused) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        ExpectRefusal(RunProgram(KIVFISHEYE_FORCED_FRAMES, arguments), 2);
    }
}
