#ifndef KIVFISHEYE_TESTS_FORCED_LEVEL_H
#define KIVFISHEYE_TESTS_FORCED_LEVEL_H

constexpr int kHighestLevel = 8;
constexpr int kLevelNotSet = -1;

/// The level that this program's processor has. Kernels are chosen once in a process, by the first
/// call that needs one: set it before.
extern int forcedLevel;

/// The level that a word names, or `kLevelNotSet`. The word may be null.
int LevelOfWord(const char* word);

/// The instructions that a level's kernels need and this processor lacks; null when it has all.
const char* MissingInstructions(int level);

/// Sets `forcedLevel`. Where this processor lacks instructions, says so and returns false.
bool ForceLevel(int level);

#endif
