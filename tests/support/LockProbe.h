#ifndef KIVFISHEYE_TESTS_LOCK_PROBE_H
#define KIVFISHEYE_TESTS_LOCK_PROBE_H

#include <functional>

#include "ObjectLock.h"

/// Whether `operation`, on a thread of its own, waits for the object's lock, which this thread
/// holds meanwhile. The operation has ended when this returns.
bool WaitsForLock(CObjectRootT<CMultiThreadModel>& object, const std::function<void()>& operation);

/// Whether another thread could not take the object's lock now.
bool IsLocked(CObjectRootT<CMultiThreadModel>& object);

#endif
