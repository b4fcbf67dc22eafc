#ifndef KIVFISHEYE_TESTS_TOOL_RUN_H
#define KIVFISHEYE_TESTS_TOOL_RUN_H

#include <sys/types.h>

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
    /// Whether it is started as nohup does.
    bool ignoresHangup = false;
    /// Variables of the environment, each as NAME=VALUE.
    std::vector<std::string> environment;
    /// A descriptor that becomes standard error, instead of a file, unless it is -1.
    int errors = -1;
};

/// The tool at work, with a folder as its working directory.
class ToolProcess {
public:
    ToolProcess(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                const ToolConditions& conditions = {});

    void Send(int signal) const;

    /// What it left behind; to be called once.
    ToolRun Wait() const;

private:
    TemporaryFolder m_streams;
    pid_t m_child;
};

/// Runs the tool to its end.
ToolRun RunTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                const ToolConditions& conditions = {});

#endif
