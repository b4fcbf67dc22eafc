#include "KernelPointer.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <vector>

#include "instrset_detect.h"
#include "support/AtOnce.h"

namespace {

constexpr int kLevels = 9;
using Forms = std::array<Form, kLevels>;

constexpr Form C = Form::C;
constexpr Form SSE2 = Form::SSE2;
constexpr Form SSE41 = Form::SSE41;
constexpr Form AVX = Form::AVX;

Forms FormsByLevel(Form (*rule)(int level)) {
    Forms forms{};
    for (int level = 0; level < kLevels; ++level) {
        forms.at(static_cast<std::size_t>(level)) = rule(level);
    }
    return forms;
}

TEST(FormChoice, OutlinesAndMeshesTakeSse2FromLevel2On) {
    EXPECT_EQ(FormsByLevel(Sse2OrC), (Forms{C, C, SSE2, SSE2, SSE2, SSE2, SSE2, SSE2, SSE2}));
}

TEST(FormChoice, TablesTakeSse41FromLevel5AndAvxFromLevel7On) {
    EXPECT_EQ(FormsByLevel(AvxSse41OrC), (Forms{C, C, C, C, C, SSE41, SSE41, AVX, AVX}));
}

TEST(FormChoice, DirectConversionsTakeSse41FromLevel5OnAndNeverAvx) {
    EXPECT_EQ(FormsByLevel(Sse41OrC), (Forms{C, C, C, C, C, SSE41, SSE41, SSE41, SSE41}));
}

int KernelC() {
    return 1;
}
int KernelSse2() {
    return 2;
}
int KernelSse41() {
    return 3;
}
int KernelAvx() {
    return 4;
}

using InC = KernelIn<Form::C, KernelC>;
using InSse2 = KernelIn<Form::SSE2, KernelSse2>;
using InSse41 = KernelIn<Form::SSE41, KernelSse41>;
using InAvx = KernelIn<Form::AVX, KernelAvx>;

template <class... Kernels>
std::array<int, kLevels> KernelsByLevel(Form (*rule)(int level)) {
    std::array<int, kLevels> kernels{};
    for (int level = 0; level < kLevels; ++level) {
        kernels.at(static_cast<std::size_t>(level)) = PickKernel<Kernels...>(rule, level)();
    }
    return kernels;
}

using Kernels = std::array<int, kLevels>;

TEST(PickKernel, GivesTheKernelOfTheForm) {
    EXPECT_EQ((KernelsByLevel<InC, InSse2>(Sse2OrC)), (Kernels{1, 1, 2, 2, 2, 2, 2, 2, 2}));
    EXPECT_EQ((KernelsByLevel<InC, InSse41>(Sse41OrC)), (Kernels{1, 1, 1, 1, 1, 3, 3, 3, 3}));
    EXPECT_EQ((KernelsByLevel<InC, InSse41, InAvx>(AvxSse41OrC)),
              (Kernels{1, 1, 1, 1, 1, 3, 3, 4, 4}));
    EXPECT_EQ((KernelsByLevel<InC, InAvx, InSse41>(AvxSse41OrC)),
              (Kernels{1, 1, 1, 1, 1, 3, 3, 4, 4}));
}

TEST(PickKernel, GivesTheFirstOneWhereTheFormIsMissing) {
    EXPECT_EQ(KernelsByLevel<InC>(AvxSse41OrC), (Kernels{1, 1, 1, 1, 1, 1, 1, 1, 1}));
    EXPECT_EQ((KernelsByLevel<InC, InSse41>(AvxSse41OrC)), (Kernels{1, 1, 1, 1, 1, 3, 3, 1, 1}));
    EXPECT_EQ((KernelsByLevel<InC, InSse2>(Sse41OrC)), (Kernels{1, 1, 1, 1, 1, 1, 1, 1, 1}));
}

/// What a kernel of many arguments was called with.
struct Call {
    int a;
    float b;
    const unsigned char* c;
    double d;
    int e;
    unsigned char* f;
    float g;
    float h;
    long long i;
    int* j;
    float k;
    int l;
};

Call lastCall;
int ruleLevel = -1;

double ManyArguments(int a, float b, const unsigned char* c, double d, int e, unsigned char* f,
                     float g, float h, long long i, int& j, float k, int l) {
    lastCall = {a, b, c, d, e, f, g, h, i, &j, k, l};
    ++j;
    return 2.5;
}

double NotChosen(int, float, const unsigned char*, double, int, unsigned char*, float, float,
                 long long, int&, float, int) {
    return -1.0;
}

Form AlwaysAvx(int level) {
    ruleLevel = level;
    return Form::AVX;
}

struct Family {
    static KernelPointer<decltype(ManyArguments)> pointer;
};
constexpr auto& kFirstCall = FirstCallOf<Family::pointer, AlwaysAvx, KernelIn<Form::C, NotChosen>,
                                         KernelIn<Form::AVX, ManyArguments>>;
KernelPointer<decltype(ManyArguments)> Family::pointer(kFirstCall);

TEST(FirstCall, LetsTheChosenKernelDoTheWorkAndStoresIt) {
    Family::pointer.Store(kFirstCall);
    const unsigned char src = 0;
    unsigned char dst = 0;
    int counter = 41;
    for (int round = 1; round <= 2; ++round) {
        lastCall = {};
        EXPECT_EQ(Family::pointer(-1, 2.5F, &src, -0.125, 4, &dst, 6.5F, -7.0F, 1LL << 40, counter,
                                  9.75F, 10),
                  2.5);
        EXPECT_EQ(lastCall.a, -1);
        EXPECT_EQ(lastCall.b, 2.5F);
        EXPECT_EQ(lastCall.c, &src);
        EXPECT_EQ(lastCall.d, -0.125);
        EXPECT_EQ(lastCall.e, 4);
        EXPECT_EQ(lastCall.f, &dst);
        EXPECT_EQ(lastCall.g, 6.5F);
        EXPECT_EQ(lastCall.h, -7.0F);
        EXPECT_EQ(lastCall.i, 1LL << 40);
        EXPECT_EQ(lastCall.j, &counter) << "a reference stays one to the caller's object";
        EXPECT_EQ(lastCall.k, 9.75F);
        EXPECT_EQ(lastCall.l, 10);
        EXPECT_EQ(counter, 41 + round) << "each call does its work once";
        EXPECT_EQ(Family::pointer.Load(), &ManyArguments);
    }
}

TEST(FirstCall, ChoosesByThisProcessorAndOnlyOnce) {
    Family::pointer.Store(kFirstCall);
    const unsigned char src = 0;
    unsigned char dst = 0;
    int counter = 0;
    const auto call = [&] {
        Family::pointer(0, 0.0F, &src, 0.0, 0, &dst, 0.0F, 0.0F, 0, counter, 0.0F, 0);
    };
    ruleLevel = -1;
    call();
    EXPECT_EQ(ruleLevel, GetCpuInstructionSet());
    ruleLevel = -1;
    call();
    EXPECT_EQ(ruleLevel, -1);
}

std::atomic<int> kernelCalls{0};

int CountingKernel(int value) {
    kernelCalls.fetch_add(1, std::memory_order_relaxed);
    return value + 1000;
}

struct RacedFamily {
    static KernelPointer<int(int)> pointer;
};
constexpr auto& kRacedFirstCall =
    FirstCallOf<RacedFamily::pointer, Sse2OrC, KernelIn<Form::C, CountingKernel>>;
KernelPointer<int(int)> RacedFamily::pointer(kRacedFirstCall);

TEST(FirstCall, ThreadsThatRaceAllGetTheirResult) {
    constexpr int kThreads = 16;
    constexpr int kRounds = 50;
    for (int round = 0; round < kRounds; ++round) {
        RacedFamily::pointer.Store(kRacedFirstCall);
        kernelCalls = 0;
        std::array<int, kThreads> results{};
        std::vector<std::function<void()>> calls;
        for (int i = 0; i < kThreads; ++i) {
            calls.emplace_back(
                [&, i] { results.at(static_cast<std::size_t>(i)) = RacedFamily::pointer(i); });
        }
        RunAtOnce(calls);
        for (int i = 0; i < kThreads; ++i) {
            ASSERT_EQ(results.at(static_cast<std::size_t>(i)), i + 1000);
        }
        ASSERT_EQ(kernelCalls, kThreads);
        ASSERT_EQ(RacedFamily::pointer.Load(), &CountingKernel);
    }
}

}  // namespace
