#ifndef KIVFISHEYE_TESTS_VCAM_ROOM_H
#define KIVFISHEYE_TESTS_VCAM_ROOM_H

#include <vector>

#include "KivFisheyeLib.h"
#include "support/CoordinateFrame.h"
#include "support/VCamModel.h"

// The virtual camera and a room around it in double precision, from geometry alone: no matrices and
// nothing of the library's arithmetic.

/// A vector as the fisheye camera sees it: to the right and to the top of its picture, and out of
/// it, away from where it looks.
struct Vector3 {
    double x;
    double y;
    double z;

    double Length() const;
};

Vector3 operator+(const Vector3& a, const Vector3& b);
Vector3 operator-(const Vector3& a, const Vector3& b);
Vector3 operator*(double factor, const Vector3& a);
double Dot(const Vector3& a, const Vector3& b);
Vector3 Cross(const Vector3& a, const Vector3& b);

double RadiansOf(double degrees);

/// A point of a picture in pixels; whole numbers are the centres of pixels.
struct PicturePoint {
    double column;
    double row;
};

double Distance(const PicturePoint& a, const PicturePoint& b);

/// Where a view's upright and sideways directions and its middle are.
struct ViewAxes {
    Vector3 forward;
    Vector3 right;
    Vector3 up;
};

/// The axes that a camera's pan and tilt in degrees stand for.
ViewAxes AxesOf(KivFisheyeLib::MountType mount, double pan, double tilt);

/// The equidistant lens of a source frame.
class ExactLens {
public:
    explicit ExactLens(const VCamFrame& frame);

    /// Where the source shows a direction.
    PicturePoint PointOf(const Vector3& direction) const;
    /// The direction that a point of the source shows.
    Vector3 DirectionOf(const PicturePoint& point) const;
    /// The angle at the eye of one source pixel, at most.
    double AngleOfPixel() const;

private:
    VCamFrame m_frame;
};

/// One view: the frame's camera, with axes in place of its matrix.
class ExactVCam {
public:
    ExactVCam(const VCamFrame& frame, const ViewAxes& axes);

    /// The angle between the lens axis and what an output pixel shows; 90 degrees is the rim.
    double OffAxis(const PicturePoint& output) const;
    /// The direction that an output pixel shows.
    Vector3 DirectionAt(const PicturePoint& output) const;
    /// The source point of an output pixel.
    PicturePoint SourceOf(const PicturePoint& output) const;
    /// How many output pixels a radian is, at a point of the output, where it is most.
    double PixelsPerRadian(const PicturePoint& output) const;

private:
    Vector3 RayOf(const PicturePoint& output) const;

    VCamFrame m_frame;
    ViewAxes m_axes;
    ExactLens m_lens;
    double m_halfHeight;
};

/// A straight line of the room between two points, seen from the camera.
struct RoomEdge {
    Vector3 from;
    Vector3 to;
    bool isVertical;
};

/// The edges of an empty room, of 6 by 5 by 3 metres, and of a door: around a camera under the
/// ceiling, on a table, or on a wall. The first point of a vertical edge is the lower one.
std::vector<RoomEdge> EdgesOfRoom(KivFisheyeLib::MountType mount);

/// The point in the middle of what goes to a source pixel, for a form that cuts off or rounds.
PicturePoint MiddleOf(VCamForm form, const PixelPlace& place);

/// The directions that the pixels of an output picture show; zeros for black ones.
std::vector<Vector3> DirectionsOf(VCamForm form, const VCamFrame& frame,
                                  const SourcePlaces& places);

/// Where the edge lies in an output picture: between neighbours that see it on either side.
std::vector<PicturePoint> CrossingsOf(const RoomEdge& edge, const VCamFrame& frame,
                                      const std::vector<Vector3>& directions);

/// A straight line fitted through points.
struct FittedLine {
    PicturePoint middle;
    /// Of length 1, downwards.
    PicturePoint along;
    /// The largest distance of a point from the line.
    double residual;
};

FittedLine LineThrough(const std::vector<PicturePoint>& points);

#endif
