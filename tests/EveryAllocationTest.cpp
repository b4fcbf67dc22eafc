#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <system_error>

#include "KivFisheyeCamera.h"
#include "instrset_detect.h"
#include "levels/DispatchEntries.h"
#include "support/FaultWatch.h"
#include "support/LockProbe.h"
#include "support/OutlineOperations.h"
#include "support/ReadyCamera.h"

// Every operation with each of its requests failing in turn: what it answers, that nothing is left
// behind, and that the same call gives afterwards what it gives a camera that never failed.

using namespace KivFisheyeLib;

namespace {

/// How a call ended, and what it wrote.
struct Reply {
    bool hasThrown = false;
    ResultCode result = -1;
    alignas(16) std::array<float, 64> floats{};
    unsigned char* block = nullptr;
    std::string snapshot;

    bool operator==(const Reply& other) const {
        return hasThrown == other.hasThrown && result == other.result && floats == other.floats &&
               snapshot == other.snapshot;
    }
};

/// What an operation asks memory for: nothing, what a scene takes to be told of a change, to be
/// made or to convert, or a snapshot.
enum class Needs { Nothing, ToldScene, NewScene, Conversion, Snapshot };

struct Operation {
    const char* name;
    Needs needs;
    void (*prepare)(ReadyCamera& ready);
    void (*call)(ReadyCamera& ready, Reply& reply);
};

void DoNothing(ReadyCamera&) {}

/// Makes bytes of a block and gives it back.
void KeepSnapshot(CKivFisheyeCamera& camera, Reply& reply) {
    if (reply.block != nullptr) {
        SnapshotHeader header{};
        std::memcpy(&header, reply.block, sizeof header);
        reply.snapshot.assign(reinterpret_cast<const char*>(reply.block),
                              sizeof header + header.imageSize);
        camera.FreeSnapshotMemory(reply.block);
        EXPECT_FALSE(reply.hasThrown);
        reply.block = nullptr;
    }
}

// clang-format off
const Operation kOperations[] = {
    {"SetInputVideoParams", Needs::ToldScene, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.SetInputVideoParams(r.frames.otherInput.record, r.setting.format); }},
    {"SetOutputVideoParams", Needs::ToldScene, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.SetOutputVideoParams(r.frames.otherOutput.record); }},
    {"SetDewarpParams", Needs::ToldScene, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.SetDewarpParams({0.375F, 0.25F, 30.0F, 0.5F}); }},
    {"SetMountType", Needs::NewScene, [](auto& r) { r.camera.SetMountAndViewType(r.OtherMount(), r.setting.scene.view); }, [](auto& r, auto& reply) { reply.result = r.camera.SetMountType(r.setting.scene.mount); }},
    {"SetViewType", Needs::NewScene, [](auto& r) { r.camera.SetViewType(r.OtherView()); }, [](auto& r, auto& reply) { reply.result = r.camera.SetViewType(r.setting.scene.view); }},
    {"SetMountAndViewType", Needs::NewScene, [](auto& r) { r.camera.SetMountAndViewType(r.OtherMount(), r.OtherView()); }, [](auto& r, auto& reply) { reply.result = r.camera.SetMountAndViewType(r.setting.scene.mount, r.setting.scene.view); }},
    {"SetAbsolutePTZ", Needs::Nothing, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.SetAbsolutePTZ(20.0F, 40.0F, 5.0F); }},
    {"SetRelativePTZ", Needs::Nothing, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.SetRelativePTZ(5.0F, -5.0F, 0.5F); }},
    {"Process", Needs::Conversion, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.Process(0); }},
    {"Snapshot", Needs::Snapshot, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.Snapshot(&reply.block); }},
    {"GetPTZ", Needs::Nothing, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.GetPTZ(&reply.floats[0], &reply.floats[1], &reply.floats[2]); }},
    {"GetRecommendOutputVideoRatio", Needs::Nothing, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.GetRecommendOutputVideoRatio(reply.floats.data()); }},
    {"GetRecommendOutputVideoSize", Needs::Nothing, DoNothing, [](auto& r, auto& reply) { unsigned int size[2]; reply.result = r.camera.GetRecommendOutputVideoSize(&size[0], &size[1]); std::memcpy(reply.floats.data(), size, sizeof size); }},
    {"CvtXYToVCamPanTilt", Needs::Nothing, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.CvtXYToVCamPanTilt(0.25F, 0.5F, reply.floats[0], reply.floats[1]); }},
    {"CvtXYToVCamPanTiltZoom", Needs::Nothing, DoNothing, [](auto& r, auto& reply) { reply.result = r.camera.CvtXYToVCamPanTiltZoom(0.25F, 0.5F, 1.0F, reply.floats[0], reply.floats[1], reply.floats[2]); }},
};
// clang-format on

class EveryAllocation : public testing::TestWithParam<CameraSetting> {
protected:
    /// Calls `call(ready, reply)` and notes how it ends.
    template <class Call>
    static Reply ReplyOf(ReadyCamera& ready, Call call) {
        Reply reply;
        try {
            call(ready, reply);
        } catch (const std::bad_alloc&) {
            reply.hasThrown = true;
        }
        return reply;
    }

    /// The same where nothing fails.
    template <class Call>
    static Reply GoodReplyOf(ReadyCamera& ready, Call call) {
        Reply reply = ReplyOf(ready, call);
        KeepSnapshot(ready.camera, reply);
        return reply;
    }

