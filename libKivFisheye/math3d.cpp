#include "math3d.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

template <class T>
constexpr T kIdentity33[] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
template <class T>
constexpr T kIdentity44[] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};

template <class T>
struct Vector {
    explicit Vector(const T* v) : x(v[0]), y(v[1]), z(v[2]) {}
    Vector(T vx, T vy, T vz) : x(vx), y(vy), z(vz) {}

    void Store(T* v) const {
        v[0] = x;
        v[1] = y;
        v[2] = z;
    }

    T x;
    T y;
    T z;
};

template <class T>
Vector<T> operator+(const Vector<T>& a, const Vector<T>& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

template <class T>
Vector<T> operator-(const Vector<T>& a, const Vector<T>& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

template <class T>
Vector<T> operator*(const Vector<T>& v, T factor) {
    return {v.x * factor, v.y * factor, v.z * factor};
}

template <class T>
T Dot(const Vector<T>& a, const Vector<T>& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

template <class T>
Vector<T> Cross(const Vector<T>& a, const Vector<T>& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <class T>
Vector<T> Normalized(const Vector<T>& v) {
    const T length = std::sqrt(Dot(v, v));
    return {v.x / length, v.y / length, v.z / length};
}

template <class T>
T DistanceSquared(const Vector<T>& a, const Vector<T>& b) {
    const Vector<T> difference = a - b;
    return Dot(difference, difference);
}

template <std::ptrdiff_t size, class T>
void Multiply(T* product, const T* a, const T* b) {
    for (std::ptrdiff_t column = 0; column < size; ++column) {
        for (std::ptrdiff_t row = 0; row < size; ++row) {
            T sum = a[row] * b[column * size];
            for (std::ptrdiff_t k = 1; k < size; ++k) {
                sum += a[k * size + row] * b[column * size + k];
            }
            product[column * size + row] = sum;
        }
    }
}

/// Writes the upper left 3 by 3 of a matrix whose columns are `size` values long; false for an axis
/// of length 0.
template <std::ptrdiff_t size, class T>
bool Rotate(T* m, T angle, T x, T y, T z) {
    const T length = std::sqrt(x * x + y * y + z * z);
    if (length == 0) {
        return false;
    }
    x /= length;
    y /= length;
    z /= length;
    const double wideAngle = angle;
    const auto s = static_cast<T>(std::sin(wideAngle));
    const auto c = static_cast<T>(std::cos(wideAngle));
    const T one = 1 - c;
    const T columns[3][3] = {{one * (x * x) + c, one * (x * y) + z * s, one * (z * x) - y * s},
                             {one * (x * y) - z * s, one * (y * y) + c, one * (y * z) + x * s},
                             {one * (z * x) + y * s, one * (y * z) - x * s, one * (z * z) + c}};
    for (std::ptrdiff_t column = 0; column < 3; ++column) {
        std::copy(columns[column], columns[column] + 3, m + column * size);
    }
    return true;
}

template <class T>
void Rotation33(T* m, T angle, T x, T y, T z) {
    if (!Rotate<3>(m, angle, x, y, z)) {
        m3dLoadIdentity33(m);
    }
}

template <class T>
void Rotation44(T* m, T angle, T x, T y, T z) {
    m3dLoadIdentity44(m);
    Rotate<4>(m, angle, x, y, z);
}

/// The determinant of what remains of four groups of four without group `i` and, in each group,
/// element `j`.
template <class T>
T DetIJ(const T* m, int i, int j) {
    T minor[3][3];
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            minor[row][column] =
                m[(row < i ? row : row + 1) * 4 + (column < j ? column : column + 1)];
        }
    }
    const auto& [top, middle, bottom] = minor;
    return top[0] * (middle[1] * bottom[2] - middle[2] * bottom[1]) -
           top[1] * (middle[0] * bottom[2] - middle[2] * bottom[0]) +
           top[2] * (middle[0] * bottom[1] - middle[1] * bottom[0]);
}

template <class T>
void Invert(T* inverse, const T* m) {
    T det = 0;
    for (int i = 0; i < 4; ++i) {
        const T term = m[i] * DetIJ(m, 0, i);
        det += i % 2 == 0 ? term : -term;
    }
    const T scale = 1 / det;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) {
            const T cofactor = DetIJ(m, j, i);
            inverse[i * 4 + j] = scale * ((i + j) % 2 == 0 ? cofactor : -cofactor);
        }
    }
}

/// A matrix times a point with a fourth coordinate.
void Transform(float (&out)[4], const float* m, const float (&v)[4]) {
    for (int row = 0; row < 4; ++row) {
        out[row] = m[row] * v[0] + m[4 + row] * v[1] + m[8 + row] * v[2] + m[12 + row] * v[3];
    }
}

