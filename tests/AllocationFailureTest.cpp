#include <gtest/gtest.h>

#include "KivFisheyeCamera.h"
#include "support/FailingAllocations.h"
#include "support/LockProbe.h"
#include "support/SetterScenario.h"

using namespace KivFisheyeLib;

namespace {

TEST(ContextInExhaustedMemory, IsNotMadeAndLeavesNothingBehind) {
    int failures = 0;
    FailEachRequestOf([&failures](AllocationWatch& watch, int number) {
        void* context = nullptr;
        watch.FailRequest(number);
        const bool failed =
            ThrowsBadAlloc([&context] { context = CreateKivFisheyeCameraContext(); });
        EXPECT_EQ(failed, watch.HasFailed());
        EXPECT_EQ(context == nullptr, failed);
        DeleteKivFisheyeCameraContext(context);
        EXPECT_EQ(watch.BlocksTaken(), 0);
        failures += failed ? 1 : 0;
    });
    EXPECT_GE(failures, 1);
}

template <class Panorama>
class ExhaustedMemory : public testing::Test {
protected:
    using Camera = SetterScenario<Panorama>;
    struct NamedSetter {
        const char* name;
        Setter (Camera::*make)();
    };

    static constexpr NamedSetter kTableSetters[3] = {
        {"input", &Camera::Input}, {"output", &Camera::Output}, {"lens", &Camera::Lens}};
    static constexpr NamedSetter kSceneSetters[3] = {{"mount", &Camera::MountType},
                                                     {"view", &Camera::ViewType},
                                                     {"mount and view", &Camera::MountAndViewType}};

