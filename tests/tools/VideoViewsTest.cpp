#include <gtest/gtest.h>

#include <ostream>

#include "FlattenedByLibrary.h"
#include "ToolRun.h"
#include "VideoFile.h"

using namespace KivFisheyeLib;
using KivFisheyeTools::Picture;
using VideoFile::MeanDifference;

namespace {

/// What H.264 changes of a channel stays below the one; another frame or view is beyond the other.
constexpr double kCodecLoss = 2.5;
constexpr double kOtherPicture = 10.0;

}  // namespace

struct VideoView {
    const char* name;
    const char* mount;
    const char* view;
    MountType mountType;
    ViewType viewType;
    /// The recommended size for a lens image of 158 by 158 pixels, its height rounded up to even.
    std::uint32_t width;
    std::uint32_t height;
};

void PrintTo(const VideoView& view, std::ostream* stream) {
    *stream << view.name;
}

class VideoOfView : public testing::TestWithParam<VideoView> {};

TEST_P(VideoOfView, IsFlattenedFrameByFrame) {
    constexpr int kFrames = 4;
    const VideoView& param = GetParam();
    const TemporaryFolder folder;
    VideoFile::Write(folder.File("input.mp4"), {}, VideoFile::WaveFrames(158, 158, kFrames));
    const ToolRun run = RunTool(folder, {"dewarp", "input.mp4", "output.mp4", "--mount",
                                         param.mount, "--view", param.view});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(run.errors, "");
    const VideoFile::Video input = VideoFile::Read(folder.File("input.mp4"));
    const VideoFile::Video output = VideoFile::Read(folder.File("output.mp4"));
    ASSERT_EQ(output.frames.size(), static_cast<std::size_t>(kFrames));
    for (std::size_t i = 0; i < output.frames.size(); ++i) {
        const Picture& made = output.frames[i].picture;
        ASSERT_EQ(made.width, param.width);
        ASSERT_EQ(made.height, param.height);
        const auto shown = [&](std::size_t frame) {
            return FlattenedByLibrary(input.frames[frame].picture,
                                      {param.mountType, param.viewType}, param.width, param.height);
        };
        EXPECT_LT(MeanDifference(made, shown(i)), kCodecLoss) << i;
        EXPECT_GT(MeanDifference(made, shown((i + 1) % kFrames)), kOtherPicture) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Views, VideoOfView,
    testing::Values(
        // The sine of 45 degrees times 158 is 111.7, of which the fraction is cut off.
        VideoView{"WallPanorama", "wall", "full", MountTypeWall, ViewTypeFullPanorama, 160, 112},
        VideoView{"CeilingDualPanorama", "ceiling", "dual", MountTypeCeiling, ViewTypeDualPanorama,
                  160, 158},
        VideoView{"CeilingPanorama", "ceiling", "full", MountTypeCeiling, ViewTypeFullPanorama, 320,
                  80},
        VideoView{"TableDualPanorama", "table", "dual", MountTypeTable, ViewTypeDualPanorama, 160,
                  158},
        VideoView{"TablePanorama", "table", "full", MountTypeTable, ViewTypeFullPanorama, 320, 80},
        VideoView{"WallCamera", "wall", "vcam", MountTypeWall, ViewTypeVCam, 160, 160},
        VideoView{"CeilingCamera", "ceiling", "vcam", MountTypeCeiling, ViewTypeVCam, 160, 160},
        VideoView{"TableCamera", "table", "vcam", MountTypeTable, ViewTypeVCam, 160, 160}),
    [](const auto& instance) { return std::string(instance.param.name); });
