#ifndef KIVFISHEYE_TESTS_GUARDED_BUFFER_H
#define KIVFISHEYE_TESTS_GUARDED_BUFFER_H

#include <cstddef>

/// A block of bytes between two pages that can be neither read nor written, so that a step out of
/// it on the side it stands at ends the process.
class GuardedBuffer {
public:
    /// Whether the block's last byte stands just before the upper guard, or its first byte just
    /// after the lower one.
    enum class Side { EndsAtGuard, StartsAtGuard };

    explicit GuardedBuffer(std::size_t bytes, Side side = Side::EndsAtGuard,
                           unsigned char fill = 0);
    ~GuardedBuffer();
    GuardedBuffer(const GuardedBuffer&) = delete;
    GuardedBuffer& operator=(const GuardedBuffer&) = delete;

    unsigned char* data() { return m_data; }
    const unsigned char* data() const { return m_data; }
    std::size_t size() const { return m_size; }

    /// Takes the write permission away: a store into the block ends the process too.
    void MakeReadOnly();

    /// Whether the bytes of the pages around the block, which a step out of it on the other side
    /// would hit, still are what the constructor wrote.
    bool IsSurroundingUntouched() const;

private:
    std::size_t m_size;
    std::size_t m_mappedBytes;
    std::size_t m_usableBytes;
    unsigned char* m_mapping;
    unsigned char* m_usable;
    unsigned char* m_data;
};

#endif
