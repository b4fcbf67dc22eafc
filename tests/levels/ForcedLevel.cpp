#include "levels/ForcedLevel.h"

#include <cstdio>
#include <cstdlib>

#include "instrset_detect.h"

int forcedLevel = kLevelNotSet;

int LevelOfWord(const char* word) {
    const bool isLevel =
        word != nullptr && word[0] >= '0' && word[0] <= '0' + kHighestLevel && word[1] == '\0';
    return isLevel ? word[0] - '0' : kLevelNotSet;
}

int instrset_detect() {
    if (forcedLevel == kLevelNotSet) {
        std::fputs("The level is asked for before it is set.\n", stderr);
        std::abort();
    }
    return forcedLevel;
}

int GetCpuInstructionSet() {
    return instrset_detect();
}

int hasFMA3() {
    return 0;
}
int hasFMA4() {
    return 0;
}
int hasXOP() {
    return 0;
}
