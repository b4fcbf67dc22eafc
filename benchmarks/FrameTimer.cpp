#include "FrameTimer.h"

#include <chrono>
#include <vector>

namespace {

/// Walks through more memory than any cache holds.
void EmptyCaches() {
    static std::vector<unsigned char> other(std::size_t{192} << 20);
    for (std::size_t i = 0; i < other.size(); i += 64) {
        ++other[i];
    }
    benchmark::DoNotOptimize(other.data());
}

}  // namespace

void RegisterTimed(const std::string& name,
                   const std::function<void(benchmark::State& state)>& run) {
    benchmark::RegisterBenchmark(name.c_str(), run)->UseManualTime()->Unit(benchmark::kMicrosecond);
}

void TimeFrames(benchmark::State& state, std::size_t pixels, const std::function<void()>& frame,
                bool cold) {
    using Clock = std::chrono::steady_clock;
    for (auto _ : state) {
        if (cold) {
            EmptyCaches();
        }
        const auto start = Clock::now();
        frame();
        const std::chrono::duration<double> elapsed = Clock::now() - start;
        state.SetIterationTime(elapsed.count());
    }
    state.counters["pixels"] = static_cast<double>(pixels);
    state.counters["frames/s"] =
        benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}
