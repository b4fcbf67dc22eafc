#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>
#include <vector>

#include "support/GuardedBuffer.h"
#include "support/WallFamilies.h"
#include "support/WallModel.h"

// A wall's kernels in lanes: any width is served and nothing beyond it, and they show what the
// scalar kernels show but for their rounding and their arctangent.

namespace {

constexpr unsigned char kFill = 0xCD;

/// Calls `check(wall)` for every width up to five groups of eight, with few rows, a lens beyond the
/// frame, odd strides, and the least and the greatest view angle.
template <class Check>
void ForEveryWidth(int bytesPerPixel, Check&& check) {
    for (int width = 1; width <= 40; ++width) {
        for (const int height : {1, 2, 3, 5}) {
            Wall wall = PackedWall(37, 29, width, height, bytesPerPixel);
            wall.srcStride |= 1;
            wall.dstStride += 3;
            wall.radiusX = 0.6F;
            wall.wallViewAngle = width % 2 == 0 ? 10.0F : 90.0F;
            ASSERT_NO_FATAL_FAILURE(check(wall)) << wall;
        }
    }
}

}  // namespace

template <class Family>
class WallDirectForms : public FormTest<Family> {};

TYPED_TEST_SUITE(WallDirectForms, Forms<WallFamilies>::Direct, WallFormNames);

template <class Family>
class WallTableForms : public FormTest<Family> {
protected:
    static PixelPlace PlaceOf(int offset, const Wall& wall) {
        return {offset % wall.srcStride / Family::kBytes, offset / wall.srcStride};
    }
};

TYPED_TEST_SUITE(WallTableForms, Forms<WallFamilies>::Builders, WallFormNames);

TYPED_TEST(WallDirectForms, ServeEveryWidthAndStayInTheirFrames) {
    WallGenerator generator(42);
    ForEveryWidth(TypeParam::kBytes, [&](const Wall& wall) {
        const auto pixels = generator.NextBytes(wall.SourceBytes(TypeParam::kBytes));
        const auto expected = ExpectedDirectPicture<TypeParam>(wall, pixels, TypeParam::kForm);
        for (const auto side :
             {GuardedBuffer::Side::EndsAtGuard, GuardedBuffer::Side::StartsAtGuard}) {
            GuardedBuffer src(pixels.size(), side);
            std::memcpy(src.data(), pixels.data(), pixels.size());
            src.MakeReadOnly();
            GuardedBuffer dst(wall.OutputBytes(), side, kFill);
            TypeParam::ConvertByKernel(wall, src.data(), dst.data());
            ASSERT_EQ(std::vector<unsigned char>(dst.data(), dst.data() + dst.size()), expected);
            ASSERT_TRUE(dst.IsSurroundingUntouched());
        }
    });
}

// Every pixel of the panorama shows one of one or two source pixels, so that the frame's last one
// is among those that are copied together, in any place.
TYPED_TEST(WallDirectForms, ReadNoByteAfterTheSourcesLastPixel) {
    for (const auto& [columns, rows] : {std::pair{1, 1}, {2, 1}, {1, 2}}) {
        for (const int width : {1, 15, 16, 17, 40, 160}) {
            Wall wall = PackedWall(columns, rows, width, 4, TypeParam::kBytes);
            wall.radiusX = wall.radiusY = 0.4F;
            GuardedBuffer src(wall.SourceBytes(TypeParam::kBytes), GuardedBuffer::Side::EndsAtGuard,
                              0x5A);
            src.MakeReadOnly();
            std::vector<unsigned char> frame(wall.OutputBytes(), kFill);
            TypeParam::ConvertByKernel(wall, src.data(), frame.data());
            EXPECT_EQ(frame, std::vector<unsigned char>(wall.OutputBytes(), 0x5A)) << wall;
        }
    }
}

TYPED_TEST(WallDirectForms, KeepTheClearedPaddingOfEveryWidth) {
    ForEveryWidth(TypeParam::kBytes, [](Wall wall) {
        wall.radiusX = 0.4F;
        wall.dstStride = wall.dstWidth * TypeParam::kBytes + 40;
        const std::vector<unsigned char> white(wall.SourceBytes(TypeParam::kBytes), 0xFF);
        const auto frame = KernelPicture<TypeParam>(wall, white);
        for (int y = 0; y < wall.dstHeight; ++y) {
            const auto end = frame.begin() + (y + 1) * wall.dstStride;
            ASSERT_EQ(std::count(end - 40, end, 0), 40) << "row " << y;
        }
    });
}

