#ifndef KIVFISHEYE_COLUMN_ANGLES_H
#define KIVFISHEYE_COLUMN_ANGLES_H

#include <algorithm>
#include <cstddef>
#include <memory>

#include "RunningAngle.h"

/// A value at the first and at the last of evenly spaced rows or columns.
struct Span {
    float first;
    float last;
};

/// The change from one of `count` rows or columns to the next. Meaningless, and not used, for a
/// count of 1.
inline float StepOf(Span span, int count) {
    return (span.last - span.first) / static_cast<float>(static_cast<long long>(count) - 1);
}

/// The sine and the cosine of every column's angle in radians. The angle grows by repeated addition
/// in single precision, and what that rounds away is part of the result. Throws `std::bad_alloc`
/// when memory runs out.
class ColumnAngles {
public:
    ColumnAngles(Span angles, int columns)
        : m_sines(new float[ArraySize(columns)]), m_cosines(new float[ArraySize(columns)]) {
        const float step = StepOf(angles, columns);
        float* const sines = m_sines.get();
        float* const cosines = m_cosines.get();
        float theta = angles.first;
        for (int x = 0; x < columns; ++x) {
            const auto angle = AngleOf(theta);
            sines[x] = angle.sine;
            cosines[x] = angle.cosine;
            theta += step;
        }
    }

    const float* Sines() const { return m_sines.get(); }
    const float* Cosines() const { return m_cosines.get(); }

private:
    static std::size_t ArraySize(int count) { return static_cast<std::size_t>(std::max(count, 0)); }

    std::unique_ptr<float[]> m_sines;
    std::unique_ptr<float[]> m_cosines;
};

#endif
