#include <algorithm>
#include <ostream>

#include "ToolError.h"
#include "VideoFile.h"

namespace {

constexpr int kFrames = 20;

VideoFile::Format Format(const std::string& codec) {
    VideoFile::Format format;
    format.codec = codec;
    if (codec == "mjpeg") {
        format.pixels = AV_PIX_FMT_YUVJ420P;
        format.range = AVCOL_RANGE_JPEG;
    }
    if (codec == "libx264") {
        format.encoderOptions = {{"bf", "0"}, {"crf", "20"}};
    }
    return format;
}

/// A video whose index stands before its frames, as far as it has one.
VideoFile::Format IndexFirst(const std::string& codec, const std::string& file) {
    VideoFile::Format format = Format(codec);
    if (file == "mp4") {
        format.fileOptions = {{"movflags", "faststart"}};
    }
    if (file == "mkv") {
        format.fileOptions = {{"reserve_index_space", "2000"}};
    }
    return format;
}

ToolRun Dewarp(const TemporaryFolder& folder, const std::string& input, const std::string& output,
               const ToolConditions& conditions = {}) {
    return RunTool(folder, {"dewarp", input, output, "--mount", "ceiling", "--view", "full"},
                   conditions);
}

void ExpectFailure(const ToolRun& run, const std::string& words) {
    ExpectOneSentence(run, kFailure, words);
}

}  // namespace

struct CutCase {
    const char* codec;
    const char* ending;
};

void PrintTo(const CutCase& cutCase, std::ostream* stream) {
    *stream << cutCase.codec << " in " << cutCase.ending;
}

class CutOffVideo : public testing::TestWithParam<CutCase> {};

INSTANTIATE_TEST_SUITE_P(Kinds, CutOffVideo,
                         testing::Values(CutCase{"mpeg4", "mp4"}, CutCase{"libx264", "mp4"},
                                         CutCase{"mjpeg", "avi"}, CutCase{"mpeg4", "avi"},
                                         CutCase{"mjpeg", "mkv"}, CutCase{"mjpeg", "mjpeg"}),
                         [](const auto& instance) {
                             return std::string(instance.param.codec) + "In" +
                                    instance.param.ending;
                         });

TEST_P(CutOffVideo, FailsAtTheFrameThatIsNotWhole) {
    const TemporaryFolder folder;
    const std::string whole = std::string("whole.") + GetParam().ending;
    const std::string cut = std::string("cut.") + GetParam().ending;
    VideoFile::Write(folder.File(whole), IndexFirst(GetParam().codec, GetParam().ending),
                     VideoFile::WaveFrames(96, 96, kFrames));
    const std::vector<VideoFile::Packet> packets = VideoFile::PacketsOf(folder.File(whole));
    ASSERT_EQ(packets.size(), static_cast<std::size_t>(kFrames));
    const VideoFile::Packet& packet = packets[16];
    for (const int part : {4, packet.size / 2, packet.size - 1}) {
        WriteContent(folder.File(cut),
                     ContentOf(folder.File(whole))
                         .substr(0, static_cast<std::size_t>(packet.position + part)));
        ExpectFailure(Dewarp(folder, cut, "output.mp4"), "frame 17 of " + cut);
        EXPECT_EQ(folder.Names(), (std::set<std::string>{whole, cut})) << part;
    }
}

TEST(CutOffVideo, FailsBetweenTwoFrames) {
    const TemporaryFolder folder;
    for (const std::string file : {"mp4", "avi"}) {
        VideoFile::Write(folder.File("whole." + file), IndexFirst("mpeg4", file),
                         VideoFile::WaveFrames(96, 96, kFrames));
        const std::vector<VideoFile::Packet> packets =
            VideoFile::PacketsOf(folder.File("whole." + file));
        const auto end = static_cast<std::size_t>(packets.at(9).position + packets.at(9).size) +
                         (file == "avi" ? 8U : 0U);
        WriteContent(folder.File("cut." + file),
                     ContentOf(folder.File("whole." + file)).substr(0, end));
        ExpectFailure(Dewarp(folder, "cut." + file, "output.mp4"), "frame 11 of cut." + file);
    }
    EXPECT_EQ(folder.Names().count("output.mp4"), 0U);
}

