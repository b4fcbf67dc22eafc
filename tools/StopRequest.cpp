#include "StopRequest.h"

namespace KivFisheyeTools {

namespace {

volatile std::sig_atomic_t signalSeen = 0;

void Remember(int signal) {
    signalSeen = signal;
}

void Listen(int signal, struct sigaction* old) {
    struct sigaction action {};
    // Without SA_RESTART, a read that waits for a pipe ends too.
    action.sa_handler = Remember;
    sigaction(signal, &action, old);
}

std::string CauseOf(int signal) {
    switch (signal) {
        case SIGINT:
            return "interrupted";
        case SIGHUP:
            return "hung up";
        default:
            return "terminated";
    }
}

}  // namespace

StopRequest::StopRequest() {
    signalSeen = 0;
    Listen(SIGINT, &m_oldInterrupt);
    Listen(SIGTERM, &m_oldTermination);
    sigaction(SIGHUP, nullptr, &m_oldHangup);
    // Under nohup the program outlives its terminal.
    if (m_oldHangup.sa_handler != SIG_IGN) {
        Listen(SIGHUP, &m_oldHangup);
    }
}

StopRequest::~StopRequest() {
    sigaction(SIGINT, &m_oldInterrupt, nullptr);
    sigaction(SIGTERM, &m_oldTermination, nullptr);
    sigaction(SIGHUP, &m_oldHangup, nullptr);
}

int StopRequest::Signal() {
    return signalSeen;
}

void CheckStopped(std::uint64_t count, const std::string& noun, const std::string& path) {
    const int signal = StopRequest::Signal();
    if (signal == 0) {
        return;
    }
    const std::string cause = CauseOf(signal);
    if (count == 0) {
        throw Stopped(signal, cause + " before the first " + noun + " was written");
    }
    throw Stopped(signal, cause + ": " + std::to_string(count) + ' ' + noun +
                              (count == 1 ? " was" : "s were") + " written to " + path);
}

}  // namespace KivFisheyeTools
