#ifndef KIVFISHEYE_TESTS_FORCED_LEVEL_H
#define KIVFISHEYE_TESTS_FORCED_LEVEL_H

/// The level that this program's processor has. Kernels are chosen once in a process, by the first
/// call that needs one: set it before.
extern int forcedLevel;

#endif
