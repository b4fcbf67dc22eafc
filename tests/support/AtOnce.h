#ifndef KIVFISHEYE_TESTS_AT_ONCE_H
#define KIVFISHEYE_TESTS_AT_ONCE_H

#include <atomic>
#include <cstddef>
#include <functional>
#include <thread>
#include <vector>

/// Runs all of these, each on a thread of its own, from when all threads are there, and waits for
/// them to end.
inline void RunAtOnce(const std::vector<std::function<void()>>& actions) {
    std::atomic<std::size_t> arrived{0};
    std::vector<std::thread> threads;
    threads.reserve(actions.size());
    for (const auto& action : actions) {
        threads.emplace_back([&] {
            ++arrived;
            while (arrived < actions.size()) {
                std::this_thread::yield();
            }
            action();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

#endif
