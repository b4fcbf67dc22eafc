#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "support/WallFamilies.h"
#include "support/WallModel.h"

// A wall's direct conversion against a plain single precision loop, bit for bit.

template <class Family>
class WallKernels : public FormTest<Family> {
protected:
    /// Holds the kernel against the loop on a source that tells its places.
    static void ExpectBitsOfTheLoop(const Wall& wall) {
        const auto src = SourceOf<Family>(wall);
        ASSERT_TRUE(KernelPicture<Family>(wall, src) ==
                    ExpectedDirectPicture<Family>(wall, src, Family::kForm))
            << wall;
    }
};

TYPED_TEST_SUITE(WallKernels, Forms<WallFamilies>::Direct, WallFormNames);

TYPED_TEST(WallKernels, GiveTheBitsOfThePlainLoopInRandomFrames) {
    ForRandomWalls<TypeParam>(20240502, [](const Wall& wall, const auto& src) {
        ASSERT_EQ(KernelPicture<TypeParam>(wall, src),
                  ExpectedDirectPicture<TypeParam>(wall, src, TypeParam::kForm));
    });
}

// Long rows and many of them let angles drift apart that are summed or turned differently.
TYPED_TEST(WallKernels, GiveTheBitsOfThePlainLoopInLargeFrames) {
    Wall wall = PackedWall(1913, 1511, 1608, 121, TypeParam::kBytes);
    wall.srcStride += 5;
    wall.dstStride += 3;
    ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(wall));
    wall.dstWidth = 40;
    wall.dstHeight = 2400;
    wall.radiusX = 0.47F;
    wall.radiusY = 0.61F;
    wall.wallViewAngle = 77.7F;
    ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(wall));
}

TYPED_TEST(WallKernels, GiveTheBitsOfThePlainLoopForEveryLens) {
    constexpr float kRadii[] = {0.0F, 0.1F, 0.25F, 0.5F, 0.50001F, 0.7F, 1.0F};
    for (const float radiusX : kRadii) {
        for (const float radiusY : kRadii) {
            for (const float angle : {10.0F, 33.3F, 45.0F, 60.0F, 89.9F, 90.0F}) {
                Wall wall = PackedWall(233, 177, 48, 27, TypeParam::kBytes);
                wall.dstStride += 1;
                wall.radiusX = radiusX;
                wall.radiusY = radiusY;
                wall.wallViewAngle = angle;
                ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(wall));
            }
        }
    }
}

TYPED_TEST(WallKernels, GiveTheBitsOfThePlainLoopForEverySourceSize) {
    for (const int width : {1, 2, 3, 5, 64}) {
        for (const int height : {1, 2, 3, 7, 63}) {
            for (const int padding : {0, 1, 6}) {
                Wall wall = PackedWall(width, height, 40, 33, TypeParam::kBytes);
                wall.srcStride += padding;
                ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(wall));
            }
        }
    }
}

TYPED_TEST(WallKernels, ClearTheRowsPaddingAndNothingBeyondThem) {
    Wall wall = PackedWall(31, 29, 24, 9, TypeParam::kBytes);
    wall.radiusX = wall.radiusY = 0.49F;
    const int rowBytes = wall.dstStride;
    wall.dstStride += 7;
    const std::vector<unsigned char> src(wall.SourceBytes(TypeParam::kBytes), 0x55);
    std::vector<unsigned char> frame(wall.OutputBytes() + 5, 0xCD);
    TypeParam::ConvertByKernel(wall, src.data(), frame.data());
    for (int y = 0; y < wall.dstHeight; ++y) {
        for (int x = 0; x < wall.dstStride; ++x) {
            // The lens lies within the source and no column on the axis: no pixel is black.
            ASSERT_EQ(frame[static_cast<std::size_t>(y * wall.dstStride + x)],
                      x < rowBytes ? 0x55 : 0)
                << x << ", " << y;
        }
    }
    EXPECT_EQ(std::vector<unsigned char>(frame.end() - 5, frame.end()),
              std::vector<unsigned char>(5, 0xCD));
}

TYPED_TEST(WallKernels, LensThatIsNoNumberGivesBlack) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const Wall sizes = PackedWall(20, 20, 16, 6, TypeParam::kBytes);
    const auto src = SourceOf<TypeParam>(sizes);
    for (float Wall::*const field :
         {static_cast<float Wall::*>(&Wall::radiusX), static_cast<float Wall::*>(&Wall::radiusY),
          &Wall::wallViewAngle}) {
        for (const float value : {kNan, kInfinity, -kInfinity}) {
            Wall wall = sizes;
            wall.*field = value;
            EXPECT_EQ(KernelPicture<TypeParam>(wall, src),
                      std::vector<unsigned char>(wall.OutputBytes(), 0))
                << wall;
        }
    }
}

template <class Family>
class WallConverters : public ::testing::Test {};

TYPED_TEST_SUITE(WallConverters, WallFamilies, WallFamilyNames);

TYPED_TEST(WallConverters, GiveTheBitsOfThePlainLoop) {
    typename TypeParam::DirectConverter converter;
    ForRandomWalls<TypeParam>(77002, [&converter](const Wall& wall, const auto& src) {
        TypeParam::Init(converter, wall);
        ASSERT_EQ(PictureOf<TypeParam>(converter, wall, src),
                  ExpectedDirectPicture<TypeParam>(wall, src));
    });
}

TYPED_TEST(WallConverters, TheCallDecidesThePixelSizeAndNotTheStoredBits) {
    const Wall wall = PackedWall(31, 29, 24, 9, TypeParam::kBytes);
    const auto src = SourceOf<TypeParam>(wall);
    const auto expected = ExpectedDirectPicture<TypeParam>(wall, src);
    typename TypeParam::DirectConverter converter;
    for (const int bits : {0, 8, 24, 32, -1}) {
        TypeParam::Init(converter, wall, bits);
        EXPECT_EQ(PictureOf<TypeParam>(converter, wall, src), expected) << "bits " << bits;
    }
}

TYPED_TEST(WallConverters, ConversionBeforeInitTouchesNothing) {
    typename TypeParam::DirectConverter converter;
    // Any access through it ends the process.
    unsigned char* const nowhere = nullptr;
    TypeParam::Convert(converter, nowhere, nowhere);
}

TYPED_TEST(WallConverters, LaterInitReplacesEveryValue) {
    const Wall earlier = PackedWall(17, 40, 16, 5, TypeParam::kBytes);
    Wall later = PackedWall(23, 19, 33, 8, TypeParam::kBytes);
    later.srcStride += 2;
    later.dstStride += 7;
    later.radiusX = 0.31F;
    later.radiusY = 0.72F;
    later.wallViewAngle = 61.0F;
    const auto src = SourceOf<TypeParam>(later);
    typename TypeParam::DirectConverter converter;
    TypeParam::Init(converter, earlier);
    TypeParam::Init(converter, later);
    EXPECT_EQ(PictureOf<TypeParam>(converter, later, src),
              ExpectedDirectPicture<TypeParam>(later, src));
}
