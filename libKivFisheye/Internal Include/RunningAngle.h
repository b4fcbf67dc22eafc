#ifndef KIVFISHEYE_RUNNING_ANGLE_H
#define KIVFISHEYE_RUNNING_ANGLE_H

#include <cmath>

/// Cosine and sine of an angle, of one or of several at once, that goes on by rotation. The angle
/// itself is never formed anew: what its steps round away adds up and is part of the result.
template <class T>
struct RunningAngle {
    T cosine;
    T sine;

    void Advance(const RunningAngle& step) {
        const T nextSine = step.sine * cosine + step.cosine * sine;
        cosine = step.cosine * cosine - step.sine * sine;
        sine = nextSine;
    }
};

/// In double precision, rounded.
inline RunningAngle<float> AngleOf(float radians) {
    const double wide = radians;
    return {static_cast<float>(std::cos(wide)), static_cast<float>(std::sin(wide))};
}

#endif
