#include <Png.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "TestPicture.h"
#include "tools/TemporaryFolder.h"

namespace {

// A picture of 3 by 1 pixels without opacity, byte by byte: red, green, and 10, 20, 30.
constexpr unsigned char kPng[] = {
    0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A, 0x00, 0x00, 0x00, 0x0D, 0x49, 0x48, 0x44,
    0x52, 0x00, 0x00, 0x00, 0x03, 0x00, 0x00, 0x00, 0x01, 0x08, 0x02, 0x00, 0x00, 0x00, 0x94,
    0x82, 0x83, 0xE3, 0x00, 0x00, 0x00, 0x12, 0x49, 0x44, 0x41, 0x54, 0x78, 0x9C, 0x63, 0xF8,
    0xCF, 0xC0, 0xC0, 0xF0, 0x9F, 0x81, 0x4B, 0x44, 0x0E, 0x00, 0x0E, 0x60, 0x02, 0x3B, 0x78,
    0x52, 0xBE, 0x01, 0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4E, 0x44, 0xAE, 0x42, 0x60, 0x82};

TEST(Png, IsReadWithFullOpacityWhereItHasNone) {
    const TemporaryFolder folder;
    WriteContent(folder.File("three.png"), {reinterpret_cast<const char*>(kPng), sizeof kPng});
    const Picture picture = ReadPng(folder.File("three.png"));
    ASSERT_EQ(picture.width, 3U);
    ASSERT_EQ(picture.height, 1U);
    EXPECT_EQ(picture.pixels,
              (std::vector<unsigned char>{255, 0, 0, 255, 0, 255, 0, 255, 10, 20, 30, 255}));
}

TEST(Png, ComesBackAsItWasWritten) {
    const TemporaryFolder folder;
    Picture picture = Slopes(37, 5);
    // Zero bytes are what the library writes where it shows nothing.
    std::fill_n(picture.At(4, 2), 12, static_cast<unsigned char>(0));
    WritePng(folder.File("picture.png"), picture);
    ExpectSamePixels(ReadPng(folder.File("picture.png")), picture);
}

TEST(Png, ReplacesALongerFile) {
    const TemporaryFolder folder;
    WriteContent(folder.File("picture.png"), std::string(100000, 'x'));
    WritePng(folder.File("picture.png"), Slopes(8, 8));
    ExpectSamePixels(ReadPng(folder.File("picture.png")), Slopes(8, 8));
    EXPECT_LT(std::filesystem::file_size(folder.File("picture.png")), 1000U);
}

}  // namespace
