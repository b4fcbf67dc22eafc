#include "Picture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <random>
#include <tuple>

#include "Failure.h"
#include "TemporaryFolder.h"

using namespace KivFisheyeTools;

namespace {

Picture NoisePicture(std::uint32_t width, std::uint32_t height, std::uint32_t bytesPerPixel) {
    Picture picture(width, height, bytesPerPixel);
    std::mt19937 random(width * 31U + height);
    for (std::uint8_t& byte : picture.pixels) {
        byte = static_cast<std::uint8_t>(random());
    }
    return picture;
}

Picture WavePicture(std::uint32_t width, std::uint32_t height) {
    Picture picture(width, height, 3);
    for (std::uint32_t row = 0; row < height; ++row) {
        for (std::uint32_t column = 0; column < width; ++column) {
            std::uint8_t* pixel = picture.Row(row) + std::size_t{3} * column;
            pixel[0] =
                static_cast<std::uint8_t>(std::lround(128.0 + 90.0 * std::sin(column / 9.0)));
            pixel[1] = static_cast<std::uint8_t>(std::lround(128.0 + 90.0 * std::cos(row / 7.0)));
            pixel[2] = static_cast<std::uint8_t>(40U + (column + row) % 128U);
        }
    }
    return picture;
}

/// The largest difference between the colours of two pictures of one size.
int LargestDifference(const Picture& a, const Picture& b) {
    int largest = 0;
    for (std::uint32_t row = 0; row < a.height; ++row) {
        for (std::uint32_t column = 0; column < a.width; ++column) {
            for (std::uint32_t channel = 0; channel < 3; ++channel) {
                const int difference = a.Row(row)[std::size_t{a.bytesPerPixel} * column + channel] -
                                       b.Row(row)[std::size_t{b.bytesPerPixel} * column + channel];
                largest = std::max(largest, std::abs(difference));
            }
        }
    }
    return largest;
}

std::string MessageOfReading(const std::string& path) {
    try {
        ReadPicture(path, 3);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}

}  // namespace

TEST(Picture, RowsTakeWholeGroupsOfFourBytes) {
    EXPECT_EQ(Picture(1, 1, 3).stride, 4U);
    EXPECT_EQ(Picture(4, 1, 3).stride, 12U);
    EXPECT_EQ(Picture(5, 1, 3).stride, 16U);
    EXPECT_EQ(Picture(5, 1, 4).stride, 20U);
    EXPECT_EQ(Picture(5, 7, 3).pixels.size(), 16U * 7U);
}

TEST(Picture, RefusesSizesWithoutPixelsOrBeyondReason) {
    EXPECT_THROW(Picture(0, 5, 3), Failure);
    EXPECT_THROW(Picture(5, 0, 3), Failure);
    EXPECT_THROW(Picture(kMaximumSide + 1, 1, 3), Failure);
    EXPECT_THROW(Picture(kMaximumSide, kMaximumSide, 4), Failure);
}

class RoundTrip
    : public testing::TestWithParam<std::tuple<std::uint32_t, std::uint32_t, std::uint32_t>> {};

TEST_P(RoundTrip, PngKeepsEveryPixel) {
    const auto [width, height, bytesPerPixel] = GetParam();
    const TemporaryFolder folder;
    const Picture written = NoisePicture(width, height, bytesPerPixel);
    WritePicture(folder.File("picture.png"), written);
    for (const std::uint32_t bytesRead : {3U, 4U}) {
        const Picture read = ReadPicture(folder.File("picture.png"), bytesRead);
        ASSERT_EQ(read.width, width);
        ASSERT_EQ(read.height, height);
        EXPECT_EQ(read.bytesPerPixel, bytesRead);
        EXPECT_EQ(LargestDifference(written, read), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Sizes, RoundTrip,
                         testing::Combine(testing::Values(1, 2, 7, 64, 133),
                                          testing::Values(1, 3, 50), testing::Values(3, 4)));

TEST(PictureFile, JpegStaysClose) {
    const TemporaryFolder folder;
    const Picture written = WavePicture(133, 71);
    for (const char* name : {"a.jpg", "b.jpeg", "c.JPG", "d.Jpeg"}) {
        WritePicture(folder.File(name), written);
        EXPECT_EQ(ContentOf(folder.File(name)).substr(0, 3), "\xFF\xD8\xFF") << name;
        const Picture read = ReadPicture(folder.File(name), 4);
        ASSERT_EQ(read.width, written.width);
        ASSERT_EQ(read.height, written.height);
        // The third channel's sawtooth is the hardest: it falls by 128 from one pixel to the next.
        EXPECT_LE(LargestDifference(written, read), 40) << name;
    }
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"a.jpg", "b.jpeg", "c.JPG", "d.Jpeg"}));
}

