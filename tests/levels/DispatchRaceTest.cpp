#include <gtest/gtest.h>

#include <string>

#include "support/ProgramRun.h"

// In each process another pointer comes first.
TEST(DispatchRace, GivesEveryThreadItsResultAndLeavesTheKernel) {
    constexpr int kProcesses = 20;
    constexpr int kPlaces = 34;
    for (int process = 0; process < kProcesses; ++process) {
        const int first = 7 * process % kPlaces;
        const ProgramRun race = RunProgram(KIVFISHEYE_DISPATCH_RACE, {std::to_string(first)});
        EXPECT_EQ(race.status, 0) << first;
        EXPECT_EQ(race.errors, "") << first;
    }
}

TEST(DispatchRace, TakesOnePlaceInTheListAndNothingElse) {
    for (const std::string wrong : {"", "x", "34", "-1", "1x"}) {
        EXPECT_EQ(RunProgram(KIVFISHEYE_DISPATCH_RACE, {wrong}).status, 2) << wrong;
    }
    EXPECT_EQ(RunProgram(KIVFISHEYE_DISPATCH_RACE, {}).status, 2);
    EXPECT_EQ(RunProgram(KIVFISHEYE_DISPATCH_RACE, {"0", "0"}).status, 2);
}
