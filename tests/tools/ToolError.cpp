#include "ToolError.h"

#include <ostream>

#include "Picture.h"
#include "support/OneSentence.h"

void PrintTo(const ErrorCase& errorCase, std::ostream* stream) {
    *stream << errorCase.name;
}

void FillFolder(const TemporaryFolder& folder) {
    const KivFisheyeTools::Picture picture(64, 64, 3);
    KivFisheyeTools::WritePicture(folder.File("input.png"), picture);
    KivFisheyeTools::WritePicture(folder.File("cut.jpg"), picture);
    const std::string png = ContentOf(folder.File("input.png"));
    const std::string jpeg = ContentOf(folder.File("cut.jpg"));
    WriteContent(folder.File("cut.png"), png.substr(0, png.size() / 2));
    WriteContent(folder.File("cut.jpg"), jpeg.substr(0, jpeg.size() - 20));
    WriteContent(folder.File("empty.png"), "");
    WriteContent(folder.File("text.png"), "This is no picture.\n");
    WriteContent(folder.File("file"), "This is no folder.\n");
    std::filesystem::create_directory(folder.File("folder.png"));
    std::filesystem::create_symlink("input.png", folder.File("link.png"));
    std::filesystem::create_symlink("input.png", folder.File("link.mp4"));
    std::filesystem::create_symlink("endless.png", folder.File("endless.png"));
}

void ExpectOneSentence(const ToolRun& run, int status, const std::string& words) {
    ExpectOneSentenceOf("kivfisheye", run, status, words);
}

TEST_P(ToolError, IsOneSentenceAndLeavesNothing) {
    const TemporaryFolder folder;
    FillFolder(folder);
    const std::set<std::string> before = folder.Names();
    const std::string input = ContentOf(folder.File("input.png"));
    const ToolRun run = RunTool(folder, GetParam().arguments);
    ExpectOneSentence(run, GetParam().status, GetParam().words);
    EXPECT_EQ(folder.Names(), before);
    EXPECT_EQ(ContentOf(folder.File("input.png")), input);
    EXPECT_TRUE(std::filesystem::is_empty(folder.File("folder.png")));
}
