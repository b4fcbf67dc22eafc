#ifndef KIVFISHEYE_OBJECT_LOCK_H
#define KIVFISHEYE_OBJECT_LOCK_H

#include <pthread.h>

#include <cerrno>
#include <new>
#include <system_error>

/// A lock that the thread which holds it may take again.
class CAutoCriticalSection {
public:
    CAutoCriticalSection() {
        pthread_mutexattr_t attributes;
        Check(pthread_mutexattr_init(&attributes));
        int error = pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
        if (error == 0) {
            error = pthread_mutex_init(&m_mutex, &attributes);
        }
        pthread_mutexattr_destroy(&attributes);
        Check(error);
    }
    ~CAutoCriticalSection() { pthread_mutex_destroy(&m_mutex); }
    CAutoCriticalSection(const CAutoCriticalSection&) = delete;
    CAutoCriticalSection& operator=(const CAutoCriticalSection&) = delete;

    void Lock() { pthread_mutex_lock(&m_mutex); }
    void Unlock() { pthread_mutex_unlock(&m_mutex); }

private:
    static void Check(int error) {
        if (error == ENOMEM) {
            throw std::bad_alloc();
        }
        if (error != 0) {
            throw std::system_error(error, std::generic_category());
        }
    }

    pthread_mutex_t m_mutex;
};

/// Objects that several threads may call.
struct CMultiThreadModel {
    using CriticalSection = CAutoCriticalSection;
};

/// The lock of an object. It has no virtual function, so that an interface stays the object's first
/// polymorphic base, and both have one address.
template <class ThreadModel>
class CObjectRootT {
public:
    void Lock() { m_criticalSection.Lock(); }
    void Unlock() { m_criticalSection.Unlock(); }

private:
    typename ThreadModel::CriticalSection m_criticalSection;
};

/// Holds an object's lock for a scope.
template <class ThreadModel>
class CObjectLockT {
public:
    explicit CObjectLockT(CObjectRootT<ThreadModel>* lockTarget) : m_lockTarget(lockTarget) {
        m_lockTarget->Lock();
    }
    ~CObjectLockT() {
        if (m_lockTarget != nullptr) {
            m_lockTarget->Unlock();
        }
    }
    CObjectLockT(const CObjectLockT&) = delete;
    CObjectLockT& operator=(const CObjectLockT&) = delete;

private:
    CObjectRootT<ThreadModel>* m_lockTarget;
};

#endif
