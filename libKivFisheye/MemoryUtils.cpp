#include "MemoryUtils.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

void* _aligned_malloc(unsigned long size, unsigned long alignment) {
    if (alignment == 1) {
        return std::malloc(size);
    }
    if (alignment == 0 || alignment == 2 || alignment == 4) {
        alignment = 8;
    }
    void* memory = nullptr;
    return posix_memalign(&memory, alignment, size) == 0 ? memory : nullptr;
}

void _aligned_free(void* memory) {
    std::free(memory);
}

void PreferHugePages(void* memory, unsigned long size) {
#if defined(MADV_HUGEPAGE)
    constexpr unsigned long kSmall = 4UL << 20;
    if (size < kSmall) {
        return;
    }
    const auto page = static_cast<unsigned long>(sysconf(_SC_PAGESIZE));
    const unsigned long before = -reinterpret_cast<std::uintptr_t>(memory) % page;
    // No promise is needed: a system without large pages gives small ones.
    static_cast<void>(
        madvise(static_cast<char*>(memory) + before, (size - before) / page * page, MADV_HUGEPAGE));
#endif
}

#if defined(__GNUC__)
#pragma GCC diagnostic push
#if !defined(__clang__)
#pragma GCC diagnostic ignored "-Wreturn-local-addr"
#endif
#endif
void* _alloca(unsigned long size) {
    constexpr unsigned long kUnit = 16;
    // NOLINTNEXTLINE(clang-analyzer-core.StackAddressEscape)
    return __builtin_alloca((size + kUnit - 1) & ~(kUnit - 1));
}
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif

void _freea(void*) {}