    /// Lets each of the setters fail at each of its requests, and calls `check(camera)` after each
    /// failure that gets through to the caller.
    template <class Check>
    static void AfterEachFailure(const NamedSetter (&setters)[3], Check check) {
        for (const NamedSetter& named : setters) {
            SCOPED_TRACE(named.name);
            int failures = 0;
            FailEachRequestOf([&](AllocationWatch& watch, int number) {
                {
                    Camera camera;
                    const Setter setter = (camera.*named.make)();
                    if (FailsAt(watch, number, setter, camera)) {
                        ++failures;
                        check(camera);
                    }
                }
                EXPECT_EQ(watch.BlocksTaken(), 0) << "request " << number;
            });
            EXPECT_GE(failures, 2) << "the table and what it takes to build it";
        }
    }

private:
    static bool FailsAt(AllocationWatch& watch, int number, const Setter& setter, Camera& camera) {
        camera.ClearOutputs();
        watch.FailRequest(number);
        const bool failed = ThrowsBadAlloc([&setter] { setter.call(); });
        watch.StopFailing();
        EXPECT_TRUE(watch.HasFailed() || !failed);
        EXPECT_TRUE(setter.isStored());
        EXPECT_FALSE(IsLocked(camera.camera));
        EXPECT_TRUE(failed || camera.ShowsTheRightPicture())
            << "no failure told, request " << number;
        return failed;
    }
};

TYPED_TEST_SUITE(ExhaustedMemory, Panoramas);

TYPED_TEST(ExhaustedMemory, AFailedTableConvertsNothingAndProcessIsDone) {
    this->AfterEachFailure(this->kTableSetters, [](auto& camera) {
        EXPECT_EQ(camera.camera.Process(0), kResultOk);
        EXPECT_TRUE(camera.AreOutputsUntouched());
    });
}

TYPED_TEST(ExhaustedMemory, AFailedSceneIsNotThereAndProcessIsNotReady) {
    this->AfterEachFailure(this->kSceneSetters, [](auto& camera) {
        EXPECT_EQ(camera.camera.m_scene, nullptr);
        EXPECT_EQ(camera.camera.Process(0), kResultNotReady);
        EXPECT_EQ(camera.camera.SetAbsolutePTZ(1.0F, 2.0F, 3.0F), kResultNotReady);
        EXPECT_TRUE(camera.AreOutputsUntouched());
    });
}

TYPED_TEST(ExhaustedMemory, AFrameRecordBuildsAgainAfterAFailedTable) {
    this->AfterEachFailure(this->kTableSetters, [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameInput(), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
    this->AfterEachFailure(this->kTableSetters, [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameOutput(), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
}

TYPED_TEST(ExhaustedMemory, ANewLensBuildsAgainAfterAFailedTable) {
    this->AfterEachFailure(this->kTableSetters, [](auto& camera) {
        EXPECT_EQ(camera.camera.SetDewarpParams({0.25F, 0.5F, 45.0F, 0.0F}), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
}

TYPED_TEST(ExhaustedMemory, TheSameLensBuildsAgainAfterAFailedTable) {
    this->AfterEachFailure(this->kTableSetters, [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameLens(), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
}

TYPED_TEST(ExhaustedMemory, MountAndViewMakeTheSceneAfterAnyFailure) {
    const auto check = [](auto& camera) {
        EXPECT_EQ(camera.SetThePanorama(), kResultOk);
        EXPECT_TRUE(camera.HasTheRightPicture()) << "at once";
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    };
    this->AfterEachFailure(this->kTableSetters, check);
    this->AfterEachFailure(this->kSceneSetters, check);
}

TYPED_TEST(ExhaustedMemory, AFrameRecordMakesTheSceneAfterAFailedOne) {
    this->AfterEachFailure(this->kSceneSetters, [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameInput(), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
    this->AfterEachFailure(this->kSceneSetters, [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameOutput(), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
}

TYPED_TEST(ExhaustedMemory, ANewLensMakesTheSceneAfterAFailedOne) {
    this->AfterEachFailure(this->kSceneSetters, [](auto& camera) {
        EXPECT_EQ(camera.camera.SetDewarpParams({0.25F, 0.5F, 45.0F, 0.0F}), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
}

TYPED_TEST(ExhaustedMemory, ASceneMadeAfterAFailureWaitsForProcessLikeAnyOther) {
    this->AfterEachFailure(this->kSceneSetters, [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameOutput(), kResultOk);
        EXPECT_TRUE(camera.AreOutputsUntouched());
    });
    this->AfterEachFailure(this->kSceneSetters, [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameLens(), kResultOk);
        EXPECT_TRUE(camera.AreOutputsUntouched());
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    });
}

TYPED_TEST(ExhaustedMemory, TheSameMountOrViewMakesTheSceneAfterAnyFailure) {
    const auto setMount = [](auto& camera) {
        EXPECT_EQ(camera.camera.SetMountType(TypeParam::kMountType), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    };
    const auto setView = [](auto& camera) {
        EXPECT_EQ(camera.camera.SetViewType(TypeParam::kView), kResultOk);
        EXPECT_TRUE(camera.ShowsTheRightPicture());
    };
    this->AfterEachFailure(this->kTableSetters, setMount);
    this->AfterEachFailure(this->kSceneSetters, setMount);
    this->AfterEachFailure(this->kTableSetters, setView);
    this->AfterEachFailure(this->kSceneSetters, setView);
}

TYPED_TEST(ExhaustedMemory, AFailureIsForgottenOnceTheNextSetterIsDone) {
    const auto check = [](auto& camera) {
        EXPECT_EQ(camera.SetTheSameOutput(), kResultOk);
        EXPECT_EQ(camera.camera.SetMountType(TypeParam::kMountType), kResultNoChange);
        EXPECT_EQ(camera.camera.SetViewType(TypeParam::kView), kResultNoChange);
    };
    this->AfterEachFailure(this->kTableSetters, check);
    this->AfterEachFailure(this->kSceneSetters, check);
}

TYPED_TEST(ExhaustedMemory, TheOldSceneIsReleasedBeforeTheNewOneIsMade) {
    AllocationWatch watch;
    const int blocksBefore = watch.BlocksTaken();
    CKivFisheyeCamera camera;
    camera.m_mountType = TypeParam::kMountType;
    camera.m_viewType = TypeParam::kView;
    camera.m_scene = SceneNS::CreateScene(&camera, nullptr);
    ASSERT_GT(watch.BlocksTaken(), blocksBefore);
    watch.FailRequest(1);
    EXPECT_TRUE(ThrowsBadAlloc(
        [&] { camera.SetMountAndViewType(TypeParam::kMountType, TypeParam::kView); }));
    EXPECT_EQ(watch.BlocksTaken(), blocksBefore);
}

}  // namespace
