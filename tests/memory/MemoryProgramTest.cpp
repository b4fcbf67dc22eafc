#include <gtest/gtest.h>

#include <string>

#include "memory/ContextMemory.h"
#include "support/ProgramRun.h"

// The program that writes docs/memory.md.

namespace {

std::size_t CountOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

TEST(MemoryProgram, WritesEveryMountAndViewInBothSizes) {
    const ProgramRun run = RunProgram(KIVFISHEYE_MEMORY, {});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output.find("# How much memory a context takes\n"), 0U);
    EXPECT_EQ(CountOf(run.output, "\nSource "), 2U);
    for (const MountedView& view : kMountedViews) {
        EXPECT_EQ(CountOf(run.output, "\n| " + NameOf(view) + " | "), 2U) << NameOf(view);
    }
    // Four bytes for each of 1024 x 1024 pixels and 64 more are the block of a snapshot.
    EXPECT_EQ(CountOf(run.output, " | 1024x1024 | "), 5U);
    EXPECT_GE(CountOf(run.output, " | 4 194 368 |\n"), 5U);
}

TEST(MemoryProgram, RefusesArgumentsWithASentence) {
    const ProgramRun run = RunProgram(KIVFISHEYE_MEMORY, {"--help"});
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors,
              "KivFisheyeMemory: there is nothing to tell it; it writes a page about what contexts "
              "take of the heap.\n");
}

}  // namespace
