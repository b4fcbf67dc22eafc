#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <numeric>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "KivFisheyeLibTest.h"
#include "support/FailingAllocations.h"

#ifdef KIVFISHEYE_LIB_TEST
#include "support/ProgramRun.h"
#endif

using namespace KivFisheyeLib;

namespace {

constexpr PixelFormat kUnknownFormat = static_cast<PixelFormat>(4);

TEST(CalculateStride, Of32BitsIsFourBytesForEachPixel) {
    EXPECT_EQ(CalculateStride(1000, PixelFormatRGB32), 4000U);
    EXPECT_EQ(CalculateStride(1001, PixelFormatRGB32), 4004U);
    EXPECT_EQ(CalculateStride(1, PixelFormatBottomUpRGB32), 4U);
}

TEST(CalculateStride, Of24BitsIsThreeBytesForEachPixelRoundedUpToFour) {
    EXPECT_EQ(CalculateStride(1024, PixelFormatRGB24), 3072U);
    EXPECT_EQ(CalculateStride(1, PixelFormatRGB24), 4U);
    EXPECT_EQ(CalculateStride(2, PixelFormatRGB24), 8U);
    EXPECT_EQ(CalculateStride(3, PixelFormatRGB24), 12U);
    EXPECT_EQ(CalculateStride(4, PixelFormatRGB24), 12U);
    EXPECT_EQ(CalculateStride(1001, PixelFormatRGB24), 3004U);
    EXPECT_EQ(CalculateStride(1001, PixelFormatBottomUpRGB24), 3004U);
}

TEST(CalculateStride, OfNoPixelsIsZero) {
    EXPECT_EQ(CalculateStride(0, PixelFormatRGB24), 0U);
    EXPECT_EQ(CalculateStride(0, PixelFormatRGB32), 0U);
}

TEST(CalculateStride, OfANumberBeyondTheFormatsIsFourBytesForEachPixel) {
    EXPECT_EQ(CalculateStride(1001, kUnknownFormat), 4004U);
}

TEST(CalculateStride, WrapsIn32Bits) {
    EXPECT_EQ(CalculateStride(0x40000001, PixelFormatRGB32), 4U);
    EXPECT_EQ(CalculateStride(0x55555556, PixelFormatRGB24), 4U);
}

TEST(GetCPUInstructionSetName, NamesEveryLevel) {
    EXPECT_STREQ(GetCPUInstructionSetName(0), "386");
    EXPECT_STREQ(GetCPUInstructionSetName(1), "SSE");
    EXPECT_STREQ(GetCPUInstructionSetName(2), "SSE2");
    EXPECT_STREQ(GetCPUInstructionSetName(3), "SSE3");
    EXPECT_STREQ(GetCPUInstructionSetName(4), "SSSE3");
    EXPECT_STREQ(GetCPUInstructionSetName(5), "SSE4.1");
    EXPECT_STREQ(GetCPUInstructionSetName(6), "SSE4.2");
    EXPECT_STREQ(GetCPUInstructionSetName(7), "AVX");
    EXPECT_STREQ(GetCPUInstructionSetName(8), "AVX2");
}

/// What the program prints, with what varies taken out: the processor's name, and the times. What
/// does not look like one stays in the text.
struct PrintedText {
    std::string text;
    std::vector<double> milliseconds;
};

bool IsProcessor(const std::string& name) {
    static const std::set<std::string> names = {"386",    "SSE",    "SSE2", "SSE3", "SSSE3",
                                                "SSE4.1", "SSE4.2", "AVX",  "AVX2"};
    return names.count(name) == 1;
}

bool IsTime(const std::string& number) {
    char* end = nullptr;
    std::strtod(number.c_str(), &end);
    return number.find_first_not_of("0123456789.e-") == std::string::npos && number[0] != '-' &&
           end != number.c_str() && *end == '\0';
}

/// What stands between both ends of the line; empty where the ends are others.
std::string Between(const std::string& line, const std::string& start, const std::string& end) {
    const std::size_t ends = start.size() + end.size();
    const bool matches = line.size() > ends && line.compare(0, start.size(), start) == 0 &&
                         line.compare(line.size() - end.size(), end.size(), end) == 0;
    return matches ? line.substr(start.size(), line.size() - ends) : "";
}

PrintedText WithoutWhatVaries(const std::string& output) {
    const std::string beforeName = "Your CPU supports ";
    const std::string beforeTime = "process 30 times. Each processing takes ";
    const std::string afterTime = " ms.";
    PrintedText printed;
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
        const std::string time = Between(line, beforeTime, afterTime);
        if (IsProcessor(Between(line, beforeName, ""))) {
            line = beforeName + "<processor>";
        } else if (IsTime(time)) {
            line = beforeTime + "<time>" + afterTime;
            printed.milliseconds.push_back(std::stod(time));
        }
        printed.text += line;
        printed.text += lines.eof() ? "" : "\n";
    }
    return printed;
}

