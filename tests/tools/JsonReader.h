#ifndef KIVFISHEYE_TESTS_JSON_READER_H
#define KIVFISHEYE_TESTS_JSON_READER_H

#include <map>
#include <string>
#include <utility>
#include <vector>

/// A value of JSON, of which one of the four is filled.
struct Json {
    float number = 0.0F;
    std::string text;
    std::vector<Json> list;
    std::map<std::string, Json> members;

    /// Throws when there is no such member.
    const Json& operator[](const std::string& name) const { return members.at(name); }

    /// A list of pairs of numbers.
    std::vector<std::pair<float, float>> Pairs() const;
};

/// Reads objects, lists, decimal numbers and texts without escapes. Throws `std::runtime_error` for
/// anything else, such as NaN, and for what stands behind the value.
Json ReadJson(const std::string& text);

#endif
