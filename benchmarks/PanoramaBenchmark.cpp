#include "PanoramaBenchmark.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <functional>
#include <memory>
#include <random>
#include <string>

#include "FrameTimer.h"
#include "PanoramaJob.h"
#include "UpwardFisheyeAlgo_C.h"
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

void Convert(PanoramaJob& job) {
    if (job.bitsPerPixel == 24) {
        job.converter.CvtRGB24(job.src.data(), job.dst.data());
    } else {
        job.converter.CvtRGB32(job.src.data(), job.dst.data());
    }
}

void ConvertTurned(PanoramaJob& job, float pan) {
    if (job.bitsPerPixel == 24) {
        job.converter.CvtRGB24(pan, job.src.data(), job.dst.data());
    } else {
        job.converter.CvtRGB32(pan, job.src.data(), job.dst.data());
    }
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
    constexpr float kPan = 123.0F;
    RegisterChecked(
        scene + "/library", job, [job] { Convert(*job); }, cold);
    Register(
        scene + "/library-pan", job, [job] { ConvertTurned(*job, kPan); }, cold);
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

PanoramaJob::PanoramaJob(int sideInPixels, int bits)
    : side(sideInPixels),
      bitsPerPixel(bits),
      bytesPerPixel(bits / 8),
      srcStride((side * bytesPerPixel + 3) & ~3) {
    UpwardFisheyeAlgoNS::GetBestFitPanoramaSize(side, side, 0.5F, 0.5F, 0.0F, dstWidth, dstHeight);
    dstStride = (dstWidth * bytesPerPixel + 3) & ~3;
    src.resize(static_cast<std::size_t>(srcStride) * static_cast<std::size_t>(side));
    dst.resize(static_cast<std::size_t>(dstStride) * static_cast<std::size_t>(dstHeight));
    std::mt19937 random(1);
    for (unsigned char& byte : src) {
        byte = static_cast<unsigned char>(random());
    }
    InitConverter();
    table.Allocate(Pixels());
    const auto build =
        bits == 24 ? UpwardFisheyeAlgoNS::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, -1>
                   : UpwardFisheyeAlgoNS::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>;
    build(side, side, srcStride, dstWidth, dstHeight, dstStride, 0.5F, 0.5F, 0.0F, table);
    Convert(*this);
    expected = dst;
}

void RegisterPanoramaBenchmarks() {
    for (const int side : {1024, 2880}) {
        for (const int bits : {24, 32}) {
            const auto job = std::make_shared<PanoramaJob>(side, bits);
            const std::string scene =
                "full/" + std::to_string(side) + "/rgb" + std::to_string(bits);
            RegisterFrames(scene + "/warm", job, false);
            RegisterFrames(scene + "/cold", job, true);
            Register("table/" + std::to_string(side) + "/rgb" + std::to_string(bits) + "/library",
                     job, [job] { job->InitConverter(); });
        }
    }
}
