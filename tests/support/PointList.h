#ifndef KIVFISHEYE_TESTS_POINT_LIST_H
#define KIVFISHEYE_TESTS_POINT_LIST_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "support/GuardedBuffer.h"

/// A point of an outline, in fractions of the frame.
struct Point {
    double x;
    double y;
};

/// A client's list of points, at a multiple of 16 bytes for even counts, that ends at a guard page.
class PointList {
public:
    explicit PointList(int count)
        : m_buffer(static_cast<std::size_t>(count) * 2 * sizeof(float),
                   GuardedBuffer::Side::EndsAtGuard, 0xFF) {}

    float* Floats() { return reinterpret_cast<float*>(m_buffer.data()); }
    int Count() const { return static_cast<int>(m_buffer.size() / (2 * sizeof(float))); }

    bool IsUntouched() const {
        return UnwrittenFloats() == 2 * Count() && IsSurroundingUntouched();
    }
    bool IsFull() const { return UnwrittenFloats() == 0 && IsSurroundingUntouched(); }

    std::vector<Point> Points() const {
        std::vector<float> floats(static_cast<std::size_t>(Count()) * 2);
        std::memcpy(floats.data(), m_buffer.data(), m_buffer.size());
        std::vector<Point> points;
        for (std::size_t i = 0; i < floats.size(); i += 2) {
            points.push_back({floats[i], floats[i + 1]});
        }
        return points;
    }

    /// Whether both have the same bits.
    bool operator==(const PointList& other) const {
        return m_buffer.size() == other.m_buffer.size() &&
               std::memcmp(m_buffer.data(), other.m_buffer.data(), m_buffer.size()) == 0;
    }

private:
    int UnwrittenFloats() const {
        // The bits of a NaN that no computation gives.
        constexpr std::uint32_t kUnwritten = 0xFFFFFFFF;
        std::vector<std::uint32_t> bits(m_buffer.size() / sizeof(kUnwritten));
        std::memcpy(bits.data(), m_buffer.data(), m_buffer.size());
        return static_cast<int>(std::count(bits.begin(), bits.end(), kUnwritten));
    }

    bool IsSurroundingUntouched() const { return m_buffer.IsSurroundingUntouched(); }

    GuardedBuffer m_buffer;
};

#endif
