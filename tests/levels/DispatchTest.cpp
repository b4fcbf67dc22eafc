#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <set>
#include <string>

#include "levels/DispatchEntries.h"
#include "levels/ForcedLevel.h"
#include "levels/ProgramSymbols.h"

// Which kernel stands behind which pointer at which level: the pointers themselves are looked at,
// before the first call, after it, and after another.

namespace {

/// Whether this processor can run the kernels that one of the level takes.
bool HasInstructionsOf(int level) {
#if defined(__x86_64__)
    return MissingInstructions(level) == nullptr;
#else
    return level < 2;
#endif
}

/// Calls an entry and says what is wrong with it; nothing when all is right.
std::string FaultOf(const DispatchEntry& entry, int level, const ProgramSymbols& symbols) {
    const std::string pointer = entry.Pointer();
    const EntryOutput untouched;
    EntryOutput first;
    EntryOutput second;
    if (!symbols.LeadsTo(pointer, "FirstCall<" + pointer)) {
        return "does not lead to its first call";
    }
    entry.call(first);
    if (!symbols.LeadsTo(pointer, entry.Kernel(level))) {
        return "does not lead to " + entry.Kernel(level) + " after the first call";
    }
    entry.call(second);
    if (!symbols.LeadsTo(pointer, entry.Kernel(level))) {
        return "does not lead to " + entry.Kernel(level) + " after the second call";
    }
    if (first == untouched) {
        return "writes nothing at the first call";
    }
    return first == second ? "" : "writes something else at the second call";
}

/// In a process of its own, where no kernel is chosen yet: ends it with 0 when every entry is
/// right.
[[noreturn]] void CallAllEntries(int level) {
    forcedLevel = level;
    const ProgramSymbols symbols;
    int faults = 0;
    for (const DispatchEntry& entry : AllDispatchEntries()) {
        const std::string fault = FaultOf(entry, level, symbols);
        if (!fault.empty()) {
            ++faults;
            std::cerr << entry.Pointer() << " " << fault << "\n";
        }
    }
    std::_Exit(faults == 0 ? 0 : 1);
}

class DispatchLevels : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Level, DispatchLevels, testing::Range(0, 9));

}  // namespace

TEST(Dispatch, HasThirtyFivePointersAndTheTestKnowsThemAll) {
    std::set<std::string> known;
    for (const DispatchEntry& entry : AllDispatchEntries()) {
        known.insert(entry.Pointer());
    }
    EXPECT_EQ(known.size(), 35U);
    const auto pointers = ProgramSymbols().VariablesEndingWith("_impl");
    EXPECT_EQ(known, std::set<std::string>(pointers.begin(), pointers.end()));
}

TEST_P(DispatchLevels, ChooseTheKernelBehindEveryPointer) {
    if (!HasInstructionsOf(GetParam())) {
        GTEST_SKIP() << "this processor lacks instructions of level " << GetParam();
    }
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(CallAllEntries(GetParam()), testing::ExitedWithCode(0), "");
}
