#ifndef KIVFISHEYE_TESTS_EACH_FAILURE_H
#define KIVFISHEYE_TESTS_EACH_FAILURE_H

#include <gtest/gtest.h>

#include "support/FailingAllocations.h"

/// Lets each request of `action` fail in turn, which is to throw and to leave no block behind.
/// Gives how many requests there were.
template <class Action>
int ExpectEachFailureThrows(Action&& action) {
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        watch.FailRequest(number);
        const bool failed = ThrowsBadAlloc(action);
        EXPECT_EQ(failed, watch.HasFailed());
        EXPECT_EQ(watch.BlocksTaken(), 0);
        failures += failed ? 1 : 0;
    });
    return failures;
}

#endif