/// Fills `clip` with a point in the cube before the eye, divided by its distance unless that is
/// next to nothing.
void ProjectToCube(float (&clip)[4], const float* modelView, const float* projection,
                   const float* point) {
    constexpr float kNearestDivisor = 1e-6F;
    const float world[4] = {point[0], point[1], point[2], 1.0F};
    float eye[4];
    Transform(eye, modelView, world);
    Transform(clip, projection, eye);
    if (!(std::fabs(clip[3]) < kNearestDivisor)) {
        const float inverse = 1.0F / clip[3];
        for (int i = 0; i < 3; ++i) {
            clip[i] *= inverse;
        }
    }
}

float PlaceInViewport(float coordinate, int corner, int side) {
    const auto offset = static_cast<float>(corner);
    const float place = offset + (coordinate + 1.0F) * static_cast<float>(side) * 0.5F;
    // Taken off again, for what rounding makes of the way: clients rely on it.
    return corner != 0 ? place - offset : place;
}

template <class T>
void PlaneThrough(T* plane, const T* p1, const T* p2, const T* p3) {
    const Vector<T> a(p1);
    const Vector<T> c(p3);
    const Vector<T> normal = Normalized(Cross(c - a, Vector<T>(p2) - a));
    normal.Store(plane);
    plane[3] = -Dot(normal, c);
}

template <class T>
void Spline(T* out, const T* p0, const T* p1, const T* p2, const T* p3, T t) {
    const T t2 = t * t;
    const T t3 = t2 * t;
    for (int i = 0; i < 3; ++i) {
        const T cubic = p3[i] + (3 * p1[i] - p0[i] - 3 * p2[i]);
        const T square = p0[i] + p0[i] - 5 * p1[i] + 4 * p2[i] - p3[i];
        const T line = p1[i] + p1[i] + (p2[i] - p0[i]) * t;
        out[i] = static_cast<T>(0.5) * (t3 * cubic + (line + t2 * square));
    }
}

template <class T>
T RaySphere(const T* origin, const T* unitDirection, const T* center, T radius) {
    const Vector<T> v = Vector<T>(center) - Vector<T>(origin);
    const T b = Dot(v, Vector<T>(unitDirection));
    const T discriminant = radius * radius - Dot(v, v) + b * b;
    return discriminant > 0 ? b - std::sqrt(discriminant) : discriminant;
}

template <class T>
T Smooth(T edge1, T edge2, T x) {
    const T t = (x - edge1) / (edge2 - edge1);
    const T clamped = t < 0 ? 0 : (t > 1 ? 1 : t);
    return clamped * clamped * (3 - 2 * clamped);
}

template <class T>
void PlanarShadow(T* m, const T* plane, const float* lightPosition) {
    const T light[4] = {lightPosition[0], lightPosition[1], lightPosition[2], 1};
    const T dot =
        plane[0] * light[0] + plane[1] * light[1] + plane[2] * light[2] + plane[3] * light[3];
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 4; ++row) {
            m[column * 4 + row] = (row == column ? dot : 0) - light[row] * plane[column];
        }
    }
}

template <class T>
T ClosestPoint(T* point, const T* origin, const T* unitDirection, const T* target) {
    const Vector<T> start(origin);
    const Vector<T> direction(unitDirection);
    const Vector<T> goal(target);
    const Vector<T> closest = start + direction * Dot(direction, goal - start);
    closest.Store(point);
    return DistanceSquared(closest, goal);
}

}  // namespace

// The overloads of one function stand together, and each is one line.
// clang-format off
void m3dLoadIdentity33(float* m) { std::copy_n(kIdentity33<float>, 9, m); }
void m3dLoadIdentity33(double* m) { std::copy_n(kIdentity33<double>, 9, m); }
void m3dLoadIdentity44(float* m) { std::copy_n(kIdentity44<float>, 16, m); }
void m3dLoadIdentity44(double* m) { std::copy_n(kIdentity44<double>, 16, m); }

float m3dGetDistanceSquared3(const float* a, const float* b) { return DistanceSquared(Vector(a), Vector(b)); }
double m3dGetDistanceSquared3(const double* a, const double* b) { return DistanceSquared(Vector(a), Vector(b)); }

void m3dMatrixMultiply33(float* product, const float* a, const float* b) { Multiply<3>(product, a, b); }
void m3dMatrixMultiply33(double* product, const double* a, const double* b) { Multiply<3>(product, a, b); }
void m3dMatrixMultiply44(float* product, const float* a, const float* b) { Multiply<4>(product, a, b); }
void m3dMatrixMultiply44(double* product, const double* a, const double* b) { Multiply<4>(product, a, b); }

void m3dRotationMatrix33(float* m, float angle, float x, float y, float z) { Rotation33(m, angle, x, y, z); }
void m3dRotationMatrix33(double* m, double angle, double x, double y, double z) { Rotation33(m, angle, x, y, z); }
void m3dRotationMatrix44(float* m, float angle, float x, float y, float z) { Rotation44(m, angle, x, y, z); }
void m3dRotationMatrix44(double* m, double angle, double x, double y, double z) { Rotation44(m, angle, x, y, z); }

void m3dInvertMatrix44(float* inverse, const float* m) { Invert(inverse, m); }
void m3dInvertMatrix44(double* inverse, const double* m) { Invert(inverse, m); }

