#ifndef KIVFISHEYE_TESTS_SAMPLED_PICTURE_H
#define KIVFISHEYE_TESTS_SAMPLED_PICTURE_H

#include <functional>
#include <vector>

#include "support/ClientFrame.h"
#include "support/PointList.h"

/// Which pixels of a coordinate picture a conversion shows in some rows of its output.
class SampledPicture {
public:
    SampledPicture(const ClientFrame& input, const ClientFrame& output, int firstRow, int rows);

    int Width() const { return m_width; }
    int Height() const { return m_height; }
    /// How many different pixels are shown.
    int Count() const { return static_cast<int>(m_middles.size()); }

    /// The greatest distance on the source between what neighbours in the output show.
    double Spacing() const { return m_spacing; }

    /// The largest of `measure(middle of the pixel)` over all pixels that are shown.
    double Largest(const std::function<double(const Point&)>& measure) const;

    /// Whether a pixel is shown whose middle is no farther from the point.
    bool HasWithin(double distance, const Point& point) const;

private:
    bool Has(int column, int row) const;

    int m_width;
    int m_height;
    std::vector<bool> m_isShown;
    std::vector<Point> m_middles;
    double m_spacing = 0.0;
};

#endif
