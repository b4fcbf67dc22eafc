#ifndef KIVFISHEYE_TESTS_HEAP_USE_H
#define KIVFISHEYE_TESTS_HEAP_USE_H

#include <cstddef>

// A program that is linked with these has a `malloc` of its own, which counts what the program and
// all of its libraries take, to the byte that was asked for. Sanitizers bring their own `malloc`:
// built with one, nothing is counted and all is 0.

/// What was taken and not given back.
struct HeapUse {
    std::size_t bytes;
    std::size_t blocks;
};

inline bool operator==(const HeapUse& a, const HeapUse& b) {
    return a.bytes == b.bytes && a.blocks == b.blocks;
}

/// Whether this build counts.
bool CountsHeap();

HeapUse HeapInUse();

/// The most bytes that were in use at one time since the last `StartHeapPeak`.
void StartHeapPeak();
std::size_t HeapPeak();

/// How often memory was asked for since the program began.
std::size_t HeapRequests();

#endif