    template <class Call>
    int FailEach(const Operation& operation, Call call) {
        ReadyCamera unfailing(GetParam(), frames);
        operation.prepare(unfailing);
        const Reply expected = GoodReplyOf(unfailing, call);
        const std::string picture = unfailing.NextPicture();
        return WithEachFault(operation.name, [&](FaultWatch& watch, const Fault&) {
            ReadyCamera ready(GetParam(), frames);
            operation.prepare(ready);
            frames.Clear();
            watch.Start();
            Reply reply = ReplyOf(ready, call);
            watch.Stop();
            KeepSnapshot(ready.camera, reply);
            EXPECT_FALSE(IsLocked(ready.camera));
            // Some requests can be done without.
            if (!(reply == expected)) {
                EXPECT_TRUE(watch.HasFailed());
                ExpectFailure(operation, reply, expected);
                ExpectSuccess(operation, ready, expected, call);
            }
            EXPECT_EQ(ready.NextPicture(), picture);
        });
    }

    CameraFrames frames{GetParam().format};

private:
    static void ExpectFailure(const Operation& operation, const Reply& reply,
                              const Reply& expected) {
        EXPECT_NE(operation.needs, Needs::Nothing);
        if (!reply.hasThrown) {
            EXPECT_EQ(operation.needs, Needs::Snapshot);
            EXPECT_EQ(reply.result, kResultOutOfMemory);
        }
        EXPECT_EQ(reply.floats, Reply().floats);
        if (operation.needs == Needs::Snapshot) {
            EXPECT_NE(reply.snapshot, expected.snapshot) << "a good picture all the same";
        }
    }

    /// The same call again. The mount or view is stored, so there is nothing to change any more
    /// where the scene was made and only its first frame failed.
    template <class Call>
    static void ExpectSuccess(const Operation& operation, ReadyCamera& ready, Reply expected,
                              Call call) {
        const bool isStored =
            ready.setting.scene.view == ViewTypeVCam && ready.camera.m_scene != nullptr;
        const std::string name = operation.name;
        if (isStored && (name == "SetMountType" || name == "SetViewType")) {
            expected.result = kResultNoChange;
        }
        EXPECT_EQ(GoodReplyOf(ready, call), expected);
    }
};

/// The form of a virtual camera that converts without memory.
bool ConvertsWithoutMemory() {
    constexpr int kLevelSse41 = 5;
    constexpr int kLevelAvx = 7;
    const int level = GetCpuInstructionSet();
    return level >= kLevelSse41 && level < kLevelAvx;
}

/// How many requests there are at least.
int LeastRequests(const Operation& operation, ViewType view) {
    switch (operation.needs) {
        case Needs::Snapshot:
            return 3;
        case Needs::NewScene:
            return view == ViewTypeVCam ? 1 : 2;
        case Needs::ToldScene:
            return view == ViewTypeVCam ? 0 : 1;
        case Needs::Conversion:
            return view == ViewTypeVCam && !ConvertsWithoutMemory() ? 1 : 0;
        default:
            return 0;
    }
}

TEST_P(EveryAllocation, ThatFailsIsToldAndForgotten) {
    const ViewType view = GetParam().scene.view;
    for (const Operation& operation : kOperations) {
        const int failures = FailEach(operation, operation.call);
        EXPECT_GE(failures, LeastRequests(operation, view)) << operation.name;
        const bool isWithoutMemory = operation.needs == Needs::Nothing ||
                                     (view == ViewTypeVCam ? operation.needs == Needs::ToldScene
                                                           : operation.needs == Needs::Conversion);
        if (isWithoutMemory) {
            EXPECT_EQ(failures, 0) << operation.name;
        }
    }
}

TEST_P(EveryAllocation, IsNoneOfAnOutlines) {
    for (const OutlineOperation& outline : kOutlineOperations) {
        const Operation operation{outline.name, Needs::Nothing, DoNothing, nullptr};
        EXPECT_EQ(FailEach(operation,
                           [&outline](ReadyCamera& ready, Reply& reply) {
                               reply.result = outline.call(ready.camera, reply.floats.data(), 16,
                                                           reply.floats.data() + 32, 16);
                           }),
                  0)
            << outline.name;
    }
}

INSTANTIATE_TEST_SUITE_P(, EveryAllocation, testing::ValuesIn(EveryCameraSetting()), NameOfSetting);

TEST(EveryOtherAllocation, OfANewContextThrowsAndLeavesNothing) {
    const int failures = WithEachFault("context", [](FaultWatch& watch, const Fault& fault) {
        void* context = nullptr;
        int error = 0;
        watch.Start();
        try {
            context = CreateKivFisheyeCameraContext();
        } catch (const std::bad_alloc&) {
            error = ENOMEM;
        } catch (const std::system_error& other) {
            error = other.code().value();
            EXPECT_NE(error, ENOMEM) << "this is for std::bad_alloc";
        }
        watch.Stop();
        const int expected = fault.error == EAGAIN ? EAGAIN : ENOMEM;
        EXPECT_EQ(error, watch.HasFailed() ? expected : 0);
        EXPECT_EQ(context == nullptr, watch.HasFailed());
        DeleteKivFisheyeCameraContext(context);
    });
    EXPECT_GE(failures, 8) << "the context and its scene twice, attributes and mutex twice";
}

// Converters from their construction on, virtual cameras, meshes and outlines.
TEST(EveryOtherAllocation, BehindAPointerThrowsAndLeavesNothing) {
    for (const DispatchEntry& entry : AllDispatchEntries()) {
        EntryOutput expected;
        entry.call(expected);
        WithEachFault(entry.Pointer(), [&](FaultWatch& watch, const Fault&) {
            EntryOutput output;
            watch.Start();
            const bool failed = ThrowsBadAlloc([&] { entry.call(output); });
            watch.Stop();
            if (failed) {
                EXPECT_TRUE(watch.HasFailed());
                output = {};
                entry.call(output);
            }
            EXPECT_TRUE(output == expected);
        });
    }
}

}  // namespace
