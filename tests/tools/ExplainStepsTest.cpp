#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>

#include "ExplainedRun.h"
#include "GoodRun.h"
#include "PlainPicture.h"

namespace {

constexpr double kPi = 3.14159265358979;
constexpr int kSide = 1024;

struct Point {
    double x;
    double y;
};

/// A place of the lens, in source pixels from its centre, for a place in the output from -1 at its
/// left and bottom to 1; nothing beyond the rim.
using Mapping = std::function<std::optional<Point>(double, double)>;

struct Steps {
    double least = 1e9;
    double most = 0.0;
    double mean = 0.0;
};

/// A lens of the frame's size has that many source pixels for each radian off its axis.
constexpr double kPerRadian = (kSide - 1) / kPi;

/// What lies `offAxis` from the lens's axis on the side where `x` and `y` point.
std::optional<Point> OnLens(double offAxis, double x, double y) {
    const double length = std::hypot(x, y);
    if (offAxis > kPi / 2.0) {
        return std::nullopt;
    }
    const double scale = length > 0.0 ? kPerRadian * offAxis / length : 0.0;
    return Point{scale * x, scale * y};
}

/// A virtual camera that looks along the axis, from `eye` behind the lens.
Mapping VirtualCamera(double eye, double degreesHigh, double aspect) {
    return [=](double right, double up) {
        const double half = std::tan(degreesHigh / 2.0 * kPi / 180.0);
        const double x = half * aspect * right;
        const double y = half * up;
        return OnLens((1.0 + eye) * std::atan(std::hypot(x, y)), x, y);
    };
}

Mapping WallPanorama(double degreesUp) {
    return [=](double right, double up) {
        const double longitude = kPi / 2.0 * right;
        const double latitude = degreesUp * kPi / 180.0 * up;
        const double x = std::cos(latitude) * std::sin(longitude);
        const double y = std::sin(latitude);
        return OnLens(std::acos(std::cos(latitude) * std::cos(longitude)), x, y);
    };
}

/// A ceiling's ring between a part of the radius and the rim.
Mapping Ring(double inner) {
    return [=](double right, double up) -> std::optional<Point> {
        const double angle = -kPi * right;
        const double radius = (kSide - 1) / 2.0 * (inner + (1.0 - inner) * (up + 1.0) / 2.0);
        return Point{radius * std::cos(angle), radius * std::sin(angle)};
    };
}

/// Steps of spans of a thirty-second of the output, along its rows or along its columns.
Steps StepsOf(const Mapping& mapping, int width, int height, bool isAcross) {
    const int span = (isAcross ? width : height) / 32;
    const auto at = [&](int column, int row) {
        return mapping(2.0 * column / (width - 1) - 1.0, 2.0 * row / (height - 1) - 1.0);
    };
    Steps steps;
    int count = 0;
    for (int row = 0; row < height - (isAcross ? 0 : span); ++row) {
        for (int column = 0; column < width - (isAcross ? span : 0); ++column) {
            const auto from = at(column, row);
            const auto to = isAcross ? at(column + span, row) : at(column, row + span);
            if (from && to) {
                const double step = std::hypot(to->x - from->x, to->y - from->y) / span;
                steps.least = std::min(steps.least, step);
                steps.most = std::max(steps.most, step);
                steps.mean += step;
                ++count;
            }
        }
    }
    steps.mean /= count;
    return steps;
}

struct StepsCase {
    const char* name;
    std::vector<std::string> view;
    int width;
    int height;
    Mapping mapping;
    /// By how many source pixels a place may be wrong next to the axis, where arccosines in lanes
    /// are, and by how many elsewhere.
    double atAxis;
    double elsewhere;
};

void PrintTo(const StepsCase& stepsCase, std::ostream* stream) {
    *stream << stepsCase.name;
}

/// The arccosine is wrong by up to this many radians, as the eye sees it.
constexpr double kArccosine = 0.0058;

/// Places come in 65535 steps.
constexpr double kUnit = kSide / 65535.0;

const std::vector<StepsCase> kCases = {
    {"TablesVirtualCamera", View("table", "vcam", {"--zoom", "4"}), 1024, 1024,
     VirtualCamera(0.01, 70.0, 1.0), 1.01 * kArccosine* kPerRadian, 0.1},
    {"CeilingsWidestVirtualCamera", View("ceiling", "vcam"), 1024, 1024,
     VirtualCamera(1.0, 90.0, 1.0), 2.0 * kArccosine* kPerRadian, 0.1},
    {"WallsWideVirtualCamera", View("wall", "vcam", {"--zoom", "2"}), 1920, 1080,
     VirtualCamera(0.01, 90.0, 16.0 / 9.0), 1.01 * kArccosine* kPerRadian, 0.1},
    {"HalfAVirtualCamera", View("wall", "vcam", {"--zoom", "2"}), 256, 256,
     VirtualCamera(0.01, 90.0, 1.0), 1.01 * kArccosine* kPerRadian, 0.1},
    {"WallPanorama", View("wall", "full", {"--wall-view-angle", "60"}), 1024, 1024,
     WallPanorama(60.0), 1.0, 1.0},
    {"RingWithoutItsMiddle", View("ceiling", "full", {"--inner-radius", "0.25"}), 2048, 384,
     Ring(0.25), kUnit, kUnit},
    {"SmallRing", View("ceiling", "full", {"--inner-radius", "0.5"}), 64, 32, Ring(0.5), kUnit,
     kUnit}};

class ExplainSteps : public testing::TestWithParam<StepsCase> {};

void ExpectSteps(const ExplainedRun& run, const StepsCase& expected, bool isAcross) {
    const Steps steps = StepsOf(expected.mapping, expected.width, expected.height, isAcross);
    const double span = (isAcross ? expected.width : expected.height) / 32;
    // The tool prints two decimals. Both ends of a span may be wrong.
    constexpr double kPrinted = 0.006;
    const double elsewhere = kPrinted + 2.0 * expected.elsewhere / span;
    const double atAxis = kPrinted + 2.0 * expected.atAxis / span;
    const std::string label =
        std::string("source pixels for each output pixel ") + (isAcross ? "across" : "down");
    const bool isConstant = run.On(label).find("to") == std::string::npos;
    const double least = run.NumberOn(label, 0);
    const double most = isConstant ? least : run.NumberOn(label, 1);
    const double mean = isConstant ? least : run.NumberOn(label, 2);
    EXPECT_NEAR(least, steps.least, elsewhere) << run.On(label);
    EXPECT_GE(most, steps.most - elsewhere) << run.On(label);
    EXPECT_LE(most, steps.most + std::max(elsewhere, atAxis)) << run.On(label);
    EXPECT_NEAR(mean, steps.mean, 0.02) << run.On(label);
}

}  // namespace

