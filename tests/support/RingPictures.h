#ifndef KIVFISHEYE_TESTS_RING_PICTURES_H
#define KIVFISHEYE_TESTS_RING_PICTURES_H

#include <vector>

#include "support/RingModel.h"

// Pictures of rings against the geometry in double precision. Sampling truncates, so a pixel shows
// the source pixel nearest to the exact point or the one before it, as long as single precision
// stays within half a pixel of that point; `ExactRing` bounds by how much it is off, and every case
// checks that bound first. Where the exact point is farther than the bound from a pixel's edge, the
// sampled pixel is known exactly.

/// Expects every pixel of a frame, made of a frame of coordinates, to show its point of the ring.
void ExpectRingShows(const std::vector<unsigned char>& frame, const Ring& ring, int bytesPerPixel,
                     const ExactRing& exact);

/// Lenses within the frame, beyond it, narrow, flat, with holes of all sizes, on frames of all
/// shapes. Sides are coprime to the columns so that few points fall on pixel edges.
std::vector<Ring> MappedRings(int bytesPerPixel);

#endif
