#include "support/FailingMalloc.h"

#include <malloc.h>

#include <algorithm>
#include <cerrno>

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
// Only a sanitizer's runtime has these.
void* __interceptor_malloc(std::size_t size) __attribute__((weak));
void* __interceptor_calloc(std::size_t count, std::size_t size) __attribute__((weak));
}

// A sanitizer's runtime asks for memory before it is ready for what it adds to code.
#define KIVFISHEYE_TEST_UNCHECKED __attribute__((no_sanitize("address", "undefined", "thread")))

namespace {

constexpr std::size_t kLargestEver = std::size_t{1} << 30;

thread_local std::size_t largestServedHere = kLargestEver;
thread_local std::size_t largestRequest = 0;
thread_local int requestsToFailure = 0;
thread_local bool hasFailed = false;

KIVFISHEYE_TEST_UNCHECKED bool HasSanitizer() {
    return __interceptor_malloc != nullptr;
}

/// Says whether a request may be served.
KIVFISHEYE_TEST_UNCHECKED bool Admit(std::size_t size) {
    if (size > largestRequest) {
        largestRequest = size;
    }
    const bool fails = requestsToFailure != 0 && --requestsToFailure == 0;
    hasFailed = hasFailed || fails;
    if (fails || size > largestServedHere) {
        errno = ENOMEM;
        return false;
    }
    return true;
}

}  // namespace

KIVFISHEYE_TEST_UNCHECKED void* malloc(std::size_t size) noexcept {
    if (!Admit(size)) {
        return nullptr;
    }
    return HasSanitizer() ? __interceptor_malloc(size) : __libc_malloc(size);
}

// Compilers make it of `malloc` and a loop that clears.
KIVFISHEYE_TEST_UNCHECKED void* calloc(std::size_t count, std::size_t size) noexcept {
    constexpr auto kMost = static_cast<std::size_t>(-1);
    const bool fits = size == 0 || count <= kMost / size;
    if (!Admit(fits ? count * size : kMost)) {
        return nullptr;
    }
    return HasSanitizer() ? __interceptor_calloc(count, size) : __libc_calloc(count, size);
}

MallocWatch::MallocWatch(std::size_t largestServed) {
    largestRequest = 0;
    requestsToFailure = 0;
    hasFailed = false;
    largestServedHere = std::min(largestServed, kLargestEver);
}

MallocWatch::~MallocWatch() {
    requestsToFailure = 0;
    largestServedHere = kLargestEver;
}

void MallocWatch::FailRequest(int number) {
    requestsToFailure = number;
}

bool MallocWatch::HasFailed() const {
    return hasFailed;
}

std::size_t MallocWatch::LargestRequest() const {
    return largestRequest;
}

std::size_t BytesInUse() {
    if (HasSanitizer()) {
        return 0;
    }
    const struct mallinfo2 heap = mallinfo2();
    return heap.uordblks + heap.hblkhd;
}
