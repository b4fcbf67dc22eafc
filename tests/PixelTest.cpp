#include "Pixel.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

#include "support/GuardedBuffer.h"

namespace {

template <unsigned long bits>
struct PixelBits {
    using Pixel = PixelT<bits>;
    static constexpr std::size_t kBytes = bits / 8;
};

struct PixelBitsNames {
    template <class Bits>
    static std::string GetName(int) {
        return std::to_string(Bits::kBytes) + "Bytes";
    }
};

using Bytes = std::vector<unsigned char>;

}  // namespace

template <class Bits>
class Pixels : public ::testing::Test {};

using AllPixelBits = ::testing::Types<PixelBits<24>, PixelBits<32>>;
TYPED_TEST_SUITE(Pixels, AllPixelBits, PixelBitsNames);

TYPED_TEST(Pixels, TakeAnEighthOfTheirBitsInBytes) {
    EXPECT_EQ(std::size_t{TypeParam::Pixel::kBytes}, TypeParam::kBytes);
}

TYPED_TEST(Pixels, AreCopiedInOrderBetweenAnyAddresses) {
    for (std::size_t from = 0; from < 8; ++from) {
        for (std::size_t to = 0; to < 8; ++to) {
            Bytes src(16);
            for (std::size_t i = 0; i < src.size(); ++i) {
                src[i] = static_cast<unsigned char>(0xF0 + i);
            }
            Bytes dst(16, 0x22);
            Bytes expected = dst;
            for (std::size_t i = 0; i < TypeParam::kBytes; ++i) {
                expected[to + i] = src[from + i];
            }
            TypeParam::Pixel::Copy(src.data() + from, dst.data() + to);
            EXPECT_EQ(dst, expected) << "from " << from << " to " << to;
        }
    }
}

TYPED_TEST(Pixels, ClearToZeroBytesAndNothingBeside) {
    for (std::size_t at = 0; at < 8; ++at) {
        Bytes dst(16, 0xFF);
        Bytes expected = dst;
        for (std::size_t i = 0; i < TypeParam::kBytes; ++i) {
            expected[at + i] = 0;
        }
        TypeParam::Pixel::Clear(dst.data() + at);
        EXPECT_EQ(dst, expected) << "at " << at;
    }
}

TYPED_TEST(Pixels, MayBeAFramesLastAndFirst) {
    for (const auto side : {GuardedBuffer::Side::EndsAtGuard, GuardedBuffer::Side::StartsAtGuard}) {
        GuardedBuffer src(TypeParam::kBytes, side, 0x77);
        GuardedBuffer dst(TypeParam::kBytes, side, 0x11);
        src.MakeReadOnly();
        TypeParam::Pixel::Copy(src.data(), dst.data());
        EXPECT_EQ(Bytes(dst.data(), dst.data() + dst.size()), Bytes(TypeParam::kBytes, 0x77));
        TypeParam::Pixel::Clear(dst.data());
        EXPECT_EQ(Bytes(dst.data(), dst.data() + dst.size()), Bytes(TypeParam::kBytes, 0));
        EXPECT_TRUE(dst.IsSurroundingUntouched());
    }
}
