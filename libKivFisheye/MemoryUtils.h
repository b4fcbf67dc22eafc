#ifndef KIVFISHEYE_MEMORY_UTILS_H
#define KIVFISHEYE_MEMORY_UTILS_H

#include <new>

/// Memory of `size` bytes at a multiple of `alignment`, or null when it cannot be had. Alignments
/// below 8 give at least 8, but for 1, which is plain `malloc`; one that is no power of two fails.
/// The caller owns the memory and gives it to `_aligned_free`.
void* _aligned_malloc(unsigned long size, unsigned long alignment);

/// Releases memory from `_aligned_malloc`. Null is ignored.
void _aligned_free(void* memory);

/// Tells the system that memory is worth large pages, which take a fraction of the time to get and
/// to clear. The contents stay, and blocks too small to gain from it get none.
void PreferHugePages(void* memory, unsigned long size);

/// Lets code link that was written for Windows. The memory is gone when this returns.
void* _alloca(unsigned long size);

/// The counterpart of `_alloca`; does nothing.
void _freea(void* memory);

/// Elements of type `T` at a multiple of `N` bytes, not initialised. They belong to the buffer
/// unless they are borrowed.
template <class T, unsigned long N>
class CAlignedBufferT {
public:
    CAlignedBufferT() = default;
    CAlignedBufferT(const CAlignedBufferT&) = delete;
    CAlignedBufferT& operator=(const CAlignedBufferT&) = delete;
    ~CAlignedBufferT() { Reset(); }

    /// A buffer of some elements of another one, which must outlive it.
    static CAlignedBufferT Borrow(T* data, unsigned long long count) {
        return CAlignedBufferT(data, count);
    }

    T* data() { return m_data; }
    const T* data() const { return m_data; }
    unsigned long long count() const { return m_count; }

    /// Leaves the buffer empty.
    void Reset() {
        if (m_ownsElements) {
            _aligned_free(m_data);
        }
        m_ownsElements = true;
        m_data = nullptr;
        m_count = 0;
    }

    /// Replaces the elements by `count` new ones. The old storage is released first and never used
    /// again. Throws `std::bad_alloc` and stays empty when memory runs out.
    void Allocate(unsigned long long count) {
        Reset();
        if (count == 0) {
            return;
        }
        void* const memory = _aligned_malloc(count * sizeof(T), N);
        if (memory == nullptr) {
            throw std::bad_alloc();
        }
        m_data = static_cast<T*>(memory);
        m_count = count;
    }

private:
    CAlignedBufferT(T* borrowed, unsigned long long count)
        : m_data(borrowed), m_count(count), m_ownsElements(false) {}

    T* m_data = nullptr;
    unsigned long long m_count = 0;
    bool m_ownsElements = true;
};

#endif
