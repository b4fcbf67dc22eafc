#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "GoodRun.h"
#include "JsonReader.h"
#include "PlainPicture.h"

using KivFisheyeTools::Picture;

namespace {

constexpr double kPi = 3.14159265358979323846;
using Pair = std::pair<float, float>;
using Pairs = std::vector<Pair>;

struct ObjObject {
    std::string name;
    Pairs positions;
    Pairs texture;
    /// Numbers of the corners of each face, from 0 in this object.
    std::vector<std::vector<std::size_t>> faces;
};

/// Reads a corner such as 7/7, which counts the vertices of all objects from 1.
std::size_t CornerOf(const std::string& word, std::size_t verticesBefore) {
    const std::size_t slash = word.find('/');
    EXPECT_EQ(word.substr(0, slash), word.substr(slash + 1)) << word;
    return std::stoul(word.substr(0, slash)) - 1 - verticesBefore;
}

/// Reads the lines that the tool may write, and fails for others.
std::vector<ObjObject> ReadObj(const std::string& text) {
    std::vector<ObjObject> objects;
    std::size_t verticesBefore = 0;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_EQ(line.find("nan"), std::string::npos);
        std::istringstream words(line);
        std::string kind;
        words >> kind;
        Pair pair;
        if (kind == "o") {
            verticesBefore += objects.empty() ? 0 : objects.back().positions.size();
            objects.emplace_back();
            words >> objects.back().name;
        } else if (kind == "v") {
            float z = 1.0F;
            EXPECT_TRUE(words >> pair.first >> pair.second >> z) << line;
            EXPECT_EQ(z, 0.0F);
            objects.back().positions.push_back(pair);
        } else if (kind == "vt") {
            EXPECT_TRUE(words >> pair.first >> pair.second) << line;
            objects.back().texture.push_back(pair);
        } else if (kind == "f") {
            objects.back().faces.emplace_back();
            for (std::string word; words >> word;) {
                objects.back().faces.back().push_back(CornerOf(word, verticesBefore));
            }
        } else {
            EXPECT_EQ(kind, "#") << line;
        }
    }
    return objects;
}

std::string Written(const std::string& name, const std::vector<std::string>& options) {
    const TemporaryFolder folder;
    EXPECT_EQ(OutputOfGoodRun(folder, Joined({"mesh", name}, options)), "");
    EXPECT_EQ(folder.Names(), std::set<std::string>{name});
    return ContentOf(folder.File(name));
}

std::vector<ObjObject> Mesh(const std::vector<std::string>& options) {
    return ReadObj(Written("mesh.obj", options));
}

/// How far along a row or a column of so many vertices one of them is, from 0 to 1.
double PartOf(std::size_t index, std::size_t count) {
    return static_cast<double>(index) / static_cast<double>(count - 1);
}

/// Twice the area of a face, positive where its corners run anticlockwise.
double DoubleArea(const ObjObject& object, const std::vector<std::size_t>& face) {
    double area = 0.0;
    for (std::size_t i = 0; i < face.size(); ++i) {
        const Pair& a = object.positions.at(face[i]);
        const Pair& b = object.positions.at(face[(i + 1) % face.size()]);
        area += 1.0 * a.first * b.second - 1.0 * b.first * a.second;
    }
    return area;
}

/// Expects a flat rectangle of quads without gaps, all turned to the front.
void ExpectRectangle(const ObjObject& object, std::size_t columns, std::size_t rows, double width,
                     double bottom, double top) {
    ASSERT_EQ(object.positions.size(), columns * rows);
    ASSERT_EQ(object.texture.size(), columns * rows);
    ASSERT_EQ(object.faces.size(), (columns - 1) * (rows - 1));
    for (std::size_t i = 0; i < columns * rows; ++i) {
        const double part = PartOf(i / columns, rows);
        EXPECT_NEAR(object.positions[i].first, width * PartOf(i % columns, columns), 1e-5);
        EXPECT_NEAR(object.positions[i].second, top + (bottom - top) * part, 1e-6);
    }
    const double quad = 2.0 * width * (top - bottom) / static_cast<double>(object.faces.size());
    for (const std::vector<std::size_t>& face : object.faces) {
        ASSERT_EQ(face.size(), 4U);
        EXPECT_NEAR(DoubleArea(object, face), quad, 1e-4 * quad);
    }
}

/// Expects vertices at an angle and radius of the lens, where the radius is 1 at the rim.
template <class AngleOf, class RadiusOf>
void ExpectRing(const ObjObject& object, std::size_t columns, std::size_t rows, AngleOf angleOf,
                RadiusOf radiusOf) {
    for (std::size_t i = 0; i < columns * rows; ++i) {
        const double angle = angleOf(PartOf(i % columns, columns));
        const double radius = 0.5 * radiusOf(PartOf(i / columns, rows));
        // Angles run anticlockwise, and v runs up.
        EXPECT_NEAR(object.texture.at(i).first, 0.5 + radius * std::cos(angle), 2e-6) << i;
        EXPECT_NEAR(object.texture.at(i).second, 0.5 + radius * std::sin(angle), 2e-6) << i;
    }
}

}  // namespace

