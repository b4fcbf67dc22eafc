#include "GoodRun.h"

#include <gtest/gtest.h>

#include "ToolRun.h"

std::vector<std::string> Joined(std::vector<std::string> words,
                                const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

std::string OutputOfGoodRun(const TemporaryFolder& folder,
                            const std::vector<std::string>& arguments) {
    const ToolRun run = RunTool(folder, arguments);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    return run.output;
}