void m3dFindNormal(float* normal, const float* p1, const float* p2, const float* p3) { Cross(Vector(p1) - Vector(p2), Vector(p2) - Vector(p3)).Store(normal); }
void m3dFindNormal(double* normal, const double* p1, const double* p2, const double* p3) { Cross(Vector(p1) - Vector(p2), Vector(p2) - Vector(p3)).Store(normal); }

void m3dGetPlaneEquation(float* plane, const float* p1, const float* p2, const float* p3) { PlaneThrough(plane, p1, p2, p3); }
void m3dGetPlaneEquation(double* plane, const double* p1, const double* p2, const double* p3) { PlaneThrough(plane, p1, p2, p3); }

void m3dCatmullRom(float* out, const float* p0, const float* p1, const float* p2, const float* p3, float t) { Spline(out, p0, p1, p2, p3, t); }
void m3dCatmullRom(double* out, const double* p0, const double* p1, const double* p2, const double* p3, double t) { Spline(out, p0, p1, p2, p3, t); }

float m3dRaySphereTest(const float* origin, const float* unitDirection, const float* center, float radius) { return RaySphere(origin, unitDirection, center, radius); }
double m3dRaySphereTest(const double* origin, const double* unitDirection, const double* center, double radius) { return RaySphere(origin, unitDirection, center, radius); }

float m3dSmoothStep(float edge1, float edge2, float x) { return Smooth(edge1, edge2, x); }
double m3dSmoothStep(double edge1, double edge2, double x) { return Smooth(edge1, edge2, x); }

void m3dMakePlanarShadowMatrix(float* m, const float* plane, const float* lightPosition) { PlanarShadow(m, plane, lightPosition); }
void m3dMakePlanarShadowMatrix(double* m, const double* plane, const float* lightPosition) { PlanarShadow(m, plane, lightPosition); }

float m3dClosestPointOnRay(float* point, const float* origin, const float* unitDirection, const float* target) { return ClosestPoint(point, origin, unitDirection, target); }
double m3dClosestPointOnRay(double* point, const double* origin, const double* unitDirection, const double* target) { return ClosestPoint(point, origin, unitDirection, target); }
// clang-format on

void m3dMakePerspectiveMatrix(float* m, float fov, float aspect, float zNear, float zFar) {
    const float yMax = std::tan(fov * 0.5F) * zNear;
    const float xMax = yMax * aspect;
    const float width = xMax + xMax;
    const float height = yMax + yMax;
    const float depth = zFar - zNear;
    m3dLoadIdentity44(m);
    m[0] = (zNear + zNear) / width;
    m[5] = (zNear + zNear) / height;
    m[8] = (xMax - xMax) / width;
    m[9] = (yMax - yMax) / height;
    m[10] = -((zNear + zFar) / depth);
    m[11] = -1.0F;
    m[14] = -((zNear * zFar + zNear * zFar) / depth);
    m[15] = 0.0F;
}

void m3dMakeOrthographicMatrix(float* m, float left, float right, float bottom, float top,
                               float zNear, float zFar) {
    m3dLoadIdentity44(m);
    m[0] = 2.0F / (right - left);
    m[5] = 2.0F / (top - bottom);
    m[10] = -2.0F / (zFar - zNear);
    m[12] = -((left + right) / (right - left));
    m[13] = -((bottom + top) / (top - bottom));
    m[14] = -((zNear + zFar) / (zFar - zNear));
}

void m3dProjectXY(float* out, const float* modelView, const float* projection, const int* viewport,
                  const float* point) {
    float clip[4];
    ProjectToCube(clip, modelView, projection, point);
    out[0] = PlaceInViewport(clip[0], viewport[0], viewport[2]);
    out[1] = PlaceInViewport(clip[1], viewport[1], viewport[3]);
}

void m3dProjectXYZ(float* out, const float* modelView, const float* projection, const int* viewport,
                   const float* point) {
    float clip[4];
    ProjectToCube(clip, modelView, projection, point);
    out[0] = PlaceInViewport(clip[0], viewport[0], viewport[2]);
    out[1] = PlaceInViewport(clip[1], viewport[1], viewport[3]);
    out[2] = clip[2];
}

void m3dCalculateTangentBasis(float* tangent, const float (*triangle)[3],
                              const float (*texCoords)[2], const float* normal) {
    const Vector<float> origin(triangle[0]);
    const Vector<float> edge1 = Vector(triangle[1]) - origin;
    const Vector<float> edge2 = Vector(triangle[2]) - origin;
    const float u1 = texCoords[1][0] - texCoords[0][0];
    const float u2 = texCoords[2][0] - texCoords[0][0];
    const float v1 = texCoords[1][1] - texCoords[0][1];
    const float v2 = texCoords[2][1] - texCoords[0][1];
    const float scale = 1.0F / (u1 * v2 - u2 * v1);
    const Vector<float> along = Normalized((edge1 * v2 - edge2 * v1) * scale);
    const Vector<float> up(normal);
    Normalized(Cross(Cross(up, along), up)).Store(tangent);
}
