#include "AllocationLimit.h"

#include <cerrno>

// The linker sends these requests of the library here.
extern "C" {
int __real_posix_memalign(void** memory, std::size_t alignment, std::size_t size);
int __wrap_posix_memalign(void** memory, std::size_t alignment, std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __wrap_calloc(std::size_t count, std::size_t size);
}

namespace {

int refuseIn = 0;
bool hasRefused = false;

bool Admit(std::size_t size) {
    if (refuseIn > 0 && --refuseIn == 0) {
        hasRefused = true;
        return false;
    }
    return size <= kMostBytes;
}

}  // namespace

int __wrap_posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
    return Admit(size) ? __real_posix_memalign(memory, alignment, size) : ENOMEM;
}

void* __wrap_calloc(std::size_t count, std::size_t size) {
    return Admit(count * size) ? __real_calloc(count, size) : nullptr;
}

void RefuseAllocation(int number) {
    refuseIn = number;
    hasRefused = false;
}

bool EndRefusal() {
    refuseIn = 0;
    return hasRefused;
}
