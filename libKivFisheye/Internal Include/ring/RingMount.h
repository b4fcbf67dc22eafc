#ifndef KIVFISHEYE_RING_MOUNT_H
#define KIVFISHEYE_RING_MOUNT_H

// A ceiling and a table camera see the horizon as a ring around the frame's centre. All that sets
// the two mounts apart stands here: which radius belongs to the panorama's first row, and which way
// the angle runs along a table's columns.

namespace ring {

constexpr float kFullTurn = 6.28318548F;

/// A value at the first and at the last of evenly spaced rows or columns.
struct Span {
    float first;
    float last;
};

/// The lens looks up. The panorama runs from the zenith at its top to the horizon.
struct TableMount {
    static constexpr Span Radii(float inner, float outer) { return {inner, outer}; }
    static constexpr Span Angles(float turn) { return {0.0F, turn}; }
};

/// The lens looks down. The panorama runs from the horizon at its top to the nadir, and the angle
/// falls, so that the picture is not mirrored.
struct CeilingMount {
    static constexpr Span Radii(float inner, float outer) { return {outer, inner}; }
    static constexpr Span Angles(float turn) { return {turn, 0.0F}; }
};

}  // namespace ring

#endif
