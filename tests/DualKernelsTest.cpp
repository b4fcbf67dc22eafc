#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// What sets the direct conversion into a dual panorama apart from that into a full one.

namespace {

constexpr unsigned char kFill = 0xCD;
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

}  // namespace

template <class Family>
class DualKernels : public FormTest<Family> {
protected:
    static constexpr int kBytes = Family::kBytes;
    static constexpr bool kIsTableMount = Family::kMount == Mount::Table;

    static std::vector<unsigned char> PictureOf(const Ring& ring, float pan) {
        return KernelPicture<Family>(
            ring, pan, CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, kBytes));
    }

    static std::optional<PixelPlace> PlaceAt(const std::vector<unsigned char>& frame,
                                             const Ring& ring, int x, int y) {
        return PlaceIn(frame.data() + y * ring.dstStride + x * kBytes, kBytes);
    }

    /// The frame's bytes from row `first` up to but not including row `end`.
    static std::vector<unsigned char> Rows(const std::vector<unsigned char>& frame,
                                           const Ring& ring, int first, int end) {
        return {frame.begin() + first * ring.dstStride, frame.begin() + end * ring.dstStride};
    }

    static std::vector<unsigned char> BytesOf(const Ring& ring, int rows, unsigned char value) {
        return std::vector<unsigned char>(static_cast<std::size_t>(rows * ring.dstStride), value);
    }
};

TYPED_TEST_SUITE(DualKernels, Forms<DualFamilies>::Direct, RingFormNames);

TYPED_TEST(DualKernels, EveryHeightGivesTheBitsOfThePlainLoop) {
    RingGenerator generator(301);
    for (int height = 0; height <= 33; ++height) {
        Ring ring = generator.NextRing(TypeParam::kBytes);
        ring.dstHeight = height;
        for (const float pan : {0.0F, generator.NextPan(), -725.5F, 1000.25F}) {
            const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
            ASSERT_EQ(KernelPicture<TypeParam>(ring, pan, src),
                      ModelPicture<TypeParam>(ring, pan, src, TypeParam::kForm))
                << ring << ", pan " << pan;
        }
    }
}

TYPED_TEST(DualKernels, HeightBelow2LeavesTheOutputUntouched) {
    const Ring sizes = PackedRing(20, 20, 8, 1, TypeParam::kBytes);
    const auto src = CoordinateFrame(20, 20, sizes.srcStride, TypeParam::kBytes);
    for (const int height : {1, 0, -1, -2, -3, -1000, std::numeric_limits<int>::min()}) {
        Ring ring = sizes;
        ring.dstHeight = height;
        std::vector<unsigned char> frame(sizes.OutputBytes(), kFill);
        TypeParam::ConvertByKernel(ring, 30.0F, src.data(), frame.data());
        EXPECT_EQ(frame, this->BytesOf(sizes, 1, kFill)) << height;
    }
}

// Of one column and two rows, by hand. A table's column 0 looks to the right and shows the inner
// ring, 100 * (0.5 + 0.127) = 62.7; a ceiling's looks to the left and shows the rim, 100 * (0.5 -
// 0.254) = 24.6. The lower half shows what lies opposite. The frame's centre is away from where one
// row's pixels give way to the next one's, in every form, so that the rounding of half a turn does
// not show.
TYPED_TEST(DualKernels, HeightsOf2And3ShowEachHalfsFirstRow) {
    const bool isNearest = TypeParam::kForm != KernelForm::C;
    for (const int height : {2, 3}) {
        Ring ring = PackedRing(101, isNearest ? 101 : 102, 1, height, TypeParam::kBytes);
        ring.radiusX = ring.radiusY = 0.254F;
        ring.innerRadiusRatio = 0.5F;
        const auto frame = this->PictureOf(ring, 0.0F);
        const auto upper = this->PlaceAt(frame, ring, 0, 0);
        const auto lower = this->PlaceAt(frame, ring, 0, 1);
        ASSERT_TRUE(upper.has_value() && lower.has_value());
        const auto shown = [](double position) { return PixelShownAt(TypeParam::kForm, position); };
        EXPECT_EQ(*upper, (PixelPlace{shown(this->kIsTableMount ? 62.7 : 24.6), 50}));
        EXPECT_EQ(*lower, (PixelPlace{shown(this->kIsTableMount ? 37.3 : 75.4), 50}));
        EXPECT_EQ(this->Rows(frame, ring, 2, height), this->BytesOf(ring, height - 2, kFill));
    }
}

TYPED_TEST(DualKernels, OddLastRowIsLeftAsItWas) {
    for (const int height : {3, 5, 21}) {
        Ring ring = PackedRing(61, 47, 40, height, TypeParam::kBytes);
        ring.dstStride += 7;
        const auto odd = this->PictureOf(ring, 77.0F);
        EXPECT_EQ(this->Rows(odd, ring, height - 1, height), this->BytesOf(ring, 1, kFill));
        Ring even = ring;
        even.dstHeight = height - 1;
        EXPECT_EQ(this->Rows(odd, ring, 0, height - 1), this->PictureOf(even, 77.0F));
    }
}

