#include "support/OutlineTruth.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "support/RandomFrame.h"

using namespace KivFisheyeLib;

namespace {

bool IsOnFrame(const SampledPicture& shown, const Point& point) {
    return point.x >= 0.0 && point.y >= 0.0 && point.x <= shown.Width() - 1 &&
           point.y <= shown.Height() - 1;
}

bool IsMissing(const SampledPicture& shown, const Point& point, double tolerance) {
    return IsOnFrame(shown, point) && !shown.HasWithin(tolerance, point);
}

/// Every third place of the frame, and all places along its edges.
std::vector<Point> PlacesOf(const SampledPicture& shown) {
    std::vector<Point> places;
    const int right = shown.Width() - 1;
    const int bottom = shown.Height() - 1;
    for (int y = 0; y <= bottom; ++y) {
        for (int x = 0; x <= right; ++x) {
            const bool isEdge = x == 0 || y == 0 || x == right || y == bottom;
            if (isEdge || (x % 3 == 0 && y % 3 == 0)) {
                places.push_back({static_cast<double>(x), static_cast<double>(y)});
            }
        }
    }
    return places;
}

std::uint32_t Side(std::mt19937& engine, int low, int high) {
    return static_cast<std::uint32_t>(Between(engine, low, high));
}

}  // namespace

void ExpectNothingOutside(const SampledPicture& shown, const Outline& outline, double tolerance) {
    EXPECT_GT(shown.Count(), 0);
    EXPECT_LE(shown.Largest([&](const Point& point) { return outline.DistanceOutside(point); }),
              tolerance)
        << "a pixel outside the outline";
}

void ExpectPointsShown(const SampledPicture& shown, const std::vector<Point>& points,
                       double tolerance) {
    EXPECT_EQ(std::count_if(points.begin(), points.end(),
                            [&](const Point& point) { return IsMissing(shown, point, tolerance); }),
              0)
        << "points of the outline";
}

void ExpectInsideShown(const SampledPicture& shown, const Outline& outline, const Outline* hole,
                       double tolerance) {
    const std::vector<Point> places = PlacesOf(shown);
    EXPECT_EQ(std::count_if(places.begin(), places.end(),
                            [&](const Point& place) {
                                return outline.Contains(place) &&
                                       !(hole != nullptr && hole->Contains(place)) &&
                                       IsMissing(shown, place, tolerance);
                            }),
              0)
        << "places inside the outline";
}

void ExpectNothingMissing(const SampledPicture& shown, const Outline& outline, const Outline* hole,
                          double tolerance) {
    ExpectPointsShown(shown, outline.Points(), tolerance);
    ExpectInsideShown(shown, outline, hole, tolerance);
}

RandomCamera::RandomCamera(std::mt19937& engine, MountType mount, ViewType view)
    : lens{Between(engine, 0.15F, 0.75F), Between(engine, 0.15F, 0.75F),
           Between(engine, 10.0F, 90.0F), Between(engine, 0.0F, 0.8F)},
      input(RandomInput(engine, 60, 200, PixelFormatRGB32)),
      output{8 * Side(engine, 8, 40), Side(engine, 40, 160), PixelFormatRGB32} {
    EXPECT_EQ(camera.SetDewarpParams(lens), kResultOk);
    EXPECT_EQ(camera.SetInputVideoParams(input.record, PixelFormatRGB32), kResultOk);
    EXPECT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
    EXPECT_EQ(camera.SetMountAndViewType(mount, view), kResultOk);
}

SampledPicture RandomCamera::Shown(int firstRow, int rows) {
    output.Fill(0);
    EXPECT_EQ(camera.Process(0), kResultOk);
    return SampledPicture(input, output, firstRow, rows < 0 ? output.Height() : rows);
}

Outline RandomCamera::OutlineOf(const PointList& list) const {
    return Outline(list.Points(), input.Width(), input.Height());
}

bool RandomCamera::IsOnRim(const Point& point) const {
    const double x = (point.x / (input.Width() - 1) - 0.5) / static_cast<double>(lens.radiusX);
    const double y = (point.y / (input.Height() - 1) - 0.5) / static_cast<double>(lens.radiusY);
    return std::hypot(x, y) >= 1.0 - 1e-5;
}

double RandomCamera::LensPixels(double share) const {
    return share * std::max(static_cast<double>(lens.radiusX) * (input.Width() - 1),
                            static_cast<double>(lens.radiusY) * (input.Height() - 1));
}

std::string RandomCamera::Description() const {
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 0.0F;
    const_cast<CKivFisheyeCamera&>(camera).GetPTZ(&pan, &tilt, &zoom);
    std::ostringstream out;
    out << "mount " << camera.m_mountType << ", source " << input.Width() << "x" << input.Height()
        << ", output " << output.Width() << "x" << output.Height() << ", radii " << lens.radiusX
        << " and " << lens.radiusY << ", wall angle " << lens.wallViewAngle << ", ratio "
        << lens.innerRadiusRatio << ", pan " << pan << ", tilt " << tilt << ", zoom " << zoom;
    return out.str();
}
