#include "MemoryUtils.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

#include "support/FailingAllocations.h"
#include "support/GuardedBuffer.h"

namespace {

bool IsAligned(const void* memory, unsigned long alignment) {
    return reinterpret_cast<std::uintptr_t>(memory) % alignment == 0;
}

TEST(AlignedMalloc, GivesMemoryAtMultiplesOfTheAlignment) {
    for (unsigned long alignment = 8; alignment <= 65536; alignment *= 2) {
        for (const unsigned long size : {1UL, 7UL, 100UL, 4096UL, 100001UL}) {
            void* const memory = _aligned_malloc(size, alignment);
            ASSERT_NE(memory, nullptr) << size << " at " << alignment;
            EXPECT_TRUE(IsAligned(memory, alignment)) << size << " at " << alignment;
            std::memset(memory, 0xA5, size);
            _aligned_free(memory);
        }
    }
}

TEST(AlignedMalloc, TakesTheSizeFirstAndTheAlignmentSecond) {
    // The other way about, 48 would be an alignment that no memory has.
    void* const memory = _aligned_malloc(48, 4096);
    ASSERT_NE(memory, nullptr);
    EXPECT_TRUE(IsAligned(memory, 4096));
    _aligned_free(memory);
}

TEST(AlignedMalloc, AlignmentsOf0And2And4AreRaisedTo8) {
    for (const unsigned long alignment : {0UL, 2UL, 4UL}) {
        const AllocationWatch watch;
        void* const memory = _aligned_malloc(100, alignment);
        EXPECT_EQ(watch.LastAlignment(), 8UL) << alignment;
        ASSERT_NE(memory, nullptr) << alignment;
        EXPECT_TRUE(IsAligned(memory, 8)) << alignment;
        _aligned_free(memory);
    }
}

TEST(AlignedMalloc, OtherAlignmentsArePassedOnAsTheyStand) {
    for (const unsigned long alignment : {8UL, 16UL, 32UL, 64UL, 4096UL}) {
        const AllocationWatch watch;
        void* const memory = _aligned_malloc(100, alignment);
        EXPECT_EQ(watch.LastAlignment(), alignment);
        _aligned_free(memory);
    }
}

TEST(AlignedMalloc, AnAlignmentOf1IsPlainMalloc) {
    const AllocationWatch watch(1);
    void* const memory = _aligned_malloc(100, 1);
    EXPECT_NE(memory, nullptr);
    EXPECT_EQ(watch.Requests(), 0) << "malloc is not watched, posix_memalign is";
    _aligned_free(memory);
}

TEST(AlignedMalloc, AnAlignmentThatIsNoPowerOfTwoGivesNull) {
    for (const unsigned long alignment : {3UL, 5UL, 6UL, 7UL, 12UL, 24UL, 40UL, 100UL}) {
        EXPECT_EQ(_aligned_malloc(100, alignment), nullptr) << alignment;
    }
}

TEST(AlignedMalloc, ExhaustedMemoryGivesNull) {
    const AllocationWatch watch(1);
    EXPECT_EQ(_aligned_malloc(100, 32), nullptr);
    EXPECT_TRUE(watch.HasFailed());
}

TEST(AlignedFree, GivesTheMemoryBack) {
    const AllocationWatch watch;
    void* const memory = _aligned_malloc(100, 32);
    EXPECT_EQ(watch.BlocksTaken(), 1);
    _aligned_free(memory);
    EXPECT_EQ(watch.BlocksTaken(), 0);
}

TEST(AlignedFree, IgnoresNull) {
    const AllocationWatch watch;
    _aligned_free(nullptr);
    EXPECT_EQ(watch.BlocksTaken(), 0);
}

TEST(Freea, LeavesTheMemoryAlone) {
    const AllocationWatch watch;
    auto* const memory = static_cast<char*>(_aligned_malloc(16, 16));
    ASSERT_NE(memory, nullptr);
    memory[0] = 'x';
    _freea(memory);
    EXPECT_EQ(watch.BlocksTaken(), 1);
    EXPECT_EQ(memory[0], 'x');
    _aligned_free(memory);
}

TEST(Alloca, UsesTheStackAlone) {
    const AllocationWatch watch;
    for (const unsigned long size : {0UL, 1UL, 16UL, 17UL, 4096UL}) {
        // The memory is gone by now; that the call returns is all there is to see.
        static_cast<void>(_alloca(size));
    }
    EXPECT_EQ(watch.Requests(), 0);
}

TEST(HugePages, LeaveContentsAndNeighboursAsTheyAre) {
    for (const unsigned long size : {0UL, 1UL, 4095UL, (4UL << 20) - 1, 4UL << 20, 9000001UL}) {
        GuardedBuffer block(size + 5);
        std::memset(block.data(), 0xA5, size + 5);
        PreferHugePages(block.data() + 5, size);
        const std::vector<unsigned char> expected(size + 5, 0xA5);
        EXPECT_EQ(std::memcmp(block.data(), expected.data(), size + 5), 0) << size;
    }
}

template <class Buffer>
class AlignedBuffer : public testing::Test {};

template <class T, unsigned long N>
struct BufferOf {
    using Buffer = CAlignedBufferT<T, N>;
    using Element = T;
    static constexpr unsigned long kAlignment = N;
};

using Buffers = testing::Types<BufferOf<int, 32>, BufferOf<float, 16>, BufferOf<double, 4096>,
                               BufferOf<unsigned char, 64>>;
TYPED_TEST_SUITE(AlignedBuffer, Buffers);

TYPED_TEST(AlignedBuffer, StartsEmpty) {
    const typename TypeParam::Buffer buffer;
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.count(), 0U);
}

