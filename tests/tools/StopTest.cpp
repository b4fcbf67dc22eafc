#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "FlattenedByLibrary.h"
#include "Terminal.h"
#include "ToolRun.h"
#include "VideoFile.h"

using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::ViewTypeFullPanorama;
using KivFisheyeTools::Picture;

namespace {

constexpr int kPatience = 60000;

/// A tool that is sent a signal while it shows how far it is.
class StoppedTool {
public:
    StoppedTool(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                int signal) {
        ToolConditions conditions;
        conditions.errors = m_terminal.Line();
        const ToolProcess tool(folder, arguments, conditions);
        EXPECT_NE(m_terminal.WrittenUntil(" left", kPatience).find(" left"), std::string::npos);
        tool.Send(signal);
        m_status = tool.Wait().status;
    }

    int Status() const { return m_status; }

    /// The number of frames or pictures that the last sentence tells of, or -1.
    int CountTold(const std::string& cause, const std::string& rest) {
        const std::string start = "\r\033[Kkivfisheye: " + cause + ": ";
        const std::string& shown = m_terminal.WrittenUntil(rest, 1000);
        const std::size_t at = shown.find(start);
        if (at == std::string::npos || shown.find(rest, at) == std::string::npos) {
            ADD_FAILURE() << shown;
            return -1;
        }
        return std::atoi(shown.c_str() + at + start.size());
    }

private:
    Terminal m_terminal;
    int m_status = -1;
};

/// More views than are shown before the signal comes.
std::vector<std::string> LongSweep(const std::string& output) {
    return {"sweep", "input.png", output,     "--mount", "ceiling", "--from", "0,20,3",
            "--to",  "350,20,3",  "--frames", "900000",  "--size",  "320x240"};
}

void WriteInput(const TemporaryFolder& folder) {
    KivFisheyeTools::WritePicture(folder.File("input.png"), VideoFile::Waves(200, 200, 3));
}

void ExpectPlayableSweepAfter(int signal, int status, const std::string& word) {
    const TemporaryFolder folder;
    WriteInput(folder);
    StoppedTool tool(folder, LongSweep("output.mp4"), signal);
    EXPECT_EQ(tool.Status(), status);
    const int count = tool.CountTold(word, " frames were written to output.mp4");
    const VideoFile::Video video = VideoFile::Read(folder.File("output.mp4"));
    EXPECT_GT(count, 1);
    EXPECT_EQ(video.frames.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"input.png", "output.mp4"}));
}

}  // namespace

TEST(Stop, LeavesAPlayableSweep) {
    ExpectPlayableSweepAfter(SIGINT, 130, "interrupted");
}

TEST(Stop, LeavesAPlayableSweepWhenTheTerminalIsClosed) {
    ExpectPlayableSweepAfter(SIGHUP, 129, "hung up");
}

TEST(Stop, LeavesThePicturesThatAreComplete) {
    const TemporaryFolder folder;
    WriteInput(folder);
    StoppedTool tool(folder, LongSweep("views"), SIGTERM);
    EXPECT_EQ(tool.Status(), 143);
    const int count = tool.CountTold("terminated", " pictures were written to views");
    EXPECT_GT(count, 1);
    std::set<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.File("views"))) {
        names.insert(entry.path().filename().string());
        EXPECT_EQ(KivFisheyeTools::ReadPicture(entry.path().string(), 3).width, 320U);
    }
    EXPECT_EQ(names.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(names.count("000001.png"), 1U);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"input.png", "views"}));
}

TEST(Stop, IsNotAskedForByAHangupThatIsIgnored) {
    const TemporaryFolder folder;
    WriteInput(folder);
    Terminal terminal;
    ToolConditions conditions;
    conditions.errors = terminal.Line();
    conditions.ignoresHangup = true;
    const ToolProcess tool(folder, LongSweep("output.mp4"), conditions);
    EXPECT_NE(terminal.WrittenUntil(" left", kPatience).find(" left"), std::string::npos);
    tool.Send(SIGHUP);
    tool.Send(SIGTERM);
    EXPECT_EQ(tool.Wait().status, 143);
}

TEST(Stop, LeavesTheFramesSoFarOfAVideo) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(96, 96, 1500));
    StoppedTool tool(folder,
                     {"dewarp", "input.mp4", "output.mp4", "--mount", "ceiling", "--view", "full",
                      "--size", "1600x400"},
                     SIGINT);
    EXPECT_EQ(tool.Status(), 130);
    const int count = tool.CountTold("interrupted", " frames were written to output.mp4");
    const VideoFile::Video video = VideoFile::Read(folder.File("output.mp4"));
    EXPECT_GT(count, 1);
    ASSERT_LT(count, 1500) << "the signal came too late to show anything";
    ASSERT_EQ(video.frames.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(av_cmp_q(video.frameRate, {25, 1}), 0);
    const Picture last = VideoFile::Read(folder.File("input.mp4"))
                             .frames.at(static_cast<std::size_t>(count) - 1)
                             .picture;
    EXPECT_LT(VideoFile::MeanDifference(
                  video.frames.back().picture,
                  FlattenedByLibrary(last, {MountTypeCeiling, ViewTypeFullPanorama}, 1600, 400)),
              2.5);
}

TEST(Stop, EndsAWaitForMoreInput) {
    const TemporaryFolder folder;
    VideoFile::Format format;
    format.codec = "mjpeg";
    format.pixels = AV_PIX_FMT_YUVJ420P;
    format.range = AVCOL_RANGE_JPEG;
    VideoFile::Write(folder.File("whole.avi"), format, VideoFile::WaveFrames(320, 320, 60));
    const std::string content = ContentOf(folder.File("whole.avi"));
    ASSERT_EQ(mkfifo(folder.File("input").c_str(), 0600), 0);
    Terminal terminal;
    ToolConditions conditions;
    conditions.errors = terminal.Line();
    const ToolProcess tool(
        folder, {"dewarp", "input", "output.mp4", "--mount", "ceiling", "--view", "full"},
        conditions);
    const int pipe = open(folder.File("input").c_str(), O_WRONLY | O_CLOEXEC);
    // Whole blocks, so that the tool waits for one of which it has nothing.
    constexpr std::size_t kBlock = 65536;
    const std::size_t part = content.size() / 2 / kBlock * kBlock;
    ASSERT_GT(part, 0U);
    EXPECT_EQ(write(pipe, content.data(), part), static_cast<ssize_t>(part));
    // The tool has everything that came, and waits.
    EXPECT_NE(terminal.WrittenUntil("flattening frame ", kPatience).find("flattening frame "),
              std::string::npos);
    tool.Send(SIGINT);
    EXPECT_EQ(tool.Wait().status, 130);
    close(pipe);
    EXPECT_NE(terminal.WrittenUntil("written to", 1000).find("interrupted: "), std::string::npos);
    EXPECT_GT(VideoFile::Read(folder.File("output.mp4")).frames.size(), 1U);
}
