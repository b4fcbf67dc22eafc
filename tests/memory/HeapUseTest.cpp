#include "memory/HeapUse.h"

#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>
#include <thread>
#include <vector>

namespace {

/// Bytes that are in use beyond those of its making.
class Beyond {
public:
    std::size_t Bytes() const { return HeapInUse().bytes - m_start.bytes; }
    std::size_t Blocks() const { return HeapInUse().blocks - m_start.blocks; }

private:
    HeapUse m_start = HeapInUse();
};

// Compilers may leave out a block that nobody looks at, and refuse sizes that cannot be had.
void* Seen(void* memory) {
    void* volatile address = memory;
    return address;
}

std::size_t Hidden(std::size_t size) {
    volatile std::size_t hidden = size;
    return hidden;
}

TEST(HeapUse, CountsInThisBuild) {
    EXPECT_TRUE(CountsHeap());
}

TEST(HeapUse, CountsTheBytesThatWereAskedFor) {
    const Beyond use;
    void* const memory = Seen(std::malloc(1001));
    EXPECT_EQ(use.Bytes(), 1001U);
    EXPECT_EQ(use.Blocks(), 1U);
    std::free(memory);
    EXPECT_EQ(use.Bytes(), 0U);
    EXPECT_EQ(use.Blocks(), 0U);
}

TEST(HeapUse, CountsABlockWithoutBytes) {
    const Beyond use;
    void* const memory = Seen(std::malloc(0));
    EXPECT_EQ(use.Bytes(), 0U);
    EXPECT_EQ(use.Blocks(), 1U);
    std::free(memory);
    EXPECT_EQ(use.Blocks(), 0U);
}

TEST(HeapUse, CountsObjectsAndLists) {
    const Beyond use;
    {
        std::vector<int> list(77);
        const auto object = std::make_unique<double>(1.0);
        Seen(list.data());
        Seen(object.get());
        EXPECT_EQ(use.Bytes(), 77 * sizeof(int) + sizeof(double));
        EXPECT_EQ(use.Blocks(), 2U);
    }
    EXPECT_EQ(use.Bytes(), 0U);
}

TEST(HeapUse, CountsAlignedBlocksAndKeepsThemAligned) {
    const Beyond use;
    void* memory = nullptr;
    ASSERT_EQ(posix_memalign(&memory, 4096, 123), 0);
    void* const other = Seen(aligned_alloc(256, 512));
    void* const third = Seen(memalign(64, 7));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % 4096, 0U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(other) % 256, 0U);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(third) % 64, 0U);
    EXPECT_EQ(use.Bytes(), 123U + 512U + 7U);
    std::free(memory);
    std::free(other);
    std::free(third);
    EXPECT_EQ(use.Bytes(), 0U);
    EXPECT_EQ(posix_memalign(&memory, 24, 8), EINVAL);
}

TEST(HeapUse, CountsClearedBlocks) {
    const Beyond use;
    auto* const memory = static_cast<unsigned char*>(Seen(std::calloc(9, 111)));
    EXPECT_EQ(use.Bytes(), 999U);
    for (int i = 0; i < 999; ++i) {
        ASSERT_EQ(memory[i], 0);
    }
    std::free(memory);
    EXPECT_EQ(Seen(std::calloc(Hidden(SIZE_MAX / 2), 3)), nullptr);
    EXPECT_EQ(use.Bytes(), 0U);
}

TEST(HeapUse, CountsABlockAtItsNewSize) {
    const Beyond use;
    auto* const small = static_cast<unsigned char*>(Seen(std::realloc(nullptr, 10)));
    std::memset(small, 0x5A, 10);
    auto* const large = static_cast<unsigned char*>(Seen(std::realloc(small, 100000)));
    EXPECT_EQ(use.Bytes(), 100000U);
    EXPECT_EQ(use.Blocks(), 1U);
    EXPECT_EQ(large[9], 0x5A);
    std::free(large);
    EXPECT_EQ(use.Bytes(), 0U);
}

TEST(HeapUse, KeepsTheMostThatWasInUseAtOneTime) {
    const Beyond use;
    const std::size_t start = HeapInUse().bytes;
    StartHeapPeak();
    EXPECT_EQ(HeapPeak(), start);
    std::free(Seen(std::malloc(5000)));
    std::free(Seen(std::malloc(3000)));
    EXPECT_EQ(HeapPeak(), start + 5000);
    StartHeapPeak();
    EXPECT_EQ(HeapPeak(), start);
    EXPECT_EQ(use.Bytes(), 0U);
}

TEST(HeapUse, CountsRequestsEvenIfTheyFail) {
    const std::size_t before = HeapRequests();
    std::free(Seen(std::malloc(10)));
    EXPECT_EQ(Seen(std::malloc(Hidden(SIZE_MAX - 100))), nullptr);
    EXPECT_EQ(Seen(std::malloc(Hidden(SIZE_MAX))), nullptr);
    EXPECT_EQ(HeapRequests(), before + 3);
}

TEST(HeapUse, CountsWhatOtherThreadsTakeAndGiveBack) {
    void* memory = nullptr;
    std::size_t taken = 0;
    std::thread([&] {
        const Beyond use;
        memory = Seen(std::malloc(321));
        taken = use.Bytes();
    }).join();
    EXPECT_EQ(taken, 321U);
    const std::size_t before = HeapInUse().bytes;
    std::free(memory);
    EXPECT_EQ(HeapInUse().bytes, before - 321);
}

}  // namespace
