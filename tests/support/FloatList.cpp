#include "support/FloatList.h"

#include <cmath>
#include <cstring>

namespace {

template <class Expected, class IsGood>
testing::AssertionResult AreAll(const std::vector<float>& actual,
                                const std::vector<Expected>& expected, IsGood&& isGood) {
    if (actual.size() != expected.size()) {
        return testing::AssertionFailure()
               << actual.size() << " values instead of " << expected.size();
    }
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (!isGood(actual[i], expected[i])) {
            return testing::AssertionFailure() << "value " << i << " of " << actual.size() << " is "
                                               << actual[i] << " instead of " << expected[i];
        }
    }
    return testing::AssertionSuccess();
}

template <class Expected>
testing::AssertionResult AreAllNear(const std::vector<float>& actual,
                                    const std::vector<Expected>& expected, double distance) {
    return AreAll(actual, expected, [distance](float a, Expected b) {
        const double difference = std::fabs(static_cast<double>(a) - static_cast<double>(b));
        return difference <= distance || (std::isnan(a) && std::isnan(b));
    });
}

}  // namespace

std::vector<float> FloatList::Values() const {
    EXPECT_TRUE(m_buffer.IsSurroundingUntouched());
    std::vector<float> values(m_buffer.size() / sizeof(float));
    if (!values.empty()) {
        std::memcpy(values.data(), m_buffer.data(), m_buffer.size());
    }
    return values;
}

testing::AssertionResult AreSameFloats(const std::vector<float>& actual,
                                       const std::vector<float>& expected) {
    return AreAll(actual, expected, IsSameFloat);
}

testing::AssertionResult AreNear(const std::vector<float>& actual,
                                 const std::vector<float>& expected, double distance) {
    return AreAllNear(actual, expected, distance);
}

testing::AssertionResult AreNear(const std::vector<float>& actual,
                                 const std::vector<double>& expected, double distance) {
    return AreAllNear(actual, expected, distance);
}

void ExpectPoint(const std::vector<float>& points, int point, double x, double y, double distance) {
    const auto at = static_cast<std::size_t>(2 * point);
    EXPECT_NEAR(points.at(at), x, distance) << "point " << point;
    EXPECT_NEAR(points.at(at + 1), y, distance) << "point " << point;
}

void ExpectRowsEndOnCopies(const std::vector<float>& mesh, int columns, int pitch) {
    const auto rowFloats = 2 * static_cast<std::size_t>(pitch);
    const auto last = 2 * static_cast<std::size_t>(columns - 1);
    ASSERT_EQ(mesh.size() % rowFloats, 0U);
    for (std::size_t row = 0; row < mesh.size(); row += rowFloats) {
        for (std::size_t i = last; i < rowFloats; i += 2) {
            EXPECT_EQ(mesh[row + i], mesh[row + last]);
            EXPECT_EQ(mesh[row + i + 1], mesh[row + last + 1]);
        }
    }
}

std::vector<float> Shifted(std::vector<float> values, float offset) {
    for (float& value : values) {
        value -= offset;
    }
    return values;
}
