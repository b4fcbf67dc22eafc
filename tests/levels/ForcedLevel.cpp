#include "levels/ForcedLevel.h"

#include <cstdio>
#include <cstdlib>

#include "KernelPointer.h"
#include "instrset_detect.h"

int forcedLevel = kLevelNotSet;

int LevelOfWord(const char* word) {
    const bool isLevel =
        word != nullptr && word[0] >= '0' && word[0] <= '0' + kHighestLevel && word[1] == '\0';
    return isLevel ? word[0] - '0' : kLevelNotSet;
}

const char* MissingInstructions([[maybe_unused]] int level) {
#if defined(__x86_64__)
    const Form form = AvxSse41OrC(level);
    if (form == Form::AVX && __builtin_cpu_supports("avx") == 0) {
        return "AVX";
    }
    if (form == Form::SSE41 && __builtin_cpu_supports("sse4.1") == 0) {
        return "SSE4.1";
    }
#endif
    return nullptr;
}

bool ForceLevel(int level) {
    if (const char* const missing = MissingInstructions(level)) {
        std::fprintf(stderr, "This processor lacks %s, which kernels of level %d need.\n", missing,
                     level);
        return false;
    }
    forcedLevel = level;
    return true;
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
