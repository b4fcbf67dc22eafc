#include <cstdlib>

extern "C" volatile int kivFisheyeMutant;
volatile int kivFisheyeMutant = 0;

namespace {

/// Before other constructors, which may run mutants too.
[[gnu::constructor(101)]] void ChooseMutant() {
    if (const char* const number = std::getenv("KIVFISHEYE_MUTANT")) {
        kivFisheyeMutant = std::atoi(number);
    }
}

}  // namespace
