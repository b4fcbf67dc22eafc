#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/AtOnce.h"
#include "support/CameraStorm.h"
#include "support/LockProbe.h"
#include "support/YieldingUnlock.h"

// One camera that eight threads call at will. Under the lock each operation meets the camera in one
// of the states that the others leave behind, never between two of them, so its answer is one that
// a single thread gets too.

using namespace KivFisheyeLib;

namespace {

constexpr int kThreads = 8;
constexpr auto kDuration = std::chrono::milliseconds(400);

/// Calls again and again until a storm's time is over, and at least a few hundred times. Gives how
/// many times.
template <class Function>
int RepeatForAWhile(Function&& call) {
    const YieldingUnlock meeting;
    const auto end = std::chrono::steady_clock::now() + kDuration;
    int calls = 0;
    while (calls < 300 || std::chrono::steady_clock::now() < end) {
        call();
        ++calls;
    }
    return calls;
}

using Kind = CameraOperation::Kind;
using AnswerSets = std::map<const CameraOperation*, std::set<CameraAnswer>>;

/// Calls all of a kind and keeps the answers. `restore` undoes what a call has changed.
template <class Restore>
void AddAnswers(const CameraStorm& storm, Kind kind, CKivFisheyeCamera& camera, AnswerSets& answers,
                Restore restore) {
    for (const CameraOperation& operation : storm.Operations()) {
        if (operation.kind == kind) {
            answers[&operation].insert(operation.call(camera));
            restore();
        }
    }
}

/// What the questions answer in every whole state, and the setters, which do not mind the angles,
/// in every mount and view with either format.
void AddAnswersOfStates(CameraStorm& storm, AnswerSets& answers) {
    const std::set<CameraPose> poses = storm.ReachablePoses();
    CKivFisheyeCamera camera;
    for (int state = 0; state < 8; ++state) {
        const int input = state & 1;
        const int output = state >> 1 & 1;
        const int lens = state >> 2;
        const auto tell = [&](const CameraPose& pose) {
            storm.Tell(camera, pose, input, output, lens);
        };
        tell(*poses.begin());
        const CameraPose* setPose = nullptr;
        for (const CameraPose& pose : poses) {
            SetPose(camera, pose);
            AddAnswers(storm, Kind::Question, camera, answers, [] {});
            const bool isNewScene =
                setPose == nullptr || setPose->mount != pose.mount || setPose->view != pose.view;
            if (isNewScene && input == output && lens == 0) {
                setPose = &pose;
                AddAnswers(storm, Kind::Setter, camera, answers, [&] { tell(pose); });
            }
        }
    }
}

/// What the operations without a lock answer for every mix of the values that are ever stored.
void AddAnswersOfMixes(CameraStorm& storm, AnswerSets& answers) {
    const auto& lenses = CameraStorm::kLenses;
    CKivFisheyeCamera first;
    CKivFisheyeCamera second;
    storm.Tell(first, PoseOf(first), 0, 0, 0);
    storm.Tell(second, PoseOf(second), 1, 1, 1);
    CKivFisheyeCamera camera;
    for (unsigned int mix = 0; mix < 1U << 10; ++mix) {
        const auto bit = [mix](int place) { return mix >> place & 1; };
        camera.m_inputInfo.width = (bit(0) == 0 ? first : second).m_inputInfo.width;
        camera.m_inputInfo.height = (bit(1) == 0 ? first : second).m_inputInfo.height;
        camera.m_dewarpParams = {lenses[bit(2)].radiusX, lenses[bit(3)].radiusY,
                                 lenses[bit(4)].wallViewAngle, lenses[bit(5)].innerRadiusRatio};
        const unsigned int mount = mix >> 6 & 3;
        camera.m_mountType = static_cast<MountType>(mount == 3 ? 7 : mount);
        camera.m_viewType = static_cast<ViewType>(mix >> 8);
        AddAnswers(storm, Kind::QuestionWithoutLock, camera, answers, [] {});
    }
}

class CameraHammer : public testing::Test {
protected:
    static void SetUpTestSuite() {
        storm = std::make_unique<CameraStorm>();
        answers = std::make_unique<AnswerSets>();
        AddAnswersOfStates(*storm, *answers);
        AddAnswersOfMixes(*storm, *answers);
    }
    static void TearDownTestSuite() {
        answers.reset();
        storm.reset();
    }

    void SetUp() override { storm->Tell(camera, PoseOf(camera), 0, 0, 0); }

    /// Calls at random what `admits` says. Gives what the calls that were not refused have set.
    template <class Admits>
    CameraOrders CallAtRandom(unsigned int seed, Admits admits) {
        std::vector<const CameraOperation*> admitted;
        for (const CameraOperation& operation : storm->Operations()) {
            if (admits(operation)) {
                admitted.push_back(&operation);
            }
        }
        std::mt19937 random(seed);
        CameraOrders orders;
        RepeatForAWhile([&] {
            const CameraOperation& operation = *admitted[random() % admitted.size()];
            const CameraAnswer answer = operation.call(camera);
            EXPECT_TRUE(IsOfAWholeState(operation, answer))
                << operation.name << ", which gave " << std::hex << ResultIn(answer);
            if (ResultIn(answer) == kResultOk || ResultIn(answer) == kResultNoChange) {
                orders.Add(operation.orders);
            }
        });
        return orders;
    }