TEST(Mesh, OfACeilingRunsClockwiseFromTheRimInward) {
    for (const std::size_t columns : {4U, 5U, 6U, 7U, 9U}) {
        const auto mesh = Mesh({"--mount", "ceiling", "--view", "full", "--columns",
                                std::to_string(columns), "--rows", "3", "--inner-radius", "0.4"});
        ASSERT_EQ(mesh.size(), 1U);
        EXPECT_EQ(mesh[0].name, "full");
        // Two diameters wide, and as high as the ring is broad: 0.6 of half a diameter.
        ExpectRectangle(mesh[0], columns, 3, 2.0 / 0.3, 0.0, 1.0);
        ExpectRing(
            mesh[0], columns, 3, [](double part) { return -2.0 * kPi * part; },
            [](double part) { return 1.0 - 0.6 * part; });
    }
}

TEST(Mesh, OfATableRunsAnticlockwiseFromTheInnerEdgeOutward) {
    const auto mesh = Mesh({"--mount", "table", "--view", "full", "--columns", "10", "--rows", "4",
                            "--inner-radius", "0.4"});
    ASSERT_EQ(mesh.size(), 1U);
    ExpectRing(
        mesh[0], 10, 4, [](double part) { return 2.0 * kPi * part; },
        [](double part) { return 0.4 + 0.6 * part; });
}

TEST(Mesh, OfADualPanoramaIsTwoObjectsOneAboveTheOther) {
    for (const char* mount : {"ceiling", "table"}) {
        const bool isCeiling = mount == std::string("ceiling");
        const auto mesh = Mesh({"--mount", mount, "--view", "dual", "--columns", "7", "--rows", "3",
                                "--rows-second", "5"});
        ASSERT_EQ(mesh.size(), 2U);
        EXPECT_EQ(mesh[0].name, "upper");
        EXPECT_EQ(mesh[1].name, "lower");
        ExpectRectangle(mesh[0], 7, 3, 1.0, 0.5, 1.0);
        ExpectRectangle(mesh[1], 7, 5, 1.0, 0.0, 0.5);
        const auto radiusOf = [=](double part) { return isCeiling ? 1.0 - part : part; };
        const auto angleOf = [=](double part) {
            return isCeiling ? kPi * (1.0 - part) : kPi * part;
        };
        ExpectRing(mesh[0], 7, 3, angleOf, radiusOf);
        ExpectRing(
            mesh[1], 7, 5, [=](double part) { return kPi + angleOf(part); }, radiusOf);
    }
}

TEST(Mesh, OfADualPanoramaHasEquallyManyRowsByDefault) {
    const auto mesh = Mesh({"--mount", "table", "--view", "dual", "--columns", "4", "--rows", "6"});
    ASSERT_EQ(mesh.size(), 2U);
    EXPECT_EQ(mesh[0].positions.size(), 24U);
    EXPECT_EQ(mesh[1].positions.size(), 24U);
}

TEST(Mesh, OfAWallIsLongitudesAndLatitudes) {
    const auto mesh = Mesh({"--mount", "wall", "--view", "full", "--columns", "6", "--rows", "4",
                            "--wall-view-angle", "60"});
    ASSERT_EQ(mesh.size(), 1U);
    for (std::size_t i = 0; i < 24; ++i) {
        const double longitude = kPi * (PartOf(i % 6, 6) - 0.5);
        const double latitude = kPi / 3.0 * (1.0 - 2.0 * PartOf(i / 6, 4));
        const double right = std::cos(latitude) * std::sin(longitude);
        const double up = std::sin(latitude);
        const double aside = std::hypot(right, up);
        const double offAxis = std::atan2(aside, std::cos(latitude) * std::cos(longitude));
        EXPECT_NEAR(mesh[0].texture.at(i).first, 0.5 + right / aside * offAxis / kPi, 2e-6) << i;
        EXPECT_NEAR(mesh[0].texture.at(i).second, 0.5 + up / aside * offAxis / kPi, 2e-6) << i;
    }
}

TEST(Mesh, HasTheLensCentreWhereAVertexLiesOnTheAxis) {
    const std::vector<std::string> options = {
        "--mount", "wall", "--view", "full", "--columns", "3", "--rows", "3", "--radius-x", "0.3"};
    EXPECT_EQ(Mesh(options).at(0).texture.at(4), Pair(0.5F, 0.5F));
    const Json json = ReadJson(Written("mesh.json", options));
    EXPECT_EQ(json["grids"].list.at(0)["texture"].Pairs().at(4), Pair(0.5F, 0.5F));
}

