#ifndef KIVFISHEYE_FUZZ_CLIENT_LIST_H
#define KIVFISHEYE_FUZZ_CLIENT_LIST_H

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>

#include "Check.h"
#include "FuzzInput.h"
#include "Pictures.h"

/// A client's list of points: with the count that it claims, and perhaps null or misaligned.
class ClientList {
public:
    /// A good one.
    explicit ClientList(int count)
        : m_bytes(static_cast<std::size_t>(count) * kFloatsPerPoint * sizeof(float)),
          m_count(count),
          m_isGood(true),
          m_isNull(false) {
        m_memory =
            std::make_unique<GuardedBuffer>(m_bytes, GuardedBuffer::Side::EndsAtGuard, kFill);
        m_first = m_memory->data();
    }

    ClientList(FuzzInput& choices, int divisor) {
        const int oddCounts[] = {0,           -divisor,    std::numeric_limits<int>::min(),
                                 1,           divisor / 2, divisor / 2 * 3,
                                 divisor - 1, divisor + 1};
        m_count = choices.OnceIn(5) ? choices.OneOf(oddCounts) : divisor * choices.Between(1, 6);
        const auto points = static_cast<std::size_t>(m_count > 0 ? m_count : 1);
        m_bytes = points * kFloatsPerPoint * sizeof(float);
        // Before or behind the list there is room to move it off its alignment.
        const bool isAtStart = choices.OnceIn(3);
        m_memory = std::make_unique<GuardedBuffer>(
            m_bytes + kAlignment,
            isAtStart ? GuardedBuffer::Side::StartsAtGuard : GuardedBuffer::Side::EndsAtGuard,
            kFill);
        m_first = m_memory->data() + (isAtStart ? 0 : kAlignment);
        if (choices.OnceIn(16)) {
            const int shift = 4 * choices.Between(1, 3);
            m_first += isAtStart ? shift : -shift;
        }
        const bool isAligned = reinterpret_cast<std::uintptr_t>(m_first) % kAlignment == 0;
        m_isGood = isAligned && m_count > 0 && m_count % divisor == 0;
        m_isNull = choices.OnceIn(24);
        m_isGood = m_isGood && !m_isNull;
    }

    bool IsGood() const { return m_isGood; }
    int Count() const { return m_count; }
    float* Points() { return m_isNull ? nullptr : reinterpret_cast<float*>(m_first); }

    void ExpectUntouched() const {
        Expect(IsFilledWith(m_memory->data(), m_memory->size(), kFill),
               "a list changed that was to stay as it is");
    }

    /// Both hold the same bytes.
    void ExpectSame(const ClientList& other) const {
        Expect(m_bytes == other.m_bytes && std::memcmp(m_first, other.m_first, m_bytes) == 0,
               "two ways to an outline give two outlines");
    }

    /// All points lie on the ellipse of these radii around the frame's centre.
    void ExpectEllipse(float radiusX, float radiusY) const {
        for (std::size_t i = 0; i < m_bytes; i += kFloatsPerPoint * sizeof(float)) {
            float point[kFloatsPerPoint];
            std::memcpy(point, m_first + i, sizeof(point));
            const float distance =
                std::hypot((point[0] - 0.5F) / radiusX, (point[1] - 0.5F) / radiusY);
            Expect(!(std::fabs(distance - 1.0F) > 0.001F), "a point lies ", distance,
                   " radii from the centre");
        }
    }

    /// Every number is written, none around them, and all lie in the frame, NaN apart.
    void ExpectOutline(bool isInFrame) const {
        const auto before = static_cast<std::size_t>(m_first - m_memory->data());
        Expect(IsFilledWith(m_memory->data(), before, kFill) &&
                   IsFilledWith(m_first + m_bytes, m_memory->size() - before - m_bytes, kFill),
               "bytes around a list changed");
        for (std::size_t i = 0; i < m_bytes; i += sizeof(float)) {
            float number = 0.0F;
            std::memcpy(&number, m_first + i, sizeof(number));
            Expect(!IsFilledWith(m_first + i, sizeof(number), kFill), "number ", i / sizeof(number),
                   " of ", m_bytes / sizeof(number), " was not written");
            Expect(!isInFrame || std::isnan(number) || std::fabs(number - 0.5F) < 1.01F, "number ",
                   i / sizeof(number), " is ", number);
        }
    }

private:
    static constexpr std::size_t kAlignment = 16;
    static constexpr std::size_t kFloatsPerPoint = 2;

    std::unique_ptr<GuardedBuffer> m_memory;
    unsigned char* m_first;
    std::size_t m_bytes;
    int m_count;
    bool m_isGood;
    bool m_isNull;
};

#endif
