#ifndef KIVFISHEYE_RING_MOUNT_H
#define KIVFISHEYE_RING_MOUNT_H

#include "ColumnAngles.h"
#include "Degrees.h"

// A ceiling and a table camera see the horizon as a ring around the frame's centre. All that sets
// the two mounts apart stands here: which radius belongs to a panorama's first row, and which way
// the angle runs along its columns.

namespace ring {

/// The lens looks up. A panorama runs from the zenith at its top to the horizon.
struct TableMount {
    static constexpr Span Radii(float inner, float outer) { return {inner, outer}; }
    /// The columns of a table, which knows no pan.
    static constexpr Span Angles(float turn) { return {0.0F, turn}; }
    /// The columns of a direct dual panorama, `pan` in radians.
    static constexpr Span HalfTurnAt(float pan) { return {-pan, kHalfTurn - pan}; }
};

/// The lens looks down. A panorama runs from the horizon at its top to the nadir, and the angle
/// falls, so that the picture is not mirrored.
struct CeilingMount {
    static constexpr Span Radii(float inner, float outer) { return {outer, inner}; }
    static constexpr Span Angles(float turn) { return {turn, 0.0F}; }
    static constexpr Span HalfTurnAt(float pan) { return {pan + kHalfTurn, pan}; }
};

}  // namespace ring

#endif
