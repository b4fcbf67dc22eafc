#include <gtest/gtest.h>

#include "Picture.h"
#include "PlainPicture.h"
#include "ToolRun.h"

using KivFisheyeTools::Picture;

namespace {

/// A plain picture on a sheet: how many pixels it has there, and where it begins.
struct Found {
    std::uint32_t count = 0;
    std::uint32_t left = 0;
    std::uint32_t top = 0;
};

std::vector<Found> FindPictures(const Picture& sheet, const std::vector<std::uint8_t>& reds) {
    std::vector<Found> found(reds.size());
    for (std::uint32_t row = sheet.height; row-- > 0;) {
        for (std::uint32_t column = sheet.width; column-- > 0;) {
            const std::uint8_t* pixel = sheet.Row(row) + std::size_t{3} * column;
            for (std::size_t i = 0; i < reds.size(); ++i) {
                if (pixel[0] == reds[i] && pixel[1] == 0 && pixel[2] == 0) {
                    found[i] = {found[i].count + 1, column, row};
                }
            }
        }
    }
    return found;
}

}  // namespace

TEST(Sheet, ShowsEveryPictureOverItsCaption) {
    const TemporaryFolder folder;
    const std::vector<std::uint8_t> reds = {60, 120, 180};
    WritePlain(folder, "a.png", 40, 30, reds[0]);
    WritePlain(folder, "b.png", 40, 30, reds[1]);
    WritePlain(folder, "c.png", 40, 30, reds[2]);
    const ToolRun run = RunTool(folder, {"sheet", "a.png", "b.png", "c.png", "--output",
                                         "sheet.png", "--columns", "2", "--width", "400"});
    EXPECT_EQ(run.status, 0) << run.errors;
    const Picture sheet = KivFisheyeTools::ReadPicture(folder.File("sheet.png"), 3);
    EXPECT_EQ(sheet.width, 400U);

    const std::vector<Found> found = FindPictures(sheet, reds);
    for (const Found& picture : found) {
        EXPECT_EQ(picture.count, 40U * 30U);
    }
    EXPECT_EQ(found[0].top, found[1].top);
    EXPECT_LT(found[0].left + 40, found[1].left);
    EXPECT_EQ(found[0].left, found[2].left);
    EXPECT_LT(found[0].top + 30, found[2].top);
}

TEST(Sheet, CaptionsAreInkUnderThePictures) {
    const TemporaryFolder folder;
    WritePlain(folder, "input.png", 300, 50, 200);
    const auto inkOf = [&](const std::string& caption) {
        EXPECT_EQ(RunTool(folder, {"sheet", "input.png", "-o", "sheet.png", "--width", "400",
                                   "--captions", caption})
                      .status,
                  0);
        const Picture sheet = KivFisheyeTools::ReadPicture(folder.File("sheet.png"), 3);
        double brightness = 0.0;
        for (std::uint32_t row = 0; row < sheet.height; ++row) {
            for (std::uint32_t column = 0; column < sheet.width; ++column) {
                brightness += sheet.Row(row)[std::size_t{3} * column];
            }
        }
        return -brightness;
    };
    const double none = inkOf(" ");
    const double one = inkOf("H") - none;
    EXPECT_GT(one, 20.0 * 255.0);
    EXPECT_NEAR(inkOf("HH") - none, 2.0 * one, 0.02 * one);
    EXPECT_LT(inkOf("i") - none, one);
}

TEST(Sheet, MakesLargePicturesFitTheirCells) {
    const TemporaryFolder folder;
    WritePlain(folder, "wide.png", 1000, 200, 200);
    WritePlain(folder, "high.png", 200, 1000, 100);
    const ToolRun run =
        RunTool(folder, {"sheet", "-o", "sheet.png", "wide.png", "high.png", "--width", "300"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(KivFisheyeTools::ReadPicture(folder.File("sheet.png"), 3).width, 300U);
}

TEST(Sheet, HasAsManyColumnsInEachRowAsAskedFor) {
    const TemporaryFolder folder;
    const std::vector<std::uint8_t> reds = {60, 80, 100, 120, 140};
    std::vector<std::string> arguments = {"sheet", "-o",      "sheet.png", "--columns",
                                          "3,1",   "--width", "300"};
    for (const std::uint8_t red : reds) {
        const std::string name = std::to_string(red) + ".png";
        WritePlain(folder, name, 600, 60, red);
        arguments.push_back(name);
    }
    const ToolRun run = RunTool(folder, arguments);
    ASSERT_EQ(run.status, 0) << run.errors;
    const Picture sheet = KivFisheyeTools::ReadPicture(folder.File("sheet.png"), 3);
    const std::vector<Found> found = FindPictures(sheet, reds);
    // Three beside each other leave 4 margins of 24 pixels, one alone leaves 2; a tenth as high.
    for (const std::size_t i : {0U, 1U, 2U}) {
        EXPECT_EQ(found[i].count, 68U * 7U);
        EXPECT_EQ(found[i].left, 24U + i * (68U + 24U));
        EXPECT_EQ(found[i].top, 24U);
    }
    for (const std::size_t i : {3U, 4U}) {
        EXPECT_EQ(found[i].count, 252U * 25U);
        EXPECT_EQ(found[i].left, 24U);
    }
    EXPECT_LT(found[2].top, found[3].top);
    EXPECT_LT(found[3].top, found[4].top);
}

TEST(Sheet, IsASmallerFileOfLessQuality) {
    const TemporaryFolder folder;
    ASSERT_EQ(RunTool(folder, {"scene", "room.png", "--size", "256x256"}).status, 0);
    const auto bytesAt = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments = {"sheet",     "room.png", "-o",
                                              "sheet.jpg", "--width",  "320"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        EXPECT_EQ(RunTool(folder, arguments).status, 0);
        EXPECT_EQ(KivFisheyeTools::ReadPicture(folder.File("sheet.jpg"), 3).width, 320U);
        return std::filesystem::file_size(folder.File("sheet.jpg"));
    };
    EXPECT_EQ(bytesAt({"--quality", "100"}), bytesAt({}));
    EXPECT_LT(bytesAt({"--quality", "85"}), bytesAt({"--quality", "100"}));
    EXPECT_LT(bytesAt({"--quality", "1"}), bytesAt({"--quality", "85"}));
}
