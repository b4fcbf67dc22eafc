#include <gtest/gtest.h>

extern "C" {
#include <libavutil/mathematics.h>
}

#include <numeric>

#include "FlattenedByLibrary.h"
#include "ToolRun.h"
#include "VideoFile.h"

using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::MountTypeTable;
using KivFisheyeLib::ViewTypeFullPanorama;
using KivFisheyeTools::Picture;
using VideoFile::MeanDifference;

namespace {

/// H.264 at this quality changes a channel by about 1 in the mean; another matrix or range changes
/// it by 4 and more, another frame or pan by tens.
constexpr double kCodecLoss = 2.5;
constexpr double kOtherPicture = 10.0;

constexpr std::uint32_t kSide = 160;

std::vector<std::string> Dewarp(const std::string& input, const std::string& output,
                                const std::vector<std::string>& options = {}) {
    std::vector<std::string> arguments = {"dewarp",  input,    output, "--mount",
                                          "ceiling", "--view", "full"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return arguments;
}

void ExpectDone(const ToolRun& run) {
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.output, "");
}

Picture Panorama(const Picture& input, float pan) {
    return FlattenedByLibrary(input, {MountTypeCeiling, ViewTypeFullPanorama, pan}, 320, 80);
}

void ExpectSameTimes(const VideoFile::Video& video, const std::vector<std::int64_t>& times,
                     AVRational timeBase) {
    ASSERT_EQ(video.frames.size(), times.size());
    for (std::size_t i = 0; i < times.size(); ++i) {
        EXPECT_EQ(av_compare_ts(video.frames[i].time, video.timeBase, times[i], timeBase), 0)
            << "frame " << i + 1 << " at " << video.frames[i].time << " of " << video.timeBase.num
            << '/' << video.timeBase.den;
    }
}

std::vector<VideoFile::Frame> FramesAt(const std::vector<std::int64_t>& times) {
    std::vector<VideoFile::Frame> frames =
        VideoFile::WaveFrames(64, 64, static_cast<int>(times.size()));
    for (std::size_t i = 0; i < times.size(); ++i) {
        frames[i].time = times[i];
    }
    return frames;
}

VideoFile::Format InMilliseconds() {
    VideoFile::Format format;
    format.timeBase = {1, 1000};
    return format;
}

/// Frames at `times` come out of the tool at the `expected` times.
void ExpectTimesOfFlattened(const std::string& input, const VideoFile::Format& format,
                            const std::vector<std::int64_t>& times,
                            const std::vector<std::int64_t>& expected) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File(input), format, FramesAt(times));
    ExpectDone(RunTool(folder, Dewarp(input, "output.mp4")));
    ExpectSameTimes(VideoFile::Read(folder.File("output.mp4")), expected, format.timeBase);
}

}  // namespace

struct VideoKind {
    const char* name;
    const char* file;
    VideoFile::Format format;
};

void PrintTo(const VideoKind& kind, std::ostream* stream) {
    *stream << kind.name;
}

class VideoOfKind : public testing::TestWithParam<VideoKind> {};