std::string SizesAndTime(const std::string& input, const std::string& output) {
    return "               input video size: " + input + "\n" +
           "  Recommended output video size: " + output + "\n" +
           "process 30 times. Each processing takes <time> ms.\n";
}

/// What the code under test prints while this object lives.
class CapturedOutput {
public:
    CapturedOutput() : m_before(std::cout.rdbuf(m_text.rdbuf())) {}
    ~CapturedOutput() { std::cout.rdbuf(m_before); }
    CapturedOutput(const CapturedOutput&) = delete;
    CapturedOutput& operator=(const CapturedOutput&) = delete;

    std::string Text() const { return m_text.str(); }

private:
    std::ostringstream m_text;
    std::streambuf* m_before;
};

std::string PrintedByTest(unsigned int width, unsigned int height, PixelFormat format,
                          MountType mount, ViewType view) {
    const CapturedOutput output;
    Test(width, height, format, mount, view);
    return WithoutWhatVaries(output.Text()).text;
}

// The recommended size shows that the input was accepted: it is 0x0 after a refusal.
TEST(TimedRun, PrintsItsInputSizeAndTheSizeThatSuitsThePanorama) {
    // As wide as four radii, 100 rounded up to 104, and as high as one.
    EXPECT_EQ(PrintedByTest(50, 30, PixelFormatRGB24, MountTypeCeiling, ViewTypeFullPanorama),
              SizesAndTime("50x30", "104x25"));
    EXPECT_EQ(PrintedByTest(51, 20, PixelFormatRGB32, MountTypeTable, ViewTypeFullPanorama),
              SizesAndTime("51x20", "104x25"));
}

TEST(TimedRun, PrintsTheLensSizeRoundedUpToEightForAVirtualCamera) {
    EXPECT_EQ(PrintedByTest(50, 30, PixelFormatRGB24, MountTypeTable, ViewTypeVCam),
              SizesAndTime("50x30", "56x32"));
    EXPECT_EQ(PrintedByTest(41, 40, PixelFormatRGB32, MountTypeWall, ViewTypeVCam),
              SizesAndTime("41x40", "48x40"));
}

TEST(TimedRun, GoesOnWhereNothingCouldBeSetUp) {
    EXPECT_EQ(PrintedByTest(0, 0, PixelFormatRGB32, MountTypeWall, ViewTypeVCam),
              SizesAndTime("0x0", "0x0"));
    EXPECT_EQ(PrintedByTest(64, 64, PixelFormatBottomUpRGB24, MountTypeTable, ViewTypeVCam),
              SizesAndTime("64x64", "0x0"));
}

TEST(TimedRun, GivesItsMemoryBack) {
    for (const ViewType view : {ViewTypeVCam, ViewTypeFullPanorama}) {
        // The first run leaves behind what is made once.
        const std::string text = PrintedByTest(64, 64, PixelFormatRGB32, MountTypeCeiling, view);
        const AllocationWatch watch;
        EXPECT_EQ(PrintedByTest(64, 64, PixelFormatRGB32, MountTypeCeiling, view), text);
        EXPECT_GT(watch.Requests(), 0);
        EXPECT_EQ(watch.BlocksTaken(), 0);
    }
}

