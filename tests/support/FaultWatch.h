#ifndef KIVFISHEYE_TESTS_FAULT_WATCH_H
#define KIVFISHEYE_TESTS_FAULT_WATCH_H

#include <gtest/gtest.h>

#include <cerrno>
#include <ostream>
#include <string>

#include "support/FailingAllocations.h"
#include "support/FailingMalloc.h"
#include "support/FailingMutex.h"

/// Where a request goes that fails: to `operator new` and `posix_memalign`, to `malloc` and
/// `calloc`, which the first of these uses too, or to what makes mutexes.
enum class FaultSource { Blocks, Malloc, Mutexes };

/// A request that fails, by its number, counted from 1.
struct Fault {
    FaultSource source;
    int number;
    int error;  ///< of a mutex
};

inline std::ostream& operator<<(std::ostream& out, const Fault& fault) {
    static constexpr const char* kNames[] = {"block", "malloc", "mutex"};
    return out << kNames[static_cast<int>(fault.source)] << " " << fault.number << ", error "
               << fault.error;
}

/// Watches all requests of this thread and makes one of them fail.
class FaultWatch {
public:
    explicit FaultWatch(const Fault& fault) : m_fault(fault) {}

    /// Requests count from now on.
    void Start() {
        switch (m_fault.source) {
            case FaultSource::Blocks:
                m_blocks.FailRequest(m_fault.number);
                break;
            case FaultSource::Malloc:
                m_malloc.FailRequest(m_fault.number);
                break;
            case FaultSource::Mutexes:
                m_mutexes.FailRequest(m_fault.number, m_fault.error);
                break;
        }
    }
    void Stop() {
        m_blocks.StopFailing();
        m_malloc.FailRequest(0);
        m_mutexes.FailRequest(0, 0);
    }

    bool HasFailed() const {
        return m_blocks.HasFailed() || m_malloc.HasFailed() || m_mutexes.HasFailed();
    }
    /// Whether all that was made since the watch began is given back. Plain `malloc` does not
    /// count.
    bool IsNothingLeft() const { return m_blocks.BlocksTaken() == 0 && m_mutexes.Left() == 0; }

private:
    Fault m_fault;
    AllocationWatch m_blocks;
    MallocWatch m_malloc;
    MutexWatch m_mutexes;
};

/// Calls `attempt(watch, fault)` for every request in turn, up to a first call without a failure
/// for each source, and expects that nothing is left behind. Gives how many calls had a failure.
template <class Attempt>
int WithEachFault(const std::string& name, Attempt&& attempt) {
    constexpr Fault kFirst[] = {{FaultSource::Blocks, 1, 0},
                                {FaultSource::Malloc, 1, 0},
                                {FaultSource::Mutexes, 1, ENOMEM},
                                {FaultSource::Mutexes, 1, EAGAIN}};
    int failures = 0;
    for (Fault fault : kFirst) {
        for (bool hasFailed = true; hasFailed; ++fault.number) {
            SCOPED_TRACE(testing::Message() << name << ", " << fault);
            FaultWatch watch(fault);
            attempt(watch, fault);
            EXPECT_TRUE(watch.IsNothingLeft());
            hasFailed = watch.HasFailed();
            failures += hasFailed ? 1 : 0;
        }
    }
    return failures;
}

#endif
