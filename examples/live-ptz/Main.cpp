#include <Arguments.h>
#include <Camera.h>
#include <KivFisheyeLib.h>
#include <Png.h>
#include <Terminal.h>

#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <utility>

using namespace KivFisheyeLib;

namespace {

constexpr PanTiltZoom kStart{0.0F, 0.0F, 2.0F};
constexpr float kTurn = 5.0F;  // degrees
constexpr float kZoom = 0.5F;

/// Turns the camera as a key says; the library limits what it cannot show. False for the keys that
/// end the program.
bool Steer(IKivFisheyeCamera& camera, const Key& key) {
    PanTiltZoom step{0.0F, 0.0F, 0.0F};
    switch (key.kind) {
        case Key::Kind::Up:
            step.tilt = kTurn;
            break;
        case Key::Kind::Down:
            step.tilt = -kTurn;
            break;
        case Key::Kind::Left:
            step.pan = -kTurn;
            break;
        case Key::Kind::Right:
            step.pan = kTurn;
            break;
        case Key::Kind::Character:
            step.zoom = key.character == '+' ? kZoom : key.character == '-' ? -kZoom : 0.0F;
            break;
        case Key::Kind::Click:
            break;
        case Key::Kind::End:
            return false;
    }
    if (key.character == 'r') {
        Require(camera.SetAbsolutePTZ(kStart.pan, kStart.tilt, kStart.zoom), "SetAbsolutePTZ");
    } else if (step.pan != 0.0F || step.tilt != 0.0F || step.zoom != 0.0F) {
        Require(camera.SetRelativePTZ(step.pan, step.tilt, step.zoom), "SetRelativePTZ");
    }
    return key.character != 'q';
}

std::string Status(IKivFisheyeCamera& camera, double milliseconds) {
    PanTiltZoom now;
    Require(camera.GetPTZ(&now.pan, &now.tilt, &now.zoom), "GetPTZ");
    char text[128];
    std::snprintf(text, sizeof text, "pan %.1f, tilt %.1f, zoom %.1f; %.2f ms",
                  static_cast<double>(now.pan), static_cast<double>(now.tilt),
                  static_cast<double>(now.zoom), milliseconds);
    return text;
}

/// Makes the picture as large as the terminal, but for the line below it.
void Fit(IKivFisheyeCamera& camera, Terminal& terminal, Picture& view) {
    const Terminal::Size size = Terminal::PresentSize();
    const std::uint32_t width = size.columns / 8 * 8;  // the library asks for a multiple of 8
    const std::uint32_t height = (size.rows - 1) * 2;
    if (width == 0 || height == 0) {
        throw std::runtime_error("the terminal is too small for a picture");
    }
    if (width != view.width || height != view.height) {
        Picture fitting(width, height);
        Require(camera.SetOutputVideoParams(FrameOf(fitting)), "SetOutputVideoParams");
        // The pixels stay where they are, and the former ones go when the library has left them.
        std::swap(view, fitting);
        terminal.Clear();
    }
}

void Run(const Arguments& arguments) {
    const MountType mount = MountOf(arguments[0]);
    Picture fisheye = ReadPng(arguments[1]);
    Picture view;
    const Context context = MakeContext();
    IKivFisheyeCamera& camera = *GetCameraAPI(context.get());
    SetUp(camera, mount, ViewTypeVCam, fisheye);
    Require(camera.SetAbsolutePTZ(kStart.pan, kStart.tilt, kStart.zoom), "SetAbsolutePTZ");

    Terminal terminal;
    do {
        Fit(camera, terminal, view);
        const auto start = std::chrono::steady_clock::now();
        Require(camera.Process(0), "Process");
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - start;
        terminal.Draw(view, 0);
        terminal.Write(view.height / 2, Status(camera, time.count()));
        terminal.Show();
    } while (Steer(camera, terminal.WaitForKey()));
}

}  // namespace

/// A virtual camera in the terminal: arrows turn it, + and - zoom, r goes to the start, q ends.
int main(int argc, char** argv) {
    const Example example{"live-ptz", "wall|ceiling|table INPUT.png", {2}};
    return RunExample(example, argc, argv, Run);
}
