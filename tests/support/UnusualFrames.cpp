#include "support/UnusualFrames.h"

#include <limits>

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();
// In 32 bits, four times this is 32.
constexpr int kWrapping = 0x40000008;

struct Source {
    int width;
    int height;
    int stride;
};

struct Output {
    int width;
    int height;
};

std::vector<PanoramaFrames> WithSources(PanoramaFrames frames, const std::vector<Source>& sources) {
    std::vector<PanoramaFrames> list;
    for (const Source& source : sources) {
        frames.srcWidth = source.width;
        frames.srcHeight = source.height;
        frames.srcStride = source.stride;
        list.push_back(frames);
    }
    return list;
}

std::vector<PanoramaFrames> WithOutputs(PanoramaFrames frames, const std::vector<Output>& outputs) {
    std::vector<PanoramaFrames> list;
    for (const Output& output : outputs) {
        frames.dstWidth = output.width;
        frames.dstHeight = output.height;
        list.push_back(frames);
    }
    return list;
}

}  // namespace

std::vector<PanoramaFrames> WithEmptySources(const PanoramaFrames& frames) {
    return WithSources(frames, {{0, 0, 0},
                                {0, 37, 0},
                                {0, 37, 400},
                                {41, 0, 0},
                                {41, 0, 164},
                                {0, kWrapping, 32},
                                {kWrapping, 0, 32}});
}

std::vector<PanoramaFrames> WithUnusableSources(const PanoramaFrames& frames, int bytesPerPixel) {
    const int rowBytes = 10 * bytesPerPixel;
    return WithSources(frames, {{1, 2, kLargest - bytesPerPixel + 1},
                                {1, 65537, 32768},
                                {10, 10, rowBytes - 1},
                                {10, 10, 0},
                                {10, 10, -rowBytes},
                                {-10, 10, rowBytes},
                                {10, -10, rowBytes},
                                {kWrapping, 1, 32}});
}

std::vector<PanoramaFrames> WithEmptyOutputs(const PanoramaFrames& frames) {
    return WithOutputs(frames, {{0, 0}, {0, 8}, {24, 0}, {0, -3}, {-3, 0}});
}

std::vector<PanoramaFrames> WithTooLargeOutputs(const PanoramaFrames& frames) {
    return WithOutputs(frames, {{46341, 46341},
                                {65536, 32768},
                                {32768, 65536},
                                {65536, 65536},
                                {2, kLargest},
                                {kLargest, 2},
                                {8, -4},
                                {-8, 4},
                                {-8, -4},
                                {kWrapping, 8}});
}
