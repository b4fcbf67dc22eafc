#include "Check.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr std::size_t kRemembered = 32;
std::array<const char*, kRemembered> trail{};
std::size_t operations = 0;

}  // namespace

void BeginOperation(const char* name) {
    trail[operations++ % kRemembered] = name;
}

const char* PresentOperation() {
    return operations == 0 ? "start" : trail[(operations - 1) % kRemembered];
}

void Fail(const std::string& what) {
    std::fprintf(stderr, "\nFAILED %s: %s\n", PresentOperation(), what.c_str());
    std::fprintf(stderr, "Operations before it, the last one first:");
    for (std::size_t i = 2; i <= kRemembered && i <= operations; ++i) {
        std::fprintf(stderr, " %s", trail[(operations - i) % kRemembered]);
    }
    std::fprintf(stderr, "\n");
    std::abort();
}
