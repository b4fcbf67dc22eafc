#ifndef KIVFISHEYE_THREADS_BENCHMARK_H
#define KIVFISHEYE_THREADS_BENCHMARK_H

/// Contexts on threads, by the public surface and in real time: full panoramas, and virtual cameras
/// that turn on every frame. "library" is one context on one thread. "4-contexts" are four, each
/// with frames of its own and on a thread of its own; their ratio is the time for one frame of any
/// of them, so that 0.25 is four times the frames. "one-context-4" is a single context whose
/// `Process` four threads call, one waiting for the other.
void RegisterThreadsBenchmarks();

#endif
