#ifndef KIVFISHEYE_TESTS_RING_MODEL_H
#define KIVFISHEYE_TESTS_RING_MODEL_H

#include <cstddef>
#include <iosfwd>
#include <vector>

// Two models of the unrolled ring that share no code with the library: one repeats its single
// precision arithmetic in the plainest way, the other is geometry in double precision.

enum class Mount { Table, Ceiling };

/// One unrolling: sizes in pixels, strides in bytes, and the lens as fractions of the frame.
struct Ring {
    int srcWidth = 0;
    int srcHeight = 0;
    int srcStride = 0;
    int dstWidth = 0;
    int dstHeight = 0;
    int dstStride = 0;
    float radiusX = 0.5F;
    float radiusY = 0.5F;
    float innerRadiusRatio = 0.0F;

    /// Bytes up to the end of the last row's last pixel, or of the last row's stride.
    std::size_t SourceBytes(int bytesPerPixel) const;
    std::size_t OutputBytes() const;
};

std::ostream& operator<<(std::ostream& out, const Ring& ring);

/// A ring between frames without row padding.
Ring PackedRing(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel);

/// The value that stands for an output pixel without a source pixel.
constexpr int kNoSource = -1;

/// The byte offset of each output pixel's source pixel in single precision, row by row: as the
/// direct conversion samples them at `pan` degrees, and as a table holds them.
std::vector<int> DirectOffsets(Mount mount, const Ring& ring, int bytesPerPixel, float pan);
std::vector<int> TableOffsets(Mount mount, const Ring& ring, int bytesPerPixel);

/// The offsets with each row turned to the left by `shift` columns.
std::vector<int> TurnedOffsets(const std::vector<int>& offsets, const Ring& ring, int shift);

/// What a conversion does to a row before it stores the row's pixels.
enum class RowStart { Cleared, Kept };

/// Stores the pixels at `offsets` of `src` into `frame`, byte by byte and in order. Pixels that
/// would end beyond the frame are left out.
void Paint(const std::vector<int>& offsets, const Ring& ring, int bytesPerPixel, RowStart rowStart,
           const std::vector<unsigned char>& src, std::vector<unsigned char>& frame);

/// The columns' angles as single precision reaches them step by step.
std::vector<float> SteppedAngles(float first, float last, int columns);

/// Where the centre of an output pixel looks in the source frame.
struct ExactPoint {
    double u;       ///< from the frame's centre to the right, as a fraction of the width
    double v;       ///< from the frame's centre upward, as a fraction of the height
    double column;  ///< in source pixels
    double row;

    bool IsInside(double margin) const;
};

/// The geometry of one unrolling in double precision, and how far single precision may be off.
class ExactRing {
public:
    /// The direct conversion at `pan` degrees, and the table.
    static ExactRing Direct(Mount mount, const Ring& ring, float pan);
    static ExactRing Table(Mount mount, const Ring& ring);

    /// Takes the columns' angles from `angles` instead of spacing them exactly.
    ExactRing WithAngles(const std::vector<float>& angles) const;

    ExactPoint PointAt(int x, int y) const;

    /// The largest distance of single precision from the exact u and v, and column and row.
    double ErrorOfFraction() const;
    double ErrorOfColumn() const;
    double ErrorOfRow() const;

private:
    ExactRing(Mount mount, const Ring& ring, double first, double last);

    Mount m_mount;
    Ring m_ring;
    double m_firstAngle;
    double m_lastAngle;
    double m_angleError;
    std::vector<float> m_givenAngles;
};

#endif
