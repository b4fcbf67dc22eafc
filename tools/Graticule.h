#ifndef KIVFISHEYE_TOOLS_GRATICULE_H
#define KIVFISHEYE_TOOLS_GRATICULE_H

#include <optional>
#include <vector>

#include "Color.h"
#include "Lens.h"
#include "StrokeFont.h"

namespace KivFisheyeTools {

/// Lines of constant bearing and of constant elevation with their numbers, and the letters of the
/// four winds on the walls, all as seen from one camera. Texts stand upright in bearing and
/// elevation, so a panorama shows them as they are meant to be read.
class Graticule {
public:
    explicit Graticule(KivFisheyeLib::MountType mount);

    /// Draws what lies in a direction, given as a unit vector, over the colour that is seen there.
    Color DrawnOver(const Color& seen, const Vector& direction) const;

private:
    struct Label {
        double bearing;
        StrokeText text;
    };

    /// Labels of one height.
    struct LabelRow {
        double elevation;
        /// How many degrees of a label's own width lie in a degree of bearing.
        double widthOfBearing;
        std::vector<Label> labels;
    };

    LabelRow EmptyRow(double elevation) const;
    void AddWinds(double elevation);
    void AddMeridianLabels(double elevation);
    void AddLatitudeLabels(const std::vector<double>& bearings);

    std::optional<Color> WindColor(double bearing, double elevation) const;
    std::optional<Color> LabelColor(const Color& seen, double bearing, double elevation) const;

    KivFisheyeLib::MountType m_mount;
    LabelRow m_winds;
    std::vector<LabelRow> m_labelRows;
};

}  // namespace KivFisheyeTools

#endif
