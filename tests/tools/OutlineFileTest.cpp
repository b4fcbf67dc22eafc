#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "GoodRun.h"
#include "JsonReader.h"
#include "LibraryOutlines.h"
#include "PlainPicture.h"

using namespace KivFisheyeLib;

namespace {

/// A folder with a plain picture that is wider than high, and the outlines written of it.
class OutlineFile : public testing::Test {
protected:
    static constexpr std::uint32_t kWidth = 640;
    static constexpr std::uint32_t kHeight = 480;

    OutlineFile() { WritePlain(m_folder, "input.png", kWidth, kHeight, 90); }

    std::string Written(const std::string& name, const std::vector<std::string>& options) const {
        EXPECT_EQ(OutputOfGoodRun(m_folder, Joined({"outline", "input.png", name}, options)), "");
        return ContentOf(m_folder.File(name));
    }

    Json WrittenJson(const std::vector<std::string>& options) const {
        return ReadJson(Written("outlines.json", options));
    }

private:
    TemporaryFolder m_folder;
};

std::vector<std::string> NamesOf(const Json& file) {
    std::vector<std::string> names;
    for (const Json& outline : file["outlines"].list) {
        names.push_back(outline["name"].text);
    }
    return names;
}

std::set<std::string> MembersOf(const Json& object) {
    std::set<std::string> names;
    for (const auto& [name, value] : object.members) {
        names.insert(name);
    }
    return names;
}

Points PointsOf(const Json& file, std::size_t index) {
    return file["outlines"].list.at(index)["points"].Pairs();
}

using Names = std::vector<std::string>;

/// What stands between two marks, from `place` on; moves `place` behind it.
std::string Between(const std::string& text, const std::string& before, const std::string& after,
                    std::size_t* place) {
    const std::size_t start = text.find(before, *place);
    if (start == std::string::npos) {
        return "";
    }
    const std::size_t end = text.find(after, start + before.size());
    *place = end;
    return text.substr(start + before.size(), end - start - before.size());
}

Points PolygonNamed(const std::string& name, const std::string& svg) {
    std::size_t place = 0;
    std::istringstream numbers(
        Between(svg, "<polygon id=\"" + name + "\" points=\"", "\"/>", &place));
    Points points;
    float x = 0.0F;
    float y = 0.0F;
    char comma = '\0';
    while (numbers >> x >> comma >> y) {
        EXPECT_EQ(comma, ',');
        points.emplace_back(x, y);
    }
    EXPECT_TRUE(numbers.eof());
    return points;
}

void ExpectNear(const Points& points, const Points& expected, double tolerance) {
    ASSERT_EQ(points.size(), expected.size());
    for (std::size_t i = 0; i < points.size(); ++i) {
        EXPECT_NEAR(points[i].first, expected[i].first, tolerance) << i;
        EXPECT_NEAR(points[i].second, expected[i].second, tolerance) << i;
    }
}

}  // namespace

TEST_F(OutlineFile, HoldsTheLibrarysPointsOfAVirtualCamera) {
    const std::vector<LibraryView> views = {{MountTypeWall, ViewTypeVCam, 20.0F, -10.0F, 4.0F},
                                            {MountTypeCeiling, ViewTypeVCam, 45.0F, 30.0F, 5.0F},
                                            {MountTypeTable, ViewTypeVCam, 200.0F, -40.0F, 3.0F}};
    const Names mounts = {"wall", "ceiling", "table"};
    for (const LibraryView& view : views) {
        const Json file =
            WrittenJson({"--mount", mounts.at(view.mount), "--view", "vcam", "--pan",
                         std::to_string(view.pan), "--tilt", std::to_string(view.tilt), "--zoom",
                         std::to_string(view.zoom), "--size", "320x200", "--points", "64"});
        EXPECT_EQ(NamesOf(file), (Names{"lens", "view"}));
        const LibraryOutlines library(view);
        EXPECT_EQ(PointsOf(file, 0), library.OfRing(64).second);
        EXPECT_EQ(PointsOf(file, 1), Finite(library.OfVirtualCamera(320, 200, 64)));
        EXPECT_EQ(file["pan"].number, view.pan);
        EXPECT_EQ(file["tilt"].number, view.tilt);
        EXPECT_EQ(file["zoom"].number, view.zoom);
    }
}

TEST_F(OutlineFile, HasTheShapeOfTheRecommendedSizeByDefault) {
    const Json file = WrittenJson({"--mount", "ceiling", "--view", "vcam", "--zoom", "5",
                                   "--radius-x", "0.3", "--points", "16"});
    // The lens's image is 384 pixels wide and 480 high.
    const LibraryOutlines library(
        {MountTypeCeiling, ViewTypeVCam, 0.0F, 0.0F, 5.0F, {0.3F, 0.5F, 45.0F, 0.0F}});
    EXPECT_EQ(PointsOf(file, 1), library.OfVirtualCamera(384, 480, 16));
}

