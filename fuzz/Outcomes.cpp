#include "Outcomes.h"

#include <cstdio>
#include <map>
#include <string>
#include <utility>

namespace {

bool isCounting = false;

using Counts = std::map<std::pair<std::string, std::string>, long>;

Counts& AllCounts() {
    static Counts counts;
    return counts;
}

}  // namespace

void StartCountingOutcomes() {
    isCounting = true;
}

void CountOutcome(const char* operation, const char* outcome) {
    if (isCounting) {
        ++AllCounts()[{operation, outcome}];
    }
}

void PrintOutcomes() {
    for (const auto& [what, count] : AllCounts()) {
        std::printf("%8ld  %-38s %s\n", count, what.first.c_str(), what.second.c_str());
    }
}
