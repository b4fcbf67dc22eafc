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

int HasFeature(std::uint32_t leaf, int ecxBit) {
    constexpr int kLevelAvx = 7;
    if (instrset_detect() < kLevelAvx) {
        return 0;
    }
    return cpu::AllSet(ThisProcessor::Cpuid(leaf, 0).ecx, cpu::Bit(ecxBit)) ? 1 : 0;
}

#else

int DetectLevel() {
    return 0;
}

int HasFeature(std::uint32_t, int) {
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
    return HasFeature(1, 12);
}
int hasFMA4() {
    return HasFeature(0x80000001, 16);
}
int hasXOP() {
    return HasFeature(0x80000001, 11);
}