TEST_F(OutlineFile, HoldsTheHalvesOfADualPanorama) {
    const DewarpParams lens{0.375F, 0.5F, 45.0F, 0.25F};
    for (const auto& [name, mount] :
         {std::pair("ceiling", MountTypeCeiling), std::pair("table", MountTypeTable)}) {
        const Json file =
            WrittenJson({"--mount", name, "--view", "dual", "--pan", "30", "--radius-x", "0.375",
                         "--inner-radius", "0.25", "--points", "24"});
        EXPECT_EQ(NamesOf(file), (Names{"upper", "lower"}));
        const auto [upper, lower] =
            LibraryOutlines({mount, ViewTypeDualPanorama, 30.0F, 0.0F, 1.0F, lens}).OfDual(24);
        EXPECT_EQ(PointsOf(file, 0), upper);
        EXPECT_EQ(PointsOf(file, 1), lower);
    }
}

TEST_F(OutlineFile, ShowsADualPanoramaThatDoesNotTurnAtHalfATurn) {
    const std::vector<std::string> options = {"--mount",  "table", "--view", "dual",
                                              "--points", "16",    "--pan"};
    const Json atZero = WrittenJson(Joined(options, {"0"}));
    const Json atHalf = WrittenJson(Joined(options, {"180"}));
    const Json nearHalf = WrittenJson(Joined(options, {"179.99"}));
    EXPECT_EQ(PointsOf(atHalf, 0), PointsOf(atZero, 0));
    EXPECT_EQ(PointsOf(atHalf, 1), PointsOf(atZero, 1));
    EXPECT_EQ(atHalf["pan"].number, 180.0F);
    ExpectNear(PointsOf(nearHalf, 0), PointsOf(atZero, 1), 1e-3);
}

TEST_F(OutlineFile, HoldsTheEllipsesOfARing) {
    const std::vector<std::string> options = {"--mount",    "ceiling", "--view",     "full",
                                              "--radius-x", "0.25",    "--radius-y", "0.4",
                                              "--points",   "4"};
    const Json ring = WrittenJson(Joined(options, {"--inner-radius", "0.5"}));
    EXPECT_EQ(NamesOf(ring), (Names{"outer", "inner"}));
    ExpectNear(PointsOf(ring, 0), {{0.75F, 0.5F}, {0.5F, 0.1F}, {0.25F, 0.5F}, {0.5F, 0.9F}}, 1e-6);
    ExpectNear(PointsOf(ring, 1), {{0.625F, 0.5F}, {0.5F, 0.3F}, {0.375F, 0.5F}, {0.5F, 0.7F}},
               1e-6);
    const Json disk = WrittenJson(options);
    EXPECT_EQ(NamesOf(disk), Names{"outer"});
    EXPECT_EQ(PointsOf(disk, 0), PointsOf(ring, 0));
}

TEST_F(OutlineFile, HoldsTheBoundaryOfAWallPanoramaAndTheRimOfItsLens) {
    const DewarpParams lens{0.375F, 0.5F, 30.0F, 0.0F};
    const Json file = WrittenJson({"--mount", "wall", "--view", "full", "--radius-x", "0.375",
                                   "--wall-view-angle", "30", "--points", "32"});
    EXPECT_EQ(NamesOf(file), (Names{"lens", "view"}));
    const LibraryOutlines library({MountTypeWall, ViewTypeFullPanorama, 0.0F, 0.0F, 1.0F, lens});
    EXPECT_EQ(PointsOf(file, 0), library.OfRing(32).second);
    EXPECT_EQ(PointsOf(file, 1), library.OfWall(32));
}

TEST_F(OutlineFile, HasNoPointWhereTheViewMeetsTheAxis) {
    const std::vector<std::string> options = {"--mount",  "wall", "--view", "vcam",
                                              "--tilt",   "45",   "--zoom", "2",
                                              "--points", "16",   "--size", "64x64"};
    const LibraryOutlines library({MountTypeWall, ViewTypeVCam, 0.0F, 45.0F, 2.0F});
    const Points all = library.OfVirtualCamera(64, 64, 16);
    ASSERT_EQ(Finite(all).size(), 15U) << "the view no longer meets the axis";
    EXPECT_EQ(PointsOf(WrittenJson(options), 1), Finite(all));
    const std::string svg = Written("outlines.svg", options);
    EXPECT_EQ(PolygonNamed("view", svg).size(), 15U);
    EXPECT_EQ(svg.find("nan"), std::string::npos);
}