#ifdef KIVFISHEYE_LIB_TEST

std::string ProgramRunOf(const std::string& title, const std::string& output) {
    return title + "\n" + SizesAndTime("1024x1024", output) + "\n";
}

// The lens is a circle of radius 512 that touches the frame's edges. Both sides of a virtual camera
// are its diameter. A wall's panorama is as wide as that and as high as its product with the sine
// of 45 degrees, 724.08; a ceiling's is four radii wide and one high, or folded, two and two.
std::string ExpectedText() {
    const std::string rule = std::string(57, '=') + "\n\n";
    return rule + "This is libKivFisheye Test program.\n\n" + "Your CPU supports <processor>\n\n" +
           rule + ProgramRunOf("Test RGB32 Wall + VCam: ", "1024x1024") +
           ProgramRunOf("Test RGB32 Ceiling + VCam: ", "1024x1024") +
           ProgramRunOf("Test RGB32 Table + VCam: ", "1024x1024") +
           ProgramRunOf("Test RGB32 Wall + Full Panorama: ", "1024x724") +
           ProgramRunOf("Test RGB32 Ceiling + Full Panorama: ", "2048x512") +
           ProgramRunOf("Test RGB32 Table + Full Panorama: ", "2048x512") +
           ProgramRunOf("Test RGB32 Ceiling + Dual Panorama: ", "1024x1024") +
           ProgramRunOf("Test RGB32 Table + Dual Panorama: ", "1024x1024") + rule +
           ProgramRunOf("Test RGB24 Wall + VCam: ", "1024x1024") +
           ProgramRunOf("Test RGB24 Ceiling + VCam: ", "1024x1024") +
           ProgramRunOf("Test RGB24 Table + VCam: ", "1024x1024") +
           ProgramRunOf("Test RGB24 Wall + Full Panorama: ", "1024x724") +
           ProgramRunOf("Test RGB24 Ceiling + Full Panorama: ", "2048x512") +
           ProgramRunOf("Test RGB24 Table + Full Panorama: ", "2048x512") +
           ProgramRunOf("Test RGB24 Ceiling + Dual Panorama: ", "1024x1024") +
           ProgramRunOf("Test RGB24 Table + Dual Panorama: ", "1024x1024") + "\n";
}

void ExpectEveryRunConverts(const std::vector<double>& milliseconds) {
    // Calls of `Process` that are refused take less than a microsecond each; a megapixel takes more
    // than ten on any processor.
    constexpr double kRefused = 0.01;
    ASSERT_EQ(milliseconds.size(), 16U);
    for (std::size_t i = 0; i < milliseconds.size(); ++i) {
        EXPECT_GT(milliseconds[i], kRefused) << "run " << i + 1;
    }
}

void ExpectMillisecondsForEachConversion(const std::vector<double>& milliseconds,
                                         double processorSeconds) {
    const double sum = std::accumulate(milliseconds.begin(), milliseconds.end(), 0.0);
    const double conversions = 30.0 * sum / 1000.0;
    // What is left is start-up, tables, and memory touched for the first time.
    EXPECT_LT(conversions, processorSeconds);
    EXPECT_GT(conversions, processorSeconds / 5.0);
}

// A run takes half a minute under a sanitizer, so one shows everything.
TEST(TimingProgram, PrintsSixteenRunsWithTheirTimesWhateverItsArguments) {
    const ProgramRun run = RunProgram(KIVFISHEYE_LIB_TEST, {"--help", "-x", "", "no such file"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.errors, "");
    const PrintedText printed = WithoutWhatVaries(run.output);
    EXPECT_EQ(printed.text, ExpectedText());
    ExpectEveryRunConverts(printed.milliseconds);
    ExpectMillisecondsForEachConversion(printed.milliseconds, run.processorSeconds);
}

#endif

}  // namespace
