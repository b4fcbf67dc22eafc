#include <gtest/gtest.h>

#include <algorithm>

#include "FlattenedByLibrary.h"
#include "RoomScene.h"
#include "ToolError.h"
#include "VideoFile.h"

using KivFisheyeLib::MountTypeCeiling;
using KivFisheyeLib::ViewTypeVCam;
using KivFisheyeTools::Picture;

namespace {

class Sweep : public testing::Test {
protected:
    Sweep() {
        KivFisheyeTools::WritePicture(
            m_folder.File("room.png"),
            KivFisheyeTools::RenderRoomScene({200, 200, 0.5, 0.5}, MountTypeCeiling));
    }

    ToolRun Run(const std::string& output, const std::vector<std::string>& options) const {
        std::vector<std::string> arguments = {"sweep", "room.png", output, "--mount", "ceiling"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunTool(m_folder, arguments);
    }

    void Make(const std::string& output, const std::vector<std::string>& options) const {
        const ToolRun run = Run(output, options);
        EXPECT_EQ(run.status, 0) << run.errors;
        EXPECT_EQ(run.errors, "");
        EXPECT_EQ(run.output, "");
    }

    std::set<std::string> NamesIn(const std::string& name) const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(m_folder.File(name))) {
            names.insert(entry.path().filename().string());
        }
        return names;
    }

    TemporaryFolder m_folder;
};

}  // namespace

TEST_F(Sweep, ShowsWhatDewarpShowsAtTheSameAngles) {
    Make("views", {"--from", "-30,10,2", "--to", "90,30,4", "--frames", "5", "--size", "160x120"});
    EXPECT_EQ(NamesIn("views"),
              (std::set<std::string>{"0001.png", "0002.png", "0003.png", "0004.png", "0005.png"}));
    const std::vector<std::vector<std::string>> angles = {{"-30", "10", "2"},
                                                          {"0", "15", "2.5"},
                                                          {"30", "20", "3"},
                                                          {"60", "25", "3.5"},
                                                          {"90", "30", "4"}};
    std::set<std::string> contents;
    for (std::size_t i = 0; i < angles.size(); ++i) {
        const ToolRun run =
            RunTool(m_folder, {"dewarp", "room.png", "view.png", "--mount", "ceiling", "--view",
                               "vcam", "--size", "160x120", "--pan", angles[i][0], "--tilt",
                               angles[i][1], "--zoom", angles[i][2]});
        EXPECT_EQ(run.status, 0) << run.errors;
        const std::string view = ContentOf(m_folder.File("view.png"));
        EXPECT_EQ(ContentOf(m_folder.File("views/000" + std::to_string(i + 1) + ".png")), view)
            << i;
        contents.insert(view);
    }
    EXPECT_EQ(contents.size(), angles.size());
}

TEST_F(Sweep, OfOneViewShowsItsStart) {
    Make("one", {"--from", "20,30,3", "--to", "90,40,4", "--frames", "1", "--size", "160x120"});
    EXPECT_EQ(NamesIn("one"), std::set<std::string>{"0001.png"});
    const Picture made = KivFisheyeTools::ReadPicture(m_folder.File("one/0001.png"), 3);
    const Picture room = KivFisheyeTools::ReadPicture(m_folder.File("room.png"), 3);
    const LibraryView start{MountTypeCeiling, ViewTypeVCam, 20.0F, 30.0F, 3.0F};
    EXPECT_EQ(made.pixels, FlattenedByLibrary(room, start, 160, 120).pixels);
}

TEST_F(Sweep, NamesHaveAsManyDigitsAsTheLastNeeds) {
    Make("many", {"--from", "0,30,3", "--to", "90,30,3", "--frames", "10001", "--size", "8x1"});
    const std::set<std::string> names = NamesIn("many");
    EXPECT_EQ(names.size(), 10001U);
    EXPECT_EQ(*names.begin(), "00001.png");
    EXPECT_EQ(*names.rbegin(), "10001.png");
    EXPECT_TRUE(
        std::all_of(names.begin(), names.end(), [](const auto& name) { return name.size() == 9; }));
}

