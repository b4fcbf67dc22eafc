#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "support/KernelForm.h"
#include "support/ProgramRun.h"

// The accuracy program's page has every family, and figures that are right.

namespace {

using Cells = std::vector<std::string>;

/// The page's tables: cells by the row's first column, or its first two where the second is a form.
/// A family that stands in several tables has the cells of all, one table after the other.
std::map<std::string, Cells> RowsOf(const std::string& page) {
    std::map<std::string, Cells> rows;
    std::istringstream lines(page);
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 2, "| ") != 0) {
            continue;
        }
        Cells cells;
        std::istringstream text(line.substr(1));
        for (std::string cell; std::getline(text, cell, '|');) {
            cells.push_back(cell.substr(1, cell.size() - 2));
        }
        std::string name = cells[0];
        std::size_t first = 1;
        if (cells.size() > 1 && cells[1][0] == '`') {
            name += " " + cells[1];
            first = 2;
        }
        Cells& row = rows[name];
        row.insert(row.end(), cells.begin() + static_cast<std::ptrdiff_t>(first), cells.end());
    }
    return rows;
}

double Number(const std::string& cell) {
    char* end = nullptr;
    const double number = std::strtod(cell.c_str(), &end);
    EXPECT_NE(end, cell.c_str()) << "no number: " << cell;
    return number;
}

class AccuracyProgram : public testing::Test {
protected:
    void SetUp() override {
        if (!CanRun(KernelForm::AVX)) {
            GTEST_SKIP() << "this processor lacks the instructions of AVX";
        }
    }

    static ProgramRun Run(const std::vector<std::string>& arguments) {
        return RunProgram(KIVFISHEYE_ACCURACY, arguments);
    }

    /// The page over a few geometries, made once.
    static const std::string& Page() {
        static const std::string page = [] {
            const ProgramRun run = Run({"--geometries", "3"});
            EXPECT_EQ(run.status, 0);
            EXPECT_EQ(run.errors, "");
            return run.output;
        }();
        return page;
    }
};

struct PictureRow {
    const char* name;
    int farthestAt1024;
};

// The largest lens has a radius of 0.6. Ring panoramas differ by their rounding alone; walls by
// 0.0029 / (pi / 2) * 0.6 * 1024 = 1.13 more, or 1.36 with the estimate of 1 / r; virtual cameras
// at zoom 1 by 0.0058 * 2 / pi * 2 * 0.6 * 1024 = 4.54 more.
constexpr PictureRow kInLanes[] = {
    {"full panorama, direct `SSE41`", 1}, {"full panorama, table `SSE41`", 1},
    {"full panorama, table `AVX`", 1},    {"dual panorama, direct `SSE41`", 1},
    {"dual panorama, table `SSE41`", 1},  {"dual panorama, table `AVX`", 1},
    {"wall panorama, direct `SSE41`", 3}, {"wall panorama, table `SSE41`", 3},
    {"wall panorama, table `AVX`", 3},    {"virtual camera `SSE41`", 6},
    {"virtual camera `AVX`", 6}};

TEST_F(AccuracyProgram, HasEveryPictureInLanesWithinItsDistance) {
    const auto rows = RowsOf(Page());
    for (const PictureRow& expected : kInLanes) {
        ASSERT_EQ(rows.count(expected.name), 1U) << expected.name;
        const Cells& cells = rows.at(expected.name);
        ASSERT_EQ(cells.size(), 12U) << expected.name;
        // One of four halves of columns and rows is cut off as it is rounded.
        EXPECT_NEAR(Number(cells[0]), 75.0, 3.0) << expected.name;
        EXPECT_GE(Number(cells[1]), 1.0) << expected.name;
        EXPECT_LE(Number(cells[1]), expected.farthestAt1024) << expected.name;
        EXPECT_LT(Number(cells[2]), 0.1) << expected.name;
        // The mean error, and its size, which the rounding makes a quarter.
        EXPECT_NEAR(Number(cells[7]), 0.0, 0.01) << expected.name;
        EXPECT_NEAR(Number(cells[8]), 0.25, 0.04) << expected.name;
    }
}

