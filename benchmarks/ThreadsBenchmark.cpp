#include "ThreadsBenchmark.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "KivFisheyeLib.h"

using namespace KivFisheyeLib;

namespace {

struct Setting {
    ViewType view;
    std::uint32_t srcSide;
    PixelFormat format;
};

/// A context and its two frames.
class Client {
public:
    explicit Client(const Setting& setting)
        : m_context(CreateKivFisheyeCameraContext()), m_camera(GetCameraAPI(m_context)) {
        const std::uint32_t bytesPerPixel = setting.format == PixelFormatRGB24 ? 3 : 4;
        const auto frame = [=](std::uint32_t width, std::uint32_t height, Pixels& pixels) {
            const std::uint32_t stride = (width * bytesPerPixel + 3) / 4 * 4;
            pixels.assign(std::size_t{stride} * height, 0x5A);
            return VideoFrameInfo{width, height, stride, pixels.data()};
        };
        m_camera->SetMountAndViewType(MountTypeTable, setting.view);
        m_camera->SetInputVideoParams(frame(setting.srcSide, setting.srcSide, m_src),
                                      setting.format);
        std::uint32_t width = kVCamWidth;
        std::uint32_t height = kVCamHeight;
        if (setting.view != ViewTypeVCam) {
            m_camera->GetRecommendOutputVideoSize(&width, &height);
        }
        m_camera->SetOutputVideoParams(frame(width, height, m_dst));
        m_pixels = std::size_t{width} * height;
        Convert(0);  // the first frame finds nothing in the caches
    }
    ~Client() { DeleteKivFisheyeCameraContext(m_context); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// Turns, and converts a frame. False when the context refuses.
    bool Convert(int frame) {
        constexpr float kTilt = -30.0F;
        constexpr float kZoom = 2.0F;
        const auto pan = static_cast<float>(frame % 360);
        return m_camera->SetAbsolutePTZ(pan, kTilt, kZoom) == kResultOk &&
               m_camera->Process(0) == kResultOk;
    }

    std::size_t OutputPixels() const { return m_pixels; }

private:
    using Pixels = std::vector<unsigned char>;
    static constexpr std::uint32_t kVCamWidth = 1280;
    static constexpr std::uint32_t kVCamHeight = 720;

    void* m_context;
    IKivFisheyeCamera* m_camera;
    Pixels m_src;
    Pixels m_dst;
    std::size_t m_pixels = 0;
};

void RunFrames(benchmark::State& state, const std::unique_ptr<Client>& client) {
    // Threads begin with directions of their own.
    int frame = 45 * state.thread_index();
    for (auto _ : state) {
        if (!client->Convert(frame++)) {
            state.SkipWithError("the context refuses a frame");
            break;
        }
    }
    const auto frames = static_cast<double>(state.iterations());
    state.counters["frames/s"] = benchmark::Counter(frames, benchmark::Counter::kIsRate);
    state.counters["of each"] = benchmark::Counter(frames, benchmark::Counter::kAvgThreadsRate);
}

/// One thread of each client's tells how large its output is.
void CountPixels(benchmark::State& state, const Client& client, int threadsOfClient) {
    const auto pixels = static_cast<double>(client.OutputPixels()) * threadsOfClient;
    state.counters["pixels"] = benchmark::Counter(pixels, benchmark::Counter::kAvgThreads);
}

void Register(const std::string& name, int threads,
              const std::function<void(benchmark::State& state)>& run) {
    benchmark::RegisterBenchmark(name.c_str(), run)
        ->Threads(threads)
        ->UseRealTime()
        ->Unit(benchmark::kMicrosecond);
}

void RegisterApart(const std::string& name, int threads, const Setting& setting) {
    Register(name, threads, [setting](benchmark::State& state) {
        const auto client = std::make_unique<Client>(setting);
        RunFrames(state, client);
        CountPixels(state, *client, 1);
    });
}

void RegisterShared(const std::string& name, int threads, const Setting& setting) {
    const auto shared = std::make_shared<std::unique_ptr<Client>>();
    Register(name, threads, [=](benchmark::State& state) {
        // The loop's begin and its end each wait for all threads.
        const bool isOwner = state.thread_index() == 0;
        if (isOwner) {
            *shared = std::make_unique<Client>(setting);
        }
        RunFrames(state, *shared);
        if (isOwner) {
            CountPixels(state, **shared, threads);
            shared->reset();
        }
    });
}

void RegisterSetting(const std::string& view, const Setting& setting) {
    const std::string scene = "threads/" + view + "/" + std::to_string(setting.srcSide) +
                              (setting.format == PixelFormatRGB24 ? "/rgb24/" : "/rgb32/");
    RegisterApart(scene + "library", 1, setting);
    for (const int threads : {2, 4, 8}) {
        RegisterApart(scene + std::to_string(threads) + "-contexts", threads, setting);
    }
    for (const int threads : {2, 4}) {
        RegisterShared(scene + "one-context-" + std::to_string(threads), threads, setting);
    }
}

}  // namespace

void RegisterThreadsBenchmarks() {
    for (const PixelFormat format : {PixelFormatRGB24, PixelFormatRGB32}) {
        RegisterSetting("full", {ViewTypeFullPanorama, 1024, format});
        RegisterSetting("full", {ViewTypeFullPanorama, 2880, format});
        RegisterSetting("vcam", {ViewTypeVCam, 1024, format});
    }
}
