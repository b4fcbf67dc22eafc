#ifndef KIVFISHEYE_PREFETCH_H
#define KIVFISHEYE_PREFETCH_H

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

#endif
