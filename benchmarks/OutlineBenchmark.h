#ifndef KIVFISHEYE_OUTLINE_BENCHMARK_H
#define KIVFISHEYE_OUTLINE_BENCHMARK_H

/// Outlines of 4096 points and grids of 256 by 256 vertices, as a client asks for them while the
/// mouse moves: the library, and each form of its kernels.
void RegisterOutlineBenchmarks();

#endif
