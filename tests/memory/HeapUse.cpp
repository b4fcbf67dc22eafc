#include "memory/HeapUse.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace {

std::atomic<std::size_t> bytesInUse{0};
std::atomic<std::size_t> blocksInUse{0};
std::atomic<std::size_t> mostBytes{0};
std::atomic<std::size_t> requests{0};

}  // namespace

#if defined(KIVFISHEYE_COUNTS_HEAP)

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);
}

namespace {

/// What a counted block ends with: how many bytes were asked for, and a mark by which blocks that
/// were not taken here are told apart.
struct Label {
    std::size_t size;
    std::uintptr_t mark;
};

unsigned char* LabelOf(void* memory) {
    return static_cast<unsigned char*>(memory) + malloc_usable_size(memory) - sizeof(Label);
}

std::uintptr_t MarkOf(const void* memory) {
    return ~reinterpret_cast<std::uintptr_t>(memory);
}

void Write(void* memory, const Label& label) {
    std::memcpy(LabelOf(memory), &label, sizeof(label));
}

bool Read(void* memory, Label& label) {
    if (malloc_usable_size(memory) < sizeof(Label)) {
        return false;
    }
    std::memcpy(&label, LabelOf(memory), sizeof(label));
    return label.mark == MarkOf(memory);
}

/// The block that `take` makes of a size with room for the label; null when there is none.
template <class Take>
void* Counted(std::size_t size, Take&& take) {
    ++requests;
    const bool fits = size <= SIZE_MAX - sizeof(Label);
    void* const memory = fits ? take(size + sizeof(Label)) : nullptr;
    if (memory == nullptr) {
        errno = ENOMEM;
        return nullptr;
    }
    Write(memory, {size, MarkOf(memory)});
    ++blocksInUse;
    const std::size_t now = bytesInUse.fetch_add(size) + size;
    std::size_t most = mostBytes.load();
    while (now > most && !mostBytes.compare_exchange_weak(most, now)) {
    }
    return memory;
}

void* CountedAt(std::size_t alignment, std::size_t size) {
    return Counted(size, [=](std::size_t whole) { return __libc_memalign(alignment, whole); });
}

}  // namespace

void* malloc(std::size_t size) noexcept {
    return Counted(size, [](std::size_t whole) { return __libc_malloc(whole); });
}

void* calloc(std::size_t count, std::size_t size) noexcept {
    const std::size_t bytes = size != 0 && count > SIZE_MAX / size ? SIZE_MAX : count * size;
    return Counted(bytes, [](std::size_t whole) { return __libc_calloc(1, whole); });
}

void free(void* memory) noexcept {
    Label label{};
    if (memory != nullptr && Read(memory, label)) {
        Write(memory, {});
        bytesInUse -= label.size;
        --blocksInUse;
    }
    __libc_free(memory);
}

void* realloc(void* memory, std::size_t size) noexcept {
    Label label{};
    if (memory != nullptr && !Read(memory, label)) {
        return __libc_realloc(memory, size);
    }
    void* const grown = malloc(size);
    if (grown != nullptr && memory != nullptr) {
        std::memcpy(grown, memory, std::min(size, label.size));
        free(memory);
    }
    return grown;
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    if (alignment % sizeof(void*) != 0 || (alignment & (alignment - 1)) != 0 || alignment == 0) {
        return EINVAL;
    }
    *memory = CountedAt(alignment, size);
    return *memory != nullptr ? 0 : ENOMEM;
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return CountedAt(alignment, size);
}

void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return CountedAt(alignment, size);
}

bool CountsHeap() {
    return true;
}

#else

bool CountsHeap() {
    return false;
}

#endif

HeapUse HeapInUse() {
    return {bytesInUse, blocksInUse};
}

void StartHeapPeak() {
    mostBytes = bytesInUse.load();
}

std::size_t HeapPeak() {
    return mostBytes;
}

std::size_t HeapRequests() {
    return requests;
}