TEST(CutOffVideo, FailsWithoutItsLastFrame) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("whole.mp4"), IndexFirst("mpeg4", "mp4"),
                     VideoFile::WaveFrames(96, 96, kFrames));
    const auto end =
        static_cast<std::size_t>(VideoFile::PacketsOf(folder.File("whole.mp4")).at(19).position);
    WriteContent(folder.File("cut.mp4"), ContentOf(folder.File("whole.mp4")).substr(0, end));
    ExpectFailure(Dewarp(folder, "cut.mp4", "output.mp4"), "frame 20 of cut.mp4");
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"cut.mp4", "whole.mp4"}));
}

TEST(CutOffVideo, FailsAfterAllFramesThatAreShownBefore) {
    const TemporaryFolder folder;
    VideoFile::Format format = IndexFirst("libx264", "mp4");
    format.encoderOptions = {{"bf", "2"}, {"b_strategy", "0"}, {"crf", "20"}};
    VideoFile::Write(folder.File("whole.mp4"), format, VideoFile::WaveFrames(96, 96, kFrames));
    const std::vector<VideoFile::Packet> packets = VideoFile::PacketsOf(folder.File("whole.mp4"));
    ASSERT_EQ(packets.size(), static_cast<std::size_t>(kFrames));
    for (std::size_t i = 8; i < 14; ++i) {
        const auto before = std::count_if(
            packets.begin(), packets.begin() + static_cast<std::ptrdiff_t>(i),
            [&](const VideoFile::Packet& packet) { return packet.time < packets[i].time; });
        WriteContent(folder.File("cut.mp4"),
                     ContentOf(folder.File("whole.mp4"))
                         .substr(0, static_cast<std::size_t>(packets[i].position) + 5));
        ExpectFailure(Dewarp(folder, "cut.mp4", "output.mp4"),
                      "frame " + std::to_string(before + 1) + " of cut.mp4");
    }
}

TEST(CutOffVideo, FailsWithoutItsIndex) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("whole.mp4"), {}, VideoFile::WaveFrames(96, 96, kFrames));
    const std::string content = ContentOf(folder.File("whole.mp4"));
    WriteContent(folder.File("cut.mp4"), content.substr(0, content.size() / 2));
    ExpectFailure(Dewarp(folder, "cut.mp4", "output.mp4"), "cannot read cut.mp4");
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"cut.mp4", "whole.mp4"}));
}

TEST(DamagedVideo, FailsAtTheDamagedFrame) {
    const TemporaryFolder folder;
    for (const char* codec : {"libx264", "mpeg4"}) {
        VideoFile::Write(folder.File("input.mkv"), Format(codec),
                         VideoFile::WaveFrames(96, 96, kFrames));
        const VideoFile::Packet packet = VideoFile::PacketsOf(folder.File("input.mkv")).at(6);
        std::string content = ContentOf(folder.File("input.mkv"));
        const auto middle = static_cast<std::size_t>(packet.position + packet.size / 2);
        for (std::size_t i = middle; i < middle + 12; ++i) {
            content[i] = static_cast<char>(content[i] ^ 0xA5);
        }
        WriteContent(folder.File("input.mkv"), content);
        ExpectFailure(Dewarp(folder, "input.mkv", "output.mp4"), "frame 7 of input.mkv");
        EXPECT_EQ(folder.Names(), std::set<std::string>{"input.mkv"}) << codec;
    }
}

TEST(VideoOfTwoSizes, FailsAtTheFirstFrameOfTheOther) {
    const TemporaryFolder folder;
    std::vector<VideoFile::Frame> frames = VideoFile::WaveFrames(64, 64, 5);
    for (int i = 5; i < 8; ++i) {
        frames.push_back({VideoFile::Waves(80, 48, i), i, 0});
    }
    VideoFile::Write(folder.File("input.mkv"), Format("mjpeg"), frames);
    ExpectFailure(Dewarp(folder, "input.mkv", "output.mp4"), "frame 6 of input.mkv");
    EXPECT_EQ(folder.Names(), std::set<std::string>{"input.mkv"});
}

