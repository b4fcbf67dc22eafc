#ifndef KIVFISHEYE_TESTS_TOOL_RUN_H
#define KIVFISHEYE_TESTS_TOOL_RUN_H

#include <string>
#include <vector>

#include "TemporaryFolder.h"

/// What a run of the tool left behind. A run that did not end by itself has status -1.
struct ToolRun {
    int status;
    std::string output;
    std::string errors;
};

/// Limits that a run is put under; 0 is no limit.
struct ToolLimits {
    unsigned long fileBytes = 0;
};

/// Runs the tool with the folder as its working directory.
ToolRun RunTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                const ToolLimits& limits = {});

#endif