TYPED_TEST(DualKernels, PaddingOfBothHalvesComesOutZero) {
    for (int padding = 1; padding <= 9; ++padding) {
        Ring ring = PackedRing(40, 40, 8, 6, TypeParam::kBytes);
        ring.dstStride += padding;
        const auto frame = this->PictureOf(ring, 0.0F);
        for (int y = 0; y < 6; ++y) {
            const auto end = frame.begin() + (y + 1) * ring.dstStride;
            EXPECT_EQ(std::count(end - padding, end, 0), padding) << "row " << y;
        }
    }
}

TYPED_TEST(DualKernels, WidthOf0OnlyClearsTheRowsOfBothHalves) {
    for (const int width : {0, -8}) {
        Ring ring = PackedRing(10, 10, width, 5, TypeParam::kBytes);
        ring.dstStride = 7;
        const auto frame = this->PictureOf(ring, 10.0F);
        EXPECT_EQ(this->Rows(frame, ring, 0, 4), this->BytesOf(ring, 4, 0));
        EXPECT_EQ(this->Rows(frame, ring, 4, 5), this->BytesOf(ring, 1, kFill));
    }
}

TYPED_TEST(DualKernels, SourceWithoutPixelsGivesBlackHalves) {
    for (const bool hasColumns : {true, false}) {
        Ring ring = PackedRing(hasColumns ? 41 : 0, hasColumns ? 0 : 37, 24, 7, TypeParam::kBytes);
        ring.dstStride += 3;
        const auto frame = KernelPicture<TypeParam>(ring, 10.0F, {});
        EXPECT_EQ(this->Rows(frame, ring, 0, 6), this->BytesOf(ring, 6, 0));
        EXPECT_EQ(this->Rows(frame, ring, 6, 7), this->BytesOf(ring, 1, kFill));
    }
}

TYPED_TEST(DualKernels, PanThatIsNoNumberGivesBlackHalves) {
    const Ring ring = PackedRing(20, 20, 16, 7, TypeParam::kBytes);
    for (const float pan : {kNan, kInfinity, -kInfinity}) {
        const auto frame = this->PictureOf(ring, pan);
        EXPECT_EQ(this->Rows(frame, ring, 0, 6), this->BytesOf(ring, 6, 0)) << "pan " << pan;
        EXPECT_EQ(this->Rows(frame, ring, 6, 7), this->BytesOf(ring, 1, kFill)) << "pan " << pan;
    }
}

// A point beyond the frame's edge lies opposite one that is as far beyond it.
TYPED_TEST(DualKernels, PixelsOfBothHalvesAreBlackTogether) {
    for (const bool alongWidth : {true, false}) {
        Ring ring = PackedRing(200, 200, 72, 32, TypeParam::kBytes);
        ring.radiusX = alongWidth ? 0.9F : 0.45F;
        ring.radiusY = alongWidth ? 0.45F : 0.9F;
        const auto frame = this->PictureOf(ring, 25.0F);
        const ExactRing exact = ExactRing::DualDirect(TypeParam::kMount, ring, 25.0F);
        int blackPairs = 0;
        for (int y = 0; y < 16; ++y) {
            for (int x = 0; x < 72; ++x) {
                const ExactPoint point = exact.PointAt(x, y);
                // No point of this ring is so near an edge that rounding decides.
                ASSERT_EQ(point.IsInside(1e-4), point.IsInside(-1e-4));
                const bool isShown = point.IsInside(0.0);
                ASSERT_EQ(this->PlaceAt(frame, ring, x, y).has_value(), isShown) << x << ", " << y;
                ASSERT_EQ(this->PlaceAt(frame, ring, x, 16 + y).has_value(), isShown);
                blackPairs += isShown ? 0 : 1;
            }
        }
        EXPECT_GT(blackPairs, 200);
    }
}

// The angles at both ends are rounded to single precision before the step is a share of their
// difference, which for most pans is not the number of half a turn. A source this wide tells.
TYPED_TEST(DualKernels, StepIsMadeOfTheRoundedEnds) {
    RingGenerator generator(302);
    Ring ring = PackedRing(4000001, 1, 400, 2, TypeParam::kBytes);
    ring.innerRadiusRatio = 1.0F;
    const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
    for (const float pan : {0.0F, 100.0F, 359.0F, -359.0F, 1000.0F}) {
        EXPECT_TRUE(KernelPicture<TypeParam>(ring, pan, src) ==
                    ModelPicture<TypeParam>(ring, pan, src, TypeParam::kForm))
            << "pan " << pan;
    }
}
