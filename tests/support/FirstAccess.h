#ifndef KIVFISHEYE_TESTS_FIRST_ACCESS_H
#define KIVFISHEYE_TESTS_FIRST_ACCESS_H

#include <cstddef>
#include <functional>

/// Memory whose first access runs a function, on the thread that reads or writes, before the access
/// is done. Only one may exist at a time.
class FirstAccess {
public:
    FirstAccess(std::size_t bytes, std::function<void()> atFirstAccess);
    ~FirstAccess();
    FirstAccess(const FirstAccess&) = delete;
    FirstAccess& operator=(const FirstAccess&) = delete;

    /// At a multiple of a page's size.
    unsigned char* data() { return m_memory; }

private:
    std::size_t m_bytes;
    unsigned char* m_memory;
};

#endif