TYPED_TEST(AlignedBuffer, HoldsTheCountOfElementsAtItsAlignment) {
    typename TypeParam::Buffer buffer;
    buffer.Allocate(1001);
    ASSERT_NE(buffer.data(), nullptr);
    EXPECT_TRUE(IsAligned(buffer.data(), TypeParam::kAlignment));
    EXPECT_EQ(buffer.count(), 1001U);
    for (int i = 0; i < 1001; ++i) {
        buffer.data()[i] = static_cast<typename TypeParam::Element>(i % 100);
    }
    EXPECT_EQ(std::as_const(buffer).data()[1000], static_cast<typename TypeParam::Element>(0));
    EXPECT_EQ(std::as_const(buffer).data()[99], static_cast<typename TypeParam::Element>(99));
}

TYPED_TEST(AlignedBuffer, ACountOf0TakesNoMemory) {
    const AllocationWatch watch;
    typename TypeParam::Buffer buffer;
    buffer.Allocate(0);
    EXPECT_EQ(watch.Requests(), 0);
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.count(), 0U);
}

TYPED_TEST(AlignedBuffer, ACountOf0ReleasesWhatItHeld) {
    const AllocationWatch watch;
    typename TypeParam::Buffer buffer;
    buffer.Allocate(10);
    buffer.Allocate(0);
    EXPECT_EQ(watch.BlocksTaken(), 0);
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.count(), 0U);
}

TYPED_TEST(AlignedBuffer, AllocatesAnewEvenForTheSameCount) {
    const AllocationWatch watch;
    typename TypeParam::Buffer buffer;
    buffer.Allocate(10);
    buffer.Allocate(10);
    EXPECT_EQ(watch.Requests(), 2);
    EXPECT_EQ(watch.BlocksTaken(), 1);
}

TYPED_TEST(AlignedBuffer, ResetLeavesItEmpty) {
    const AllocationWatch watch;
    typename TypeParam::Buffer buffer;
    buffer.Allocate(10);
    buffer.Reset();
    EXPECT_EQ(watch.BlocksTaken(), 0);
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.count(), 0U);
}

TYPED_TEST(AlignedBuffer, GivesItsMemoryBackWhenItEnds) {
    const AllocationWatch watch;
    {
        typename TypeParam::Buffer buffer;
        buffer.Allocate(10);
        EXPECT_EQ(watch.BlocksTaken(), 1);
    }
    EXPECT_EQ(watch.BlocksTaken(), 0);
}

TYPED_TEST(AlignedBuffer, ExhaustedMemoryThrowsAndLeavesItEmpty) {
    typename TypeParam::Buffer buffer;
    AllocationWatch watch;
    buffer.Allocate(10);
    watch.FailRequest(1);
    EXPECT_TRUE(ThrowsBadAlloc([&] { buffer.Allocate(20); }));
    EXPECT_EQ(watch.BlocksTaken(), 0) << "what it held is released too";
    EXPECT_EQ(buffer.data(), nullptr);
    EXPECT_EQ(buffer.count(), 0U);
    buffer.Allocate(20);
    EXPECT_EQ(buffer.count(), 20U);
}

TYPED_TEST(AlignedBuffer, BorrowedElementsStayWithTheirOwner) {
    using Buffer = typename TypeParam::Buffer;
    AllocationWatch watch;
    Buffer owner;
    owner.Allocate(10);
    {
        const Buffer part = Buffer::Borrow(owner.data() + 4, 3);
        EXPECT_EQ(part.data(), owner.data() + 4);
        EXPECT_EQ(part.count(), 3U);
    }
    EXPECT_EQ(watch.BlocksTaken(), 1);
    EXPECT_EQ(owner.count(), 10U);
}

TYPED_TEST(AlignedBuffer, OwnsWhatItAllocatesAfterItBorrowed) {
    using Buffer = typename TypeParam::Buffer;
    AllocationWatch watch;
    Buffer owner;
    owner.Allocate(10);
    {
        Buffer borrower = Buffer::Borrow(owner.data(), 10);
        borrower.Allocate(5);
        EXPECT_EQ(watch.BlocksTaken(), 2);
    }
    EXPECT_EQ(watch.BlocksTaken(), 1);
}

TYPED_TEST(AlignedBuffer, CanNotBeCopied) {
    using Buffer = typename TypeParam::Buffer;
    EXPECT_FALSE(std::is_copy_constructible_v<Buffer>);
    EXPECT_FALSE(std::is_copy_assignable_v<Buffer>);
}

}  // namespace
