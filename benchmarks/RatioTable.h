#ifndef KIVFISHEYE_RATIO_TABLE_H
#define KIVFISHEYE_RATIO_TABLE_H

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Shows the median of each benchmark's repetitions and keeps all their times, for a table of
/// ratios at the end. A benchmark's name is its scene and its contestant, with a slash before the
/// last: "full/2880/rgb32/warm/library".
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override;

    /// For every scene the library's time per output pixel and, over it, the times of the others,
    /// each by the medians of its repetitions.
    void PrintRatios(std::ostream& out) const;

private:
    using Times = std::vector<double>;
    std::map<std::string, std::map<std::string, Times>> m_scenes;
    std::map<std::string, double> m_pixels;
};

#endif
