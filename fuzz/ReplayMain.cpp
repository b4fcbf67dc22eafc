#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "Outcomes.h"

// Plays inputs that are kept in files, without a fuzzer: all files of the directories and all files
// that are named. `--summary` adds how often each operation came out how. A check that fails ends
// the process.

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

/// The files at these places, in the order of their names.
std::vector<fs::path> FilesAt(const std::vector<std::string>& places) {
    std::vector<fs::path> files;
    for (const std::string& place : places) {
        if (!fs::is_directory(place)) {
            files.emplace_back(place);
            continue;
        }
        for (const fs::directory_entry& entry : fs::directory_iterator(place)) {
            if (entry.is_regular_file()) {
                files.push_back(entry.path());
            }
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<char> BytesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<char> bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    if (!in) {
        throw std::runtime_error(file.string() + " cannot be read");
    }
    return bytes;
}

void Play(const fs::path& file) {
    const std::vector<char> bytes = BytesOf(file);
    std::vector<unsigned char> input(bytes.size());
    std::copy(bytes.begin(), bytes.end(), input.begin());
    // Before it is played: when the process ends there, this is the last line.
    std::fprintf(stderr, "%s\n", file.string().c_str());
    LLVMFuzzerTestOneInput(input.data(), input.size());
}

int Replay(const std::vector<std::string>& places) {
    const std::vector<fs::path> files = FilesAt(places);
    if (files.empty()) {
        std::fprintf(stderr, "There is no input in %s.\n", places.front().c_str());
        return 1;
    }
    for (const fs::path& file : files) {
        Play(file);
    }
    std::printf("Inputs played: %zu.\n", files.size());
    PrintOutcomes();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<std::string> places(argv + 1, argv + argc);
    const auto summary = std::find(places.begin(), places.end(), "--summary");
    if (summary != places.end()) {
        StartCountingOutcomes();
        places.erase(summary);
    }
    if (places.empty()) {
        std::fprintf(stderr, "usage: %s [--summary] <file or directory>...\n", argv[0]);
        return 2;
    }
    try {
        return Replay(places);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s.\n", argv[0], error.what());
        return 1;
    }
}
