#ifndef KIVFISHEYE_FUZZ_FUZZ_INPUT_H
#define KIVFISHEYE_FUZZ_FUZZ_INPUT_H

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

/// Makes choices of the bytes that a fuzzer hands over. Behind the last byte there are zeros.
class FuzzInput {
public:
    FuzzInput(const unsigned char* data, std::size_t size) : m_data(data), m_left(size) {}

    bool IsEmpty() const { return m_left == 0; }

    std::uint8_t Byte() {
        if (m_left == 0) {
            return 0;
        }
        --m_left;
        return *m_data++;
    }

    std::uint32_t Bits(int bytes) {
        std::uint32_t bits = 0;
        for (int i = 0; i < bytes; ++i) {
            bits = bits << 8 | Byte();
        }
        return bits;
    }

    /// From `least` to `most`, both included.
    int Between(int least, int most) {
        const auto count = static_cast<std::uint32_t>(most - least) + 1;
        return least + static_cast<int>(Bits(count <= 256 ? 1 : 4) % count);
    }

    /// True once in so many times.
    bool OnceIn(int times) { return Between(1, times) == times; }

    template <class List>
    auto OneOf(const List& list) {
        return list[static_cast<std::size_t>(Between(0, static_cast<int>(std::size(list)) - 1))];
    }

    /// Mostly a number of this range, now and then one of its bounds or just beyond them, one with
    /// a special meaning, or any four bytes.
    float Number(float least, float most) {
        const int kind = Byte();
        if (kind < 160) {
            const float part = static_cast<float>(Bits(2)) / 65535.0F;
            return least + (most - least) * part;
        }
        if (kind < 176) {
            float number = 0.0F;
            const std::uint32_t bits = Bits(4);
            std::memcpy(&number, &bits, sizeof(number));
            return number;
        }
        using Limits = std::numeric_limits<float>;
        const float special[] = {least,
                                 most,
                                 std::nextafter(least, -Limits::infinity()),
                                 std::nextafter(most, Limits::infinity()),
                                 0.0F,
                                 -0.0F,
                                 0.5F,
                                 1.0F,
                                 -1.0F,
                                 2.0F,
                                 90.0F,
                                 -90.0F,
                                 180.0F,
                                 360.0F,
                                 -360.0F,
                                 1e-7F,
                                 -1e-7F,
                                 1e30F,
                                 Limits::max(),
                                 Limits::lowest(),
                                 Limits::denorm_min(),
                                 -Limits::denorm_min(),
                                 Limits::infinity(),
                                 -Limits::infinity(),
                                 Limits::quiet_NaN()};
        return special[static_cast<std::size_t>(kind - 176) % std::size(special)];
    }

private:
    const unsigned char* m_data;
    std::size_t m_left;
};

#endif
