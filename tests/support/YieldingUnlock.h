#ifndef KIVFISHEYE_TESTS_YIELDING_UNLOCK_H
#define KIVFISHEYE_TESTS_YIELDING_UNLOCK_H

/// Has this thread, for a scope, let others run whenever it unlocks a mutex. Calls are short and
/// would hardly meet otherwise, the least between two holdings of the lock in one of them.
class YieldingUnlock {
public:
    YieldingUnlock();
    ~YieldingUnlock();
    YieldingUnlock(const YieldingUnlock&) = delete;
    YieldingUnlock& operator=(const YieldingUnlock&) = delete;
};

#endif
