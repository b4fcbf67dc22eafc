#include "ViewJob.h"

#include <cmath>
#include <cstdlib>
#include <stdexcept>

#include "ViewModel.h"

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr float kTilt = 30.0F;

float WholeTurns(int degrees) {
    return static_cast<float>(degrees % 360);
}

View TurnedView(int frame) {
    // Up and down by two degrees, a tenth of a degree on every frame.
    const int phase = frame % 80;
    const float sway = static_cast<float>(std::abs(phase - 40) - 20) / 10.0F;
    return {WholeTurns(frame), -kTilt - sway};
}

View PannedView(int frame) {
    return {360.0F - WholeTurns(frame), kTilt};
}

View WideView(int frame) {
    return {WholeTurns(frame), 0.0F};
}

bool ShowsRay(const ViewJob& job, const unsigned char* pixel, const LensOffset& expected,
              double tolerance) {
    const int x = pixel[0] | (pixel[2] & 15) << 8;
    const int y = pixel[1] | pixel[2] >> 4 << 8;
    const double centre = (job.side - 1) / 2.0;
    const bool isBlack = x == 0 && y == 0;  // in the corner, far outside the lens
    const double insideRim = double{ViewJob::kRadius} * (job.side - 1) - expected.Radius();
    if (isBlack) {
        return insideRim <= tolerance;
    }
    return insideRim >= -tolerance && std::fabs(centre + expected.x - x) <= tolerance &&
           std::fabs(centre + expected.y - y) <= tolerance;
}

}  // namespace

const Move kTurn{"turn", 0.01F, TurnedView};
const Move kPan{"pan", 0.01F, PannedView};
const Move kWide{"wide", 1.0F, WideView};

ViewJob::ViewJob(const Move& howItMoves, int sideInPixels, int width, int height, int bits)
    : move(howItMoves),
      side(sideInPixels),
      dstWidth(width),
      dstHeight(height),
      bytesPerPixel(bits / 8),
      srcStride(side * bytesPerPixel),
      dstStride(dstWidth * bytesPerPixel) {
    src.resize(static_cast<std::size_t>(srcStride) * static_cast<std::size_t>(side));
    dst.resize(static_cast<std::size_t>(dstStride) * static_cast<std::size_t>(dstHeight));
    unsigned char* pixel = src.data();
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x, pixel += bytesPerPixel) {
            pixel[0] = static_cast<unsigned char>(x & 255);
            pixel[1] = static_cast<unsigned char>(y & 255);
            pixel[2] = static_cast<unsigned char>(x >> 8 | y >> 8 << 4);
        }
    }
}

double ViewJob::HalfHeight() const {
    return std::tan(double{kFieldOfView} / 360.0 * kPi);
}

double ViewJob::PixelsPerRadian() const {
    const double diameter = 2.0 * double{kRadius} * (side - 1);
    return (1.0 + double{move.eyeZ}) * diameter / kPi;
}

void CheckViews(const std::string& name, ViewJob& job, ViewDrawer& drawer) {
    constexpr double kShare = 0.999;
    const double tolerance = 2.0 + drawer.AngleError() * job.PixelsPerRadian();
    for (const int frame : {17, 140}) {
        const View view = job.move.viewOfFrame(frame);
        drawer.Draw(view);
        drawer.Deliver();
        std::size_t good = 0;
        const unsigned char* pixel = job.dst.data();
        for (int row = 0; row < job.dstHeight; ++row) {
            for (int column = 0; column < job.dstWidth; ++column, pixel += job.bytesPerPixel) {
                const LensOffset expected = OffsetOfRay(job, view, column, row);
                good += ShowsRay(job, pixel, expected, tolerance) ? 1U : 0U;
            }
        }
        const double share = static_cast<double>(good) / static_cast<double>(job.Pixels());
        if (share < kShare) {
            throw std::runtime_error(name + " shows another view: only " +
                                     std::to_string(share * 100.0) +
                                     " % of its pixels are where they belong.");
        }
    }
}