TEST_F(AccuracyProgram, HasEveryPictureOfTheScalarFormBesideGeometry) {
    const auto rows = RowsOf(Page());
    for (const std::string name :
         {"full panorama, direct", "full panorama, table", "dual panorama, direct",
          "dual panorama, table", "wall panorama, direct", "wall panorama, table",
          "virtual camera"}) {
        ASSERT_EQ(rows.count(name + " `C`"), 1U) << name;
        const Cells& cells = rows.at(name + " `C`");
        ASSERT_EQ(cells.size(), 6U) << name;
        EXPECT_NEAR(Number(cells[0]), -1.0, 0.3) << name;
        EXPECT_NEAR(Number(cells[0].substr(cells[0].find("to ") + 3)), 0.0, 0.3) << name;
        EXPECT_EQ(cells[1], "-0.50") << name;
        EXPECT_EQ(cells[2], "0.50") << name;
    }
}

struct ListRow {
    const char* name;
    double fromScalar[3];
};

TEST_F(AccuracyProgram, HasEveryListWithinItsDistance) {
    const auto rows = RowsOf(Page());
    for (const ListRow& expected :
         {ListRow{"lens ellipse", {3e-6, 3e-6, 1e-5}}, ListRow{"half ring", {3e-6, 3e-6, 1e-5}},
          ListRow{"wall outline", {2e-3, 2e-3, 2e-3}},
          ListRow{"virtual camera outline", {3e-3, 3e-3, 3e-3}},
          ListRow{"ring mesh", {1e-6, 8e-6, 6e-5}}, ListRow{"wall mesh", {2e-3, 2e-3, 2e-3}}}) {
        const std::string name = expected.name;
        for (const std::string& row : {name, name + " `C`", name + " `SSE2`"}) {
            ASSERT_EQ(rows.count(row), 1U) << row;
            ASSERT_EQ(rows.at(row).size(), 3U) << row;
        }
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_GT(Number(rows.at(name)[i]), 0.0) << name;
            EXPECT_LE(Number(rows.at(name)[i]), expected.fromScalar[i]) << name;
            EXPECT_LE(Number(rows.at(name + " `C`")[i]), 6e-5) << name;
        }
    }
}

TEST_F(AccuracyProgram, WritesTheSamePageEveryTime) {
    EXPECT_EQ(Run({"--geometries", "3"}).output, Page());
}

// Columns that look along an axis of an even source lie half way between two pixels in every row.
TEST_F(AccuracyProgram, FindsTiesBetweenFourAndEightLanes) {
    EXPECT_NE(Page().find("nowhere else: in up to "), std::string::npos);
    EXPECT_EQ(Page().find("nowhere else: in up to 0 %"), std::string::npos);
}

TEST_F(AccuracyProgram, SaysOverHowManyGeometries) {
    EXPECT_NE(Page().find("over 3 random geometries"), std::string::npos);
}

TEST(AccuracyProgramUsage, IsRefusedWithASentence) {
    const std::vector<std::vector<std::string>> refused = {
        {"--geometries"},           {"--geometries", "0"}, {"--geometries", "-3"},
        {"--geometries", "3x"},     {"--geometries", ""},  {"--geometries", "100001"},
        {"--geometries", "3", "4"}, {"--unknown"},         {""}};
    for (const auto& arguments : refused) {
        const ProgramRun run = RunProgram(KIVFISHEYE_ACCURACY, arguments);
        EXPECT_EQ(run.status, 2) << testing::PrintToString(arguments);
        EXPECT_EQ(run.output, "") << testing::PrintToString(arguments);
        EXPECT_EQ(run.errors,
                  "KivFisheyeAccuracy: give nothing, or --geometries and a number from 1 to "
                  "100000.\n");
    }
}

TEST(AccuracyProgramUsage, IsPrintedWhenAskedFor) {
    const ProgramRun run = RunProgram(KIVFISHEYE_ACCURACY, {"--help"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output.compare(0, 6, "Usage:"), 0);
    EXPECT_EQ(run.errors, "");
}

}  // namespace
