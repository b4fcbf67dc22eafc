// Loaded before the tool's libraries, this counts how often a table camera's converter is made
// ready, and hides an encoder. What it is asked for stands in the environment.

extern "C" {
#include <libavcodec/avcodec.h>
}

#include <UpwardFisheyeAlgo.h>
#include <dlfcn.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

std::atomic<int> tableCount{0};

/// Writes the count when the tool ends.
struct CountWriter {
    ~CountWriter() {
        const char* path = std::getenv("KIVFISHEYE_PROBE_COUNT");
        std::FILE* file = path != nullptr ? std::fopen(path, "w") : nullptr;
        if (file != nullptr) {
            std::fprintf(file, "%d", tableCount.load());
            std::fclose(file);
        }
    }
} countWriter;

template <class Function>
Function* NextOf(const char* name) {
    void* address = dlsym(RTLD_NEXT, name);
    if (address == nullptr) {
        std::abort();
    }
    Function* function = nullptr;
    std::memcpy(&function, &address, sizeof function);
    return function;
}

}  // namespace

void UpwardFisheyeAlgoNS::CPanoramaConverter::Init(int srcWidth, int srcHeight, int srcStride,
                                                   int dstWidth, int dstHeight, int dstStride,
                                                   int bitsPerPixel, float radiusX, float radiusY,
                                                   float innerRadiusRatio) {
    using InitFunction =
        void(CPanoramaConverter*, int, int, int, int, int, int, int, float, float, float);
    static InitFunction* const init =
        NextOf<InitFunction>("_ZN19UpwardFisheyeAlgoNS18CPanoramaConverter4InitEiiiiiiifff");
    ++tableCount;
    init(this, srcWidth, srcHeight, srcStride, dstWidth, dstHeight, dstStride, bitsPerPixel,
         radiusX, radiusY, innerRadiusRatio);
}

extern "C" __attribute__((visibility("default"))) const AVCodec* avcodec_find_encoder_by_name(
    const char* name) {
    const char* hidden = std::getenv("KIVFISHEYE_PROBE_HIDE_ENCODER");
    if (hidden != nullptr && std::strcmp(hidden, name) == 0) {
        return nullptr;
    }
    static auto* const find = NextOf<const AVCodec*(const char*)>("avcodec_find_encoder_by_name");
    return find(name);
}
