#include <Arguments.h>
#include <Camera.h>
#include <Png.h>

#include "OffscreenContext.h"
#include "PanoramaRenderer.h"

using namespace KivFisheyeLib;

namespace {

constexpr int kWidth = 1600;

/// Asks the library which picture suits the lens; it needs no frames for that.
int HeightFor(const Picture& fisheye, const PanoramaView& view) {
    const Context context = MakeContext();
    float ratio = 1.0F;
    Require(GetCameraAPI(context.get())
                ->GetRecommendOutputVideoRatio(fisheye.width, fisheye.height, view.mount, view.view,
                                               view.lens, &ratio),
            "GetRecommendOutputVideoRatio");
    return static_cast<int>(kWidth / ratio) / 2 * 2;
}

void Run(const Arguments& arguments) {
    const MountType mount = MountOf(arguments[0]);
    const ViewType kind = ViewOf(mount, arguments[1]);
    if (kind == ViewTypeVCam) {
        throw UsageError("a virtual camera has no grid");
    }
    const Picture fisheye = ReadPng(arguments[2]);
    const PanoramaView view{mount, kind, RoundLens(fisheye), 256, 128};
    const OffscreenContext context;
    WritePng(arguments[3], RenderPanorama(fisheye, view, kWidth, HeightFor(fisheye, view)));
}

}  // namespace

/// Shows a picture of a fisheye camera as a panorama that the graphics processor draws.
int main(int argc, char** argv) {
    const Example example{"gpu-panorama", "wall|ceiling|table full|dual INPUT.png OUTPUT.png", {4}};
    return RunExample(example, argc, argv, Run);
}
