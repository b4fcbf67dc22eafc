#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tools/TemporaryFolder.h"

namespace {

constexpr int kMostLines = 120;

/// What one copies from shall be read at a glance.
TEST(ExampleSources, AreShort) {
    std::set<std::string> programs;
    for (const auto& entry :
         std::filesystem::recursive_directory_iterator(KIVFISHEYE_EXAMPLE_SOURCES)) {
        const std::string ending = entry.path().extension();
        if (ending != ".cpp" && ending != ".h") {
            continue;
        }
        const std::string content = ContentOf(entry.path());
        EXPECT_LE(std::count(content.begin(), content.end(), '\n'), kMostLines) << entry.path();
        if (entry.path().filename() == "Main.cpp") {
            programs.insert(entry.path().parent_path().filename());
        }
    }
    EXPECT_EQ(programs,
              (std::set<std::string>{"click-to-aim", "convert-frame", "draw-outlines",
                                     "gpu-panorama", "live-ptz", "load-at-run-time", "two-views"}));
}

}  // namespace
