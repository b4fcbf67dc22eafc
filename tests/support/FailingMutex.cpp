#include "support/FailingMutex.h"

#include <pthread.h>

extern "C" {
int __real_pthread_mutexattr_init(pthread_mutexattr_t* attributes);
int __real_pthread_mutexattr_destroy(pthread_mutexattr_t* attributes);
int __real_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int __real_pthread_mutex_destroy(pthread_mutex_t* mutex);
int __wrap_pthread_mutexattr_init(pthread_mutexattr_t* attributes);
int __wrap_pthread_mutexattr_destroy(pthread_mutexattr_t* attributes);
int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes);
int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex);
}

namespace {

thread_local int requestsToFailure = 0;
thread_local int failure = 0;
thread_local bool hasFailed = false;
thread_local int left = 0;

template <class Make>
int MakeUnlessFailing(Make make) {
    if (requestsToFailure != 0 && --requestsToFailure == 0) {
        hasFailed = true;
        return failure;
    }
    const int error = make();
    left += error == 0 ? 1 : 0;
    return error;
}

}  // namespace

int __wrap_pthread_mutexattr_init(pthread_mutexattr_t* attributes) {
    return MakeUnlessFailing([=] { return __real_pthread_mutexattr_init(attributes); });
}

int __wrap_pthread_mutexattr_destroy(pthread_mutexattr_t* attributes) {
    --left;
    return __real_pthread_mutexattr_destroy(attributes);
}

int __wrap_pthread_mutex_init(pthread_mutex_t* mutex, const pthread_mutexattr_t* attributes) {
    return MakeUnlessFailing([=] { return __real_pthread_mutex_init(mutex, attributes); });
}

int __wrap_pthread_mutex_destroy(pthread_mutex_t* mutex) {
    --left;
    return __real_pthread_mutex_destroy(mutex);
}

MutexWatch::MutexWatch() {
    requestsToFailure = 0;
    hasFailed = false;
    left = 0;
}

MutexWatch::~MutexWatch() {
    requestsToFailure = 0;
}

void MutexWatch::FailRequest(int number, int error) {
    requestsToFailure = number;
    failure = error;
}

bool MutexWatch::HasFailed() const {
    return hasFailed;
}

int MutexWatch::Left() const {
    return left;
}
