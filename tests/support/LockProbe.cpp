#include "support/LockProbe.h"

#include <pthread.h>

#include <atomic>
#include <stdexcept>
#include <thread>
#include <type_traits>

namespace {

using Root = CObjectRootT<CMultiThreadModel>;

// A lockable object begins with its mutex, so an address of the one is an address of the other.
static_assert(std::is_standard_layout_v<Root> && sizeof(Root) == sizeof(pthread_mutex_t));

pthread_mutex_t& MutexOf(Root& object) {
    return reinterpret_cast<pthread_mutex_t&>(object);
}

/// glibc marks a mutex that a thread sleeps for.
bool HasWaitingThread(Root& object) {
    constexpr int kHeldAndAwaited = 2;
    return __atomic_load_n(&MutexOf(object).__data.__lock, __ATOMIC_ACQUIRE) == kHeldAndAwaited;
}

}  // namespace

bool WaitsForLock(Root& object, const std::function<void()>& operation) {
    std::atomic<bool> hasEnded{false};
    object.Lock();
    std::thread thread([&] {
        operation();
        hasEnded = true;
    });
    bool waits = false;
    while (!waits && !hasEnded) {
        std::this_thread::yield();
        waits = HasWaitingThread(object);
    }
    object.Unlock();
    thread.join();
    return waits;
}

bool IsLocked(Root& object) {
    // A bare thread takes nothing from `operator new`, so that tests may count what it gives.
    const auto tryToLock = [](void* mutex) -> void* {
        auto* const tried = static_cast<pthread_mutex_t*>(mutex);
        if (pthread_mutex_trylock(tried) != 0) {
            return mutex;
        }
        pthread_mutex_unlock(tried);
        return nullptr;
    };
    pthread_t thread{};
    if (pthread_create(&thread, nullptr, tryToLock, &MutexOf(object)) != 0) {
        throw std::runtime_error("no thread for the question");
    }
    void* failed = nullptr;
    pthread_join(thread, &failed);
    return failed != nullptr;
}
