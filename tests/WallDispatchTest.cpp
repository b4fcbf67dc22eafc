#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <vector>

#include "FrontwardFisheyeAlgo_C.h"
#include "support/WallFamilies.h"
#if defined(__x86_64__)
#include "FrontwardFisheyeAlgo_SSE41.h"
#endif

// How a wall's converters reach their kernels.

namespace {

constexpr int kSame = 0;
constexpr int kOther = 1;

/// In a process of its own, so that no other test was there first: whether the first call through
/// the pointers and the later ones all give the picture.
template <class Family, class Converter>
[[noreturn]] void ConvertThrice(const std::vector<unsigned char>& expected, const Wall& wall) {
    const auto src = SourceOf<Family>(wall);
    bool isSame = true;
    for (int call = 0; call < 3; ++call) {
        isSame = isSame && NewPictureOf<Family, Converter>(wall, src) == expected;
    }
    std::_Exit(isSame ? kSame : kOther);
}

}  // namespace

template <class Family>
class WallDispatch : public ::testing::Test {
protected:
    WallDispatch() {
        ::testing::FLAGS_gtest_death_test_style = "threadsafe";
        wall.srcStride += 5;
        wall.dstStride += 3;
        wall.radiusX = 0.57F;
        wall.wallViewAngle = 71.0F;
    }

    Wall wall = PackedWall(301, 203, 104, 46, Family::kBytes);
};

TYPED_TEST_SUITE(WallDispatch, WallFamilies, WallFamilyNames);

TYPED_TEST(WallDispatch, FirstDirectConversionGivesThePictureOfLaterOnes) {
    const auto expected =
        ExpectedDirectPicture<TypeParam>(this->wall, SourceOf<TypeParam>(this->wall));
    EXPECT_EXIT(
        (ConvertThrice<TypeParam, typename TypeParam::DirectConverter>(expected, this->wall)),
        ::testing::ExitedWithCode(kSame), "");
}

TYPED_TEST(WallDispatch, FirstTableGivesThePictureOfLaterOnes) {
    const auto expected =
        ExpectedTablePicture<TypeParam>(this->wall, SourceOf<TypeParam>(this->wall));
    EXPECT_EXIT(
        (ConvertThrice<TypeParam, typename TypeParam::TableConverter>(expected, this->wall)),
        ::testing::ExitedWithCode(kSame), "");
}

// Every form of the conversion by a table takes any table, also one of another value for pixels
// without a source.
TEST(WallConversionByTable, EveryFormCopiesTheEntriesPixels) {
    constexpr int kElsewhere = -7;
    constexpr std::size_t kEntries = 39;
    Wall wall = PackedWall(9, 7, 13, 3, 4);
    wall.dstStride += 2;
    const auto src = SourceOf<WallFamily<32>>(wall);
    WallGenerator generator(9);
    CAlignedBufferT<int, 32> table;
    CAlignedBufferT<int, 32> otherTable;
    table.Allocate(kEntries);
    otherTable.Allocate(kEntries);
    std::vector<int> offsets;
    for (std::size_t i = 0; i < kEntries; ++i) {
        const int pixel = generator.NextInt(-10, 9 * 7 - 1);
        offsets.push_back(pixel < 0 ? kNoSource : pixel * 4);
        table.data()[i] = offsets[i];
        otherTable.data()[i] = pixel < 0 ? kElsewhere : pixel * 4;
    }
    std::vector<unsigned char> expected(wall.OutputBytes(), 0xCD);
    Paint(offsets, wall, 4, RowStart::Kept, src, expected);
    const auto expectCopies = [&](auto convert, const CAlignedBufferT<int, 32>& entries) {
        std::vector<unsigned char> frame(wall.OutputBytes(), 0xCD);
        convert(src.data(), 13, 3, wall.dstStride, frame.data(), entries);
        EXPECT_EQ(frame, expected);
    };
    using namespace FrontwardFisheyeAlgoNS;
    expectCopies(C::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kNoSource>, table);
    expectCopies(C::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kElsewhere>, otherTable);
#if defined(__x86_64__)
    expectCopies(SSE41::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kNoSource>, table);
    expectCopies(SSE41::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kElsewhere>, otherTable);
#endif
}

TEST(WallConversionByTable, EveryFormWritesNothingByAnEmptyTable) {
    const CAlignedBufferT<int, 32> table;
    // Any access through it ends the process.
    unsigned char* const nowhere = nullptr;
    using namespace FrontwardFisheyeAlgoNS;
    C::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kNoSource>(nowhere, 8, 2, 32, nowhere, table);
#if defined(__x86_64__)
    SSE41::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kNoSource>(nowhere, 8, 2, 32, nowhere, table);
#endif
}