class VideoOutput : public testing::Test {
protected:
    VideoOutput() {
        VideoFile::Write(m_folder.File("input.mp4"), {}, VideoFile::WaveFrames(96, 96, kFrames));
    }

    TemporaryFolder m_folder;
};

TEST_F(VideoOutput, IsNotWrittenIntoAMissingFolder) {
    ExpectFailure(Dewarp(m_folder, "input.mp4", "none/output.mp4"), "none/output.mp4");
    EXPECT_EQ(m_folder.Names(), std::set<std::string>{"input.mp4"});
}

TEST_F(VideoOutput, IsNotWrittenOverAFolder) {
    std::filesystem::create_directory(m_folder.File("folder.mp4"));
    ExpectFailure(Dewarp(m_folder, "input.mp4", "folder.mp4"), "folder.mp4");
    EXPECT_TRUE(std::filesystem::is_empty(m_folder.File("folder.mp4")));
    EXPECT_EQ(m_folder.Names(), (std::set<std::string>{"folder.mp4", "input.mp4"}));
}

TEST_F(VideoOutput, LeavesAFileThatMustNotBeWritten) {
    WriteContent(m_folder.File("output.mp4"), "older");
    std::filesystem::permissions(m_folder.File("output.mp4"), std::filesystem::perms::owner_read);
    ToolConditions conditions;
    conditions.bindsSuperuser = true;
    ExpectFailure(Dewarp(m_folder, "input.mp4", "output.mp4", conditions),
                  "cannot write output.mp4: Permission denied");
    EXPECT_EQ(ContentOf(m_folder.File("output.mp4")), "older");
}

TEST_F(VideoOutput, LeavesTheOlderFileWhenTheDiskIsFull) {
    ASSERT_EQ(Dewarp(m_folder, "input.mp4", "output.mp4").status, 0);
    const unsigned long size = ContentOf(m_folder.File("output.mp4")).size();
    WriteContent(m_folder.File("output.mp4"), "older");
    ToolConditions conditions;
    for (const unsigned long bytes : {100UL, size / 2, size - 1}) {
        conditions.fileBytes = bytes;
        ExpectFailure(Dewarp(m_folder, "input.mp4", "output.mp4", conditions), "output.mp4");
        EXPECT_EQ(ContentOf(m_folder.File("output.mp4")), "older");
        EXPECT_EQ(m_folder.Names(), (std::set<std::string>{"input.mp4", "output.mp4"}));
    }
}

TEST_F(VideoOutput, MayBeRefusedByTheEncoder) {
    ToolConditions conditions;
    // An encoder that refuses leaks what it was set up with.
    conditions.environment = {"ASAN_OPTIONS=detect_leaks=0"};
    ExpectFailure(RunTool(m_folder,
                          {"dewarp", "input.mp4", "output.mp4", "--mount", "ceiling", "--view",
                           "full", "--size", "65528x8"},
                          conditions),
                  "cannot write output.mp4: the H.264 encoder refuses frames of 65528x8 at 25 a "
                  "second");
    EXPECT_EQ(m_folder.Names(), std::set<std::string>{"input.mp4"});
}

TEST_F(VideoOutput, NeedsAnEncoder) {
    ToolConditions conditions;
    conditions.environment = {"LD_PRELOAD=" KIVFISHEYE_TOOL_PROBE,
                              "ASAN_OPTIONS=verify_asan_link_order=0",
                              "KIVFISHEYE_PROBE_HIDE_ENCODER=libx264"};
    ExpectFailure(Dewarp(m_folder, "input.mp4", "output.mp4", conditions), "H.264 encoder");
    EXPECT_EQ(m_folder.Names(), std::set<std::string>{"input.mp4"});
}
