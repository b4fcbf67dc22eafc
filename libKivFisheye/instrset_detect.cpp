#include "instrset_detect.h"

#include <atomic>

#include "ProcessorLevel.h"

#if defined(__x86_64__) || defined(__i386__)
#include <cpuid.h>
#endif

namespace {

#if defined(__x86_64__) || defined(__i386__)

struct ThisProcessor {
    static CpuidRegisters Cpuid(std::uint32_t leaf, std::uint32_t subleaf) {
        CpuidRegisters registers{};
        __cpuid_count(leaf, subleaf, registers.eax, registers.ebx, registers.ecx, registers.edx);
        return registers;
    }

    // The instruction by itself, so that this file needs no code generation beyond the baseline.
    static std::uint32_t Xgetbv() {
        std::uint32_t low = 0;
        std::uint32_t high = 0;
        __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
        return low;
    }
};

int DetectLevel() {
    return cpu::Level(ThisProcessor());
}

int HasExtension(cpu::Extension extension) {
    return cpu::HasExtension(ThisProcessor(), instrset_detect(), extension) ? 1 : 0;
}

#else

int DetectLevel() {
    return 0;
}

int HasExtension(cpu::Extension) {
    return 0;
}

#endif

}  // namespace

int instrset_detect() {
    static std::atomic<int> level{-1};
    int detected = level.load(std::memory_order_relaxed);
    if (detected < 0) {
        detected = DetectLevel();
        level.store(detected, std::memory_order_relaxed);
    }
    return detected;
}

int GetCpuInstructionSet() {
    static const int eSet = instrset_detect();
    return eSet;
}

int hasFMA3() {
    return HasExtension(cpu::kFma3);
}
int hasFMA4() {
    return HasExtension(cpu::kFma4);
}
int hasXOP() {
    return HasExtension(cpu::kXop);
}
