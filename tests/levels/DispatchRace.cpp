#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "instrset_detect.h"
#include "levels/DispatchEntries.h"
#include "levels/ProgramSymbols.h"
#include "support/AtOnce.h"

// Has sixteen threads make the first call through each pointer at once, the very first of which has
// to detect the processor's level too. A process has each of these first calls only once, so the
// argument says which pointer comes first: its place in the list.

namespace {

constexpr std::size_t kThreads = 16;

/// Races for an entry and says what is wrong with it; nothing when all is right.
std::string FaultOf(const DispatchEntry& entry, const ProgramSymbols& symbols) {
    const std::string pointer = entry.Pointer();
    if (!symbols.LeadsTo(pointer, "FirstCall<" + pointer)) {
        return "does not lead to its first call";
    }
    std::vector<EntryOutput> outputs(kThreads);
    std::vector<std::function<void()>> calls;
    for (EntryOutput& output : outputs) {
        calls.emplace_back([&entry, &output] { entry.call(output); });
    }
    RunAtOnce(calls);
    const std::string kernel = entry.Kernel(GetCpuInstructionSet());
    if (!symbols.LeadsTo(pointer, kernel)) {
        return "does not lead to " + kernel;
    }
    EntryOutput again;
    entry.call(again);
    if (again == EntryOutput()) {
        return "writes nothing";
    }
    for (const EntryOutput& output : outputs) {
        if (!(output == again)) {
            return "writes something else in a thread that races";
        }
    }
    return "";
}

/// All entries with this one in front. The last one's call needs another's and stays behind it.
std::vector<DispatchEntry> EntriesFrom(std::size_t first) {
    std::vector<DispatchEntry> entries = AllDispatchEntries();
    const auto begin = entries.begin();
    std::rotate(begin, begin + static_cast<std::ptrdiff_t>(first), entries.end() - 1);
    return entries;
}

}  // namespace

int main(int argc, char** argv) {
    const std::size_t last = AllDispatchEntries().size() - 1;
    char* end = nullptr;
    const unsigned long first = argc == 2 ? std::strtoul(argv[1], &end, 10) : last;
    if (first >= last || end == argv[1] || *end != '\0') {
        std::cerr << "The argument is the place of the first pointer to race for.\n";
        return 2;
    }
    const ProgramSymbols symbols;
    int faults = 0;
    if (symbols.ValueOf<int>("instrset_detect()::level") != -1) {
        std::cerr << "the level is known before it is asked for\n";
        ++faults;
    }
    for (const DispatchEntry& entry : EntriesFrom(first)) {
        const std::string fault = FaultOf(entry, symbols);
        if (!fault.empty()) {
            std::cerr << entry.Pointer() << " " << fault << "\n";
            ++faults;
        }
    }
    if (symbols.ValueOf<int>("instrset_detect()::level") != GetCpuInstructionSet()) {
        std::cerr << "the level is not the one that was detected\n";
        ++faults;
    }
    return faults == 0 ? 0 : 1;
}
