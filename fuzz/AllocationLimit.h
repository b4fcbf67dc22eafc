#ifndef KIVFISHEYE_FUZZ_ALLOCATION_LIMIT_H
#define KIVFISHEYE_FUZZ_ALLOCATION_LIMIT_H

#include <cstddef>

/// Tables, blocks and work arrays of more bytes cannot be had here, so that what a claimed size
/// leads to does not depend on the machine, and no run takes long.
constexpr std::size_t kMostBytes = std::size_t{1} << 17;

/// Refuses the `number`th of the following requests, counted from 1.
void RefuseAllocation(int number);

/// Whether a request was refused on that ground. None is refused any more.
bool EndRefusal();

#endif
