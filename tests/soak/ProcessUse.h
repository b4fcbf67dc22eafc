#ifndef KIVFISHEYE_TESTS_PROCESS_USE_H
#define KIVFISHEYE_TESTS_PROCESS_USE_H

#include <cstddef>

/// What the system says of this process.
struct ProcessUse {
    std::size_t residentBytes;
    std::size_t descriptors;
    std::size_t threads;
};

/// Throws `std::runtime_error` where the system does not say.
ProcessUse ProcessInUse();

#endif
