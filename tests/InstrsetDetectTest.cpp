#include "instrset_detect.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <thread>
#include <vector>

#include "KivFisheyeLib.h"
#include "ProcessorLevel.h"

namespace {

enum class Register { Leaf1Edx, Leaf1Ecx, Leaf7Ebx, Xcr0 };

struct Feature {
    const char* name;
    Register where;
    int bit;
    int levelWithout;
};

// Intel's and AMD's manuals, CPUID leaf 1 and leaf 7, and XCR0.
constexpr Feature kFeatures[] = {
    {"FPU", Register::Leaf1Edx, 0, 0},     {"CMOV", Register::Leaf1Edx, 15, 0},
    {"MMX", Register::Leaf1Edx, 23, 0},    {"FXSAVE", Register::Leaf1Edx, 24, 0},
    {"SSE", Register::Leaf1Edx, 25, 0},    {"SSE2", Register::Leaf1Edx, 26, 1},
    {"SSE3", Register::Leaf1Ecx, 0, 2},    {"SSSE3", Register::Leaf1Ecx, 9, 3},
    {"SSE41", Register::Leaf1Ecx, 19, 4},  {"SSE42", Register::Leaf1Ecx, 20, 5},
    {"POPCNT", Register::Leaf1Ecx, 23, 5}, {"OSXSAVE", Register::Leaf1Ecx, 27, 6},
    {"XmmState", Register::Xcr0, 1, 6},    {"YmmState", Register::Xcr0, 2, 6},
    {"AVX", Register::Leaf1Ecx, 28, 6},    {"AVX2", Register::Leaf7Ebx, 5, 7},
};

void PrintTo(const Feature& feature, std::ostream* out) {
    *out << feature.name;
}

/// A processor that has the given bits and notes what it is asked.
struct FakeProcessor {
    std::uint32_t highestLeaf = 7;
    std::uint32_t leaf1Edx = 0;
    std::uint32_t leaf1Ecx = 0;
    std::uint32_t leaf7Ebx = 0;
    std::uint32_t extendedEcx = 0;
    std::uint32_t xcr0 = 0;
    std::vector<std::uint32_t> leavesRead{};
    int xgetbvCalls = 0;

    CpuidRegisters Cpuid(std::uint32_t leaf, std::uint32_t subleaf) {
        EXPECT_EQ(subleaf, 0U);
        leavesRead.push_back(leaf);
        switch (leaf) {
            case 0:
                return {highestLeaf, 0x756E6547, 0x6C65746E, 0x49656E69};
            case 1:
                return {0, 0, leaf1Ecx, leaf1Edx};
            case 7:
                return {0, leaf7Ebx, 0, 0};
            case 0x80000001:
                return {0, 0, extendedEcx, 0};
            default:
                ADD_FAILURE() << "leaf " << leaf;
                return {};
        }
    }

    std::uint32_t Xgetbv() {
        ++xgetbvCalls;
        return xcr0;
    }

    std::uint32_t& At(Register where) {
        switch (where) {
            case Register::Leaf1Edx:
                return leaf1Edx;
            case Register::Leaf1Ecx:
                return leaf1Ecx;
            case Register::Leaf7Ebx:
                return leaf7Ebx;
            default:
                return xcr0;
        }
    }

    void Set(const Feature& feature) { At(feature.where) |= std::uint32_t{1} << feature.bit; }
    void Clear(const Feature& feature) { At(feature.where) &= ~(std::uint32_t{1} << feature.bit); }

