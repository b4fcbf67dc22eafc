#ifndef KIVFISHEYE_FRAME_TIMER_H
#define KIVFISHEYE_FRAME_TIMER_H

#include <benchmark/benchmark.h>

#include <cstddef>
#include <functional>
#include <string>

/// Registers a benchmark that measures its time itself, as `TimeFrames` does.
void RegisterTimed(const std::string& name,
                   const std::function<void(benchmark::State& state)>& run);

/// Times one call of `frame` per iteration, where a cold one finds the caches full of something
/// else, and counts frames and output pixels.
void TimeFrames(benchmark::State& state, std::size_t pixels, const std::function<void()>& frame,
                bool cold);

#endif
