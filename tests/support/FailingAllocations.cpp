#include "support/FailingAllocations.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define KIVFISHEYE_HAS_ALLOCATOR_HOOKS
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define KIVFISHEYE_HAS_ALLOCATOR_HOOKS
#endif
#endif

extern "C" {
int __real_posix_memalign(void** memory, std::size_t alignment, std::size_t size);
int __wrap_posix_memalign(void** memory, std::size_t alignment, std::size_t size);
#if defined(KIVFISHEYE_HAS_ALLOCATOR_HOOKS)
int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*, std::size_t),
                                              void (*onFree)(const volatile void*));
#else
void __libc_free(void* memory);
#endif
}

namespace {

constexpr std::size_t kLargestRequest = std::size_t{1} << 30;

thread_local bool isWatching = false;
thread_local bool hasFailed = false;
thread_local int requests = 0;
thread_local int failingRequest = 0;
thread_local int blocksTaken = 0;
thread_local unsigned long lastAlignment = 0;

/// Counts a request and says whether it may be served.
bool Admit(std::size_t size) {
    if (size > kLargestRequest) {
        return false;
    }
    if (!isWatching) {
        return true;
    }
    ++requests;
    if (requests == failingRequest) {
        hasFailed = true;
        return false;
    }
    return true;
}

void CountBlocks(int change) {
    if (isWatching) {
        blocksTaken += change;
    }
}

// Aligned blocks go back through plain `free`, so their addresses are kept until then. Static
// memory without a lock: this runs inside `free`.
std::array<std::atomic<void*>, 4096> alignedBlocks;

bool ReplaceAlignedBlock(void* present, void* next) {
    return std::any_of(alignedBlocks.begin(), alignedBlocks.end(), [=](std::atomic<void*>& slot) {
        void* expected = present;
        return slot.load(std::memory_order_relaxed) == present &&
               slot.compare_exchange_strong(expected, next);
    });
}

std::atomic<int> alignedBlockCount{0};

void RememberAlignedBlock(void* memory) {
    if (!ReplaceAlignedBlock(nullptr, memory)) {
        std::abort();
    }
    ++alignedBlockCount;
    CountBlocks(1);
}

void ForgetAlignedBlock(void* memory) {
    if (memory != nullptr && alignedBlockCount != 0 && ReplaceAlignedBlock(memory, nullptr)) {
        --alignedBlockCount;
        CountBlocks(-1);
    }
}

#if defined(KIVFISHEYE_HAS_ALLOCATOR_HOOKS)
const int installedHooks = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t) {},
    [](const volatile void* memory) { ForgetAlignedBlock(const_cast<void*>(memory)); });
#endif

}  // namespace

#if !defined(KIVFISHEYE_HAS_ALLOCATOR_HOOKS)
void free(void* memory) noexcept {
    ForgetAlignedBlock(memory);
    __libc_free(memory);
}
#endif

int __wrap_posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    lastAlignment = alignment;
    // What POSIX says; sanitizers would end the process.
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0) {
        return EINVAL;
    }
    if (!Admit(size)) {
        return ENOMEM;
    }
    const int error = __real_posix_memalign(memory, alignment, size);
    if (error == 0) {
        RememberAlignedBlock(*memory);
    }
    return error;
}

void* operator new(std::size_t size) {
    void* const memory = Admit(size) ? std::malloc(std::max<std::size_t>(size, 1)) : nullptr;
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    CountBlocks(1);
    return memory;
}

void* operator new[](std::size_t size) {
    return operator new(size);
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) {
        CountBlocks(-1);
        std::free(memory);
    }
}

void operator delete[](void* memory) noexcept {
    operator delete(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    operator delete(memory);
}

AllocationWatch::AllocationWatch(int number) {
    isWatching = true;
    hasFailed = false;
    requests = 0;
    blocksTaken = 0;
    lastAlignment = 0;
    failingRequest = number;
}

AllocationWatch::~AllocationWatch() {
    isWatching = false;
}

int AllocationWatch::Requests() const {
    return requests;
}

bool AllocationWatch::HasFailed() const {
    return hasFailed;
}

void AllocationWatch::FailRequest(int number) {
    failingRequest = requests + number;
}

void AllocationWatch::StopFailing() {
    failingRequest = 0;
}

unsigned long AllocationWatch::LastAlignment() const {
    return lastAlignment;
}

int AllocationWatch::BlocksTaken() const {
    return blocksTaken;
}