    /// Expects this of the whole camera once all threads have ended.
    void ExpectTheStateOfOneThatWasToldTheSame() {
        EXPECT_FALSE(IsLocked(camera));
        const CameraOrders orders = storm->OrdersIn(camera);
        ASSERT_TRUE(orders.input >= 0 && orders.output >= 0 && orders.lens >= 0);
        CKivFisheyeCamera other;
        storm->Tell(other, PoseOf(camera), orders.input, orders.output, orders.lens);
        for (const CameraOperation& operation : storm->Operations()) {
            if (operation.kind != Kind::Setter) {
                EXPECT_EQ(operation.call(camera), operation.call(other)) << operation.name;
            }
        }
    }

    static bool IsOfAWholeState(const CameraOperation& operation, const CameraAnswer& answer) {
        return answers->at(&operation).count(answer) != 0;
    }

    static std::unique_ptr<CameraStorm> storm;
    static std::unique_ptr<AnswerSets> answers;
    CKivFisheyeCamera camera;
};

std::unique_ptr<CameraStorm> CameraHammer::storm;
std::unique_ptr<AnswerSets> CameraHammer::answers;

/// Whether a value is what one of the threads has set last, or the first one where none has.
bool IsLastOfOne(const std::vector<CameraOrders>& lastOrders, int CameraOrders::*field, int value) {
    bool isUntold = true;
    for (const CameraOrders& orders : lastOrders) {
        if (orders.*field == value) {
            return true;
        }
        isUntold = isUntold && orders.*field < 0;
    }
    return isUntold && value == 0;
}

TEST_F(CameraHammer, EveryAnswerIsOneOfAWholeState) {
    std::vector<CameraOrders> lastOrders(kThreads);
    std::vector<std::function<void()>> actions;
    for (unsigned int i = 0; i < kThreads; ++i) {
        actions.emplace_back([this, i, &lastOrders] {
            lastOrders[i] = CallAtRandom(i, [](const CameraOperation&) { return true; });
        });
    }
    RunAtOnce(actions);
    const CameraOrders orders = storm->OrdersIn(camera);
    for (const auto field : {&CameraOrders::input, &CameraOrders::output, &CameraOrders::lens,
                             &CameraOrders::mount, &CameraOrders::view}) {
        EXPECT_TRUE(IsLastOfOne(lastOrders, field, orders.*field)) << orders.*field;
    }
    EXPECT_EQ(storm->ReachablePoses().count(PoseOf(camera)), 1U);
    ExpectTheStateOfOneThatWasToldTheSame();
}

// All turns count while everything else happens that leaves the pan alone.
TEST_F(CameraHammer, RelativeTurnsAreNeverLost) {
    ASSERT_EQ(camera.SetMountAndViewType(MountTypeTable, ViewTypeFullPanorama), kResultOk);
    std::atomic<int> turns{0};
    std::vector<std::function<void()>> actions;
    for (unsigned int i = 0; i < kThreads / 2; ++i) {
        actions.emplace_back([this, &turns] {
            turns += RepeatForAWhile(
                [this] { EXPECT_EQ(camera.SetRelativePTZ(1.0F, 0.0F, 0.0F), kResultOk); });
        });
        actions.emplace_back([this, i] {
            CallAtRandom(i, [](const CameraOperation& operation) {
                return operation.kind == Kind::Setter && !operation.orders.IsAboutPose();
            });
        });
    }
    RunAtOnce(actions);
    EXPECT_EQ(camera.m_pan, static_cast<float>(turns % 360));
    ExpectTheStateOfOneThatWasToldTheSame();
}

// Without this the sets above could hold any answer.
TEST_F(CameraHammer, MixturesOfStatesAreNoAnswers) {
    CKivFisheyeCamera mixed;
    storm->Tell(mixed, PoseOf(mixed), 0, 0, 0);
    ASSERT_EQ(mixed.SetMountAndViewType(MountTypeTable, ViewTypeVCam), kResultOk);
    ASSERT_EQ(mixed.SetAbsolutePTZ(180.0F, 0.0F, 4.0F), kResultOk);
    mixed.m_vcamFieldOfView = 90.0F;
    mixed.m_inputInfo.width = 17;
    mixed.m_dewarpParams.radiusX = CameraStorm::kLenses[1].radiusX;
    mixed.m_viewType = ViewTypeDualPanorama;
    mixed.m_mountType = MountTypeWall;
    mixed.m_zoom = 1.0F;
    mixed.m_tilt = 30.0F;
    const std::set<std::string> names{
        "GetMountAndViewType", "GetPTZ",
        "GetDewarpParams",     "GetRecommendOutputVideoSize",
        "Process, seen",       "Snapshot",
        "GetVCamROI",          "CalculateWallPanoramaBoundary of the camera's lens"};
    std::size_t asked = 0;
    for (const CameraOperation& operation : storm->Operations()) {
        if (names.count(operation.name) != 0) {
            EXPECT_FALSE(IsOfAWholeState(operation, operation.call(mixed))) << operation.name;
            ++asked;
        }
    }
    EXPECT_EQ(asked, names.size());
}

}  // namespace
