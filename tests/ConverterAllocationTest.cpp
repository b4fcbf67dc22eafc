#include <gtest/gtest.h>

#include <vector>

#include "support/EachFailure.h"
#include "support/FailingAllocations.h"
#include "support/PanoramaCamera.h"

using namespace KivFisheyeLib;

namespace {

constexpr unsigned char kUntouched = 0xCD;

template <class Panorama>
class ConverterInExhaustedMemory : public testing::Test {
protected:
    ClientFrame input = ClientFrame::OfCoordinates(61, 47, Panorama::kFormat);
    ClientFrame output{64, 9, Panorama::kFormat, kUntouched};
};

TYPED_TEST_SUITE(ConverterInExhaustedMemory, Panoramas);

TYPED_TEST(ConverterInExhaustedMemory, IsNotMadeAndLeavesNothingBehind) {
    EXPECT_GE(ExpectEachFailureThrows([] { const typename TypeParam::Converter converter; }), 1);
    EXPECT_GE(ExpectEachFailureThrows([] { const typename TypeParam::DirectConverter converter; }),
              1);
}

TYPED_TEST(ConverterInExhaustedMemory, ADirectConversionLeavesNothingBehind) {
    typename TypeParam::DirectConverter converter;
    Init<TypeParam>(converter, this->input, this->output, kUnevenLens);
    const auto convert = [&] {
        Convert<TypeParam>(converter, 0.0F, this->input.bytes.data(), this->output.bytes.data());
    };
    convert();
    const std::vector<unsigned char> picture = this->output.bytes;
    this->output.Fill(kUntouched);
    EXPECT_GE(ExpectEachFailureThrows(convert), 1);
    EXPECT_EQ(this->output.bytes, picture) << "the last attempt had the memory that it needs";
}

TYPED_TEST(ConverterInExhaustedMemory, AFailedTableIsEmptyUntilTheNextOneIsBuilt) {
    const ClientFrame expected = ExpectedPicture<TypeParam>(this->input, this->output, kUnevenLens);
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        {
            typename TypeParam::Converter converter;
            Init<TypeParam>(converter, this->input, this->output, {0.25F, 0.25F, 45.0F, 0.0F});
            watch.FailRequest(number);
            const bool failed = ThrowsBadAlloc(
                [&] { Init<TypeParam>(converter, this->input, this->output, kUnevenLens); });
            watch.StopFailing();
            this->output.Fill(kUntouched);
            const auto convert = [&](float pan) {
                Convert<TypeParam>(converter, pan, this->input.bytes.data(),
                                   this->output.bytes.data());
            };
            convert(360.0F);
            if (failed) {
                ++failures;
                convert(90.0F);
                convert(0.0F);
                EXPECT_TRUE(this->output.IsFilledWith(kUntouched))
                    << "nothing of the old table either";
                Init<TypeParam>(converter, this->input, this->output, kUnevenLens);
                convert(360.0F);
            }
            EXPECT_EQ(this->output.bytes, expected.bytes) << "request " << number;
        }
        EXPECT_EQ(watch.BlocksTaken(), 0);
    });
    EXPECT_GE(failures, 2) << "the table and what it takes to build it";
}

TYPED_TEST(ConverterInExhaustedMemory, ATableConversionNeedsNoMemory) {
    typename TypeParam::Converter converter;
    Init<TypeParam>(converter, this->input, this->output, kUnevenLens);
    const AllocationWatch watch(1);
    Convert<TypeParam>(converter, this->input.bytes.data(), this->output.bytes.data());
    Convert<TypeParam>(converter, 90.0F, this->input.bytes.data(), this->output.bytes.data());
    EXPECT_EQ(watch.Requests(), 0);
}

}  // namespace
