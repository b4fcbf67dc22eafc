#ifndef KIVFISHEYE_FUZZ_CHECK_H
#define KIVFISHEYE_FUZZ_CHECK_H

#include <cmath>
#include <sstream>
#include <string>

/// Names the operation that is checked from here on.
void BeginOperation(const char* name);
const char* PresentOperation();

/// Says what is wrong and which operations led there, and aborts.
[[noreturn]] void Fail(const std::string& what);

/// Fails unless `holds`, with the parts in one line.
template <class... Parts>
void Expect(bool holds, const Parts&... parts) {
    if (!holds) {
        std::ostringstream line;
        (line << ... << parts);
        Fail(line.str());
    }
}

template <class Value>
void ExpectEqual(const Value& actual, const Value& expected, const char* what) {
    Expect(actual == expected, what, " is ", actual, " instead of ", expected);
}

/// 0 and -0 are the same here, and so are all NaN.
inline bool IsSameNumber(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

inline void ExpectNumber(float actual, float expected, const char* what) {
    Expect(IsSameNumber(actual, expected), what, " is ", actual, " instead of ", expected);
}

/// Equal but for roundings that add up to this part of the larger one, or of 1.
inline void ExpectClose(float actual, float expected, float tolerance, const char* what) {
    const float size = std::fmax(1.0F, std::fmax(std::fabs(actual), std::fabs(expected)));
    Expect(IsSameNumber(actual, expected) || std::fabs(actual - expected) <= tolerance * size, what,
           " is ", actual, " and not near ", expected);
}

#endif
