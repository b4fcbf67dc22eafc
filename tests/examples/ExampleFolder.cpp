#include "ExampleFolder.h"

#include <Png.h>
#include <gtest/gtest.h>

#include "support/OneSentence.h"

std::string PathOfExample(const std::string& name) {
    return std::string(KIVFISHEYE_EXAMPLE_PROGRAMS) + '/' + name;
}

void ExpectOneSentence(const std::string& name, const ProgramRun& run, int status,
                       const std::string& words) {
    ExpectOneSentenceOf(name, run, status, words);
}

ExampleFolder::ExampleFolder(const Picture& fisheye) {
    WritePng(Fisheye(), fisheye);
}

std::string ExampleFolder::OutputOf(const std::string& name,
                                    const std::vector<std::string>& arguments) const {
    const ProgramRun run = RunProgram(PathOfExample(name), arguments);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    return run.output;
}
