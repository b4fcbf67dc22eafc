#ifndef KIVFISHEYE_PREFETCH_H
#define KIVFISHEYE_PREFETCH_H

#include <cstddef>

/// Cache levels, as the compiler counts them.
constexpr int kFirstLevelCache = 3;
constexpr int kSecondLevelCache = 2;

/// Asks for the cache line that an address lies in. Any address will do.
template <int cacheLevel, bool isForWriting = false>
inline void Prefetch(const void* address) {
    __builtin_prefetch(address, isForWriting, cacheLevel);
    // GCC takes a function that only prefetches for one that does nothing, and leaves out its
    // calls.
    asm volatile("");
}

/// Asks for all cache lines of `bytes` bytes, but perhaps for the last one.
template <int cacheLevel, bool isForWriting = false>
inline void PrefetchAll(const void* first, std::ptrdiff_t bytes) {
    constexpr std::ptrdiff_t kLineBytes = 64;
    for (std::ptrdiff_t at = 0; at < bytes; at += kLineBytes) {
        Prefetch<cacheLevel, isForWriting>(static_cast<const char*>(first) + at);
    }
}

#endif
