#include <gtest/gtest.h>

#include "ToolRun.h"
#include "VideoFile.h"

namespace {

/// How often a table was built while a video of so many frames was flattened.
int TablesBuiltFor(int frames) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(64, 64, frames));
    ToolConditions conditions;
    conditions.environment = {"LD_PRELOAD=" KIVFISHEYE_TOOL_PROBE,
                              "ASAN_OPTIONS=verify_asan_link_order=0",
                              "KIVFISHEYE_PROBE_COUNT=" + folder.File("count")};
    const ToolRun run =
        RunTool(folder, {"dewarp", "input.mp4", "output.mp4", "--mount", "table", "--view", "full"},
                conditions);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(VideoFile::Read(folder.File("output.mp4")).frames.size(),
              static_cast<std::size_t>(frames));
    const std::string count = ContentOf(folder.File("count"));
    EXPECT_NE(count, "") << "nothing was counted";
    return std::atoi(count.c_str());
}

}  // namespace

TEST(VideoTables, AreBuiltBeforeTheFirstFrameAlone) {
    const int tables = TablesBuiltFor(1);
    EXPECT_GE(tables, 1);
    EXPECT_EQ(TablesBuiltFor(20), tables);
}
