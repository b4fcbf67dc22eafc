#include <cstdio>

#include "FrameCases.h"
#include "levels/ForcedLevel.h"

// Prints what the library's objects make of all cases when kernels are chosen as a processor of the
// given level chooses them. This processor has to have the instructions.

int main(int argc, char** argv) {
    const int level = argc == 2 ? LevelOfWord(argv[1]) : kLevelNotSet;
    if (level == kLevelNotSet) {
        std::fprintf(stderr, "usage: KivFisheyeForcedFrames LEVEL, which is 0 to %d\n",
                     kHighestLevel);
        return 2;
    }
    return ForceLevel(level) && PrintFrameDigests() ? 0 : 1;
}
