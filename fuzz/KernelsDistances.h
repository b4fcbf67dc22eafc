#ifndef KIVFISHEYE_FUZZ_KERNELS_DISTANCES_H
#define KIVFISHEYE_FUZZ_KERNELS_DISTANCES_H

#include <cmath>
#include <vector>

#include "KernelsCheck.h"
#include "support/CoordinateFrame.h"
#include "support/RingModel.h"
#include "support/WallModel.h"

// How far forms may be from exact geometry and from each other. The bounds follow from what single
// precision, its sums and the lanes' short series are off at most.

/// Where geometry looks for an output pixel, in source pixels.
struct ExactPlace {
    double column;
    double row;
    double beyond;     ///< how far out of the frame, as a fraction of it; below 0 inside
    bool isUndefined;  ///< so close to where nothing is defined that anything may be shown
};

/// The largest distance of a form's position from the exact one.
struct PlaceBounds {
    double column;
    double row;
    double beyond;
};

/// How two neighbouring source pixels share what lies between them: the form takes the one before,
/// or the nearer one.
inline bool IsShownAt(KernelForm form, int pixel, double position, double bound) {
    const double after = form == KernelForm::C ? 0.0 : 0.5;
    const double ahead = pixel - position;
    return ahead <= after + bound && ahead >= after - 1.0 - bound;
}

inline PixelPlace PlaceOfEntry(int entry, const PanoramaFrames& frames, int bytesPerPixel) {
    return {entry % frames.srcStride / bytesPerPixel, entry / frames.srcStride};
}

/// Expects the entries of a form, row by row, where `exactAt(x, y)` says.
template <class ExactAt, class Words>
void CheckPlaces(KernelForm form, const std::vector<int>& entries, const PanoramaFrames& frames,
                 int bytesPerPixel, ExactAt&& exactAt, const PlaceBounds& bounds,
                 const Words& words) {
    for (int i = 0; i < static_cast<int>(entries.size()); ++i) {
        const int x = i % frames.dstWidth;
        const int y = i / frames.dstWidth;
        const ExactPlace exact = exactAt(x, y);
        const int entry = entries[static_cast<std::size_t>(i)];
        if (exact.isUndefined) {
            continue;
        }
        const bool isShown = entry != kNoSource;
        Expect(isShown ? exact.beyond <= bounds.beyond : exact.beyond > -bounds.beyond, words,
               ": pixel ", x, ", ", y, isShown ? " shows " : " does not show ",
               "what is beyond the frame by ", exact.beyond);
        const PixelPlace place = PlaceOfEntry(entry, frames, bytesPerPixel);
        Expect(!isShown || (IsShownAt(form, place.column, exact.column, bounds.column) &&
                            IsShownAt(form, place.row, exact.row, bounds.row)),
               words, ": pixel ", x, ", ", y, " shows ", place, " instead of (", exact.column, ", ",
               exact.row, ")");
    }
}

/// Whether a pixel of eight lanes is that of four, or the next one where four took the even one of
/// two.
inline bool IsSameButForTie(int ofFour, int ofEight) {
    return ofEight == ofFour || (ofEight == ofFour + 1 && ofFour % 2 == 0);
}

/// Expects tables of eight and of four lanes to differ by exact ties alone.
template <class Words>
void CheckOnlyTiesDiffer(const std::vector<int>& four, const std::vector<int>& eight,
                         const PanoramaFrames& frames, int bytesPerPixel, const Words& words) {
    for (std::size_t i = 0; i < four.size(); ++i) {
        if (four[i] == eight[i]) {
            continue;
        }
        const PixelPlace ofFour = PlaceOfEntry(four[i], frames, bytesPerPixel);
        const PixelPlace ofEight = PlaceOfEntry(eight[i], frames, bytesPerPixel);
        Expect(four[i] != kNoSource && eight[i] != kNoSource &&
                   IsSameButForTie(ofFour.column, ofEight.column) &&
                   IsSameButForTie(ofFour.row, ofEight.row),
               words, ": entry ", i, " is ", eight[i], " and ", four[i], " in four lanes");
    }
}

/// Expects values in lanes no farther from the scalar ones than `bound`, where both are numbers.
template <class Words>
void CheckNearScalar(const std::vector<float>& scalar, const std::vector<float>& lanes,
                     double bound, const Words& words) {
    for (std::size_t i = 0; i < scalar.size() && i < lanes.size(); ++i) {
        const double distance = std::fabs(static_cast<double>(scalar[i]) - double{lanes[i]});
        Expect(!(distance > bound), words, ": value ", i, " is ", lanes[i], " and ", scalar[i],
               " in the C form");
    }
}

#endif
