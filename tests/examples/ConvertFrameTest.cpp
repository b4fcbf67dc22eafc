#include <Png.h>
#include <gtest/gtest.h>

#include "ExampleFolder.h"
#include "TestPicture.h"

using namespace KivFisheyeLib;

namespace {

struct Case {
    const char* name;
    std::vector<std::string> words;
    LibraryView view;
};

void PrintTo(const Case& viewCase, std::ostream* out) {
    *out << viewCase.name;
}

const std::vector<Case> kCases = {
    {"WallVCam", {"wall", "vcam"}, SquareView(MountTypeWall, ViewTypeVCam, 20.0F, -10.0F, 4.0F)},
    {"WallFull", {"wall", "full"}, SquareView(MountTypeWall, ViewTypeFullPanorama)},
    {"CeilingVCam",
     {"ceiling", "vcam"},
     SquareView(MountTypeCeiling, ViewTypeVCam, 200.0F, 40.0F, 3.5F)},
    {"CeilingFull", {"ceiling", "full"}, SquareView(MountTypeCeiling, ViewTypeFullPanorama, 75.0F)},
    {"CeilingDual",
     {"ceiling", "dual"},
     SquareView(MountTypeCeiling, ViewTypeDualPanorama, 310.0F)},
    {"TableVCam", {"table", "vcam"}, SquareView(MountTypeTable, ViewTypeVCam, 90.0F, -60.0F, 8.0F)},
    {"TableFull", {"table", "full"}, SquareView(MountTypeTable, ViewTypeFullPanorama, 350.0F)},
    {"TableDual", {"table", "dual"}, SquareView(MountTypeTable, ViewTypeDualPanorama, 20.0F)},
};

class ConvertFrame : public testing::TestWithParam<Case> {};

std::vector<std::string> NumbersOf(const LibraryView& view) {
    return {std::to_string(view.pan), std::to_string(view.tilt), std::to_string(view.zoom)};
}

/// What the program makes of a picture.
Picture Converted(const Picture& fisheye, const Case& viewCase,
                  const std::vector<std::string>& numbers) {
    const ExampleFolder folder(fisheye);
    std::vector<std::string> arguments = viewCase.words;
    arguments.push_back(folder.Fisheye());
    arguments.push_back(folder.File("flat.png"));
    arguments.insert(arguments.end(), numbers.begin(), numbers.end());
    EXPECT_EQ(folder.OutputOf("convert-frame", arguments), "");
    return ReadPng(folder.File("flat.png"));
}

TEST_P(ConvertFrame, WritesWhatTheLibraryMakes) {
    const Picture fisheye = Slopes(256, 256);
    ExpectSamePixels(Converted(fisheye, GetParam(), NumbersOf(GetParam().view)),
                     FlattenedByLibrary(fisheye, GetParam().view));
}

TEST_P(ConvertFrame, FitsTheLensToTheShorterSide) {
    LibraryView view = GetParam().view;
    // Widths that 4 does not divide, where rows of other pixels would need padding.
    const Picture wide = Slopes(333, 250);
    view.lens.radiusX = 125.0F / 333.0F;
    ExpectSamePixels(Converted(wide, GetParam(), NumbersOf(view)), FlattenedByLibrary(wide, view));
    const Picture high = Slopes(201, 240);
    view.lens.radiusX = 0.5F;
    view.lens.radiusY = 100.5F / 240.0F;
    ExpectSamePixels(Converted(high, GetParam(), NumbersOf(view)), FlattenedByLibrary(high, view));
}

TEST_P(ConvertFrame, LooksAheadWithoutNumbers) {
    LibraryView view = GetParam().view;
    view.pan = 0.0F;
    view.tilt = 0.0F;
    view.zoom = 1.0F;
    const Picture fisheye = Slopes(256, 256);
    ExpectSamePixels(Converted(fisheye, GetParam(), {}), FlattenedByLibrary(fisheye, view));
}

INSTANTIATE_TEST_SUITE_P(Views, ConvertFrame, testing::ValuesIn(kCases),
                         [](const auto& tested) { return std::string(tested.param.name); });

}  // namespace
