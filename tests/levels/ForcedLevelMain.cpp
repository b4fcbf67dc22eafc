#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

#include "levels/ForcedLevel.h"

// Runs the tests on a processor of the level that KIVFISHEYE_LEVEL names.

int main(int argc, char** argv) {
    const int level = LevelOfWord(std::getenv("KIVFISHEYE_LEVEL"));
    if (level == kLevelNotSet) {
        std::fprintf(stderr, "KIVFISHEYE_LEVEL is to be a level, 0 to %d\n", kHighestLevel);
        return 2;
    }
    if (!ForceLevel(level)) {
        return 1;
    }
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
