#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <functional>
#include <random>
#include <set>
#include <utility>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/AtOnce.h"
#include "support/ClientFrame.h"
#include "support/SerialCamera.h"
#include "support/YieldingUnlock.h"

// Short histories of a few threads. Each has to be explained by one order of its calls in which
// none stands before another that had ended when it began, and in which a plain model of the camera
// answers each as the camera did.

using namespace KivFisheyeLib;

namespace {

/// The result, and what was written.
using Reply = std::array<double, 5>;

/// A call of a camera or of its model, which have the same operations.
struct Call {
    template <class Function>
    Call(const char* callName, Function function)
        : name(callName), ofCamera(function), ofModel(function) {}

    const char* name;
    std::function<Reply(CKivFisheyeCamera&)> ofCamera;
    std::function<Reply(SerialCamera&)> ofModel;
};

template <class... Values>
Reply ReplyOf(ResultCode result, Values... values) {
    return {static_cast<double>(result), static_cast<double>(values)...};
}

Call SetMount(MountType mount) {
    return {"SetMountType", [=](auto& camera) { return ReplyOf(camera.SetMountType(mount)); }};
}

Call SetView(ViewType view) {
    return {"SetViewType", [=](auto& camera) { return ReplyOf(camera.SetViewType(view)); }};
}

Call SetBoth(MountType mount, ViewType view) {
    return {"SetMountAndViewType",
            [=](auto& camera) { return ReplyOf(camera.SetMountAndViewType(mount, view)); }};
}

Call Aim(float pan, float tilt, float zoom) {
    return {"SetAbsolutePTZ",
            [=](auto& camera) { return ReplyOf(camera.SetAbsolutePTZ(pan, tilt, zoom)); }};
}

Call Turn(float pan, float tilt, float zoom) {
    return {"SetRelativePTZ",
            [=](auto& camera) { return ReplyOf(camera.SetRelativePTZ(pan, tilt, zoom)); }};
}

Call SetLens(const DewarpParams& lens) {
    return {"SetDewarpParams", [=](auto& camera) { return ReplyOf(camera.SetDewarpParams(lens)); }};
}

const Call kGetBoth{"GetMountAndViewType", [](auto& camera) {
                        auto mount = MountTypeWall;
                        auto view = ViewTypeVCam;
                        const ResultCode result = camera.GetMountAndViewType(&mount, &view);
                        return ReplyOf(result, mount, view);
                    }};
const Call kGetPtz{"GetPTZ", [](auto& camera) {
                       float ptz[3] = {};
                       const ResultCode result = camera.GetPTZ(&ptz[0], &ptz[1], &ptz[2]);
                       return ReplyOf(result, ptz[0], ptz[1], ptz[2]);
                   }};
const Call kGetLens{"GetDewarpParams", [](auto& camera) {
                        DewarpParams lens{};
                        const ResultCode result = camera.GetDewarpParams(&lens);
                        return ReplyOf(result, lens.radiusX, lens.radiusY, lens.wallViewAngle,
                                       lens.innerRadiusRatio);
                    }};

std::vector<Call> Calls() {
    std::vector<Call> calls{kGetBoth, kGetBoth, kGetPtz, kGetPtz, kGetLens};
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        calls.push_back(SetMount(mount));
        calls.push_back(SetBoth(mount, ViewTypeVCam));
        calls.push_back(SetBoth(mount, ViewTypeDualPanorama));
    }
    for (const ViewType view : {ViewTypeVCam, ViewTypeDualPanorama, ViewTypeFullPanorama}) {
        calls.push_back(SetView(view));
    }
    calls.push_back(Aim(-60.0F, 70.0F, 3.0F));
    calls.push_back(Aim(200.0F, -20.0F, 4.0F));
    calls.push_back(Aim(30.0F, 0.0F, 0.0F));
    calls.push_back(Turn(30.0F, 5.0F, 1.0F));
    calls.push_back(Turn(-45.0F, -10.0F, 0.0F));
    calls.push_back(Turn(0.0F, 0.0F, 0.0F));
    calls.push_back(SetLens({0.25F, 0.375F, 30.0F, 0.5F}));
    calls.push_back(SetLens({0.5F, 0.5F, 60.0F, 0.25F}));
    calls.push_back(SetLens({0.5F, 0.5F, 60.0F, 0.9F}));
    return calls;
}

/// A call with its answer, and when it began and ended on a clock that all threads share.
struct Event {
    const Call* call;
    Reply reply;
    int begin;
    int end;
};
using History = std::vector<Event>;

/// Looks for an order of all calls. What was tried in vain is not tried again.
class OrderSearch {
public:
    explicit OrderSearch(const History& history) : m_history(history) {}