TEST_F(Sweep, IsAVideoByItsName) {
    Make("sweep.mp4", {"--from", "0,30,3", "--to", "300,30,3", "--frames", "6", "--size", "320x240",
                       "--fps", "12.5"});
    const VideoFile::Video video = VideoFile::Read(m_folder.File("sweep.mp4"));
    EXPECT_EQ(video.codec, "h264");
    EXPECT_EQ(av_cmp_q(video.frameRate, {25, 2}), 0);
    ASSERT_EQ(video.frames.size(), 6U);
    const Picture room = KivFisheyeTools::ReadPicture(m_folder.File("room.png"), 3);
    for (std::size_t i = 0; i < 6; ++i) {
        const auto viewAt = [&](float pan) {
            return FlattenedByLibrary(room, {MountTypeCeiling, ViewTypeVCam, pan, 30.0F, 3.0F}, 320,
                                      240);
        };
        const Picture& made = video.frames[i].picture;
        const float pan = 60.0F * static_cast<float>(i);
        EXPECT_LT(VideoFile::MeanDifference(made, viewAt(pan)), 6.0) << i;
        EXPECT_GT(VideoFile::MeanDifference(made, viewAt(pan + 20.0F)), 12.0) << i;
    }
    EXPECT_EQ(m_folder.Names(), (std::set<std::string>{"room.png", "sweep.mp4"}));
}

TEST_F(Sweep, HasTwentyFiveViewsASecondByDefault) {
    Make("sweep.mp4", {"--from", "0,30,3", "--to", "10,30,3", "--frames", "3"});
    const VideoFile::Video video = VideoFile::Read(m_folder.File("sweep.mp4"));
    EXPECT_EQ(av_cmp_q(video.frameRate, {25, 1}), 0);
    EXPECT_EQ(video.frames.size(), 3U);
}

