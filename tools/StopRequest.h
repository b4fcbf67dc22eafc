#ifndef KIVFISHEYE_TOOLS_STOP_REQUEST_H
#define KIVFISHEYE_TOOLS_STOP_REQUEST_H

#include <csignal>
#include <cstdint>
#include <string>

#include "Failure.h"

namespace KivFisheyeTools {

/// While it lives, Ctrl-C, SIGTERM and SIGHUP do not end the program but ask it to come to an end.
class StopRequest {
public:
    StopRequest();
    ~StopRequest();
    StopRequest(const StopRequest&) = delete;
    StopRequest& operator=(const StopRequest&) = delete;

    /// The signal that asked, or 0.
    static int Signal();

private:
    struct sigaction m_oldInterrupt {};
    struct sigaction m_oldTermination {};
    struct sigaction m_oldHangup {};
};

/// The work was ended by a signal; the message says what there is of it.
class Stopped : public Failure {
public:
    Stopped(int signal, const std::string& sentence) : Failure(sentence), m_signal(signal) {}

    int Signal() const { return m_signal; }

private:
    int m_signal;
};

/// Throws `Stopped` when a stop was asked for after `count` frames or pictures were written.
void CheckStopped(std::uint64_t count, const std::string& noun, const std::string& path);

}  // namespace KivFisheyeTools

#endif
