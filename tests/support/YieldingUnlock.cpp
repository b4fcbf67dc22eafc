#include "support/YieldingUnlock.h"

#include <pthread.h>
#include <sched.h>

extern "C" {
int __real_pthread_mutex_unlock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex);
}

namespace {

thread_local bool yields = false;

}  // namespace

int __wrap_pthread_mutex_unlock(pthread_mutex_t* mutex) {
    const int error = __real_pthread_mutex_unlock(mutex);
    if (yields) {
        sched_yield();
    }
    return error;
}

YieldingUnlock::YieldingUnlock() {
    yields = true;
}

YieldingUnlock::~YieldingUnlock() {
    yields = false;
}
