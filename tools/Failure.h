#ifndef KIVFISHEYE_TOOLS_FAILURE_H
#define KIVFISHEYE_TOOLS_FAILURE_H

#include <stdexcept>

namespace KivFisheyeTools {

/// The work cannot be done; the message is one sentence for the user.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The command line asks for something that makes no sense, whatever the files hold.
class UsageError : public Failure {
public:
    using Failure::Failure;
};

}  // namespace KivFisheyeTools

#endif