TYPED_TEST(WallTableForms, FillTheirTableForEveryWidthAndNothingBeyondIt) {
    ForEveryWidth(TypeParam::kBytes,
                  [](const Wall& wall) { ExpectTableAtGuards<TypeParam>(wall); });
}

// A lens without any extent shows the frame's centre, which lies half way between two pixels of an
// even side: 0.5 of 1, 1.5 of 3, 2.5 of 5.
TYPED_TEST(WallTableForms, RoundTiesEachInTheirWay) {
    for (int side = 2; side <= 12; side += 2) {
        Wall wall = PackedWall(side, side + 2, 24, 4, TypeParam::kBytes);
        wall.radiusX = wall.radiusY = 0.0F;
        for (const int entry : TypeParam::BuildTable(wall)) {
            EXPECT_EQ(this->PlaceOf(entry, wall), (PixelPlace{TypeParam::TieAbove(side / 2 - 1),
                                                              TypeParam::TieAbove(side / 2)}))
                << wall;
        }
    }
}

TYPED_TEST(WallDirectForms, RoundTiesEachInTheirWay) {
    for (int side = 2; side <= 12; side += 2) {
        Wall wall = PackedWall(side, side + 2, 24, 4, TypeParam::kBytes);
        wall.radiusX = wall.radiusY = 0.0F;
        const auto frame = KernelPicture<TypeParam>(wall, SourceOf<TypeParam>(wall));
        for (std::size_t at = 0; at < frame.size(); at += std::size_t{TypeParam::kBytes}) {
            EXPECT_EQ(
                PlaceIn(&frame[at], TypeParam::kBytes),
                (PixelPlace{TypeParam::TieAbove(side / 2 - 1), TypeParam::TieAbove(side / 2)}))
                << wall;
        }
    }
}

// Both look along the same directions, but for the lanes' arctangent. Outside differs at the edge
// alone.
TYPED_TEST(WallTableForms, LieWithinTheArctangentsErrorOfTheScalarTable) {
    const bool isScalar = TypeParam::kForm == KernelForm::C;
    int differing = 0;
    for (const float radius : {0.5F, 0.31F, 0.87F}) {
        for (const float angle : {10.0F, 45.0F, 77.7F, 90.0F}) {
            Wall wall = PackedWall(1024, 901, 129, 65, TypeParam::kBytes);
            wall.radiusX = radius;
            wall.radiusY = 0.45F;
            wall.wallViewAngle = angle;
            const double margin = ErrorOfFraction(TypeParam::kForm, Path::Table, radius);
            const auto most = [&](int size, float r) {
                const double error = ErrorOfFraction(TypeParam::kForm, Path::Table, r);
                return isScalar ? 0 : 1 + static_cast<int>(std::ceil(error * size));
            };
            const auto scalar = TypeParam::ExpectedEntries(wall, TypeParam::kBytes, KernelForm::C);
            const auto built = TypeParam::BuildTable(wall);
            for (int i = 0; i < wall.dstWidth * wall.dstHeight; ++i) {
                const auto entry = static_cast<std::size_t>(i);
                if (built[entry] == kNoSource || scalar[entry] == kNoSource) {
                    const ExactLook look = LookOf(wall, i % wall.dstWidth, i / wall.dstWidth);
                    ASSERT_TRUE(built[entry] == scalar[entry] ||
                                look.IsInside(margin) != look.IsInside(-margin))
                        << wall << ", entry " << i;
                    continue;
                }
                const PixelPlace left = this->PlaceOf(scalar[entry], wall);
                const PixelPlace right = this->PlaceOf(built[entry], wall);
                ASSERT_LE(std::abs(right.column - left.column), most(wall.srcWidth, radius));
                ASSERT_LE(std::abs(right.row - left.row), most(wall.srcHeight, wall.radiusY));
                differing += left == right ? 0 : 1;
            }
        }
    }
    EXPECT_EQ(differing > 0, !isScalar);
}
