#include "support/RingPictures.h"

#include <gtest/gtest.h>

#include <optional>

#include "support/CoordinateFrame.h"

namespace {

/// Compares pixels with their exact points and counts how many are known exactly.
class PlaceCheck {
public:
    explicit PlaceCheck(const ExactRing& exact)
        : m_form(exact.Form()),
          m_fractionError(exact.ErrorOfFraction()),
          m_columnError(exact.ErrorOfColumn()),
          m_rowError(exact.ErrorOfRow()) {}

    /// False when the pixel cannot show the point.
    bool Accepts(const std::optional<PixelPlace>& place, const ExactPoint& point) {
        ++m_pixels;
        const bool mayBeBlack = !point.IsInside(-m_fractionError);
        const bool mayBeSampled = point.IsInside(m_fractionError);
        if (!place.has_value()) {
            m_decided += mayBeSampled ? 0 : 1;
            return mayBeBlack;
        }
        const bool columnIsKnown = IsKnown(point.column, m_columnError);
        const bool rowIsKnown = IsKnown(point.row, m_rowError);
        m_decided += !mayBeBlack && columnIsKnown && rowIsKnown ? 1 : 0;
        return mayBeSampled && MayShow(place->column, point.column, m_columnError) &&
               MayShow(place->row, point.row, m_rowError);
    }

    bool IsSharp() const { return m_columnError < 0.5 && m_rowError < 0.5; }
    double ShareDecided() const { return static_cast<double>(m_decided) / m_pixels; }

private:
    bool MayShow(int index, double position, double error) const {
        return index == PixelShownAt(m_form, position - error) ||
               index == PixelShownAt(m_form, position + error);
    }

    bool IsKnown(double position, double error) const {
        return PixelShownAt(m_form, position - error) == PixelShownAt(m_form, position + error);
    }

    KernelForm m_form;
    double m_fractionError;
    double m_columnError;
    double m_rowError;
    int m_pixels = 0;
    int m_decided = 0;
};

}  // namespace

void ExpectRingShows(const std::vector<unsigned char>& frame, const Ring& ring, int bytesPerPixel,
                     const ExactRing& exact) {
    PlaceCheck check(exact);
    ASSERT_TRUE(check.IsSharp()) << ring;
    for (int y = 0; y < ring.dstHeight; ++y) {
        for (int x = 0; x < ring.dstWidth; ++x) {
            const auto place =
                PlaceIn(frame.data() + y * ring.dstStride + x * bytesPerPixel, bytesPerPixel);
            const ExactPoint point = exact.PointAt(x, y);
            ASSERT_TRUE(check.Accepts(place, point))
                << "pixel (" << x << ", " << y << ") shows "
                << (place ? ::testing::PrintToString(*place) : "black") << " where ("
                << point.column << ", " << point.row << ") was looked at; " << ring;
        }
    }
    EXPECT_GT(check.ShareDecided(), 0.5) << ring;
}

std::vector<Ring> MappedRings(int bytesPerPixel) {
    struct Size {
        int srcWidth;
        int srcHeight;
        int dstWidth;
        int dstHeight;
    };
    struct Lens {
        float radiusX;
        float radiusY;
        float ratio;
    };
    std::vector<Ring> rings;
    for (const Size& size : {Size{101, 83, 96, 31}, Size{640, 480, 368, 53}, Size{37, 211, 41, 64},
                             Size{300, 22, 128, 17}, Size{720, 719, 200, 40}}) {
        for (const Lens& lens :
             {Lens{0.5F, 0.5F, 0.0F}, Lens{0.47F, 0.39F, 0.3F}, Lens{0.31F, 0.5F, 0.8F},
              Lens{1.0F, 0.9F, 0.1F}, Lens{0.5F, 0.75F, 0.55F}, Lens{0.05F, 0.6F, 0.0F}}) {
            Ring ring = PackedRing(size.srcWidth, size.srcHeight, size.dstWidth, size.dstHeight,
                                   bytesPerPixel);
            ring.srcStride += 3;
            ring.dstStride += 1;
            ring.radiusX = lens.radiusX;
            ring.radiusY = lens.radiusY;
            ring.innerRadiusRatio = lens.ratio;
            rings.push_back(ring);
        }
    }
    return rings;
}
