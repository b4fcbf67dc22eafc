#ifndef KIVFISHEYE_TESTS_RING_MODEL_H
#define KIVFISHEYE_TESTS_RING_MODEL_H

#include <iosfwd>
#include <vector>

#include "support/KernelForm.h"
#include "support/PanoramaFrames.h"

// Two models of the unrolled ring that share no code with the library: one repeats its single
// precision arithmetic in the plainest way, the other is geometry in double precision.

enum class Mount { Table, Ceiling };

/// One unrolling.
struct Ring : PanoramaFrames {
    float innerRadiusRatio = 0.0F;
};

std::ostream& operator<<(std::ostream& out, const Ring& ring);

/// A ring between frames without row padding.
Ring PackedRing(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel);

/// The byte offset of each output pixel's source pixel in a form's single precision, row by row: as
/// the direct conversion samples them at `pan` degrees, and as a table holds them.
std::vector<int> DirectOffsets(Mount mount, const Ring& ring, int bytesPerPixel, float pan,
                               KernelForm form = FormOfDirectConversions());
std::vector<int> TableOffsets(Mount mount, const Ring& ring, int bytesPerPixel,
                              KernelForm form = FormOfTables());

/// The offsets with each row turned to the left by `shift` columns.
std::vector<int> TurnedOffsets(const std::vector<int>& offsets, const Ring& ring, int shift);

/// The same of a dual panorama. Offsets of an odd last row are only in a table.
std::vector<int> DualDirectOffsets(Mount mount, const Ring& ring, int bytesPerPixel, float pan,
                                   KernelForm form = FormOfDirectConversions());
std::vector<int> DualTableOffsets(Mount mount, const Ring& ring, int bytesPerPixel,
                                  KernelForm form = FormOfTables());

/// By how many columns a dual panorama moves to the right within its half, and whether the halves
/// exchange their places.
struct DualTurn {
    int shift;
    bool isExchanged;
};

/// The turn by a pan of at least 0, in single precision.
DualTurn DualTurnOf(int width, float pan);

/// A dual table's offsets turned so: what leaves one half on the right enters the other on the
/// left. Without an odd last row.
std::vector<int> DualTurnedOffsets(const std::vector<int>& offsets, const Ring& ring,
                                   DualTurn turn);

/// Stores a dual panorama's pixels in the order of a form's direct conversion: row by row of both
/// halves at once, and of each row as many pixels as the form takes at once. A pixel without a
/// source is left as the clearing of its row made it.
void PaintBothHalves(const std::vector<int>& offsets, const Ring& ring, int bytesPerPixel,
                     KernelForm form, const std::vector<unsigned char>& src,
                     std::vector<unsigned char>& dst);

/// The columns' angles as single precision reaches them: step by step, or in lanes that each go on
/// by four steps at once.
std::vector<float> SteppedAngles(float first, float last, int columns);
std::vector<float> AnglesOfForm(KernelForm form, float first, float last, int columns);

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
    /// The direct conversion at `pan` degrees, and the table, each in a form.
    static ExactRing Direct(Mount mount, const Ring& ring, float pan,
                            KernelForm form = FormOfDirectConversions());
    static ExactRing Table(Mount mount, const Ring& ring, KernelForm form = FormOfTables());
    /// The same of a dual panorama; its height is even.
    static ExactRing DualDirect(Mount mount, const Ring& ring, float pan,
                                KernelForm form = FormOfDirectConversions());
    static ExactRing DualTable(Mount mount, const Ring& ring, KernelForm form = FormOfTables());

    /// Takes the columns' angles from `angles` instead of spacing them exactly.
    ExactRing WithAngles(const std::vector<float>& angles) const;

    ExactPoint PointAt(int x, int y) const;
    KernelForm Form() const { return m_form; }

    /// The largest distance of single precision from the exact u and v, and column and row.
    double ErrorOfFraction() const;
    double ErrorOfColumn() const;
    double ErrorOfRow() const;

private:
    ExactRing(Mount mount, const Ring& ring, KernelForm form, int rows, double first, double last);

    Mount m_mount;
    KernelForm m_form;
    Ring m_ring;
    int m_rows;
    double m_firstAngle;
    double m_lastAngle;
    double m_angleError;
    double m_sineError;
    std::vector<float> m_givenAngles;
};

#endif
