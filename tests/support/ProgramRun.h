#ifndef KIVFISHEYE_TESTS_PROGRAM_RUN_H
#define KIVFISHEYE_TESTS_PROGRAM_RUN_H

#include <string>
#include <vector>

/// What a program left behind. One that did not end by itself has status -1.
struct ProgramRun {
    int status;
    std::string output;
    std::string errors;
    double processorSeconds;
};

/// Runs the program at `path` to its end. Throws `std::runtime_error` when it cannot be started.
ProgramRun RunProgram(const std::string& path, std::vector<std::string> arguments);

#endif
