#ifndef KIVFISHEYE_TESTS_DIGEST_H
#define KIVFISHEYE_TESTS_DIGEST_H

#include <cstddef>
#include <cstdint>
#include <vector>

/// The FNV-1a hash of all bytes that were added, in 64 bits.
class Digest {
public:
    void Add(const void* bytes, std::size_t count) {
        const auto* const first = static_cast<const unsigned char*>(bytes);
        for (std::size_t i = 0; i < count; ++i) {
            m_value = (m_value ^ first[i]) * 0x100000001B3ULL;
        }
    }

    template <class Element>
    void Add(const std::vector<Element>& elements) {
        Add(elements.data(), elements.size() * sizeof(Element));
    }

    std::uint64_t Value() const { return m_value; }

private:
    std::uint64_t m_value = 0xCBF29CE484222325ULL;
};

#endif
