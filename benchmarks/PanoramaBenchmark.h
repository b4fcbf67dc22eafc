#ifndef KIVFISHEYE_PANORAMA_BENCHMARK_H
#define KIVFISHEYE_PANORAMA_BENCHMARK_H

/// Full and dual panoramas of a table camera and the panorama of a wall camera: the library's table
/// walk and table building, and beside them a plain walk of the same table, a copy of the output,
/// and OpenCV's remap where it was found.
void RegisterPanoramaBenchmarks();

#endif
