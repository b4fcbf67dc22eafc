#include "PanoramaBenchmark.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>

#include "FrameTimer.h"
#include "PanoramaJob.h"
#ifdef KIVFISHEYE_WITH_OPENCV
#include "OpenCvPeers.h"
#endif

namespace {

/// One pixel per pass, straight from the table.
template <int bytesPerPixel>
void PlainWalk(const int* table, int dstWidth, int dstHeight, int dstStride,
               const unsigned char* src, unsigned char* dst) {
    for (int y = 0; y < dstHeight; ++y) {
        unsigned char* pixel = dst + std::ptrdiff_t{y} * dstStride;
        for (int x = 0; x < dstWidth; ++x, ++table, pixel += bytesPerPixel) {
            if (*table == -1) {
                std::memset(pixel, 0, bytesPerPixel);
            } else {
                std::memcpy(pixel, src + *table, bytesPerPixel);
            }
        }
    }
}

void PlainWalk(PanoramaJob& job) {
    const auto walk = job.bytesPerPixel == 3 ? PlainWalk<3> : PlainWalk<4>;
    walk(job.table.data(), job.dstWidth, job.dstHeight, job.dstStride, job.src.data(),
         job.dst.data());
}

void Register(const std::string& name, const std::shared_ptr<PanoramaJob>& job,
              const std::function<void()>& frame, bool cold = false) {
    RegisterTimed(name,
                  [=](benchmark::State& state) { TimeFrames(state, job->Pixels(), frame, cold); });
}

/// A contestant that makes another picture than the library is not measured.
void RegisterChecked(const std::string& name, const std::shared_ptr<PanoramaJob>& job,
                     const std::function<void()>& frame, bool cold) {
    std::memset(job->dst.data(), 0xA5, job->dst.size());
    frame();
    if (job->dst != job->expected) {
        benchmark::RegisterBenchmark(name.c_str(), [](benchmark::State& state) {
            state.SkipWithError("makes another picture");
        });
        return;
    }
    Register(name, job, frame, cold);
}

void RegisterFrames(const std::string& scene, const std::shared_ptr<PanoramaJob>& job, bool cold) {
    RegisterChecked(
        scene + "/library", job, [job] { job->Convert(); }, cold);
    if (job->conversions.convertTurned) {
        Register(
            scene + "/library-pan", job,
            [job] { job->conversions.convertTurned(job->src.data(), job->dst.data()); }, cold);
    }
    RegisterChecked(
        scene + "/plain", job, [job] { PlainWalk(*job); }, cold);
    RegisterChecked(
        scene + "/memcpy", job,
        [job] { std::memcpy(job->dst.data(), job->expected.data(), job->dst.size()); }, cold);
#ifdef KIVFISHEYE_WITH_OPENCV
    for (const auto& [name, frame] : OpenCvRemaps(*job)) {
        RegisterChecked(scene + "/" + name, job, frame, cold);
    }
#endif
}

}  // namespace

void RegisterPanoramaBenchmarks() {
    for (const PanoramaView& view : PanoramaViews()) {
        for (const int side : {1024, 2880}) {
            for (const int bits : {24, 32}) {
                const auto job = std::make_shared<PanoramaJob>(view, side, bits);
                const std::string scene =
                    "/" + std::to_string(side) + "/rgb" + std::to_string(bits) + "/";
                RegisterFrames(view.name + scene + "warm", job, false);
                RegisterFrames(view.name + scene + "cold", job, true);
            }
        }
    }
}