    bool Finds(unsigned int done = 0, const SerialCamera& camera = {}) {
        if (done == (1U << m_history.size()) - 1) {
            return true;
        }
        if (!m_tried.insert({done, camera}).second) {
            return false;
        }
        for (std::size_t i = 0; i < m_history.size(); ++i) {
            SerialCamera after = camera;
            if (MayBeNext(i, done) && m_history[i].call->ofModel(after) == m_history[i].reply &&
                Finds(done | 1U << i, after)) {
                return true;
            }
        }
        return false;
    }

private:
    /// Whether a call is not done, and none that is not done either had ended when it began.
    bool MayBeNext(std::size_t next, unsigned int done) const {
        bool mayBe = (done >> next & 1) == 0;
        for (std::size_t i = 0; i < m_history.size(); ++i) {
            mayBe = mayBe && ((done >> i & 1) != 0 || m_history[i].end >= m_history[next].begin);
        }
        return mayBe;
    }

    const History& m_history;
    std::set<std::pair<unsigned int, SerialCamera>> m_tried;
};

bool HasOrder(const History& history) {
    return OrderSearch(history).Finds();
}

/// Has four threads call the camera, four times each, and notes what came of it.
History Record(CKivFisheyeCamera& camera, const std::vector<Call>& calls, std::mt19937& random) {
    History history(16);
    for (Event& event : history) {
        event.call = &calls[random() % calls.size()];
    }
    std::atomic<int> clock{0};
    std::vector<std::function<void()>> actions;
    for (std::size_t first = 0; first < history.size(); first += 4) {
        actions.emplace_back([&, first] {
            const YieldingUnlock meeting;
            for (std::size_t i = first; i < first + 4; ++i) {
                Event& event = history[i];
                event.begin = clock++;
                event.reply = event.call->ofCamera(camera);
                event.end = clock++;
            }
        });
    }
    RunAtOnce(actions);
    return history;
}

TEST(CameraSerialOrder, ExplainsWhatThreadsSee) {
    const std::vector<Call> calls = Calls();
    const ClientFrame input(24, 20, PixelFormatRGB32, 0x3C);
    const ClientFrame output(64, 32, PixelFormatRGB32);
    std::mt19937 random(1);
    for (int round = 0; round < 400; ++round) {
        CKivFisheyeCamera camera;
        // Conversions hold the lock for a while.
        ASSERT_EQ(camera.SetInputVideoParams(input.record, PixelFormatRGB32), kResultOk);
        ASSERT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
        const History history = Record(camera, calls, random);
        if (HasOrder(history)) {
            continue;
        }
        for (const Event& event : history) {
            ADD_FAILURE() << event.begin << " to " << event.end << ": " << event.call->name << " "
                          << testing::PrintToString(event.reply);
        }
        FAIL() << "round " << round << " has no order";
    }
}

TEST(CameraSerialOrder, IsTheModelsInASingleThread) {
    const std::vector<Call> calls = Calls();
    std::mt19937 random(2);
    for (int round = 0; round < 400; ++round) {
        CKivFisheyeCamera camera;
        SerialCamera model;
        for (int i = 0; i < 40; ++i) {
            const Call& call = calls[random() % calls.size()];
            ASSERT_EQ(call.ofCamera(camera), call.ofModel(model)) << call.name;
        }
    }
}

const Call kTable = SetMount(MountTypeTable);
const Call kCeiling = SetMount(MountTypeCeiling);
const Call kFull = SetView(ViewTypeFullPanorama);
const Call kTurn = Turn(30.0F, 0.0F, 0.0F);

TEST(CameraSerialOrder, LetsCallsThatOverlapComeInAnyOrder) {
    EXPECT_TRUE(HasOrder({{&kTable, {}, 0, 3}, {&kGetBoth, {0, MountTypeWall}, 1, 2}}));
    EXPECT_TRUE(HasOrder({{&kTable, {}, 0, 3}, {&kGetBoth, {0, MountTypeTable}, 1, 2}}));
}

TEST(CameraSerialOrder, RefusesAnOldValueAfterANewOneWasSet) {
    EXPECT_FALSE(HasOrder({{&kTable, {}, 0, 1}, {&kGetBoth, {0, MountTypeWall}, 2, 3}}));
}

TEST(CameraSerialOrder, RefusesAValueThatGoesAway) {
    EXPECT_FALSE(HasOrder({{&kTable, {}, 0, 9},
                           {&kGetBoth, {0, MountTypeTable}, 1, 2},
                           {&kGetBoth, {0, MountTypeWall}, 3, 4}}));
}

TEST(CameraSerialOrder, RefusesAPairThatNeverWas) {
    const Reply pair{0, MountTypeCeiling, ViewTypeFullPanorama};
    EXPECT_FALSE(HasOrder({{&kTable, {}, 0, 1},
                           {&kFull, {}, 2, 9},
                           {&kGetBoth, pair, 3, 8},
                           {&kCeiling, {}, 10, 11}}));
}

TEST(CameraSerialOrder, RefusesALostTurn) {
    for (const double pan : {30.0, 60.0}) {
        EXPECT_EQ(HasOrder({{&kTable, {}, 0, 1},
                            {&kFull, {}, 2, 3},
                            {&kTurn, {}, 4, 7},
                            {&kTurn, {}, 5, 6},
                            {&kGetPtz, {0, pan, 0, 1}, 8, 9}}),
                  pan == 60.0);
    }
}

}  // namespace
