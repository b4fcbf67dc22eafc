#include <gtest/gtest.h>

#include <vector>

#include "support/FailingAllocations.h"
#include "support/LockProbe.h"
#include "support/SetterScenario.h"
#include "support/WallFamilies.h"

// A wall's conversions when memory runs out.

using namespace KivFisheyeLib;

namespace {

template <class Panorama>
class WallInExhaustedMemory : public testing::Test {
protected:
    static constexpr unsigned char kUntouched = 0xCD;

    template <class Converter>
    std::vector<unsigned char> PictureOf(Converter& converter) {
        output.Fill(kUntouched);
        Convert<Panorama>(converter, input.bytes.data(), output.bytes.data());
        return output.bytes;
    }

    ClientFrame input = ClientFrame::OfCoordinates(61, 47, Panorama::kFormat);
    ClientFrame output{64, 10, Panorama::kFormat, kUntouched};
};

TYPED_TEST_SUITE(WallInExhaustedMemory, WallPanoramas);

TYPED_TEST(WallInExhaustedMemory, ConvertersAreNotMadeAndLeaveNothingBehind) {
    const auto failuresOf = [](const auto& make) {
        int failures = 0;
        FailEachRequestOf([&](AllocationWatch& watch, int number) {
            watch.FailRequest(number);
            failures += ThrowsBadAlloc(make) ? 1 : 0;
            EXPECT_EQ(watch.BlocksTaken(), 0);
        });
        return failures;
    };
    EXPECT_EQ(failuresOf([] { const typename TypeParam::Converter converter; }), 1);
    EXPECT_EQ(failuresOf([] { const typename TypeParam::DirectConverter converter; }), 1);
}

TYPED_TEST(WallInExhaustedMemory, ADirectConversionThrowsAndLeavesNothingBehind) {
    typename TypeParam::DirectConverter converter;
    Init<TypeParam>(converter, this->input, this->output, kUnevenLens);
    const auto picture = this->PictureOf(converter);
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        watch.FailRequest(number);
        const bool failed = ThrowsBadAlloc([&] {
            Convert<TypeParam>(converter, this->input.bytes.data(), this->output.bytes.data());
        });
        EXPECT_EQ(failed, watch.HasFailed());
        EXPECT_EQ(watch.BlocksTaken(), 0);
        failures += failed ? 1 : 0;
    });
    const bool isScalar = FormOfDirectConversions() == KernelForm::C;
    EXPECT_EQ(failures, isScalar ? 3 : 2) << "sines and cosines, and in scalars row offsets";
    EXPECT_EQ(this->PictureOf(converter), picture);
}

TYPED_TEST(WallInExhaustedMemory, AFailedTableIsEmptyUntilTheNextOneIsBuilt) {
    const auto init = [this](auto& converter, const DewarpParams& lens) {
        Init<TypeParam>(converter, this->input, this->output, lens);
    };
    const ClientFrame expected = ExpectedPicture<TypeParam>(this->input, this->output, kUnevenLens);
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        {
            typename TypeParam::Converter converter;
            init(converter, {0.25F, 0.25F, 45.0F, 0.0F});
            watch.FailRequest(number);
            const bool failed = ThrowsBadAlloc([&] { init(converter, kUnevenLens); });
            watch.StopFailing();
            if (failed) {
                ++failures;
                ExpectWritesNothing(converter);
                init(converter, kUnevenLens);
            }
            EXPECT_EQ(this->PictureOf(converter), expected.bytes) << "request " << number;
        }
        EXPECT_EQ(watch.BlocksTaken(), 0);
    });
    EXPECT_GE(failures, 3) << "the table, sines and cosines at least";
}

TYPED_TEST(WallInExhaustedMemory, ATableConversionNeedsNoMemory) {
    typename TypeParam::Converter converter;
    Init<TypeParam>(converter, this->input, this->output, kUnevenLens);
    const AllocationWatch watch(1);
    Convert<TypeParam>(converter, this->input.bytes.data(), this->output.bytes.data());
    EXPECT_EQ(watch.Requests(), 0);
}

/// Lets each request of one setter fail and calls `check(camera)` after each failure.
template <class Panorama, class Check>
int AfterEachFailure(Setter (SetterScenario<Panorama>::*makeSetter)(), Check check) {
    int failures = 0;
    FailEachRequestOf([&](AllocationWatch& watch, int number) {
        {
            SetterScenario<Panorama> camera;
            const Setter setter = (camera.*makeSetter)();
            camera.ClearOutputs();
            watch.FailRequest(number);
            const bool failed = ThrowsBadAlloc([&setter] { setter.call(); });
            watch.StopFailing();
            EXPECT_TRUE(setter.isStored());
            EXPECT_FALSE(IsLocked(camera.camera));
            if (failed) {
                ++failures;
                check(camera);
            }
            EXPECT_TRUE(camera.ShowsTheRightPicture()) << "request " << number;
        }
        EXPECT_EQ(watch.BlocksTaken(), 0) << "request " << number;
    });
    return failures;
}

TYPED_TEST(WallInExhaustedMemory, AContextConvertsNothingUntilTheNextSetterBuildsTheTable) {
    using Camera = SetterScenario<TypeParam>;
    for (const auto setter : {&Camera::Input, &Camera::Output, &Camera::Lens}) {
        const int failures = AfterEachFailure<TypeParam>(setter, [](Camera& camera) {
            EXPECT_EQ(camera.camera.Process(0), kResultOk);
            EXPECT_TRUE(camera.AreOutputsUntouched());
            EXPECT_EQ(camera.SetTheSameLens(), kResultOk);
        });
        EXPECT_GE(failures, 4);
    }
}

TYPED_TEST(WallInExhaustedMemory, AContextHasNoSceneUntilTheNextSetterMakesIt) {
    using Camera = SetterScenario<TypeParam>;
    for (const auto setter : {&Camera::MountType, &Camera::ViewType, &Camera::MountAndViewType}) {
        const int failures = AfterEachFailure<TypeParam>(setter, [](Camera& camera) {
            EXPECT_EQ(camera.camera.Process(0), kResultNotReady);
            EXPECT_TRUE(camera.AreOutputsUntouched());
            EXPECT_EQ(camera.SetTheSameOutput(), kResultOk);
        });
        EXPECT_GE(failures, 5) << "the scene too";
    }
}

TYPED_TEST(WallInExhaustedMemory, AFrameBeyondATablesReachIsAFailedAllocation) {
    PanoramaCamera<TypeParam> wall;
    unsigned char pixel = 0;
    const auto bytes = static_cast<std::uint32_t>(wall.kBytesPerPixel);
    const VideoFrameInfo huge{8, 1U << 28, 8 * bytes, &pixel};
    EXPECT_TRUE(ThrowsBadAlloc([&] { wall.camera.SetInputVideoParams(huge, TypeParam::kFormat); }));
    EXPECT_FALSE(IsLocked(wall.camera));
    EXPECT_TRUE(IsSameRecord(wall.camera.m_inputInfo, huge)) << "stored all the same";
    EXPECT_EQ(wall.camera.Process(0), kResultOk);
    EXPECT_TRUE(wall.output.IsFilledWith(wall.kUntouched));
    EXPECT_EQ(wall.camera.SetInputVideoParams(wall.input.record, TypeParam::kFormat), kResultOk);
    EXPECT_TRUE(wall.Shows(wall.Expected().bytes));
}

}  // namespace
