#include <gtest/gtest.h>

#if defined(__linux__)

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "MemoryUtils.h"
#include "PanoramaTable.h"

// Which pages the system was told to be worth large ones: it keeps the advice for each mapping.

namespace {

std::uintptr_t PageBytes() {
    return static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
}

/// Addresses from `first` up to but not including `end`.
struct Range {
    std::uintptr_t first;
    std::uintptr_t end;
};

std::vector<Range> AdvisedRanges() {
    std::vector<Range> ranges;
    std::ifstream maps("/proc/self/smaps");
    Range mapping{0, 0};
    for (std::string line; std::getline(maps, line);) {
        std::istringstream words(line);
        char dash = 0;
        Range found{0, 0};
        if (words >> std::hex >> found.first >> dash >> found.end && dash == '-') {
            mapping = found;
        } else if (line.rfind("VmFlags:", 0) == 0 && line.find(" hg") != std::string::npos) {
            ranges.push_back(mapping);
        }
    }
    return ranges;
}

/// How many of a block's pages are advised.
std::uintptr_t AdvisedPagesIn(const void* memory, std::uintptr_t size) {
    const auto first = reinterpret_cast<std::uintptr_t>(memory);
    std::uintptr_t bytes = 0;
    for (const Range& range : AdvisedRanges()) {
        const std::uintptr_t from = std::max(range.first, first);
        const std::uintptr_t end = std::min(range.end, first + size);
        bytes += end > from ? end - from : 0;
    }
    return bytes / PageBytes();
}

/// Pages of their own that no advice was given for.
class Pages {
public:
    explicit Pages(std::uintptr_t count)
        : m_bytes(count * PageBytes()),
          m_memory(
              mmap(nullptr, m_bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {}
    ~Pages() { munmap(m_memory, m_bytes); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;

    unsigned char* data() const { return static_cast<unsigned char*>(m_memory); }

private:
    std::uintptr_t m_bytes;
    void* m_memory;
};

class HugePageAdvice : public ::testing::Test {
protected:
    void SetUp() override {
        const Pages pages(1);
        if (madvise(pages.data(), PageBytes(), MADV_HUGEPAGE) != 0 ||
            AdvisedPagesIn(pages.data(), PageBytes()) != 1) {
            GTEST_SKIP() << "this system has no large pages, or does not tell of them";
        }
    }
};

}  // namespace

// A block that begins and ends within pages shares these with others.
TEST_F(HugePageAdvice, IsGivenForTheBlocksWholePagesAlone) {
    const std::uintptr_t page = PageBytes();
    const std::uintptr_t count = (4UL << 20) / page + 8;
    for (const std::uintptr_t before : {std::uintptr_t{0}, std::uintptr_t{5}, page - 1}) {
        for (const std::uintptr_t after : {std::uintptr_t{0}, std::uintptr_t{1}, page - 1}) {
            const Pages pages(count);
            PreferHugePages(pages.data() + page + before, (count - 2) * page - before - after);
            const std::uintptr_t first = before == 0 ? 1 : 2;
            const std::uintptr_t end = after == 0 ? count - 1 : count - 2;
            EXPECT_EQ(AdvisedPagesIn(pages.data(), count * page), end - first);
            EXPECT_EQ(AdvisedPagesIn(pages.data() + first * page, (end - first) * page),
                      end - first)
                << before << " bytes into a page, and " << after << " before the end of one";
        }
    }
}

TEST_F(HugePageAdvice, IsGivenFromFourMebibytesOn) {
    constexpr std::uintptr_t kSmallest = 4UL << 20;
    const std::uintptr_t count = kSmallest / PageBytes();
    for (const std::uintptr_t missing : {std::uintptr_t{0}, std::uintptr_t{1}}) {
        const Pages pages(count);
        PreferHugePages(pages.data(), kSmallest - missing);
        EXPECT_EQ(AdvisedPagesIn(pages.data(), kSmallest), missing == 0 ? count : 0U);
    }
}

TEST_F(HugePageAdvice, IsGivenForTheWholeTableOfAPanorama) {
    constexpr int kColumns = 2048;
    constexpr int kRows = 1024;
    constexpr std::uintptr_t kBytes = std::uintptr_t{kColumns} * kRows * sizeof(int);
    PanoramaTable panorama;
    std::uintptr_t advised = 0;
    panorama.Rebuild({8, 8, 32, kColumns, kRows, kColumns * 4, 32},
                     [&](CAlignedBufferT<int, 32>& table) {
                         std::fill_n(table.data(), table.count(), OutOfFrame);
                         advised = AdvisedPagesIn(table.data(), kBytes);
                     });
    EXPECT_GE(advised, kBytes / PageBytes() - 1);
}

#endif
