#ifndef EXAMPLES_ARGUMENTS_H
#define EXAMPLES_ARGUMENTS_H

#include <KivFisheyeTypes.h>

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

/// The user's arguments are wrong.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

using Arguments = std::vector<std::string>;

struct Example {
    const char* name;
    const char* synopsis;          // the arguments, as the user reads them
    std::set<std::size_t> counts;  // how many there may be
};

/// What `main` gives back: 0, or after a sentence on standard error 2 for wrong arguments and 1 for
/// whatever else `run` throws. The argument `--help` asks for the synopsis.
int RunExample(const Example& example, int argc, char** argv, void (*run)(const Arguments&));

// All throw `UsageError`.

KivFisheyeLib::MountType MountOf(const std::string& word);

/// The view of a camera that is mounted so; a wall camera has no dual panorama.
KivFisheyeLib::ViewType ViewOf(KivFisheyeLib::MountType mount, const std::string& word);

/// A finite number.
float NumberOf(const std::string& word);

/// Pan and tilt in degrees, zoom as a factor from 1 to 10.
struct PanTiltZoom {
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 1.0F;
};

/// The three arguments from `first` on, where they are given.
PanTiltZoom PanTiltZoomOf(const Arguments& arguments, std::size_t first);

#endif