    bool HasRead(std::uint32_t leaf) const {
        for (const std::uint32_t read : leavesRead) {
            if (read == leaf) {
                return true;
            }
        }
        return false;
    }
};

/// A processor with all that the level needs and not one bit more.
FakeProcessor ProcessorOfLevel(int level) {
    FakeProcessor processor;
    for (const Feature& feature : kFeatures) {
        if (feature.levelWithout < level) {
            processor.Set(feature);
        }
    }
    return processor;
}

/// A processor that answers with every bit set.
FakeProcessor ProcessorWithEveryBit() {
    FakeProcessor processor;
    processor.leaf1Edx = processor.leaf1Ecx = processor.leaf7Ebx = processor.xcr0 = 0xFFFFFFFF;
    processor.extendedEcx = 0xFFFFFFFF;
    return processor;
}

TEST(ProcessorLevel, IsReachedByTheBitsThatItNeeds) {
    for (int level = 0; level <= 8; ++level) {
        EXPECT_EQ(cpu::Level(ProcessorOfLevel(level)), level);
    }
}

TEST(ProcessorLevel, OfEveryBitIs8) {
    EXPECT_EQ(cpu::Level(ProcessorWithEveryBit()), 8);
}

class MissingFeature : public testing::TestWithParam<Feature> {};

TEST_P(MissingFeature, EndsTheLevelThere) {
    FakeProcessor processor = ProcessorWithEveryBit();
    processor.Clear(GetParam());
    EXPECT_EQ(cpu::Level(processor), GetParam().levelWithout);
}

TEST_P(MissingFeature, EndsTheLevelThereOnAProcessorWithNothingElse) {
    FakeProcessor processor = ProcessorOfLevel(8);
    processor.Clear(GetParam());
    EXPECT_EQ(cpu::Level(processor), GetParam().levelWithout);
}

INSTANTIATE_TEST_SUITE_P(ProcessorLevel, MissingFeature, testing::ValuesIn(kFeatures),
                         [](const testing::TestParamInfo<Feature>& tested) {
                             return tested.param.name;
                         });

/// An extension, and where a processor tells of it.
struct ExtensionBit {
    std::string name;
    cpu::Extension extension;
    std::uint32_t FakeProcessor::*ecx;
    std::uint32_t bit;
};

void PrintTo(const ExtensionBit& extension, std::ostream* out) {
    *out << extension.name;
}

class ProcessorExtension : public testing::TestWithParam<ExtensionBit> {};

TEST_P(ProcessorExtension, IsThereFromAvxOnWhereItsBitIsSet) {
    FakeProcessor processor;
    processor.*GetParam().ecx = GetParam().bit;
    for (int level = 0; level <= 8; ++level) {
        EXPECT_EQ(cpu::HasExtension(processor, level, GetParam().extension), level >= 7) << level;
    }
}

TEST_P(ProcessorExtension, IsNotThereForOtherBits) {
    FakeProcessor processor = ProcessorWithEveryBit();
    processor.*GetParam().ecx = ~GetParam().bit;
    EXPECT_FALSE(cpu::HasExtension(processor, 8, GetParam().extension));
}

INSTANTIATE_TEST_SUITE_P(
    ProcessorLevel, ProcessorExtension,
    testing::Values(ExtensionBit{"Fma3", cpu::kFma3, &FakeProcessor::leaf1Ecx, 0x1000},
                    ExtensionBit{"Fma4", cpu::kFma4, &FakeProcessor::extendedEcx, 0x10000},
                    ExtensionBit{"Xop", cpu::kXop, &FakeProcessor::extendedEcx, 0x800}),
    [](const testing::TestParamInfo<ExtensionBit>& tested) { return tested.param.name; });

TEST(ProcessorLevel, IsZeroWhereLeaf0NamesNoOther) {
    FakeProcessor processor = ProcessorWithEveryBit();
    processor.highestLeaf = 0;
    EXPECT_EQ(cpu::Level(processor), 0);
    EXPECT_FALSE(processor.HasRead(1));
}

TEST(ProcessorLevel, Leaf7IsNotReadWhereLeaf0SaysThatThereIsNone) {
    for (const std::uint32_t highestLeaf : {1U, 2U, 6U}) {
        FakeProcessor processor = ProcessorWithEveryBit();
        processor.highestLeaf = highestLeaf;
        EXPECT_EQ(cpu::Level(processor), 7) << highestLeaf;
        EXPECT_FALSE(processor.HasRead(7)) << highestLeaf;
    }
}

TEST(ProcessorLevel, Leaf7IsReadWhereItIsTheHighestAndBeyond) {
    for (const std::uint32_t highestLeaf : {7U, 8U, 0x20U}) {
        FakeProcessor processor = ProcessorWithEveryBit();
        processor.highestLeaf = highestLeaf;
        EXPECT_EQ(cpu::Level(processor), 8) << highestLeaf;
    }
}

TEST(ProcessorLevel, AvxWithoutTheSystemSavingItsRegistersStaysAt6) {
    for (const std::uint32_t saved : {0U, 1U, 2U, 3U, 4U, 5U, 0xFFFFFFF9U}) {
        FakeProcessor processor = ProcessorWithEveryBit();
        processor.xcr0 = saved;
        EXPECT_EQ(cpu::Level(processor), 6) << saved;
    }
}

TEST(ProcessorLevel, XgetbvIsNotExecutedWithoutOsxsave) {
    // It is an invalid instruction there.
    FakeProcessor processor = ProcessorWithEveryBit();
    processor.leaf1Ecx &= ~(1U << 27);
    EXPECT_EQ(cpu::Level(processor), 6);
    EXPECT_EQ(processor.xgetbvCalls, 0);
}

#if defined(__x86_64__) || defined(__i386__)

/// What the compiler's own detection says, which knows nothing of ours.
int LevelByTheCompiler() {
    __builtin_cpu_init();
    const bool features[] = {
        __builtin_cpu_supports("sse") != 0,
        __builtin_cpu_supports("sse2") != 0,
        __builtin_cpu_supports("sse3") != 0,
        __builtin_cpu_supports("ssse3") != 0,
        __builtin_cpu_supports("sse4.1") != 0,
        __builtin_cpu_supports("sse4.2") != 0 && __builtin_cpu_supports("popcnt") != 0,
        __builtin_cpu_supports("avx") != 0,
        __builtin_cpu_supports("avx2") != 0};
    int level = 0;
    for (const bool feature : features) {
        if (!feature) {
            break;
        }
        ++level;
    }
    return level;
}

TEST(InstructionSet, AgreesWithTheCompilersDetection) {
    for (int call = 1; call <= 3; ++call) {
        EXPECT_EQ(instrset_detect(), LevelByTheCompiler()) << "call " << call;
    }
}

TEST(InstructionSet, ExtensionsAgreeWithTheCompilersDetection) {
    const bool hasAvx = LevelByTheCompiler() >= 7;
    EXPECT_EQ(hasFMA3(), hasAvx && __builtin_cpu_supports("fma") != 0 ? 1 : 0);
    EXPECT_EQ(hasFMA4(), hasAvx && __builtin_cpu_supports("fma4") != 0 ? 1 : 0);
    EXPECT_EQ(hasXOP(), hasAvx && __builtin_cpu_supports("xop") != 0 ? 1 : 0);
}

#else

TEST(InstructionSet, IsZeroOnOtherProcessors) {
    EXPECT_EQ(instrset_detect(), 0);
    EXPECT_EQ(hasFMA3(), 0);
    EXPECT_EQ(hasFMA4(), 0);
    EXPECT_EQ(hasXOP(), 0);
}

#endif

TEST(InstructionSet, IsTheSameByEveryNameAndOnEveryThread) {
    const int level = instrset_detect();
    EXPECT_GE(level, 0);
    EXPECT_LE(level, 8);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([level] {
            EXPECT_EQ(instrset_detect(), level);
            EXPECT_EQ(GetCpuInstructionSet(), level);
            EXPECT_EQ(GetCPUInstructionSet(), level);
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
}

}  // namespace
