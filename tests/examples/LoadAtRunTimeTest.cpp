#include <KivFisheyeLib.h>
#include <Png.h>
#include <gtest/gtest.h>

#include "ExampleFolder.h"
#include "TestPicture.h"

using namespace KivFisheyeLib;

namespace {

TEST(LoadAtRunTime, ConvertsWithALibraryUnderAnotherName) {
    const Picture fisheye = Slopes(256, 256);
    const ExampleFolder folder(fisheye);
    std::filesystem::copy_file(KIVFISHEYE_LIBRARY, folder.File("other.so"));
    const std::string output = folder.OutputOf(
        "load-at-run-time",
        {folder.File("other.so"), "ceiling", folder.Fisheye(), folder.File("panorama.png")});
    EXPECT_EQ(output, "six functions found; this processor has instruction set " +
                          std::to_string(GetCPUInstructionSet()) + "\n");
    ExpectSamePixels(
        ReadPng(folder.File("panorama.png")),
        FlattenedByLibrary(fisheye, SquareView(MountTypeCeiling, ViewTypeFullPanorama)));
}

TEST(LoadAtRunTime, IsNotLinkedWithTheLibrary) {
    const auto hasName = [](const char* program) {
        return ContentOf(PathOfExample(program)).find("libKivFisheye.so.1") != std::string::npos;
    };
    EXPECT_TRUE(hasName("convert-frame"));
    EXPECT_FALSE(hasName("load-at-run-time"));
}

TEST(LoadAtRunTime, TellsWhatIsNoSuchLibrary) {
    const ExampleFolder folder(Slopes(64, 64));
    WriteContent(folder.File("text.so"), "This is no library.\n");
    const auto run = [&](const std::string& library) {
        return RunProgram(PathOfExample("load-at-run-time"),
                          {library, "table", folder.Fisheye(), folder.File("panorama.png")});
    };
    ExpectOneSentence("load-at-run-time", run(folder.File("absent.so")), 1, "absent.so");
    ExpectOneSentence("load-at-run-time", run(folder.File("text.so")), 1, "text.so");
    ExpectOneSentence("load-at-run-time", run("libm.so.6"), 1, "CreateKivFisheyeCameraContext");
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"fisheye.png", "text.so"}));
}

}  // namespace
