#ifndef KIVFISHEYE_TOOLS_STROKE_FONT_H
#define KIVFISHEYE_TOOLS_STROKE_FONT_H

#include <string_view>
#include <vector>

namespace KivFisheyeTools {

/// One line of text as strokes of a round pen.
///
/// The unit is a step of the lattice that the glyphs are drawn on: the baseline is at y = 0 and y
/// points up, capitals are 6 high, small letters 4, tails reach down to -2, and a glyph is 4 wide
/// with 2 to the next. Characters beyond ASCII are shown as a box.
class StrokeText {
public:
    static constexpr double kCapitalHeight = 6.0;
    static constexpr double kDescent = 2.0;

    explicit StrokeText(std::string_view text);

    /// From the left edge of the first glyph to the right edge of the last one.
    double Width() const { return m_width; }

    /// The distance from a point to the middle of the nearest stroke.
    double DistanceTo(double x, double y) const;

private:
    struct Segment {
        double startX;
        double startY;
        double endX;
        double endY;
    };

    void AddGlyph(std::string_view strokes, double left);

    std::vector<Segment> m_segments;
    double m_width = 0.0;
};

}  // namespace KivFisheyeTools

#endif