TEST(Mesh, FitsTheLensInTheFrame) {
    const std::vector<std::string> options = {"--mount",   "ceiling", "--view", "full",
                                              "--columns", "9",       "--rows", "3"};
    const Pairs lens = Mesh(options).at(0).texture;
    const std::vector<ObjObject> framed =
        Mesh(Joined(options, {"--radius-x", "0.3", "--radius-y", "0.45"}));
    for (std::size_t i = 0; i < lens.size(); ++i) {
        const Pair& place = framed.at(0).texture.at(i);
        EXPECT_NEAR(place.first, 0.5 + 0.6 * (lens[i].first - 0.5), 1e-6);
        EXPECT_NEAR(place.second, 0.5 + 0.9 * (lens[i].second - 0.5), 1e-6);
    }
}

TEST(Mesh, HasTheShapeForARoundLensWhateverTheFrame) {
    for (const char* mount : {"wall", "table"}) {
        const std::vector<std::string> options = {"--mount", mount, "--view", "full"};
        const Pairs positions = Mesh(options).at(0).positions;
        for (const char* radius : {"--radius-x", "--radius-y"}) {
            EXPECT_EQ(Mesh(Joined(options, {radius, "0.2"})).at(0).positions, positions) << mount;
        }
    }
}

TEST(Mesh, IsWholeHoweverLongItIs) {
    const std::vector<std::string> options = {"--mount", "wall", "--view", "full"};
    EXPECT_GT(Written("mesh.obj", options).size(), 200000U);
    const std::vector<ObjObject> mesh = Mesh(options);
    ASSERT_EQ(mesh.size(), 1U);
    // The sine of 45 degrees is how much of the lens's height the panorama has.
    ExpectRectangle(mesh[0], 128, 32, std::sqrt(2.0), 0.0, 1.0);
}

TEST(Mesh, IsAlsoJsonWithVRunningDown) {
    const std::vector<std::string> options = {"--mount",        "table", "--view", "dual",
                                              "--columns",      "6",     "--rows", "3",
                                              "--inner-radius", "0.25"};
    const Json json = ReadJson(Written("mesh.json", options));
    EXPECT_EQ(json["mount"].text, "table");
    EXPECT_EQ(json["view"].text, "dual");
    EXPECT_EQ(json["lens"]["innerRadiusRatio"].number, 0.25F);
    EXPECT_EQ(json["lens"].members.count("wallViewAngle"), 0U);
    EXPECT_NE(
        json["texture"].text.find("0 is the middle of the first pixel and 1 that of the last"),
        std::string::npos);
    const std::vector<ObjObject> objects = Mesh(options);
    ASSERT_EQ(json["grids"].list.size(), 2U);
    for (std::size_t i = 0; i < 2; ++i) {
        const Json& grid = json["grids"].list[i];
        EXPECT_EQ(grid["name"].text, objects.at(i).name);
        EXPECT_EQ(grid["columns"].number, 6.0F);
        EXPECT_EQ(grid["rows"].number, 3.0F);
        EXPECT_EQ(grid["positions"].Pairs(), objects[i].positions);
        Pairs texture = grid["texture"].Pairs();
        for (Pair& place : texture) {
            place.second = 1.0F - place.second;
        }
        EXPECT_EQ(texture, objects[i].texture);
    }
}

TEST(Mesh, ShowsWhatThePanoramaShows) {
    const TemporaryFolder folder;
    KivFisheyeTools::WritePicture(folder.File("input.png"), Slopes());
    for (const auto& [mount, view] :
         {std::pair("wall", "full"), std::pair("ceiling", "full"), std::pair("table", "full"),
          std::pair("ceiling", "dual"), std::pair("table", "dual")}) {
        const std::vector<std::string> options = {"--mount", mount, "--view", view};
        OutputOfGoodRun(folder,
                        Joined({"dewarp", "input.png", "flat.png", "--size", "512x256"}, options));
        const Picture flat = KivFisheyeTools::ReadPicture(folder.File("flat.png"), 3);
        for (const ObjObject& object : Mesh(Joined(options, {"--columns", "14", "--rows", "6"}))) {
            const double width = object.positions.at(13).first;
            int seen = 0;
            for (std::size_t i = 0; i < object.positions.size(); ++i) {
                const auto [x, y] = object.positions[i];
                // Just inside the half that the object is.
                const double up = y + (i < 14 ? -1e-3 : 0.0) + (i >= 70 ? 1e-3 : 0.0);
                const std::uint8_t* pixel =
                    flat.Row(static_cast<std::uint32_t>(std::min(255.0, (1.0 - up) * 256.0))) +
                    3 * std::lround(x / width * 511.0);
                if (pixel[2] == 0) {
                    continue;
                }
                EXPECT_NEAR(pixel[0], 255.0 * object.texture[i].first, 5.0) << mount << view << i;
                EXPECT_NEAR(pixel[1], 255.0 * (1.0 - object.texture[i].second), 5.0)
                    << mount << view << i;
                ++seen;
            }
            EXPECT_GT(seen, 65) << mount << view;
        }
    }
}