TEST(PictureFile, EndingDecidesTheKind) {
    const TemporaryFolder folder;
    const Picture picture = NoisePicture(8, 8, 3);
    WritePicture(folder.File("a.PNG"), picture);
    EXPECT_EQ(ContentOf(folder.File("a.PNG")).substr(0, 4), "\x89PNG");
    for (const char* name : {"a.gif", "png", "a.png.bmp", "jpg", "", ".png", ".JPEG"}) {
        EXPECT_THROW(WritePicture(folder.File(name), picture), UsageError) << name;
    }
    EXPECT_EQ(folder.Names(), std::set<std::string>{"a.PNG"});
}

TEST(PictureFile, WritingReplacesAnOlderFile) {
    const TemporaryFolder folder;
    WriteContent(folder.File("a.png"), "something else");
    const Picture picture = NoisePicture(9, 5, 3);
    WritePicture(folder.File("a.png"), picture);
    EXPECT_EQ(LargestDifference(picture, ReadPicture(folder.File("a.png"), 3)), 0);
    EXPECT_EQ(folder.Names(), std::set<std::string>{"a.png"});
}

TEST(PictureFile, WritingFollowsLinks) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.File("links"));
    std::filesystem::create_symlink("../target.png", folder.File("links/near.png"));
    std::filesystem::create_symlink(folder.File("links/near.png"), folder.File("far.png"));
    // The second time the target is there already.
    for (const std::uint32_t side : {9U, 5U}) {
        const Picture picture = NoisePicture(side, side, 3);
        WritePicture(folder.File("far.png"), picture);
        EXPECT_EQ(LargestDifference(picture, ReadPicture(folder.File("target.png"), 3)), 0);
        EXPECT_TRUE(std::filesystem::is_symlink(folder.File("far.png")));
        EXPECT_TRUE(std::filesystem::is_symlink(folder.File("links/near.png")));
        EXPECT_FALSE(std::filesystem::is_symlink(folder.File("target.png")));
    }
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"far.png", "links", "target.png"}));
}

TEST(PictureFile, WritingIntoNoDirectoryFails) {
    const TemporaryFolder folder;
    const Picture picture = NoisePicture(8, 8, 3);
    WriteContent(folder.File("file"), "");
    std::filesystem::create_directory(folder.File("directory.png"));
    EXPECT_THROW(WritePicture(folder.File("missing/a.png"), picture), Failure);
    EXPECT_THROW(WritePicture(folder.File("file/a.png"), picture), Failure);
    EXPECT_THROW(WritePicture(folder.File("directory.png"), picture), Failure);
    EXPECT_EQ(folder.Names(), (std::set<std::string>{"directory.png", "file"}));
}

TEST(PictureFile, ReadingSaysWhatIsWrong) {
    const TemporaryFolder folder;
    WriteContent(folder.File("empty.png"), "");
    WriteContent(folder.File("text.png"), std::string(3000, 'x'));
    EXPECT_NE(MessageOfReading(folder.File("missing.png")).find("No such file"), std::string::npos);
    EXPECT_NE(MessageOfReading(folder.Path().string()).find("is a directory"), std::string::npos);
    EXPECT_EQ(MessageOfReading(folder.File("empty.png")),
              folder.File("empty.png") + " is not a picture or video");
    EXPECT_EQ(MessageOfReading(folder.File("text.png")),
              folder.File("text.png") + " is not a picture or video");
}

