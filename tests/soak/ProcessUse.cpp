#include "soak/ProcessUse.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

std::size_t EntriesOf(const char* folder) {
    const std::filesystem::directory_iterator entries(folder);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

ProcessUse ProcessInUse() {
    std::ifstream statistics("/proc/self/statm");
    std::size_t pages = 0;
    std::size_t residentPages = 0;
    if (!(statistics >> pages >> residentPages)) {
        throw std::runtime_error("the system does not tell how much memory the process has.");
    }
    return {residentPages * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)),
            EntriesOf("/proc/self/fd"), EntriesOf("/proc/self/task")};
}
