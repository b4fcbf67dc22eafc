#include <exception>
#include <iostream>
#include <vector>

#include "OutlineBenchmark.h"
#include "PanoramaBenchmark.h"
#include "RatioTable.h"
#include "TableBenchmark.h"
#include "ThreadsBenchmark.h"
#include "VCamBenchmark.h"

int main(int argc, char** argv) {
    // Repetitions of all benchmarks in random order: what slows the machine down for a while slows
    // all of them down. Options given on the command line come later and hold.
    std::vector<char*> arguments{argv[0]};
    std::vector<std::string> defaults{"--benchmark_repetitions=9", "--benchmark_min_time=0.05",
                                      "--benchmark_enable_random_interleaving=true"};
    for (std::string& option : defaults) {
        arguments.push_back(option.data());
    }
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());

    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }
    RatioReporter reporter;
    try {
        RegisterPanoramaBenchmarks();
        RegisterVCamBenchmarks();
        RegisterOutlineBenchmarks();
        RegisterTableBenchmarks();
        RegisterThreadsBenchmarks();
        benchmark::RunSpecifiedBenchmarks(&reporter);
    } catch (const std::exception& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
    reporter.PrintRatios(std::cout);
    return 0;
}
