#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/RingModel.h"

// The direct conversions against a plain single precision loop, bit for bit.

template <class Family>
class RingKernels : public FormTest<Family> {
protected:
    static void ExpectBitsOfTheLoop(const Ring& ring, float pan,
                                    const std::vector<unsigned char>& src) {
        ASSERT_EQ(KernelPicture<Family>(ring, pan, src),
                  ModelPicture<Family>(ring, pan, src, Family::kForm))
            << ring << ", pan " << pan;
    }

    static void ExpectBitsOfTheLoop(const Ring& ring, float pan) {
        ExpectBitsOfTheLoop(
            ring, pan,
            CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, Family::kBytes));
    }
};

TYPED_TEST_SUITE(RingKernels, Forms<PanoramaFamilies>::Direct, RingFormNames);

TYPED_TEST(RingKernels, GiveTheBitsOfThePlainLoop) {
    RingGenerator generator(20240501);
    for (int i = 0; i < 400; ++i) {
        const Ring ring = generator.NextRing(TypeParam::kBytes);
        const float pan = generator.NextPan();
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(ring, pan, src)) << "case " << i;
    }
}

// Large enough for every stage of a kernel, and for columns beside them.
TYPED_TEST(RingKernels, GiveTheBitsOfThePlainLoopInBigPictures) {
    Ring ring = PackedRing(641, 487, 1605, 121, TypeParam::kBytes);
    ring.srcStride += 5;
    ring.dstStride += 3;
    ring.radiusX = 0.47F;
    ring.radiusY = 0.61F;
    ring.innerRadiusRatio = 0.13F;
    for (const float pan : {0.0F, 123.456F, -1.0F}) {
        ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(ring, pan));
    }
}

TYPED_TEST(RingKernels, GiveTheBitsOfThePlainLoopForEveryLens) {
    for (const float radiusX : {0.0F, 0.25F, 0.5F, 0.50001F, 0.7F, 1.0F}) {
        for (const float radiusY : {0.1F, 0.5F, 0.9F}) {
            for (const float ratio : {0.0F, 0.31F, 0.8F}) {
                Ring ring = PackedRing(233, 177, 48, 13, TypeParam::kBytes);
                ring.radiusX = radiusX;
                ring.radiusY = radiusY;
                ring.innerRadiusRatio = ratio;
                ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(ring, 17.5F));
            }
        }
    }
}

// A huge pan leaves too few bits for a column's step: all columns may show the same ray, which must
// still lie in the frame.
TYPED_TEST(RingKernels, GiveTheBitsOfThePlainLoopForAHugePan) {
    const Ring ring = PackedRing(50, 40, 32, 8, TypeParam::kBytes);
    for (const float pan : {1e9F, -1e9F, 3e38F, 1e-30F}) {
        ASSERT_NO_FATAL_FAILURE(this->ExpectBitsOfTheLoop(ring, pan));
    }
}

TYPED_TEST(RingKernels, PanThatIsNoNumberGivesBlack) {
    Ring ring = PackedRing(20, 20, 16, 6, TypeParam::kBytes);
    ring.dstStride += 5;
    const auto src =
        CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, TypeParam::kBytes);
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const std::vector<unsigned char> black(ring.OutputBytes(), 0);
    for (const float pan : {std::numeric_limits<float>::quiet_NaN(), kInfinity, -kInfinity}) {
        EXPECT_EQ(KernelPicture<TypeParam>(ring, pan, src), black) << "pan " << pan;
    }
}

TYPED_TEST(RingKernels, LensThatIsNoNumberGivesBlack) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    const Ring sizes = PackedRing(20, 20, 16, 6, TypeParam::kBytes);
    const auto src = CoordinateFrame(20, 20, sizes.srcStride, TypeParam::kBytes);
    const std::vector<unsigned char> black(sizes.OutputBytes(), 0);
    for (int field = 0; field < 2; ++field) {
        Ring ring = sizes;
        (field == 0 ? ring.radiusX : ring.radiusY) = kNan;
        EXPECT_EQ(KernelPicture<TypeParam>(ring, 0.0F, src), black) << "field " << field;
    }
}

template <class Family>
class RingConverters : public ::testing::Test {};

TYPED_TEST_SUITE(RingConverters, PanoramaFamilies, RingFamilyNames);

TYPED_TEST(RingConverters, GiveTheBitsOfThePlainLoop) {
    RingGenerator generator(77001);
    typename TypeParam::DirectConverter converter;
    for (int i = 0; i < 120; ++i) {
        const Ring ring = generator.NextRing(TypeParam::kBytes);
        const float pan = generator.NextPan();
        const auto src = generator.NextBytes(ring.SourceBytes(TypeParam::kBytes));
        std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
        TypeParam::Init(converter, ring);
        TypeParam::Convert(converter, pan, src.data(), frame.data());
        ASSERT_EQ(frame, ModelPicture<TypeParam>(ring, pan, src))
            << "case " << i << ": " << ring << ", pan " << pan;
    }
}

TYPED_TEST(RingConverters, TheCallDecidesThePixelSizeAndNotTheStoredBits) {
    const Ring ring = PackedRing(31, 29, 24, 9, TypeParam::kBytes);
    const auto src =
        CoordinateFrame(ring.srcWidth, ring.srcHeight, ring.srcStride, TypeParam::kBytes);
    const auto expected = ModelPicture<TypeParam>(ring, 10.0F, src);
    typename TypeParam::DirectConverter converter;
    for (const int bits : {0, 8, 24, 32, -1}) {
        converter.Init(ring.srcWidth, ring.srcHeight, ring.srcStride, ring.dstWidth, ring.dstHeight,
                       ring.dstStride, bits, ring.radiusX, ring.radiusY, ring.innerRadiusRatio);
        std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
        TypeParam::Convert(converter, 10.0F, src.data(), frame.data());
        EXPECT_EQ(frame, expected) << "bits " << bits;
    }
}

TYPED_TEST(RingConverters, ConversionBeforeInitTouchesNothing) {
    typename TypeParam::DirectConverter converter;
    const unsigned char src[4] = {1, 2, 3, 4};
    unsigned char dst[4] = {5, 6, 7, 8};
    TypeParam::Convert(converter, 0.0F, &src[0], &dst[0]);
    EXPECT_EQ(std::vector<unsigned char>(dst, dst + 4), (std::vector<unsigned char>{5, 6, 7, 8}));
}

TYPED_TEST(RingConverters, LaterInitReplacesEveryValue) {
    const Ring earlier = PackedRing(17, 40, 16, 5, TypeParam::kBytes);
    Ring later = PackedRing(23, 19, 33, 7, TypeParam::kBytes);
    later.srcStride += 2;
    later.dstStride += 7;
    later.radiusX = 0.31F;
    later.radiusY = 0.72F;
    later.innerRadiusRatio = 0.44F;
    const auto src = CoordinateFrame(23, 19, later.srcStride, TypeParam::kBytes);
    typename TypeParam::DirectConverter converter;
    TypeParam::Init(converter, earlier);
    TypeParam::Init(converter, later);
    std::vector<unsigned char> frame(later.OutputBytes(), 0xCD);
    TypeParam::Convert(converter, 15.0F, src.data(), frame.data());
    EXPECT_EQ(frame, ModelPicture<TypeParam>(later, 15.0F, src));
}
