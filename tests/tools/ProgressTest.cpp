#include <fcntl.h>
#include <gtest/gtest.h>
#include <regex.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <future>

#include "Picture.h"
#include "Terminal.h"
#include "ToolRun.h"
#include "VideoFile.h"

namespace {

std::size_t CountOf(const std::string& part, const std::string& text) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

bool Contains(const std::string& text, const std::string& pattern) {
    regex_t expression{};
    EXPECT_EQ(regcomp(&expression, pattern.c_str(), REG_EXTENDED | REG_NOSUB), 0) << pattern;
    const bool isFound = regexec(&expression, text.c_str(), 0, nullptr, 0) == 0;
    regfree(&expression);
    return isFound;
}

/// What a long run shows until it is stopped after this text.
std::string ShownUntil(const std::string& text, const TemporaryFolder& folder,
                       const std::vector<std::string>& arguments) {
    Terminal terminal;
    ToolConditions conditions;
    conditions.errors = terminal.Line();
    const ToolProcess tool(folder, arguments, conditions);
    const std::string shown = terminal.WrittenUntil(text, 30000);
    tool.Send(SIGINT);
    EXPECT_EQ(tool.Wait().status, 130);
    return shown;
}

}  // namespace

TEST(Progress, ShowsAStageThatTakesLong) {
    constexpr int kPatience = 30000;
    const TemporaryFolder folder;
    KivFisheyeTools::WritePicture(folder.File("input.png"), KivFisheyeTools::Picture(64, 64, 3));
    const std::string content = ContentOf(folder.File("input.png"));
    ASSERT_EQ(mkfifo(folder.File("slow").c_str(), 0600), 0);
    Terminal terminal;
    ToolConditions conditions;
    conditions.errors = terminal.Line();
    // The tool waits for the first byte until its line has been seen.
    auto run = std::async(std::launch::async, [&] {
        return RunTool(folder,
                       {"dewarp", "slow", "output.png", "--mount", "table", "--view", "full"},
                       conditions);
    });
    const std::string shown = terminal.WrittenUntil("reading slow", kPatience);
    const int pipe = open(folder.File("slow").c_str(), O_RDWR | O_CLOEXEC);
    EXPECT_EQ(write(pipe, content.data(), content.size()), static_cast<ssize_t>(content.size()));
    close(pipe);
    EXPECT_EQ(run.get().status, 0);

    EXPECT_NE(shown.find("reading slow"), std::string::npos) << shown;
    const std::string wipe = "\r\033[K";
    const std::string last = wipe + "writing output.png" + wipe;
    const std::string& all = terminal.WrittenUntil(last, 1000);
    EXPECT_EQ(CountOf("reading slow", all), 1U) << all;
    EXPECT_EQ(all.substr(all.size() - std::min(all.size(), last.size())), last);
}

TEST(Progress, TellsThePartAndTheTimeLeft) {
    const TemporaryFolder folder;
    KivFisheyeTools::WritePicture(folder.File("input.png"), VideoFile::Waves(64, 64, 1));
    const std::string shown =
        ShownUntil(" left", folder,
                   {"sweep", "input.png", "output.mp4", "--mount", "table", "--from", "0,-30,3",
                    "--to", "300,-30,3", "--frames", "200000", "--size", "160x120"});
    const std::string line = "sweeping frame [1-9][0-9]* of 200000, [0-9]%, [0-9]+ (s|min) left";
    EXPECT_TRUE(Contains(shown, line)) << shown;
    int done = 0;
    int left = 0;
    char unit = ' ';
    const std::size_t at = std::min(shown.find("frame "), shown.size());
    ASSERT_EQ(
        std::sscanf(shown.c_str() + at, "frame %d of 200000, %*d%%, %d %c", &done, &left, &unit),
        3);
    // The line appears after a second, so the rest takes as many seconds as it is times as long.
    const double seconds = left * (unit == 'm' ? 60.0 : 1.0);
    EXPECT_GT(seconds, 0.5 * (200000.0 - done) / done) << shown;
    EXPECT_LT(seconds, 60.0 * (200000.0 - done) / done) << shown;
}

TEST(Progress, TellsTheTimeWhenTheNumberOfFramesIsUnknown) {
    const TemporaryFolder folder;
    VideoFile::Format format;
    format.codec = "mjpeg";
    format.pixels = AV_PIX_FMT_YUVJ420P;
    format.range = AVCOL_RANGE_JPEG;
    VideoFile::Write(folder.File("input.mjpeg"), format, VideoFile::WaveFrames(64, 64, 600));
    const std::string shown = ShownUntil(" s", folder,
                                         {"dewarp", "input.mjpeg", "output.mp4", "--mount", "table",
                                          "--view", "full", "--size", "4096x1024"});
    // On a busy machine reading takes the second after which there is a line, and flattening none
    // yet.
    EXPECT_TRUE(Contains(shown, "flattening frame [1-9][0-9]*, [0-9]+ s")) << shown;
    EXPECT_EQ(shown.find('%'), std::string::npos) << shown;
}