TEST_P(VideoOfKind, IsFlattenedFrameByFrame) {
    constexpr int kFrames = 8;
    const TemporaryFolder folder;
    VideoFile::Write(folder.File(GetParam().file), GetParam().format,
                     VideoFile::WaveFrames(kSide, kSide, kFrames));
    ExpectDone(RunTool(folder,
                       Dewarp(GetParam().file, "output.mp4", {"--pan", "90", "--size", "320x80"})));
    const VideoFile::Video input = VideoFile::Read(folder.File(GetParam().file));
    const VideoFile::Video output = VideoFile::Read(folder.File("output.mp4"));
    ASSERT_EQ(input.frames.size(), static_cast<std::size_t>(kFrames));
    ASSERT_EQ(output.frames.size(), input.frames.size());
    for (std::size_t i = 0; i < input.frames.size(); ++i) {
        const Picture& made = output.frames[i].picture;
        const Picture& next = input.frames[(i + 1) % input.frames.size()].picture;
        EXPECT_LT(MeanDifference(made, Panorama(input.frames[i].picture, 90.0F)), kCodecLoss) << i;
        EXPECT_GT(MeanDifference(made, Panorama(input.frames[i].picture, 60.0F)), kOtherPicture);
        EXPECT_GT(MeanDifference(made, Panorama(next, 90.0F)), kOtherPicture);
    }
    EXPECT_EQ(folder.Names(), (std::set<std::string>{GetParam().file, "output.mp4"}));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, VideoOfKind,
    testing::Values(
        VideoKind{"Mpeg4InMp4", "input.mp4", {}},
        VideoKind{"MotionJpegInAvi",
                  "input.avi",
                  {"mjpeg",
                   AV_PIX_FMT_YUVJ420P,
                   {1, 25},
                   AVCOL_SPC_BT470BG,
                   AVCOL_RANGE_JPEG,
                   {{"qscale", "2"}, {"flags", "+qscale"}},
                   {}}},
        VideoKind{"BareMotionJpeg",
                  "input.mjpeg",
                  {"mjpeg",
                   AV_PIX_FMT_YUVJ420P,
                   {1, 25},
                   AVCOL_SPC_BT470BG,
                   AVCOL_RANGE_JPEG,
                   {{"qscale", "2"}, {"flags", "+qscale"}},
                   {}}},
        VideoKind{"H264WithReorderedFrames",
                  "input.mov",
                  {"libx264",
                   AV_PIX_FMT_YUV420P,
                   {1, 25},
                   AVCOL_SPC_SMPTE170M,
                   AVCOL_RANGE_MPEG,
                   {{"bf", "3"}, {"crf", "10"}, {"b_strategy", "0"}},
                   {}}},
        VideoKind{"FullRangeIn709",
                  "input.mkv",
                  {"libx264",
                   AV_PIX_FMT_YUV444P,
                   {1, 25},
                   AVCOL_SPC_BT709,
                   AVCOL_RANGE_JPEG,
                   {{"crf", "10"}},
                   {}}},
        VideoKind{"FullRangeByTagAlone",
                  "input.mkv",
                  {"ffv1", AV_PIX_FMT_YUV420P, {1, 25}, AVCOL_SPC_BT709, AVCOL_RANGE_JPEG, {}, {}}},
        VideoKind{"BareH264",
                  "input.h264",
                  {"libx264",
                   AV_PIX_FMT_YUV420P,
                   {1, 25},
                   AVCOL_SPC_BT709,
                   AVCOL_RANGE_MPEG,
                   {{"bf", "2"}, {"crf", "10"}},
                   {}}}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(Video, IsTaggedAsWhatItIs) {
    const TemporaryFolder folder;
    VideoFile::Format format;
    format.timeBase = {1001, 30000};
    VideoFile::Write(folder.File("input.mp4"), format, VideoFile::WaveFrames(64, 48, 20));
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "output.mp4")));
    const VideoFile::Video video = VideoFile::Read(folder.File("output.mp4"));
    EXPECT_NE(video.kind.find("mp4"), std::string::npos);
    EXPECT_EQ(video.codec, "h264");
    EXPECT_EQ(video.pixels, AV_PIX_FMT_YUV420P);
    EXPECT_EQ(video.matrix, AVCOL_SPC_BT709);
    EXPECT_EQ(video.range, AVCOL_RANGE_MPEG);
    EXPECT_EQ(av_cmp_q(video.pixelShape, {1, 1}), 0);
    EXPECT_EQ(av_cmp_q(video.frameRate, {30000, 1001}), 0);
    EXPECT_EQ(av_compare_ts(video.duration, video.timeBase, 20, {1001, 30000}), 0);
    EXPECT_EQ(video.streams, 1);
}

TEST(Video, KeepsTheTimesOfAnEvenRate) {
    VideoFile::Format format;
    format.timeBase = {1001, 24000};
    std::vector<std::int64_t> times(70);
    std::iota(times.begin(), times.end(), 0);
    ExpectTimesOfFlattened("input.mp4", format, times, times);
}

TEST(Video, KeepsTheTimesOfAVariableRate) {
    const std::vector<std::int64_t> times = {0, 40, 97, 98, 400, 1000, 1003, 1043, 3000, 3040};
    for (const char* input : {"input.mkv", "input.mp4"}) {
        ExpectTimesOfFlattened(input, InMilliseconds(), times, times);
    }
}

