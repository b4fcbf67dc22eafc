#ifndef KIVFISHEYE_TABLE_BENCHMARK_H
#define KIVFISHEYE_TABLE_BENCHMARK_H

/// What comes before the first frame of a panorama, and what needs no table: the converters' `Init`
/// and the table builders of each form beside OpenCV's maps and the set-up of FFmpeg's v360, and
/// the direct conversions of each form.
void RegisterTableBenchmarks();

#endif
