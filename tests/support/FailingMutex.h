#ifndef KIVFISHEYE_TESTS_FAILING_MUTEX_H
#define KIVFISHEYE_TESTS_FAILING_MUTEX_H

// The test program's own ways to make mutexes, which can be told to fail. A system may give
// a mutex or its attributes memory and other means, of which it can run out.

/// Watches what this thread makes from its construction on. Watches may not overlap.
class MutexWatch {
public:
    MutexWatch();
    ~MutexWatch();
    MutexWatch(const MutexWatch&) = delete;
    MutexWatch& operator=(const MutexWatch&) = delete;

    /// The attributes or mutex with this number, counted from 1 and from now, are not made, for a
    /// reason out of `<cerrno>`.
    void FailRequest(int number, int error);
    bool HasFailed() const;

    /// Mutexes and attributes made less those destroyed.
    int Left() const;
};

#endif