TEST_F(OutlineFile, SaysWhatItHolds) {
    const Json file = WrittenJson(
        {"--mount", "wall", "--view", "full", "--radius-x", "0.375", "--wall-view-angle", "60"});
    EXPECT_EQ(file["mount"].text, "wall");
    EXPECT_EQ(file["view"].text, "full");
    EXPECT_EQ(file["lens"]["radiusX"].number, 0.375F);
    EXPECT_EQ(file["lens"]["radiusY"].number, 0.5F);
    EXPECT_EQ(file["lens"]["wallViewAngle"].number, 60.0F);
    EXPECT_EQ(file["input"]["width"].number, 640.0F);
    EXPECT_EQ(file["input"]["height"].number, 480.0F);
    EXPECT_NE(file["coordinates"].text.find("fractions of the frame"), std::string::npos);
    EXPECT_NE(file["coordinates"].text.find("0 is the middle of the first pixel and 1 that of the "
                                            "last"),
              std::string::npos);
    EXPECT_EQ(PointsOf(file, 0).size(), 512U);
    EXPECT_EQ(PointsOf(file, 1).size(), 512U);
}

TEST_F(OutlineFile, HasTheMembersThatTheViewDependsOn) {
    struct Case {
        const char* mount;
        const char* view;
        Names turned;
        Names lens;
    };
    const Names all = {"pan", "tilt", "zoom", "output"};
    for (const Case& each :
         {Case{"wall", "vcam", all, {}}, Case{"ceiling", "vcam", all, {}},
          Case{"table", "vcam", all, {}}, Case{"wall", "full", {}, {"wallViewAngle"}},
          Case{"ceiling", "full", {"pan"}, {"innerRadiusRatio"}},
          Case{"table", "dual", {"pan"}, {"innerRadiusRatio"}}}) {
        const Json file = WrittenJson({"--mount", each.mount, "--view", each.view});
        std::set<std::string> members = {"mount", "view",        "lens",
                                         "input", "coordinates", "outlines"};
        members.insert(each.turned.begin(), each.turned.end());
        EXPECT_EQ(MembersOf(file), members) << each.mount << each.view;
        std::set<std::string> lens = {"radiusX", "radiusY"};
        lens.insert(each.lens.begin(), each.lens.end());
        EXPECT_EQ(MembersOf(file["lens"]), lens) << each.mount << each.view;
    }
}

TEST_F(OutlineFile, SaysTheSizeThatShapesAVirtualCamerasView) {
    const std::vector<std::string> options = {"--mount", "table", "--view", "vcam"};
    const Json sized = WrittenJson(Joined(options, {"--size", "320x201"}));
    EXPECT_EQ(sized["output"]["width"].number, 320.0F);
    EXPECT_EQ(sized["output"]["height"].number, 201.0F);
    // The size recommended for a lens image of 384 by 480 pixels.
    const Json usual = WrittenJson(Joined(options, {"--radius-x", "0.3"}));
    EXPECT_EQ(usual["output"]["width"].number, 384.0F);
    EXPECT_EQ(usual["output"]["height"].number, 480.0F);
}

TEST_F(OutlineFile, IsAlsoAnSvgOfThePicturesSizeWithPolygonsInPixels) {
    const std::vector<std::string> options = {"--mount",        "ceiling", "--view", "dual",
                                              "--inner-radius", "0.3",     "--pan",  "75",
                                              "--points",       "40"};
    const Json json = WrittenJson(options);
    const std::string svg = Written("outlines.SVG", options);
    EXPECT_NE(svg.find("width=\"640\" height=\"480\" viewBox=\"0 0 640 480\""), std::string::npos);
    EXPECT_EQ(svg.find("<image"), std::string::npos);
    std::size_t index = 0;
    for (const char* name : {"upper", "lower"}) {
        Points expected;
        for (const auto& [x, y] : PointsOf(json, index)) {
            // The centre of the first pixel is half a pixel from the corner, as is that of the
            // last.
            expected.emplace_back(0.5F + x * 639.0F, 0.5F + y * 479.0F);
        }
        ExpectNear(PolygonNamed(name, svg), expected, 1e-3);
        ++index;
    }
}

TEST_F(OutlineFile, StrokesEveryPolygonOfAnSvgDarkAndThenLight) {
    const std::string svg =
        Written("outlines.svg", {"--mount", "wall", "--view", "full", "--points", "16"});
    std::vector<std::string> strokes;
    std::size_t place = 0;
    for (std::string use = Between(svg, "<use xlink:href=\"#", "/>", &place); !use.empty();
         use = Between(svg, "<use xlink:href=\"#", "/>", &place)) {
        std::size_t start = 0;
        strokes.push_back(use.substr(0, use.find('"')) + Between(use, "stroke=\"", "\"", &start));
    }
    EXPECT_EQ(strokes, (Names{"lens#0f0f14", "view#0f0f14", "lens#ffffff", "view#ffd91a"}));
    place = 0;
    EXPECT_EQ(Between(svg, "stroke-width=\"", "\"", &place), "4.8");
}
