// A program that knows the library only as it is installed: it flattens a grey frame and looks
// whether the panorama is grey.

#include <KivFisheyeLib.h>
#include <KivFisheyeVersion.h>
#include <UpwardFisheyeAlgo.h>

#include <algorithm>
#include <cstdio>
#include <vector>

int main() {
    using namespace KivFisheyeLib;
    const unsigned int side = 64;
    std::vector<unsigned char> source(side * side * 4, 0x55);
    void* const context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* const camera = GetCameraAPI(context);
    camera->SetMountAndViewType(MountTypeTable, ViewTypeFullPanorama);
    camera->SetInputVideoParams({side, side, side * 4, source.data()}, PixelFormatRGB32);
    unsigned int width = 0;
    unsigned int height = 0;
    camera->GetRecommendOutputVideoSize(&width, &height);
    std::vector<unsigned char> panorama(width * height * 4);
    camera->SetOutputVideoParams({width, height, width * 4, panorama.data()});
    const ResultCode result = camera->Process(0);
    DeleteKivFisheyeCameraContext(context);

    UpwardFisheyeAlgoNS::CPanoramaConverter converter;
    converter.Init(64, 64, 256, 8, 1, 32, 32, 0.25F, 0.25F, 0.0F);

    // The last row is the frame's very edge, where rounding may leave single pixels black.
    const bool grey = std::all_of(panorama.begin(), panorama.end() - width * 4,
                                  [](unsigned char byte) { return byte == 0x55; });
    std::printf("version %s: %ux%u, result %d\n", KIVFISHEYE_VERSION, width, height,
                static_cast<int>(result));
    return result == kResultOk && width == 128 && height == 32 && grey ? 0 : 1;
}
