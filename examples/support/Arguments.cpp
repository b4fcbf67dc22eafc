#include "Arguments.h"

#include <charconv>
#include <cmath>
#include <exception>
#include <iostream>
#include <map>
#include <new>

using namespace KivFisheyeLib;

namespace {

template <class Value>
Value ValueOf(const std::map<std::string, Value>& values, const std::string& kind,
              const std::string& word) {
    const auto found = values.find(word);
    if (found == values.end()) {
        throw UsageError("there is no " + kind + " named '" + word + "'");
    }
    return found->second;
}

}  // namespace

int RunExample(const Example& example, int argc, char** argv, void (*run)(const Arguments&)) {
    const Arguments arguments(argv + 1, argv + argc);
    const std::string usage = "usage: " + std::string(example.name) + ' ' + example.synopsis;
    if (arguments.size() == 1 && arguments[0] == "--help") {
        std::cout << usage << '\n';
        return 0;
    }
    try {
        if (example.counts.count(arguments.size()) == 0) {
            throw UsageError("this is not the right number of arguments");
        }
        run(arguments);
        return 0;
    } catch (const UsageError& error) {
        std::cerr << example.name << ": " << error.what() << "; " << usage << '\n';
        return 2;
    } catch (const std::bad_alloc&) {
        std::cerr << example.name << ": there is not enough memory\n";
    } catch (const std::exception& problem) {
        std::cerr << example.name << ": " << problem.what() << '\n';
    }
    return 1;
}

MountType MountOf(const std::string& word) {
    static const std::map<std::string, MountType> kMounts{
        {"wall", MountTypeWall}, {"ceiling", MountTypeCeiling}, {"table", MountTypeTable}};
    return ValueOf(kMounts, "mount", word);
}

ViewType ViewOf(MountType mount, const std::string& word) {
    static const std::map<std::string, ViewType> kViews{
        {"vcam", ViewTypeVCam}, {"dual", ViewTypeDualPanorama}, {"full", ViewTypeFullPanorama}};
    const ViewType view = ValueOf(kViews, "view", word);
    if (mount == MountTypeWall && view == ViewTypeDualPanorama) {
        throw UsageError("a wall camera has no dual panorama");
    }
    return view;
}

float NumberOf(const std::string& word) {
    float number = 0.0F;
    const char* const end = word.data() + word.size();
    const auto [stop, error] = std::from_chars(word.data(), end, number);
    if (error != std::errc{} || stop != end || !std::isfinite(number)) {
        throw UsageError("'" + word + "' is not a number");
    }
    return number;
}

PanTiltZoom PanTiltZoomOf(const Arguments& arguments, std::size_t first) {
    if (arguments.size() <= first) {
        return {};
    }
    return {NumberOf(arguments.at(first)), NumberOf(arguments.at(first + 1)),
            NumberOf(arguments.at(first + 2))};
}
