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

/// What a run meets.
struct ToolConditions {
    /// The most bytes a file may grow to, unless it is 0.
    unsigned long fileBytes = 0;
    /// Whether permissions of files bind the superuser too.
    bool bindsSuperuser = false;
    /// A descriptor that becomes standard error, instead of a file, unless it is -1.
    int errors = -1;
};

/// Runs the tool with the folder as its working directory.
ToolRun RunTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                const ToolConditions& conditions = {});

#endif
