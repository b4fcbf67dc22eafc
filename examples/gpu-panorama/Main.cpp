#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

#include "OffscreenContext.h"
#include "PanoramaRenderer.h"
#include "Png.h"

using namespace KivFisheyeLib;

namespace {

const std::map<std::string, MountType> kMounts{
    {"wall", MountTypeWall}, {"ceiling", MountTypeCeiling}, {"table", MountTypeTable}};
const std::map<std::string, ViewType> kViews{{"full", ViewTypeFullPanorama},
                                             {"dual", ViewTypeDualPanorama}};

/// Asks the library which picture suits the lens, for a frame that is not there yet.
float RatioOf(const Picture& fisheye, const PanoramaView& view) {
    void* const context = CreateKivFisheyeCameraContext();
    float ratio = 1.0F;
    const ResultCode result = GetCameraAPI(context)->GetRecommendOutputVideoRatio(
        static_cast<unsigned int>(fisheye.width), static_cast<unsigned int>(fisheye.height),
        view.mount, view.view, view.lens, &ratio);
    DeleteKivFisheyeCameraContext(context);
    if (result != kResultOk) {
        throw std::runtime_error("the picture is too narrow for a lens that is as high as it");
    }
    return ratio;
}

}  // namespace

/// Shows a PNG picture of a fisheye camera as a panorama that the graphics processor draws.
int main(int argc, char** argv) {
    const std::string usage =
        "Usage: gpu-panorama ceiling|table full|dual INPUT.png OUTPUT.png\n"
        "       gpu-panorama wall full INPUT.png OUTPUT.png\n";
    if (argc != 5 || kMounts.count(argv[1]) == 0 || kViews.count(argv[2]) == 0 ||
        (kMounts.at(argv[1]) == MountTypeWall && kViews.at(argv[2]) == ViewTypeDualPanorama)) {
        std::cerr << usage;
        return 2;
    }
    try {
        const Picture fisheye = ReadPng(argv[3]);
        // A round lens that is as high as the frame.
        const DewarpParams lens{
            0.5F * static_cast<float>(fisheye.height) / static_cast<float>(fisheye.width), 0.5F,
            45.0F, 0.2F};
        const PanoramaView view{kMounts.at(argv[1]), kViews.at(argv[2]), lens, 256, 128};
        constexpr int kWidth = 1600;
        const int height = static_cast<int>(kWidth / RatioOf(fisheye, view)) / 2 * 2;
        const OffscreenContext context;
        WritePng(argv[4], RenderPanorama(fisheye, view, kWidth, height));
    } catch (const std::exception& problem) {
        std::cerr << "gpu-panorama: " << problem.what() << '\n';
        return 1;
    }
    return 0;
}