TEST_P(ExplainSteps, AreThoseOfTheGeometry) {
    const TemporaryFolder folder;
    WritePlain(folder, "square.png", kSide, kSide, 90);
    const std::string size =
        std::to_string(GetParam().width) + "x" + std::to_string(GetParam().height);
    const ExplainedRun run(folder,
                           Joined(Joined({"square.png"}, GetParam().view), {"--size", size}));
    ExpectSteps(run, GetParam(), true);
    ExpectSteps(run, GetParam(), false);
}

INSTANTIATE_TEST_SUITE_P(Tool, ExplainSteps, testing::ValuesIn(kCases),
                         [](const auto& instance) { return std::string(instance.param.name); });

TEST(ExplainStepsByHand, OfAVirtualCamera) {
    // In the middle 1.01 tan 35 / (pi / 2) of the frame's pixels lie in as many output pixels, and
    // where the axes end that times the square of cos 35. Spans end a little before the edges.
    const TemporaryFolder folder;
    WritePlain(folder, "square.png", kSide, kSide, 90);
    const ExplainedRun run(
        folder,
        Joined({"square.png"}, View("table", "vcam", {"--zoom", "4", "--size", "1024x1024"})));
    for (const char* direction : {"across", "down"}) {
        const std::string label = std::string("source pixels for each output pixel ") + direction;
        EXPECT_NEAR(run.NumberOn(label, 0), 0.302, 0.012) << run.On(label);
        EXPECT_GE(run.NumberOn(label, 1), 0.44) << run.On(label);
    }
}
