#ifndef KIVFISHEYE_TESTS_ONE_SENTENCE_H
#define KIVFISHEYE_TESTS_ONE_SENTENCE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

/// Expects that a run of the program `name` failed with this status, said why in one sentence with
/// these words, and printed nothing else.
template <class Run>
void ExpectOneSentenceOf(const std::string& name, const Run& run, int status,
                         const std::string& words) {
    EXPECT_EQ(run.status, status) << run.errors;
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors.rfind(name + ": ", 0), 0U) << run.errors;
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    EXPECT_EQ(run.errors.find('\n') + 1, run.errors.size()) << run.errors;
    EXPECT_NE(run.errors.find(words), std::string::npos) << run.errors;
}

#endif
