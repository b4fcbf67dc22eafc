#include <Png.h>
#include <gtest/gtest.h>

#include "ExampleFolder.h"
#include "TestPicture.h"

using namespace KivFisheyeLib;

namespace {

struct MountCase {
    const char* name;
    MountType mount;
    float tilt;
};

TEST(TwoViews, ShowTheLastFramesOfTheirTurns) {
    const Picture fisheye = Slopes(256, 256);
    for (const MountCase& mountCase :
         {MountCase{"wall", MountTypeWall, 0.0F}, MountCase{"ceiling", MountTypeCeiling, 45.0F},
          MountCase{"table", MountTypeTable, -45.0F}}) {
        SCOPED_TRACE(mountCase.name);
        const ExampleFolder folder(fisheye);
        const std::string output = folder.OutputOf(
            "two-views", {mountCase.name, folder.Fisheye(), folder.File("panorama.png"),
                          folder.File("view.png"), "4"});
        // The fourth of four frames around has turned by three quarters.
        const LibraryView panorama = SquareView(mountCase.mount, ViewTypeFullPanorama, 270.0F);
        const LibraryView view =
            SquareView(mountCase.mount, ViewTypeVCam, 270.0F, mountCase.tilt, 4.0F);
        const Picture expected = FlattenedByLibrary(fisheye, panorama);
        ExpectSamePixels(ReadPng(folder.File("panorama.png")), expected);
        ExpectSamePixels(ReadPng(folder.File("view.png")), FlattenedByLibrary(fisheye, view));
        EXPECT_NE(output.find("panorama: 4 frames of " + std::to_string(expected.width) + 'x' +
                              std::to_string(expected.height) + " in "),
                  std::string::npos)
            << output;
        EXPECT_NE(output.find("\nvirtual camera: 4 frames of 256x256 in "), std::string::npos)
            << output;
    }
}

TEST(TwoViews, OfOneFrameHaveNotTurned) {
    const Picture fisheye = Slopes(256, 256);
    const ExampleFolder folder(fisheye);
    folder.OutputOf("two-views", {"table", folder.Fisheye(), folder.File("panorama.png"),
                                  folder.File("view.png"), "1"});
    ExpectSamePixels(ReadPng(folder.File("panorama.png")),
                     FlattenedByLibrary(fisheye, SquareView(MountTypeTable, ViewTypeFullPanorama)));
}

TEST(TwoViews, CountFramesInWholeNumbers) {
    const ExampleFolder folder(Slopes(64, 64));
    for (const char* frames : {"0", "-3", "2.5", "1e9", "many", "4x", "nan"}) {
        const ProgramRun run = RunProgram(PathOfExample("two-views"),
                                          {"table", folder.Fisheye(), folder.File("panorama.png"),
                                           folder.File("view.png"), frames});
        ExpectOneSentence("two-views", run, 2, std::string("'") + frames + "' is not a number");
    }
    EXPECT_EQ(folder.Names(), std::set<std::string>{"fisheye.png"});
}

}  // namespace