TEST(PictureFile, NamesAreNeverPatternsOrAddresses) {
    const TemporaryFolder folder;
    const Picture picture = NoisePicture(8, 8, 3);
    for (const char* name : {"a%d.png", "b*[x].png", "http:c.png", "-.png"}) {
        WritePicture(folder.File(name), picture);
        EXPECT_EQ(LargestDifference(picture, ReadPicture(folder.File(name), 3)), 0) << name;
    }
}

class CutOff : public testing::TestWithParam<const char*> {};

TEST_P(CutOff, IsRefusedWhereverItEnds) {
    const TemporaryFolder folder;
    const std::string whole = folder.File(std::string("whole") + GetParam());
    const std::string cut = folder.File(std::string("cut") + GetParam());
    WritePicture(whole, WavePicture(160, 120));
    const std::string content = ContentOf(whole);
    // A PNG file's last 12 bytes only say that it ends there.
    constexpr std::size_t kEndMarker = 13;
    for (std::size_t length = 0; length + kEndMarker < content.size();
         length += content.size() / 23) {
        WriteContent(cut, content.substr(0, length));
        EXPECT_NE(MessageOfReading(cut), "") << length << " of " << content.size();
    }
    WriteContent(cut, content.substr(0, content.size() - kEndMarker));
    EXPECT_NE(MessageOfReading(cut), "");
    EXPECT_EQ(MessageOfReading(whole), "");
}

INSTANTIATE_TEST_SUITE_P(Kinds, CutOff, testing::Values(".png", ".jpg"));

TEST(PictureFile, JpegWithoutItsEndIsRefused) {
    const TemporaryFolder folder;
    WritePicture(folder.File("a.jpg"), WavePicture(160, 120));
    const std::string content = ContentOf(folder.File("a.jpg"));
    WriteContent(folder.File("cut.jpg"), content.substr(0, content.size() - 1));
    WriteContent(folder.File("more.jpg"), content + "\xFF\xDA and more");
    EXPECT_NE(MessageOfReading(folder.File("cut.jpg")), "");
    EXPECT_EQ(MessageOfReading(folder.File("more.jpg")), "");
}

TEST(PictureFile, DamagedPngIsRefused) {
    const TemporaryFolder folder;
    WritePicture(folder.File("a.png"), WavePicture(160, 120));
    std::string content = ContentOf(folder.File("a.png"));
    content[content.size() / 2] = static_cast<char>(content[content.size() / 2] ^ 0x55);
    WriteContent(folder.File("damaged.png"), content);
    EXPECT_NE(MessageOfReading(folder.File("damaged.png")), "");
}

TEST(PictureFile, HeaderWithAnAbsurdSizeIsRefused) {
    const TemporaryFolder folder;
    // A bitmap's header for a square of one colour; only the small one has its pixels behind it.
    const std::string start("BM\x36\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0", 18);
    const std::string end("\x01\0\x18\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 28);
    const std::string small("\x10\0\0\0\x10\0\0\0", 8);
    const std::string huge("\x60\xEA\0\0\x60\xEA\0\0", 8);
    const std::string pixels(768, 'x');
    WriteContent(folder.File("small.bmp"), start + small + end + pixels);
    WriteContent(folder.File("huge.bmp"), start + huge + end + pixels);
    EXPECT_EQ(MessageOfReading(folder.File("small.bmp")), "");
    EXPECT_NE(MessageOfReading(folder.File("huge.bmp")), "");
}

TEST(Picture, ResizingKeepsAnEvenColor) {
    Picture picture(64, 48, 3);
    for (std::size_t i = 0; i < picture.pixels.size(); ++i) {
        picture.pixels[i] = static_cast<std::uint8_t>(50U * (i % 3U + 1U));
    }
    const Picture smaller = Resized(picture, 20, 10);
    ASSERT_EQ(smaller.width, 20U);
    ASSERT_EQ(smaller.height, 10U);
    Picture expected(20, 10, 3);
    for (std::size_t i = 0; i < expected.pixels.size(); ++i) {
        expected.pixels[i] = static_cast<std::uint8_t>(50U * (i % 3U + 1U));
    }
    EXPECT_LE(LargestDifference(smaller, expected), 1);
}
