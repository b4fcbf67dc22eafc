#ifndef KIVFISHEYE_TESTS_FAILING_MALLOC_H
#define KIVFISHEYE_TESTS_FAILING_MALLOC_H

#include <cstddef>

// The test program's own `malloc` and `calloc`. Requests beyond 1 GiB always fail, so that no test
// takes a machine's memory by mistake.

/// Watches what this thread asks of both, `operator new` included, from its construction on.
/// Watches may not overlap.
class MallocWatch {
public:
    /// Requests of more bytes than `largestServed` fail.
    explicit MallocWatch(std::size_t largestServed = std::size_t{1} << 30);
    ~MallocWatch();
    MallocWatch(const MallocWatch&) = delete;
    MallocWatch& operator=(const MallocWatch&) = delete;

    /// The request with this number fails, counted from 1 and from now.
    void FailRequest(int number);

    /// Whether that one was made.
    bool HasFailed() const;

    /// The bytes of the largest request so far, also of one that failed; 0 before the first.
    std::size_t LargestRequest() const;
};

/// Bytes of the heap that are not given back. Under a sanitizer it is a constant: that has an eye
/// on leaks of its own.
std::size_t BytesInUse();

#endif
