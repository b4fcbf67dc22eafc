#include "FrameLimits.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();
constexpr int kSmallest = std::numeric_limits<int>::min();

}  // namespace

TEST(EmptyFrame, HasASideOf0) {
    EXPECT_TRUE(IsEmptyFrame(0, 0));
    EXPECT_TRUE(IsEmptyFrame(0, 5));
    EXPECT_TRUE(IsEmptyFrame(5, 0));
    EXPECT_FALSE(IsEmptyFrame(1, 1));
    EXPECT_FALSE(IsEmptyFrame(-1, 5));
    EXPECT_FALSE(IsEmptyFrame(5, -1));
}

TEST(AddressableSource, HasRowsThatFitInTheirStride) {
    for (const int bytes : {3, 4}) {
        EXPECT_TRUE(IsAddressableSource(10, 7, 10 * bytes, bytes));
        EXPECT_TRUE(IsAddressableSource(10, 7, 10 * bytes + 1, bytes));
        EXPECT_FALSE(IsAddressableSource(10, 7, 10 * bytes - 1, bytes));
        EXPECT_FALSE(IsAddressableSource(10, 1, 10 * bytes - 1, bytes));
        EXPECT_FALSE(IsAddressableSource(10, 7, 0, bytes));
        EXPECT_FALSE(IsAddressableSource(10, 7, -10 * bytes, bytes));
    }
}

TEST(AddressableSource, HasNoMoreBytesThanAnIntCounts) {
    // 1 byte of distance, in one row, in two, and in many: 32767 * 65536 + 65535 = 2^31 - 1.
    EXPECT_TRUE(IsAddressableSource(536870911, 1, 2147483644, 4));
    EXPECT_TRUE(IsAddressableSource(715827882, 1, 2147483646, 3));
    EXPECT_TRUE(IsAddressableSource(1, 2, kLargest - 3, 3));
    EXPECT_FALSE(IsAddressableSource(1, 2, kLargest - 2, 3));
    EXPECT_TRUE(IsAddressableSource(1, 2, kLargest - 4, 4));
    EXPECT_FALSE(IsAddressableSource(1, 2, kLargest - 3, 4));
    EXPECT_TRUE(IsAddressableSource(21845, 32768, 65536, 3));
    EXPECT_FALSE(IsAddressableSource(21845, 32769, 65536, 3));
    EXPECT_TRUE(IsAddressableSource(16383, 32768, 65536, 4));
    EXPECT_FALSE(IsAddressableSource(16384, 32768, 65536, 4));
}

TEST(AddressableSource, IsNotFooledByProductsThatWrapAround) {
    EXPECT_FALSE(IsAddressableSource(0x40000008, 1, 32, 4));
    EXPECT_FALSE(IsAddressableSource(0x40000000, 1, 0, 4));
    EXPECT_FALSE(IsAddressableSource(8, 0x10000001, 32, 4));
    EXPECT_FALSE(IsAddressableSource(kLargest, kLargest, kLargest, 4));
}

TEST(AddressableSource, HasNoNegativeSide) {
    EXPECT_FALSE(IsAddressableSource(-1, 7, 40, 4));
    EXPECT_FALSE(IsAddressableSource(7, -1, 40, 4));
    EXPECT_FALSE(IsAddressableSource(kSmallest, kSmallest, 40, 4));
}

TEST(AddressableTable, HasNoMoreEntriesThanAnIntCounts) {
    EXPECT_TRUE(IsAddressableTable(3840, 960));
    EXPECT_TRUE(IsAddressableTable(kLargest, 1));
    EXPECT_TRUE(IsAddressableTable(1, kLargest));
    EXPECT_TRUE(IsAddressableTable(46341, 46340));
    EXPECT_FALSE(IsAddressableTable(46341, 46341));
    EXPECT_FALSE(IsAddressableTable(65536, 32768));
    EXPECT_FALSE(IsAddressableTable(65536, 65536));
    EXPECT_FALSE(IsAddressableTable(kLargest, 2));
    EXPECT_FALSE(IsAddressableTable(kLargest, kLargest));
}

TEST(AddressableTable, HasNoNegativeSide) {
    EXPECT_FALSE(IsAddressableTable(-8, 5));
    EXPECT_FALSE(IsAddressableTable(8, -5));
    EXPECT_FALSE(IsAddressableTable(-8, -5));
    EXPECT_FALSE(IsAddressableTable(kSmallest, kSmallest));
}

TEST(PixelsInsideAFrame, AreAllOfARowThatFitsInItsStride) {
    for (int y = 0; y < 5; ++y) {
        EXPECT_EQ(PixelsInsideFrame(8, 5, 24, y, 3), 8);
        EXPECT_EQ(PixelsInsideFrame(8, 5, 35, y, 4), 8);
    }
}

TEST(PixelsInsideAFrame, EndBeforeTheFramesEndInShortStrides) {
    // Rows of 8 pixels of 4 bytes, 24 bytes apart: the last one has 24 bytes left.
    EXPECT_EQ(PixelsInsideFrame(8, 5, 24, 3, 4), 8);
    EXPECT_EQ(PixelsInsideFrame(8, 5, 24, 4, 4), 6);
    // 3 bytes left hold no pixel of 4, 6 hold one, 9 and 11 two, 12 three.
    EXPECT_EQ(PixelsInsideFrame(8, 5, 3, 4, 4), 0);
    EXPECT_EQ(PixelsInsideFrame(8, 5, 3, 3, 4), 1);
    EXPECT_EQ(PixelsInsideFrame(8, 5, 3, 2, 4), 2);
    EXPECT_EQ(PixelsInsideFrame(8, 1, 11, 0, 4), 2);
    EXPECT_EQ(PixelsInsideFrame(8, 5, 3, 1, 4), 3);
    EXPECT_EQ(PixelsInsideFrame(8, 5, 0, 0, 4), 0);
}

TEST(PixelsInsideAFrame, AreCutInEveryRowWhenTheStrideWrappedAround) {
    EXPECT_EQ(PixelsInsideFrame(0x40000008, 3, 32, 0, 4), 24);
    EXPECT_EQ(PixelsInsideFrame(0x40000008, 3, 32, 1, 4), 16);
    EXPECT_EQ(PixelsInsideFrame(0x40000008, 3, 32, 2, 4), 8);
}

TEST(PixelsInsideAFrame, AreCountedBeyond32Bits) {
    EXPECT_EQ(PixelsInsideFrame(kLargest, kLargest, kLargest, 0, 3), kLargest);
    EXPECT_EQ(PixelsInsideFrame(8, 65536, 65536, 0, 4), 8);
    EXPECT_EQ(PixelsInsideFrame(8, 32768, 65536, 0, 4), 8);
}

TEST(PixelsInsideAFrame, AreNoneForNegativeSizes) {
    EXPECT_EQ(PixelsInsideFrame(-8, 5, 32, 0, 4), 0);
    EXPECT_EQ(PixelsInsideFrame(8, 5, -32, 0, 4), 0);
    EXPECT_EQ(PixelsInsideFrame(8, -5, 32, 0, 4), 0);
}
