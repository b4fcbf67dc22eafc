#ifndef KIVFISHEYE_TESTS_FOREIGN_INTERFACES_H
#define KIVFISHEYE_TESTS_FOREIGN_INTERFACES_H

#include <cstdint>

// The three interfaces as a client may have declared them for itself: other names, the same order.
// A program that was built against such declarations must find each operation in its place, so this
// file includes nothing of the library.

namespace foreign {

typedef std::int64_t Result;
typedef std::uint32_t Number;

struct Frame {
    std::uint32_t width;
    std::uint32_t height;
    std::uint32_t stride;
    unsigned char* pixels;
};

struct Lens {
    float radiusX;
    float radiusY;
    float wallViewAngle;
    float innerRadiusRatio;
};

class Camera {
public:
    virtual ~Camera() {}
    virtual Result TestFormat(Number format) = 0;
    virtual Result PutInput(const Frame& frame, Number format) = 0;
    virtual Result PutOutput(const Frame& frame) = 0;
    virtual Result PutMount(Number mount) = 0;
    virtual Result TakeMount(Number* mount) = 0;
    virtual Result PutView(Number view) = 0;
    virtual Result TakeView(Number* view) = 0;
    virtual Result PutMountAndView(Number mount, Number view) = 0;
    virtual Result TakeMountAndView(Number* mount, Number* view) = 0;
    virtual Result TakeSize(unsigned int* width, unsigned int* height) = 0;
    virtual Result TakeRatio(float* ratio) = 0;
    virtual Result TakeRatioOf(unsigned int width, unsigned int height, Number mount, Number view,
                               const Lens& lens, float* ratio) = 0;
    virtual Result PutAngles(float pan, float tilt, float zoom) = 0;
    virtual Result AddAngles(float pan, float tilt, float zoom) = 0;
    virtual Result TakeAngles(float* pan, float* tilt, float* zoom) = 0;
    virtual Result PutLens(const Lens& lens) = 0;
    virtual Result TakeLens(Lens* lens) = 0;
    virtual Result Convert(unsigned long long tag) = 0;
    virtual Result TakePicture(unsigned char** block) = 0;
    virtual Result ReleasePicture(unsigned char* block) = 0;
    virtual Result Aim(float x, float y, float& pan, float& tilt) = 0;
    virtual Result AimAndZoom(float x, float y, float fieldOfView, float& pan, float& tilt,
                              float& zoom) = 0;
};

class Outlines {
public:
    virtual ~Outlines() {}
    virtual Result OfVirtualCamera(float* points, int count) = 0;
    virtual Result OfDual(float* first, int firstCount, float* second, int secondCount) = 0;
    virtual Result OfWall(float* points, int count) = 0;
    virtual Result OfRing(float* inner, int innerCount, float* outer, int outerCount) = 0;
};

class Boundaries {
public:
    virtual ~Boundaries() {}
    virtual Result OfWall(const Lens* lens, float* points, int count) = 0;
    virtual Result OfRing(const Lens* lens, float* inner, int innerCount, float* outer,
                          int outerCount) = 0;
};

/// Calls an operation of an object that the compiler knows by other declarations than ours.
#if defined(__GNUC__)
#define FOREIGN_CALL __attribute__((no_sanitize("vptr")))
#else
#define FOREIGN_CALL
#endif

template <class Interface, class... Parameters, class... Arguments>
FOREIGN_CALL Result Call(void* object, Result (Interface::*operation)(Parameters...),
                         Arguments&&... arguments) {
    return (static_cast<Interface*>(object)->*operation)(static_cast<Arguments&&>(arguments)...);
}

/// Ends an object through its first slot.
template <class Interface>
FOREIGN_CALL void Delete(void* object) {
    delete static_cast<Interface*>(object);
}

#undef FOREIGN_CALL

}  // namespace foreign

#endif