TEST_F(Sweep, TakesTheFirstPictureOfAVideo) {
    VideoFile::Write(m_folder.File("input.mp4"), {}, VideoFile::WaveFrames(96, 96, 4));
    const std::vector<std::string> options = {"--mount",  "table",    "--from", "0,-30,3", "--to",
                                              "90,-30,3", "--frames", "2",      "--size",  "80x60"};
    std::vector<std::string> arguments = {"sweep", "input.mp4", "views"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const ToolRun run = RunTool(m_folder, arguments);
    EXPECT_EQ(run.status, 0) << run.errors;
    const Picture first = KivFisheyeTools::ReadPicture(m_folder.File("input.mp4"), 3);
    const LibraryView end{KivFisheyeLib::MountTypeTable, ViewTypeVCam, 90.0F, -30.0F, 3.0F};
    EXPECT_EQ(KivFisheyeTools::ReadPicture(m_folder.File("views/0002.png"), 3).pixels,
              FlattenedByLibrary(first, end, 80, 60).pixels);
}

TEST_F(Sweep, SaysOnceHowManyViewsAreLimited) {
    const ToolRun run =
        Run("views", {"--from", "0,30,3", "--to", "0,70,3", "--frames", "5", "--size", "80x60"});
    // At zoom 3 a view of 80 degrees can be tilted by 50; the tilts are 30, 40, 50, 60 and 70.
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(std::count(run.errors.begin(), run.errors.end(), '\n'), 1) << run.errors;
    EXPECT_NE(run.errors.find("the first of 2 limited views, number 4,"), std::string::npos)
        << run.errors;
    EXPECT_NE(run.errors.find("tilt 50"), std::string::npos) << run.errors;
    EXPECT_EQ(NamesIn("views").size(), 5U);
}

TEST_F(Sweep, OfAPanoramaTurnsItByItsPan) {
    const std::vector<std::string> pans = {"-30", "30", "90"};
    for (const char* view : {"full", "dual"}) {
        Make(view, {"--view", view, "--from", "-30", "--to", "90", "--frames", "3"});
        std::set<std::string> contents;
        for (std::size_t i = 0; i < pans.size(); ++i) {
            const ToolRun run = RunTool(m_folder, {"dewarp", "room.png", "view.png", "--mount",
                                                   "ceiling", "--view", view, "--pan", pans[i]});
            EXPECT_EQ(run.status, 0) << run.errors;
            const std::string made = ContentOf(
                m_folder.File(std::string(view) + "/000" + std::to_string(i + 1) + ".png"));
            EXPECT_EQ(made, ContentOf(m_folder.File("view.png"))) << view << ' ' << i;
            contents.insert(made);
        }
        EXPECT_EQ(contents.size(), pans.size());
    }
}

TEST_F(Sweep, OfADualPanoramaHasTwoEqualHalvesByDefault) {
    // The library recommends 200 * (1 - 0.3325) rows, 133 without the fraction.
    Make("halves", {"--view", "dual", "--inner-radius", "0.3325", "--from", "0", "--to", "90",
                    "--frames", "2"});
    EXPECT_EQ(KivFisheyeTools::ReadPicture(m_folder.File("halves/0002.png"), 3).height, 134U);
}

TEST_F(Sweep, OfAWallPanoramaSaysThatItDoesNotTurn) {
    const ToolRun run =
        RunTool(m_folder, {"sweep", "room.png", "views", "--mount", "wall", "--view", "full",
                           "--from", "0", "--to", "20", "--frames", "3", "--size", "80x60"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors,
              "kivfisheye: the first of 2 limited views, number 2, is limited to pan 0 instead of "
              "pan 10; the panorama of a wall camera does not turn\n");
    EXPECT_EQ(NamesIn("views"), (std::set<std::string>{"0001.png", "0002.png", "0003.png"}));
    EXPECT_EQ(ContentOf(m_folder.File("views/0003.png")),
              ContentOf(m_folder.File("views/0001.png")));
}

TEST_F(Sweep, LeavesOtherFilesOfItsFolderAlone) {
    std::filesystem::create_directory(m_folder.File("views"));
    WriteContent(m_folder.File("views/0003.txt"), "older");
    WriteContent(m_folder.File("views/room3.png"), "older");
    WriteContent(m_folder.File("views/0001.png"), "older");
    Make("views", {"--from", "0,30,3", "--to", "90,30,3", "--frames", "2", "--size", "80x60"});
    EXPECT_EQ(NamesIn("views"),
              (std::set<std::string>{"0001.png", "0002.png", "0003.txt", "room3.png"}));
    EXPECT_EQ(ContentOf(m_folder.File("views/0003.txt")), "older");
    EXPECT_EQ(ContentOf(m_folder.File("views/room3.png")), "older");
    EXPECT_EQ(KivFisheyeTools::ReadPicture(m_folder.File("views/0001.png"), 3).width, 80U);
}

TEST_F(Sweep, DoesNotMixWithPicturesOfAnother) {
    for (const std::string name : {"0003.png", "00001.png", "1.png", "0000.png"}) {
        std::filesystem::create_directory(m_folder.File("views"));
        WriteContent(m_folder.File("views/0001.png"), "older");
        WriteContent(m_folder.File("views/" + name), "older");
        const ToolRun run =
            Run("views", {"--from", "0,30,3", "--to", "90,30,3", "--frames", "2", "--size", "8x6"});
        ExpectOneSentence(run, kUsage, name + ": remove them or name another folder");
        EXPECT_EQ(NamesIn("views"), (std::set<std::string>{"0001.png", name}));
        EXPECT_EQ(ContentOf(m_folder.File("views/0001.png")), "older");
        std::filesystem::remove_all(m_folder.File("views"));
    }
}

TEST_F(Sweep, KeepsThePicturesBeforeOneThatFails) {
    std::filesystem::create_directories(m_folder.File("views/0003.png"));
    const ToolRun run =
        Run("views", {"--from", "0,30,3", "--to", "90,30,3", "--frames", "4", "--size", "8x6"});
    ExpectOneSentence(run, kFailure, "cannot write views/0003.png: it is not a regular file");
    EXPECT_EQ(NamesIn("views"), (std::set<std::string>{"0001.png", "0002.png", "0003.png"}));
    EXPECT_EQ(KivFisheyeTools::ReadPicture(m_folder.File("views/0002.png"), 3).width, 8U);
}

TEST_F(Sweep, MayGoIntoAFolderWithADot) {
    const std::vector<std::string> options = {"--from",   "0,30,3", "--to",   "90,30,3",
                                              "--frames", "2",      "--size", "8x6"};
    for (const char* folder : {"v1.2", "views.ts/"}) {
        Make(folder, options);
        EXPECT_EQ(NamesIn(folder), (std::set<std::string>{"0001.png", "0002.png"}));
    }
}

TEST_F(Sweep, CountsInTensWhateverTheNumberBeginsWith) {
    for (const char* frames : {"010", "+10"}) {
        Make(frames, {"--from", "0,30,3", "--to", "90,30,3", "--frames", frames, "--size", "8x6"});
        EXPECT_EQ(NamesIn(frames).size(), 10U);
    }
}

TEST_F(Sweep, NeverReplacesItsInput) {
    std::filesystem::create_directory(m_folder.File("views"));
    std::filesystem::rename(m_folder.File("room.png"), m_folder.File("views/0002.png"));
    const std::string before = ContentOf(m_folder.File("views/0002.png"));
    const ToolRun run = RunTool(m_folder, {"sweep", "views/0002.png", "views", "--mount", "ceiling",
                                           "--from", "0,30,3", "--to", "90,30,3", "--frames", "2"});
    EXPECT_EQ(run.status, 2);
    EXPECT_NE(run.errors.find("replace the input views/0002.png"), std::string::npos) << run.errors;
    EXPECT_EQ(NamesIn("views"), std::set<std::string>{"0002.png"});
    EXPECT_EQ(ContentOf(m_folder.File("views/0002.png")), before);
}
