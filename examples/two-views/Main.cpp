#include <Arguments.h>
#include <Camera.h>
#include <KivFisheyeLib.h>
#include <Png.h>

#include <chrono>
#include <cmath>
#include <future>
#include <iostream>

using namespace KivFisheyeLib;

namespace {

constexpr float kMostFrames = 1e6F;

struct Turn {
    Picture last;  // its last frame
    std::chrono::duration<double, std::milli> time{};
};

/// Turns a view once around, frame by frame.
///
/// The input may be shared: contexts only read it. So a program that writes the next picture into
/// it waits until no `Process` of any context is running. All else stays with one thread: a
/// context, because calls on one wait for each other, and its output, because two would write it.
Turn TurnAround(Picture& input, MountType mount, ViewType view, float tilt, float zoom,
                int frames) {
    const Context context = MakeContext();
    IKivFisheyeCamera& camera = *GetCameraAPI(context.get());
    SetUp(camera, mount, view, input);
    Turn turn{RecommendedPicture(camera)};
    Require(camera.SetOutputVideoParams(FrameOf(turn.last)), "SetOutputVideoParams");

    const auto start = std::chrono::steady_clock::now();
    for (int frame = 0; frame < frames; ++frame) {
        const float pan = 360.0F * static_cast<float>(frame) / static_cast<float>(frames);
        Require(camera.SetAbsolutePTZ(pan, tilt, zoom), "SetAbsolutePTZ");
        Require(camera.Process(0), "Process");
    }
    turn.time = std::chrono::steady_clock::now() - start;
    return turn;
}

void Tell(const char* view, const Turn& turn, int frames) {
    std::cout << view << ": " << frames << " frames of " << turn.last.width << 'x'
              << turn.last.height << " in " << turn.time.count() << " ms\n";
}

int FramesOf(const std::string& word) {
    const float frames = NumberOf(word);
    if (frames < 1.0F || frames > kMostFrames || frames != std::floor(frames)) {
        throw UsageError("'" + word + "' is not a number of frames");
    }
    return static_cast<int>(frames);
}

void Run(const Arguments& arguments) {
    const MountType mount = MountOf(arguments[0]);
    const int frames = arguments.size() == 5 ? FramesOf(arguments[4]) : 100;
    Picture input = ReadPng(arguments[1]);
    // Halfway between the lens's axis and its rim, where these two mounts see walls.
    const float tilt = mount == MountTypeCeiling ? 45.0F : mount == MountTypeTable ? -45.0F : 0.0F;

    const auto start = [&](ViewType view) {
        // Its thread ends before `input` goes, also when the other one throws.
        return std::async(std::launch::async,
                          [&, view] { return TurnAround(input, mount, view, tilt, 4.0F, frames); });
    };
    auto panorama = start(ViewTypeFullPanorama);
    auto virtualCamera = start(ViewTypeVCam);
    const Turn ofPanorama = panorama.get();
    const Turn ofVirtualCamera = virtualCamera.get();

    WritePng(arguments[2], ofPanorama.last);
    WritePng(arguments[3], ofVirtualCamera.last);
    Tell("panorama", ofPanorama, frames);
    Tell("virtual camera", ofVirtualCamera, frames);
}

}  // namespace

/// Two views of one camera at once, each on its own thread.
int main(int argc, char** argv) {
    const Example example{
        "two-views", "wall|ceiling|table INPUT.png PANORAMA.png VIEW.png [FRAMES]", {4, 5}};
    return RunExample(example, argc, argv, Run);
}