TEST(Video, ShowsFramesOfOneTimeOneAfterTheOther) {
    VideoFile::Format format = InMilliseconds();
    format.codec = "ffv1";
    format.encoderOptions = {};
    ExpectTimesOfFlattened("input.mkv", format, {0, 40, 40, 80}, {0, 40, 41, 80});
}

TEST(Video, BeginsAtZero) {
    ExpectTimesOfFlattened("input.mkv", InMilliseconds(), {5000, 5040, 5100, 5110},
                           {0, 40, 100, 110});
}

TEST(Video, ShowsItsLastFrameAsLong) {
    const TemporaryFolder folder;
    VideoFile::Format format;
    format.codec = "mjpeg";
    format.pixels = AV_PIX_FMT_YUVJ420P;
    format.range = AVCOL_RANGE_JPEG;
    format.timeBase = {1, 1000};
    std::vector<VideoFile::Frame> frames = FramesAt({0, 100, 150});
    frames.back().duration = 500;
    VideoFile::Write(folder.File("input.mp4"), format, frames);
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "output.mp4")));
    for (const char* name : {"input.mp4", "output.mp4"}) {
        const VideoFile::Video video = VideoFile::Read(folder.File(name));
        EXPECT_EQ(av_compare_ts(video.duration, video.timeBase, 650, {1, 1000}), 0) << name;
    }
}

TEST(Video, OfOneFrameIsOneFrame) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(64, 64, 1));
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "output.mp4")));
    const VideoFile::Video video = VideoFile::Read(folder.File("output.mp4"));
    ASSERT_EQ(video.frames.size(), 1U);
    EXPECT_EQ(av_compare_ts(video.duration, video.timeBase, 1, {1, 25}), 0);
}

TEST(Video, HasAnEvenHeight) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(62, 62, 2));
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "output.png")));
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "output.mp4")));
    const Picture still = KivFisheyeTools::ReadPicture(folder.File("output.png"), 3);
    const Picture moving = VideoFile::Read(folder.File("output.mp4")).frames.at(0).picture;
    ASSERT_EQ(still.height % 2, 1U) << "a size that shows nothing";
    EXPECT_EQ(moving.width, still.width);
    EXPECT_EQ(moving.height, still.height + 1);
}

TEST(Video, IsTheSameInBothPixelFormats) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(65, 64, 3));
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "a.mp4", {"--format", "rgb24"})));
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "b.mp4", {"--format", "rgb32"})));
    const VideoFile::Video a = VideoFile::Read(folder.File("a.mp4"));
    const VideoFile::Video b = VideoFile::Read(folder.File("b.mp4"));
    ASSERT_EQ(a.frames.size(), 3U);
    ASSERT_EQ(b.frames.size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(MeanDifference(a.frames[i].picture, b.frames[i].picture), 0.0);
    }
}

TEST(Video, GivesItsFirstFrameAsAPicture) {
    const TemporaryFolder folder;
    VideoFile::Format lossless;
    lossless.codec = "ffv1";
    lossless.encoderOptions = {};
    VideoFile::Write(folder.File("input.mkv"), lossless, VideoFile::WaveFrames(kSide, kSide, 3));
    ExpectDone(RunTool(folder, Dewarp("input.mkv", "output.png", {"--size", "320x80"})));
    const VideoFile::Video input = VideoFile::Read(folder.File("input.mkv"));
    const Picture made = KivFisheyeTools::ReadPicture(folder.File("output.png"), 3);
    EXPECT_LT(MeanDifference(made, Panorama(input.frames[0].picture, 0.0F)), kCodecLoss);
    EXPECT_GT(MeanDifference(made, Panorama(input.frames[1].picture, 0.0F)), kOtherPicture);
}

TEST(Video, ReplacesAnOlderFile) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(64, 64, 3));
    WriteContent(folder.File("output.mp4"), "older");
    ExpectDone(RunTool(folder, Dewarp("input.mp4", "output.mp4")));
    EXPECT_EQ(VideoFile::Read(folder.File("output.mp4")).frames.size(), 3U);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"input.mp4", "output.mp4"}));
}

TEST(Video, IsInformedAbout) {
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(64, 48, 2));
    const ToolRun run = RunTool(folder, {"info", "input.mp4"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(run.output.find("input: 64x48\n"), std::string::npos) << run.output;
}
