#include <gtest/gtest.h>

#if defined(__x86_64__)

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "ForcedLevel.h"
#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/WallFamilies.h"

// A panorama's tables are built in eight lanes from level 7 on, in four at 5 and 6, and by scalars
// below; its direct conversions take four lanes from level 5 on.

namespace {

using Picture = std::vector<unsigned char>;

/// What a converter and the kernels of all forms make of the same frames.
struct Conversion {
    std::string name;
    Picture picture;
    std::vector<Picture> byForm;  // in the order of the forms

    /// Whether it is this form's, and no other form's.
    bool Takes(KernelForm form) const {
        const auto index = static_cast<std::size_t>(form);
        for (std::size_t other = 0; other < byForm.size(); ++other) {
            if ((picture == byForm[other]) != (other == index)) {
                return false;
            }
        }
        return true;
    }
};

/// The middle of these sides lies half way between an even pixel and the next, so that eight lanes
/// and four take another one each.
constexpr int kSrcWidth = 302;
constexpr int kSrcHeight = 202;

template <class Family>
Ring RingOfTies() {
    return PackedRing(kSrcWidth, kSrcHeight, 128, 24, Family::kBytes);
}

Picture RingSource(const Ring& ring, int bytesPerPixel) {
    return CoordinateFrame(kSrcWidth, kSrcHeight, ring.srcStride, bytesPerPixel);
}

template <class Family>
Conversion DirectRing() {
    const Ring ring = RingOfTies<Family>();
    const auto src = RingSource(ring, Family::kBytes);
    return {RingFamilyNames::GetName<Family>(0) + " direct",
            DirectPicture<Family>(ring, 0.0F, src),
            {KernelPicture<InScalars<Family>>(ring, 0.0F, src),
             KernelPicture<InFourLanes<Family>>(ring, 0.0F, src)}};
}

template <class Family>
Conversion RingByTable() {
    const Ring ring = RingOfTies<Family>();
    const auto src = RingSource(ring, Family::kBytes);
    return {RingFamilyNames::GetName<Family>(0) + " by a table",
            TablePicture<Family>(ring, src),
            {BuiltTablePicture<InScalars<Family>>(ring, src),
             BuiltTablePicture<InFourLanes<Family>>(ring, src),
             BuiltTablePicture<InEightLanes<Family>>(ring, src)}};
}

/// Without a width the lens shows the middle column alone.
template <class Family>
Wall WallOfTies() {
    Wall wall = PackedWall(kSrcWidth, kSrcHeight, 128, 24, Family::kBytes);
    wall.radiusX = 0.0F;
    return wall;
}

template <class Family>
Conversion DirectWall() {
    const Wall wall = WallOfTies<Family>();
    const auto src = SourceOf<Family>(wall);
    return {WallFamilyNames::GetName<Family>(0) + " of a wall, direct",
            DirectPicture<Family>(wall, src),
            {KernelPicture<InScalars<Family>>(wall, src),
             KernelPicture<InFourLanes<Family>>(wall, src)}};
}

template <class Family>
Conversion WallByTable() {
    const Wall wall = WallOfTies<Family>();
    const auto src = SourceOf<Family>(wall);
    return {WallFamilyNames::GetName<Family>(0) + " of a wall, by a table",
            TablePicture<Family>(wall, src),
            {BuiltTablePicture<InScalars<Family>>(wall, src),
             BuiltTablePicture<InFourLanes<Family>>(wall, src),
             BuiltTablePicture<InEightLanes<Family>>(wall, src)}};
}

template <class... Rings>
std::vector<Conversion> DirectRings(testing::Types<Rings...>) {
    return {DirectRing<Rings>()...};
}

template <class... Rings>
std::vector<Conversion> RingsByTable(testing::Types<Rings...>) {
    return {RingByTable<Rings>()...};
}

int OthersAmong(const std::vector<Conversion>& conversions, KernelForm form) {
    int others = 0;
    for (const Conversion& conversion : conversions) {
        const bool isRight = conversion.Takes(form);
        others += isRight ? 0 : 1;
        std::cerr << (isRight ? "" : conversion.name + " takes another form\n");
    }
    return others;
}

/// In a process of its own, where no kernel is chosen yet: ends it with 0 when the first
/// conversions of all converters, and those that come after, take the level's form. The kernels
/// themselves need a processor that has all forms.
[[noreturn]] void ConvertTwice(int level) {
    constexpr int kFirstLevelOfFourLanes = 5;
    constexpr int kFirstLevelOfEightLanes = 7;
    forcedLevel = level;
    const KernelForm direct = level < kFirstLevelOfFourLanes ? KernelForm::C : KernelForm::SSE41;
    const KernelForm tables = level < kFirstLevelOfEightLanes ? direct : KernelForm::AVX;
    int others = 0;
    for (int call = 0; call < 2; ++call) {
        others += OthersAmong(DirectRings(PanoramaFamilies()), direct);
        others += OthersAmong(RingsByTable(PanoramaFamilies()), tables);
        others += OthersAmong({DirectWall<WallFamily<24>>(), DirectWall<WallFamily<32>>()}, direct);
        others +=
            OthersAmong({WallByTable<WallFamily<24>>(), WallByTable<WallFamily<32>>()}, tables);
    }
    std::_Exit(others == 0 ? 0 : 1);
}

class PanoramaLevels : public testing::TestWithParam<int> {};

INSTANTIATE_TEST_SUITE_P(Level, PanoramaLevels, testing::Range(0, 9));

}  // namespace

TEST_P(PanoramaLevels, OfTheProcessorChooseTheForm) {
    if (__builtin_cpu_supports("avx") == 0) {
        GTEST_SKIP() << "this processor lacks the instructions of AVX";
    }
    ::testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(ConvertTwice(GetParam()), testing::ExitedWithCode(0), "");
}

#endif
