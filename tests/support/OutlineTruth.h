#ifndef KIVFISHEYE_TESTS_OUTLINE_TRUTH_H
#define KIVFISHEYE_TESTS_OUTLINE_TRUTH_H

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/Between.h"
#include "support/ClientFrame.h"
#include "support/Outline.h"
#include "support/OutlineGeometry.h"
#include "support/SampledPicture.h"

// Whether an outline tells the truth: a conversion of a coordinate picture shows nothing outside it
// and all that lies inside it and on the frame.

/// How far the middle of a pixel may be from the place that it is shown for: forms round down or to
/// the nearest, so that each way it is up to one pixel.
constexpr double kPixelDiagonal = 1.4142135623730951;

/// The pixels that are shown lie inside.
void ExpectNothingOutside(const SampledPicture& shown, const Outline& outline, double tolerance);

/// Those of the points that lie on the frame are shown.
void ExpectPointsShown(const SampledPicture& shown, const std::vector<Point>& points,
                       double tolerance);

/// All places inside the outline, those on the frame's own edges too, are shown. What `hole` has
/// inside is left out.
void ExpectInsideShown(const SampledPicture& shown, const Outline& outline, const Outline* hole,
                       double tolerance);

/// Both, for the outline's points and what lies inside it.
void ExpectNothingMissing(const SampledPicture& shown, const Outline& outline, const Outline* hole,
                          double tolerance);

/// A camera with a coordinate picture, and with a lens and an output of random shapes.
class RandomCamera {
public:
    RandomCamera(std::mt19937& engine, KivFisheyeLib::MountType mount,
                 KivFisheyeLib::ViewType view);

    /// What the next frame shows in some rows of its output; all of them with -1.
    SampledPicture Shown(int firstRow = 0, int rows = -1);

    /// The outline of a list that the camera has filled.
    Outline OutlineOf(const PointList& list) const;

    /// Whether a place on the frame, in pixels, is where the lens's circle ends.
    bool IsOnRim(const Point& point) const;

    /// An angle's or a fraction's share of the lens, in pixels along its longer semi-axis.
    double LensPixels(double share) const;

    std::string Description() const;

    CKivFisheyeCamera camera;
    KivFisheyeLib::DewarpParams lens{};
    ClientFrame input;
    ClientFrame output;
};

#endif
