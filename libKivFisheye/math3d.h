#ifndef KIVFISHEYE_MATH3D_H
#define KIVFISHEYE_MATH3D_H

#include "KivFisheyeExport.h"

/// Vectors and matrices for clients that draw in three dimensions. The library itself needs none of
/// them.
///
/// Vectors are arrays of three values, planes of four: a normal and the distance that is added to
/// its product with a point. Matrices are arrays of 9 or 16 values, column after column, as OpenGL
/// has them; of a 4 by 4 matrix the last four are the translation and a 1. Angles are radians.
/// Results go where the first pointer leads, which must be none of the arguments' places. Nothing
/// is checked or reported: a division by zero gives infinity or NaN. All functions may run on any
/// thread.

/// The identity.
KIVFISHEYE_API void m3dLoadIdentity33(float* m);
KIVFISHEYE_API void m3dLoadIdentity33(double* m);
KIVFISHEYE_API void m3dLoadIdentity44(float* m);
KIVFISHEYE_API void m3dLoadIdentity44(double* m);

/// The square of the distance between two points.
KIVFISHEYE_API float m3dGetDistanceSquared3(const float* a, const float* b);
KIVFISHEYE_API double m3dGetDistanceSquared3(const double* a, const double* b);

/// `a` times `b`: what does `b` first and `a` then.
KIVFISHEYE_API void m3dMatrixMultiply33(float* product, const float* a, const float* b);
KIVFISHEYE_API void m3dMatrixMultiply33(double* product, const double* a, const double* b);
KIVFISHEYE_API void m3dMatrixMultiply44(float* product, const float* a, const float* b);
KIVFISHEYE_API void m3dMatrixMultiply44(double* product, const double* a, const double* b);

/// A perspective projection onto the cube from -1 to 1. `fov` is the view's height in radians,
/// `aspect` its width over its height; `zNear` and `zFar` are distances from the eye, which looks
/// along -z.
KIVFISHEYE_API void m3dMakePerspectiveMatrix(float* m, float fov, float aspect, float zNear,
                                             float zFar);

/// A parallel projection of the box between these planes onto the cube from -1 to 1.
KIVFISHEYE_API void m3dMakeOrthographicMatrix(float* m, float left, float right, float bottom,
                                              float top, float zNear, float zFar);

/// The rotation by `angle` about an axis of any length, anticlockwise as seen from its tip. An axis
/// of length 0 gives the identity.
KIVFISHEYE_API void m3dRotationMatrix33(float* m, float angle, float x, float y, float z);
KIVFISHEYE_API void m3dRotationMatrix33(double* m, double angle, double x, double y, double z);
KIVFISHEYE_API void m3dRotationMatrix44(float* m, float angle, float x, float y, float z);
KIVFISHEYE_API void m3dRotationMatrix44(double* m, double angle, double x, double y, double z);

/// The inverse by cofactors. A singular matrix gives values that are not finite.
KIVFISHEYE_API void m3dInvertMatrix44(float* inverse, const float* m);
KIVFISHEYE_API void m3dInvertMatrix44(double* inverse, const double* m);

/// Where a point stands in a viewport, given by its left, bottom, width and height in pixels,
/// counted from the viewport's own corner. A point whose distance before the eye is below 1e-6 is
/// not divided by it. `m3dProjectXYZ` adds the depth, from -1 to 1.
KIVFISHEYE_API void m3dProjectXY(float* out, const float* modelView, const float* projection,
                                 const int* viewport, const float* point);
KIVFISHEYE_API void m3dProjectXYZ(float* out, const float* modelView, const float* projection,
                                  const int* viewport, const float* point);

/// A normal of the triangle, as long as twice its area: (p1 - p2) x (p2 - p3).
KIVFISHEYE_API void m3dFindNormal(float* normal, const float* p1, const float* p2, const float* p3);
KIVFISHEYE_API void m3dFindNormal(double* normal, const double* p1, const double* p2,
                                  const double* p3);

/// The plane through three points; its normal of length 1 is that of (p3 - p1) x (p2 - p1).
KIVFISHEYE_API void m3dGetPlaneEquation(float* plane, const float* p1, const float* p2,
                                        const float* p3);
KIVFISHEYE_API void m3dGetPlaneEquation(double* plane, const double* p1, const double* p2,
                                        const double* p3);

/// A point of the Catmull-Rom spline: `p1` at a `t` of 0, `p2` at 1.
KIVFISHEYE_API void m3dCatmullRom(float* out, const float* p0, const float* p1, const float* p2,
                                  const float* p3, float t);
KIVFISHEYE_API void m3dCatmullRom(double* out, const double* p0, const double* p1, const double* p2,
                                  const double* p3, double t);

/// How far along the ray the sphere begins. A ray that misses or only touches gives the
/// discriminant instead, which is not above 0.
KIVFISHEYE_API float m3dRaySphereTest(const float* origin, const float* unitDirection,
                                      const float* center, float radius);
KIVFISHEYE_API double m3dRaySphereTest(const double* origin, const double* unitDirection,
                                       const double* center, double radius);

/// The direction of length 1 in which a triangle's first texture coordinate grows, made
/// perpendicular to `normal`.
KIVFISHEYE_API void m3dCalculateTangentBasis(float* tangent, const float (*triangle)[3],
                                             const float (*texCoords)[2], const float* normal);

/// 0 up to `edge1`, 1 from `edge2`, and a cubic with level ends between them.
KIVFISHEYE_API float m3dSmoothStep(float edge1, float edge2, float x);
KIVFISHEYE_API double m3dSmoothStep(double edge1, double edge2, double x);

/// Projects geometry onto a plane as a light at a point does. The light is in single precision for
/// both.
KIVFISHEYE_API void m3dMakePlanarShadowMatrix(float* m, const float* plane,
                                              const float* lightPosition);
KIVFISHEYE_API void m3dMakePlanarShadowMatrix(double* m, const double* plane,
                                              const float* lightPosition);

/// The point nearest to `target` on the ray's line, also behind its origin, and the square of their
/// distance.
KIVFISHEYE_API float m3dClosestPointOnRay(float* point, const float* origin,
                                          const float* unitDirection, const float* target);
KIVFISHEYE_API double m3dClosestPointOnRay(double* point, const double* origin,
                                           const double* unitDirection, const double* target);

#endif
