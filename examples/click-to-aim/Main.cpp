#include <Arguments.h>
#include <Camera.h>
#include <KivFisheyeLib.h>
#include <Png.h>
#include <Terminal.h>

#include <algorithm>
#include <stdexcept>

using namespace KivFisheyeLib;

namespace {

constexpr float kFieldOfView = 1.0471976F;  // 60 degrees, in radians

/// Turns a virtual camera to a point of the fisheye picture, given as fractions of its sides from
/// its top left, and makes a frame.
void Aim(IKivFisheyeCamera& camera, float x, float y) {
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 1.0F;
    Require(camera.CvtXYToVCamPanTiltZoom(x, y, kFieldOfView, pan, tilt, zoom),
            "CvtXYToVCamPanTiltZoom");
    Require(camera.SetAbsolutePTZ(pan, tilt, zoom), "SetAbsolutePTZ");
    Require(camera.Process(0), "Process");
}

/// As large as fits, by the nearest pixels; an even number of rows.
Picture Shrunk(const Picture& picture, std::uint32_t mostWidth, std::uint32_t mostHeight) {
    const double scale = std::min(static_cast<double>(mostWidth) / picture.width,
                                  static_cast<double>(mostHeight) / picture.height);
    Picture small(std::max(1U, static_cast<std::uint32_t>(picture.width * scale)),
                  std::max(1U, static_cast<std::uint32_t>(picture.height * scale / 2)) * 2);
    for (std::uint32_t y = 0; y < small.height; ++y) {
        for (std::uint32_t x = 0; x < small.width; ++x) {
            const std::uint32_t fromX = (2 * x + 1) * picture.width / (2 * small.width);
            const std::uint32_t fromY = (2 * y + 1) * picture.height / (2 * small.height);
            std::copy_n(picture.At(fromX, fromY), Picture::kBytesPerPixel, small.At(x, y));
        }
    }
    return small;
}

/// The fisheye picture at the left, where clicks aim the view at the right.
void AimByMouse(IKivFisheyeCamera& camera, const Picture& fisheye) {
    const Terminal::Size size = Terminal::PresentSize();
    const std::uint32_t width = size.columns / 2 / 8 * 8;  // the library asks for a multiple of 8
    const std::uint32_t height = (size.rows - 1) * 2;
    if (width == 0 || height == 0) {
        throw std::runtime_error("the terminal is too small for two pictures");
    }
    const Picture overview = Shrunk(fisheye, width, height);
    Picture view(width, height);
    Require(camera.SetOutputVideoParams(FrameOf(view)), "SetOutputVideoParams");

    Terminal terminal(Terminal::Mouse::Used);
    terminal.Clear();
    terminal.Draw(overview, 0);
    terminal.Write(height / 2, "Click at the left, and see at the right; q ends");
    for (Key key{Key::Kind::Character}; key.kind != Key::Kind::End && key.character != 'q';
         key = terminal.WaitForKey()) {
        const auto clickWidth = static_cast<int>(overview.width);
        const auto clickHeight = static_cast<int>(overview.height / 2);
        if (key.kind == Key::Kind::Click && key.column < clickWidth && key.row < clickHeight) {
            // The middle of the cell.
            Aim(camera, (static_cast<float>(key.column) + 0.5F) / static_cast<float>(clickWidth),
                (static_cast<float>(key.row) + 0.5F) / static_cast<float>(clickHeight));
            terminal.Draw(view, width);
        }
        terminal.Show();
    }
}

/// Writes the view that is aimed at a point.
void AimAt(IKivFisheyeCamera& camera, float x, float y, const std::string& path) {
    Picture view(640, 360);
    Require(camera.SetOutputVideoParams(FrameOf(view)), "SetOutputVideoParams");
    Aim(camera, x, y);
    WritePng(path, view);
}

float FractionOf(const std::string& word) {
    const float number = NumberOf(word);
    if (number < 0.0F || number > 1.0F) {
        throw UsageError("'" + word + "' is not from 0 to 1");
    }
    return number;
}

void Run(const Arguments& arguments) {
    const MountType mount = MountOf(arguments[0]);
    const bool isByMouse = arguments.size() == 2;
    const float x = isByMouse ? 0.0F : FractionOf(arguments[2]);
    const float y = isByMouse ? 0.0F : FractionOf(arguments[3]);
    Picture fisheye = ReadPng(arguments[1]);
    const Context context = MakeContext();
    IKivFisheyeCamera& camera = *GetCameraAPI(context.get());
    SetUp(camera, mount, ViewTypeVCam, fisheye);
    if (isByMouse) {
        AimByMouse(camera, fisheye);
    } else {
        AimAt(camera, x, y, arguments[4]);
    }
}

}  // namespace

/// Aims a virtual camera at a point of the fisheye picture: at mouse clicks, or at one argument.
int main(int argc, char** argv) {
    const Example example{"click-to-aim", "wall|ceiling|table INPUT.png [X Y OUTPUT.png]", {2, 5}};
    return RunExample(example, argc, argv, Run);
}
