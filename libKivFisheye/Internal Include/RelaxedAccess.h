#ifndef KIVFISHEYE_RELAXED_ACCESS_H
#define KIVFISHEYE_RELAXED_ACCESS_H

// For members that operations without a lock read while a setter on another thread may write them.
// The members stay plain; each single access is well-defined, and nothing is promised about their
// order.

template <class T>
void StoreRelaxed(T& member, T value) {
    __atomic_store(&member, &value, __ATOMIC_RELAXED);
}

template <class T>
T LoadRelaxed(const T& member) {
    T value;
    __atomic_load(&member, &value, __ATOMIC_RELAXED);
    return value;
}

#endif
