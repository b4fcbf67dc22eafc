#ifndef KIVFISHEYE_TESTS_WALL_MODEL_H
#define KIVFISHEYE_TESTS_WALL_MODEL_H

#include <cstdint>
#include <iosfwd>
#include <vector>

#include "support/KernelForm.h"
#include "support/PanoramaFrames.h"
#include "support/RingGenerator.h"

// Two models of a wall's panorama that share no code with the library: one repeats its single
// precision arithmetic in the plainest way, the other is geometry in double precision.

/// One panorama of a camera that looks ahead, and how many degrees it reaches up and down.
struct Wall : PanoramaFrames {
    float wallViewAngle = 45.0F;
};

std::ostream& operator<<(std::ostream& out, const Wall& wall);

/// A wall between frames without row padding.
Wall PackedWall(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel);

/// The byte offset of each output pixel's source pixel in a form's single precision, row by row: as
/// the direct conversion samples them, and as a table holds them.
std::vector<int> DirectOffsets(const Wall& wall, int bytesPerPixel,
                               KernelForm form = FormOfDirectConversions());
std::vector<int> TableOffsets(const Wall& wall, int bytesPerPixel,
                              KernelForm form = FormOfTables());

/// Makes walls of all shapes, the same ones for the same seed: small sides, odd strides, radii
/// within and beyond the frame, all view angles.
class WallGenerator : public RingGenerator {
public:
    using RingGenerator::RingGenerator;
    Wall NextWall(int bytesPerPixel);
};

/// Where an output pixel looks, by the ideal lens.
struct ExactLook {
    double offAxis;  ///< radians from the lens axis
    double u;        ///< from the frame's centre to the right, as a fraction of the width
    double v;        ///< from the frame's centre downward, as a fraction of the height
    double column;   ///< in source pixels
    double row;

    bool IsInside(double margin) const;
};

ExactLook LookOf(const Wall& wall, int x, int y);

/// How a panorama is made.
enum class Path { Direct, Table };

/// How far a form's u and v may be from the exact ones, for a lens of this radius. In lanes that is
/// what the arctangent is off, and for direct conversions the processor's estimate of 1 / r.
double ErrorOfFraction(KernelForm form, Path path, float radius);

#endif
