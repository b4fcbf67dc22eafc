#ifndef KIVFISHEYE_TESTS_RING_PICTURES_H
#define KIVFISHEYE_TESTS_RING_PICTURES_H

#include <vector>

#include "support/RingModel.h"

// Pictures of rings against the geometry in double precision. A pixel shows the source pixel that
// holds the exact point, or in lanes the nearest one, as long as the point is farther from the next
// one's than single precision is off. `ExactRing` bounds by how much that is, and every case checks
// first that it is less than half a pixel. Nearer to the edge the pixel beyond it may show as well.

/// Expects every pixel of a frame, made of a frame of coordinates, to show its point of the ring.
void ExpectRingShows(const std::vector<unsigned char>& frame, const Ring& ring, int bytesPerPixel,
                     const ExactRing& exact);

/// Lenses within the frame, beyond it, narrow, flat, with holes of all sizes, on frames of all
/// shapes. Sides are coprime to the columns so that few points fall on pixel edges.
std::vector<Ring> MappedRings(int bytesPerPixel);

#endif
