#ifndef KIVFISHEYE_TESTS_WALL_MODEL_H
#define KIVFISHEYE_TESTS_WALL_MODEL_H

#include <cstdint>
#include <iosfwd>
#include <vector>

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

/// The byte offset of each output pixel's source pixel in single precision, row by row: as the
/// direct conversion samples them, and as a table holds them.
std::vector<int> DirectOffsets(const Wall& wall, int bytesPerPixel);
std::vector<int> TableOffsets(const Wall& wall, int bytesPerPixel);

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

#endif
