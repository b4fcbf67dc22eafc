#include "RatioTable.h"

#include <algorithm>
#include <iomanip>
#include <ostream>

namespace {

double Median(std::vector<double> times) {
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

}  // namespace

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    std::vector<Run> medians;
    for (const Run& run : runs) {
        if (run.aggregate_name == "median" || run.error_occurred) {
            medians.push_back(run);
        }
        if (run.run_type != Run::RT_Iteration || run.error_occurred) {
            continue;
        }
        const std::string& name = run.run_name.function_name;
        const std::size_t slash = name.rfind('/');
        if (slash == std::string::npos) {
            continue;
        }
        const double nanoseconds =
            run.real_accumulated_time / static_cast<double>(run.iterations) * 1e9;
        m_scenes[name.substr(0, slash)][name.substr(slash + 1)].push_back(nanoseconds);
        const auto pixels = run.counters.find("pixels");
        if (pixels != run.counters.end()) {
            m_pixels[name.substr(0, slash)] = pixels->second.value;
        }
    }
    if (!medians.empty()) {
        ConsoleReporter::ReportRuns(medians);
    }
}

void RatioReporter::PrintRatios(std::ostream& out) const {
    out << "\nMedians. ns/pixel is the library's, of lists per point; the others are their time "
           "over "
           "it.\n";
    for (const auto& [scene, contestants] : m_scenes) {
        const auto library = contestants.find("library");
        const auto pixels = m_pixels.find(scene);
        if (library == contestants.end() || pixels == m_pixels.end()) {
            continue;
        }
        const double own = Median(library->second);
        out << std::left << std::setw(32) << scene << std::right << std::fixed
            << std::setprecision(2) << std::setw(6) << own / pixels->second << " ns/pixel"
            << std::setprecision(1) << std::setw(9) << 1e9 / own << " frames/s";
        for (const auto& [name, times] : contestants) {
            if (name != "library") {
                out << "  " << name << ' ' << std::setprecision(2) << Median(times) / own;
            }
        }
        out << '\n';
    }
}
