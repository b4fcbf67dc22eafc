#ifndef KIVFISHEYE_TOOLS_VIEW_FACTS_H
#define KIVFISHEYE_TOOLS_VIEW_FACTS_H

#include <optional>
#include <string>
#include <vector>

#include "AngleArguments.h"
#include "Lens.h"
#include "SourceUse.h"
#include "ViewArguments.h"

namespace KivFisheyeTools {

class VideoReader;

/// What one picture of a view shows: a panorama, or one half of a dual panorama.
struct PartFacts {
    /// What the left edge shows farthest from the centre of the lens, in degrees clockwise from its
    /// top; nothing where all of it shows the centre.
    std::optional<double> leftBearing;
    /// What the first and the last row show, as parts of the lens's radius.
    std::optional<double> topRadius;
    std::optional<double> bottomRadius;
};

/// All that is known of a view before any picture of it is made.
struct ViewFacts {
    ViewArguments view;
    Size input;
    Lens lens;
    Size output;
    /// What the library recommends; it may have a side of 0.
    Size recommended;
    Angles asked;
    Angles taken;
    /// What the user should know about the difference.
    std::vector<std::string> notesOnAngles;
    SourceUse use;
    /// Two halves of a dual panorama, or one picture.
    std::vector<PartFacts> parts;
    /// What lies in the middle of the output, unless that is black.
    std::optional<Place> middle;
    /// How far beside that a point lies that the view was aimed at and may look at, in degrees.
    std::optional<double> degreesBesideAim;
};

/// Finds out by flattening numbers in place of colours. Throws `Failure` when the view cannot be
/// made of the reader's first picture.
ViewFacts FactsOf(const ViewArguments& view, const AngleArguments& angles, OutputKind output,
                  VideoReader* reader);

/// The degrees of the lens that a virtual camera shows from top to bottom, and from side to side.
double DegreesDown(double zoom);
double DegreesAcross(double zoom, const Size& output);

}  // namespace KivFisheyeTools

#endif
