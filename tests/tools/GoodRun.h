#ifndef KIVFISHEYE_TESTS_GOOD_RUN_H
#define KIVFISHEYE_TESTS_GOOD_RUN_H

#include <string>
#include <vector>

#include "TemporaryFolder.h"

/// One list of words behind the other.
std::vector<std::string> Joined(std::vector<std::string> words,
                                const std::vector<std::string>& more);

/// Expects a run that does its work without a complaint, and gives what it printed.
std::string OutputOfGoodRun(const TemporaryFolder& folder,
                            const std::vector<std::string>& arguments);

#endif
