#include <gtest/gtest.h>

#include <sstream>

#include "GoodRun.h"
#include "Picture.h"
#include "ToolRun.h"

using KivFisheyeTools::Picture;

namespace {

struct SnapshotCase {
    const char* mount;
    const char* view;
    std::vector<std::string> options;
};

const std::vector<SnapshotCase> kCases = {
    {"wall", "vcam", {"--pan", "20", "--tilt", "-10", "--zoom", "4"}},
    {"ceiling", "vcam", {"--aim", "0.6,0.55", "--fov", "50"}},
    {"table", "vcam", {}},
    {"wall", "full", {"--wall-view-angle", "30"}},
    {"ceiling", "full", {"--pan", "77", "--inner-radius", "0.3"}},
    {"table", "full", {"--pan", "200", "--format", "rgb24"}},
    {"ceiling", "dual", {"--pan", "30"}},
    {"table", "dual", {"--pan", "250", "--inner-radius", "0.2", "--format", "rgb24"}},
};

/// Writes a picture whose pixels differ from their neighbours.
void WriteInput(const TemporaryFolder& folder, std::uint32_t width, std::uint32_t height) {
    Picture picture(width, height, 3);
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t byte = 0; byte < 3 * width; ++byte) {
            picture.Row(row)[byte] = static_cast<std::uint8_t>(1 + (byte * 7 + row * 13) % 250);
        }
    }
    KivFisheyeTools::WritePicture(folder.File("input.png"), picture);
}

/// The size that `info` recommends.
std::string Recommended(const TemporaryFolder& folder, const SnapshotCase& snapshot,
                        const std::vector<std::string>& lens) {
    std::istringstream lines(OutputOfGoodRun(folder, Joined({"info", "input.png"}, lens)));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string mount;
        std::string view;
        std::string size;
        if (words >> mount >> view >> size && mount == snapshot.mount && view == snapshot.view) {
            return size;
        }
    }
    return "";
}

/// The options of the lens among those of a case.
std::vector<std::string> LensOf(const SnapshotCase& snapshot) {
    std::vector<std::string> lens;
    for (std::size_t i = 0; i + 1 < snapshot.options.size(); i += 2) {
        const std::string& option = snapshot.options[i];
        if (option == "--inner-radius" || option == "--wall-view-angle") {
            lens = {option, snapshot.options[i + 1]};
        }
    }
    return lens;
}

}  // namespace

TEST(Snapshot, IsWhatDewarpMakesInTheRecommendedSize) {
    const TemporaryFolder folder;
    for (const auto& [width, height] : {std::pair(200U, 200U), std::pair(203U, 151U)}) {
        WriteInput(folder, width, height);
        for (const SnapshotCase& snapshot : kCases) {
            const std::vector<std::string> options =
                Joined({"--mount", snapshot.mount, "--view", snapshot.view}, snapshot.options);
            const std::string size = Recommended(folder, snapshot, LensOf(snapshot));
            OutputOfGoodRun(folder, Joined({"snapshot", "input.png", "still.png"}, options));
            OutputOfGoodRun(folder,
                            Joined({"dewarp", "input.png", "flat.png", "--size", size}, options));
            const std::string still = ContentOf(folder.File("still.png"));
            EXPECT_FALSE(still.empty());
            EXPECT_EQ(still, ContentOf(folder.File("flat.png")))
                << snapshot.mount << ' ' << snapshot.view << ' ' << size;
            const Picture picture = KivFisheyeTools::ReadPicture(folder.File("still.png"), 3);
            EXPECT_EQ(size, std::to_string(picture.width) + "x" + std::to_string(picture.height));
        }
    }
}

TEST(Snapshot, KeepsTheOddHeightOfADualPanorama) {
    const TemporaryFolder folder;
    WriteInput(folder, 203, 151);
    OutputOfGoodRun(folder,
                    {"snapshot", "input.png", "still.png", "--mount", "table", "--view", "dual"});
    const Picture still = KivFisheyeTools::ReadPicture(folder.File("still.png"), 3);
    ASSERT_EQ(still.height % 2, 1U) << "the recommended height is no longer odd";
    for (std::uint32_t byte = 0; byte < 3 * still.width; ++byte) {
        EXPECT_EQ(still.Row(still.height - 1)[byte], 0) << byte;
    }
}

TEST(Snapshot, MayBeAJpeg) {
    const TemporaryFolder folder;
    WriteInput(folder, 64, 64);
    OutputOfGoodRun(folder,
                    {"snapshot", "input.png", "still.jpg", "--mount", "wall", "--view", "vcam"});
    EXPECT_EQ(KivFisheyeTools::ReadPicture(folder.File("still.jpg"), 3).width, 64U);
}

TEST(Snapshot, TellsWhatTheLibraryDidNotTake) {
    const TemporaryFolder folder;
    WriteInput(folder, 64, 64);
    const ToolRun run = RunTool(folder, {"snapshot", "input.png", "still.png", "--mount", "wall",
                                         "--view", "full", "--pan", "9"});
    EXPECT_EQ(run.status, 0);
    EXPECT_NE(run.errors.find("the panorama of a wall camera does not turn"), std::string::npos);
}
