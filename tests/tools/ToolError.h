#ifndef KIVFISHEYE_TESTS_TOOL_ERROR_H
#define KIVFISHEYE_TESTS_TOOL_ERROR_H

#include <gtest/gtest.h>

#include <iosfwd>

#include "ToolRun.h"

constexpr int kFailure = 1;
constexpr int kUsage = 2;

struct ErrorCase {
    const char* name;
    std::vector<std::string> arguments;
    int status;
    /// Words that tell the user what is wrong.
    const char* words;
};
void PrintTo(const ErrorCase& errorCase, std::ostream* stream);

/// Makes what the cases refer to: a good picture, and everything that is none.
void FillFolder(const TemporaryFolder& folder);

/// Expects a failure of this status, told in one sentence with these words, and no other output.
void ExpectOneSentence(const ToolRun& run, int status, const std::string& words);

class ToolError : public testing::TestWithParam<ErrorCase> {};

#endif
