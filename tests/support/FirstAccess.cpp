#include "support/FirstAccess.h"

#include <sys/mman.h>

#include <csignal>
#include <new>
#include <stdexcept>
#include <utility>

namespace {

unsigned char* watched = nullptr;
std::size_t watchedBytes = 0;
std::function<void()> watcher;
struct sigaction earlierAction;

// The fault is the watching thread's own and strikes in a kernel's loop, not inside the C library,
// so that the function may do anything.
void HandleFault(int, siginfo_t* info, void*) {
    const auto* const address = static_cast<const unsigned char*>(info->si_addr);
    if (address < watched || address >= watched + watchedBytes) {
        sigaction(SIGSEGV, &earlierAction, nullptr);
        return;
    }
    watcher();
    mprotect(watched, watchedBytes, PROT_READ | PROT_WRITE);
}

}  // namespace

FirstAccess::FirstAccess(std::size_t bytes, std::function<void()> atFirstAccess) : m_bytes(bytes) {
    if (watched != nullptr) {
        throw std::logic_error("a first access is watched already");
    }
    void* const mapping = mmap(nullptr, bytes, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapping == MAP_FAILED) {
        throw std::bad_alloc();
    }
    m_memory = static_cast<unsigned char*>(mapping);
    watched = m_memory;
    watchedBytes = bytes;
    watcher = std::move(atFirstAccess);
    struct sigaction action {};
    action.sa_sigaction = HandleFault;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigaction(SIGSEGV, &action, &earlierAction);
}

FirstAccess::~FirstAccess() {
    sigaction(SIGSEGV, &earlierAction, nullptr);
    watched = nullptr;
    watcher = nullptr;
    munmap(m_memory, m_bytes);
}
