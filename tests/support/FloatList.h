#ifndef KIVFISHEYE_TESTS_FLOAT_LIST_H
#define KIVFISHEYE_TESTS_FLOAT_LIST_H

#include <gtest/gtest.h>

#include <cstddef>
#include <vector>

#include "support/FloatBits.h"
#include "support/GuardedBuffer.h"

// Lists of floats that functions of the library fill: outlines, meshes and tables.

/// What a list holds before; no coordinate is as large.
inline const float kUntouched = FloatOf(0x5A5A5A5A);

/// A list between guard pages.
class FloatList {
public:
    explicit FloatList(std::size_t count,
                       GuardedBuffer::Side side = GuardedBuffer::Side::EndsAtGuard)
        : m_buffer(count * sizeof(float), side, 0x5A) {}

    float* data() { return reinterpret_cast<float*>(m_buffer.data()); }
    /// Fails the test when the pages around the list were written.
    std::vector<float> Values() const;

private:
    GuardedBuffer m_buffer;
};

/// What `fill(float* list)` leaves in a list of `count` floats, the same whichever end of it stands
/// at a guard page.
template <class Fill>
std::vector<float> FilledList(std::size_t count, Fill&& fill);

/// Whether all bits are the same; NaN equals NaN.
testing::AssertionResult AreSameFloats(const std::vector<float>& actual,
                                       const std::vector<float>& expected);

/// Whether no value is further off than `distance`. NaN is as near as can be to NaN, and far from
/// all numbers.
testing::AssertionResult AreNear(const std::vector<float>& actual,
                                 const std::vector<float>& expected, double distance);
testing::AssertionResult AreNear(const std::vector<float>& actual,
                                 const std::vector<double>& expected, double distance);

/// A point of a list of x and y by turns.
void ExpectPoint(const std::vector<float>& points, int point, double x, double y,
                 double distance = 1e-6);

/// The rows of a mesh have `columns` points and then copies of the last, `pitch` in all.
void ExpectRowsEndOnCopies(const std::vector<float>& mesh, int columns, int pitch);

/// Every value less `offset`.
std::vector<float> Shifted(std::vector<float> values, float offset);

template <class Fill>
std::vector<float> FilledList(std::size_t count, Fill&& fill) {
    FloatList list(count, GuardedBuffer::Side::StartsAtGuard);
    fill(list.data());
    FloatList listAtEnd(count);
    fill(listAtEnd.data());
    EXPECT_TRUE(AreSameFloats(list.Values(), listAtEnd.Values()));
    return listAtEnd.Values();
}

#endif
