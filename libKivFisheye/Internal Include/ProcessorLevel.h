#ifndef KIVFISHEYE_PROCESSOR_LEVEL_H
#define KIVFISHEYE_PROCESSOR_LEVEL_H

#include <cstdint>

/// What one CPUID leaf answers.
struct CpuidRegisters {
    std::uint32_t eax;
    std::uint32_t ebx;
    std::uint32_t ecx;
    std::uint32_t edx;
};

namespace cpu {

constexpr bool AllSet(std::uint32_t value, std::uint32_t bits) {
    return (value & bits) == bits;
}
constexpr std::uint32_t Bit(int index) {
    return std::uint32_t{1} << index;
}

constexpr std::uint32_t kSse = Bit(0) | Bit(23) | Bit(15) | Bit(24) | Bit(25);  // with FPU, MMX,
                                                                                // CMOV and FXSAVE
constexpr std::uint32_t kSse2 = Bit(26);
constexpr std::uint32_t kSse3 = Bit(0);
constexpr std::uint32_t kSsse3 = Bit(9);
constexpr std::uint32_t kSse41 = Bit(19);
constexpr std::uint32_t kSse42 = Bit(20) | Bit(23);  // with POPCNT
constexpr std::uint32_t kOsxsave = Bit(27);
constexpr std::uint32_t kAvx = Bit(28);
constexpr std::uint32_t kAvx2 = Bit(5);
constexpr std::uint32_t kXmmAndYmmState = Bit(1) | Bit(2);

/// The level of a processor. `Processor` offers `Cpuid(leaf, subleaf)` and `Xgetbv()`, so that the
/// same steps can run on a processor that exists only in a test.
template <class Processor>
int Level(Processor&& processor) {
    const std::uint32_t highestLeaf = processor.Cpuid(0, 0).eax;
    if (highestLeaf == 0) {
        return 0;
    }
    const CpuidRegisters features = processor.Cpuid(1, 0);
    if (!AllSet(features.edx, kSse)) {
        return 0;
    }
    if (!AllSet(features.edx, kSse2)) {
        return 1;
    }
    if (!AllSet(features.ecx, kSse3)) {
        return 2;
    }
    if (!AllSet(features.ecx, kSsse3)) {
        return 3;
    }
    if (!AllSet(features.ecx, kSse41)) {
        return 4;
    }
    if (!AllSet(features.ecx, kSse42)) {
        return 5;
    }
    if (!AllSet(features.ecx, kOsxsave) || !AllSet(processor.Xgetbv(), kXmmAndYmmState) ||
        !AllSet(features.ecx, kAvx)) {
        return 6;
    }
    // A leaf beyond the highest answers with another leaf's data.
    if (highestLeaf < 7 || !AllSet(processor.Cpuid(7, 0).ebx, kAvx2)) {
        return 7;
    }
    return 8;
}

/// Instructions beside the levels: the CPUID leaf whose ECX tells of them, and the bit.
struct Extension {
    std::uint32_t leaf;
    std::uint32_t bit;
};

constexpr Extension kFma3{1, Bit(12)};
constexpr Extension kFma4{0x80000001, Bit(16)};
constexpr Extension kXop{0x80000001, Bit(11)};

/// Whether a processor of a level has an extension. All of them work on what comes with AVX.
template <class Processor>
bool HasExtension(Processor&& processor, int level, Extension extension) {
    constexpr int kLevelAvx = 7;
    return level >= kLevelAvx && AllSet(processor.Cpuid(extension.leaf, 0).ecx, extension.bit);
}

}  // namespace cpu

#endif
