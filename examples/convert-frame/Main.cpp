#include <Arguments.h>
#include <Camera.h>
#include <KivFisheyeLib.h>
#include <Png.h>

using namespace KivFisheyeLib;

namespace {

/// All that it takes to flatten one picture, call by call.
Picture Flattened(Picture& fisheye, MountType mount, ViewType view, const PanTiltZoom& aim) {
    const Context context(CreateKivFisheyeCameraContext(), DeleteKivFisheyeCameraContext);
    IKivFisheyeCamera* const camera = GetCameraAPI(context.get());

    // With an input there, each of these would make a panorama's tables anew: so they come first.
    Require(camera->SetMountAndViewType(mount, view), "SetMountAndViewType");
    Require(camera->SetDewarpParams(RoundLens(fisheye)), "SetDewarpParams");

    // A stride is exactly the bytes of a row, rounded up to a multiple of 4.
    VideoFrameInfo input{};
    input.width = fisheye.width;
    input.height = fisheye.height;
    input.stride = fisheye.width * 4;
    input.buffer = fisheye.pixels.data();
    Require(camera->SetInputVideoParams(input, PixelFormatRGB32), "SetInputVideoParams");

    // Any size will do whose width 8 divides; this one keeps the lens's detail.
    VideoFrameInfo output{};
    Require(camera->GetRecommendOutputVideoSize(&output.width, &output.height),
            "GetRecommendOutputVideoSize");
    output.height = (output.height + 1) / 2 * 2;  // the two halves of a dual panorama are equal
    output.stride = output.width * 4;
    Picture flat(output.width, output.height);
    output.buffer = flat.pixels.data();
    Require(camera->SetOutputVideoParams(output), "SetOutputVideoParams");

    // For a video, these two are what remains to be done for every frame.
    Require(camera->SetAbsolutePTZ(aim.pan, aim.tilt, aim.zoom), "SetAbsolutePTZ");
    Require(camera->Process(0), "Process");
    return flat;
}

void Run(const Arguments& arguments) {
    const MountType mount = MountOf(arguments[0]);
    const ViewType view = ViewOf(mount, arguments[1]);
    const PanTiltZoom aim = PanTiltZoomOf(arguments, 4);
    Picture fisheye = ReadPng(arguments[2]);
    WritePng(arguments[3], Flattened(fisheye, mount, view, aim));
}

}  // namespace

/// Flattens one picture of a fisheye camera.
int main(int argc, char** argv) {
    const Example example{"convert-frame",
                          "wall|ceiling|table vcam|full|dual INPUT.png OUTPUT.png [PAN TILT ZOOM]",
                          {4, 7}};
    return RunExample(example, argc, argv, Run);
}
