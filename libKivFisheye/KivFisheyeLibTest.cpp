#include "KivFisheyeLibTest.h"

#include <ctime>
#include <iostream>

#include "KivFisheyeLib.h"
#include "MemoryUtils.h"

using namespace KivFisheyeLib;

namespace {

constexpr unsigned int kInputSide = 1024;
constexpr int kConversions = 30;

constexpr const char* kRule = "=========================================================";

/// In the order of `MountType` and `ViewType`.
constexpr const char* kMountNames[] = {"Wall", "Ceiling", "Table"};
constexpr const char* kViewNames[] = {"VCam", "Dual Panorama", "Full Panorama"};

struct Run {
    MountType mount;
    ViewType view;
};

/// Every mount and view that has a scene.
constexpr Run kRuns[] = {
    {MountTypeWall, ViewTypeVCam},
    {MountTypeCeiling, ViewTypeVCam},
    {MountTypeTable, ViewTypeVCam},
    {MountTypeWall, ViewTypeFullPanorama},
    {MountTypeCeiling, ViewTypeFullPanorama},
    {MountTypeTable, ViewTypeFullPanorama},
    {MountTypeCeiling, ViewTypeDualPanorama},
    {MountTypeTable, ViewTypeDualPanorama},
};

VideoFrameInfo NewFrame(unsigned int width, unsigned int height, PixelFormat format) {
    constexpr unsigned long kAlignment = 16;
    const unsigned int stride = CalculateStride(width, format);
    void* const pixels = _aligned_malloc(static_cast<unsigned long>(stride) * height, kAlignment);
    return {width, height, stride, static_cast<unsigned char*>(pixels)};
}

/// Processor time of one conversion in milliseconds.
float TimeConversion(IKivFisheyeCamera* camera) {
    const std::clock_t begin = std::clock();
    for (int i = 0; i < kConversions; ++i) {
        camera->Process(0);
    }
    const std::clock_t end = std::clock();
    const float seconds = static_cast<float>(end - begin) / static_cast<float>(CLOCKS_PER_SEC);
    return seconds * 1000.0F / static_cast<float>(kConversions);
}

void TestAll(PixelFormat format, const char* formatName) {
    for (const Run& run : kRuns) {
        std::cout << "Test " << formatName << ' ' << kMountNames[run.mount] << " + "
                  << kViewNames[run.view] << ": \n";
        Test(kInputSide, kInputSide, format, run.mount, run.view);
        std::cout << '\n';
    }
}

}  // namespace

unsigned int CalculateStride(unsigned int width, PixelFormat format) {
    return format > PixelFormatRGB24 ? width * 4U : (width * 3U + 3U) & ~3U;
}

const char* GetCPUInstructionSetName(int level) {
    static constexpr const char* szNames[] = {"386",    "SSE",    "SSE2", "SSE3", "SSSE3",
                                              "SSE4.1", "SSE4.2", "AVX",  "AVX2"};
    return szNames[level];
}

void Test(unsigned int width, unsigned int height, PixelFormat format, MountType mount,
          ViewType view) {
    void* const context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* const camera = GetCameraAPI(context);
    [[maybe_unused]] IKivFisheyeROI* const roi = GetROIAPI(context);
    [[maybe_unused]] IKivFisheyeDewarpBoundary* const boundary = GetDewarpBoundaryAPI(context);

    const VideoFrameInfo input = NewFrame(width, height, format);
    camera->SetMountType(mount);
    camera->SetViewType(view);
    camera->SetInputVideoParams(input, format);
    unsigned int outputWidth = 0;
    unsigned int outputHeight = 0;
    camera->GetRecommendOutputVideoSize(&outputWidth, &outputHeight);
    std::cout << "               input video size: " << width << 'x' << height << '\n'
              << "  Recommended output video size: " << outputWidth << 'x' << outputHeight << '\n';

    const VideoFrameInfo output = NewFrame(outputWidth, outputHeight, format);
    camera->SetOutputVideoParams(output);
    const float milliseconds = TimeConversion(camera);
    std::cout << "process " << kConversions << " times. Each processing takes " << milliseconds
              << " ms.\n";

    _aligned_free(input.buffer);
    _aligned_free(output.buffer);
    DeleteKivFisheyeCameraContext(context);
}

int main() {
    std::cout << kRule << "\n\n"
              << "This is libKivFisheye Test program.\n\n"
              << "Your CPU supports " << GetCPUInstructionSetName(GetCPUInstructionSet()) << "\n\n"
              << kRule << "\n\n";
    TestAll(PixelFormatRGB32, "RGB32");
    std::cout << kRule << "\n\n";
    TestAll(PixelFormatRGB24, "RGB24");
    std::cout << '\n';
    return 0;
}
