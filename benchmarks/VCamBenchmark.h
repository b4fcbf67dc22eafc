#ifndef KIVFISHEYE_VCAM_BENCHMARK_H
#define KIVFISHEYE_VCAM_BENCHMARK_H

/// Virtual cameras that look elsewhere on every frame: the library, each form of its kernel, a copy
/// of the output, and what was found of OpenCV and FFmpeg. A contestant's first run throws
/// `std::runtime_error` when it shows another view.
void RegisterVCamBenchmarks();

#endif
