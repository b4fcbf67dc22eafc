#ifndef KIVFISHEYE_TESTS_FAILING_ALLOCATIONS_H
#define KIVFISHEYE_TESTS_FAILING_ALLOCATIONS_H

#include <new>

// The test program's own `operator new` and `posix_memalign`, which can be told to fail. A single
// request beyond 1 GiB always fails, so that no test takes a machine's memory by mistake.

/// Watches what this thread asks of both from its construction on, and makes one request fail.
/// Watches may not overlap.
class AllocationWatch {
public:
    /// The request with this number fails, counted from 1; 0 lets all of them pass.
    explicit AllocationWatch(int failingRequest = 0);
    ~AllocationWatch();
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    int Requests() const;
    bool HasFailed() const;

    /// The request with this number fails, counted from 1 and from now.
    void FailRequest(int number);

    /// No request fails from now on.
    void StopFailing();

    /// What the last `posix_memalign` asked for; 0 before the first.
    unsigned long LastAlignment() const;

    /// Blocks taken less blocks given back. Blocks of `malloc` do not count.
    int BlocksTaken() const;
};

/// Calls `attempt(watch, number)` with the numbers 1, 2 and so on, up to the first call in which no
/// request fails. The attempt says by `watch.FailRequest(number)` from when on requests count.
template <class Attempt>
void FailEachRequestOf(Attempt&& attempt) {
    bool hasFailed = true;
    for (int number = 1; hasFailed; ++number) {
        AllocationWatch watch;
        attempt(watch, number);
        hasFailed = watch.HasFailed();
    }
}

/// Whether `action` throws `std::bad_alloc`.
template <class Action>
bool ThrowsBadAlloc(Action&& action) {
    try {
        action();
    } catch (const std::bad_alloc&) {
        return true;
    }
    return false;
}

#endif
