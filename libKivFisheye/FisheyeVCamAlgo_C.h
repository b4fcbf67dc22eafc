#ifndef KIVFISHEYE_FISHEYE_VCAM_ALGO_C_H
#define KIVFISHEYE_FISHEYE_VCAM_ALGO_C_H

#include <cmath>
#include <cstddef>

#include "OutputRows.h"
#include "Pixel.h"
#include "SourcePixels.h"
#include "vcam/VCamJob.h"
#include "vcam/VCamOutline.h"

/// The virtual camera in scalar arithmetic: the definition of the view. One pixel at a time, exact
/// roots and arccosines, and the source pixel that holds the point.
namespace FisheyeVCamAlgoNS::C {

struct Ray {
    float x;
    float y;
    float z;
};

/// The ray from the eye to a point of the rectangle, turned by the view's matrix.
inline Ray TurnedRay(const float (&m)[16], float x, float y, float z) {
    return {((x * m[0] + y * m[4]) + z * m[8]) + 0.0F * m[12],
            ((x * m[1] + y * m[5]) + z * m[9]) + 0.0F * m[13],
            ((x * m[2] + y * m[6]) + z * m[10]) + 0.0F * m[14]};
}

/// From the eye to the rectangle.
inline float RayDepth(float eyeZ, float nearPlane) {
    return (eyeZ - nearPlane) - eyeZ;
}

/// How far a ray turns off the lens axis, and the factor that makes its part in the image plane one
/// long. Along the axis the factor is infinite.
struct AxisAngle {
    explicit AxisAngle(const Ray& ray) {
        const float rr = ray.x * ray.x + ray.y * ray.y;
        const float length = std::sqrt(rr + ray.z * ray.z);
        theta = static_cast<float>(std::acos(static_cast<double>(-ray.z / length)));
        inverse = static_cast<float>(1.0 / std::sqrt(static_cast<double>(rr)));
    }

    float theta;
    float inverse;
};

/// Where rays meet the lens image.
class Lens {
public:
    explicit Lens(const vcam::VCamJob& job)
        : m_scale((job.eyeZ + 1.0F) * kRadiusPerRadian),
          m_maxAngle(kQuarterTurn / (job.eyeZ + 1.0F)),
          m_diameterX(job.radiusX + job.radiusX),
          m_diameterY(job.radiusY + job.radiusY) {}

    /// Calls `visit(u, v)` when the ray meets the lens inside the frame. A ray along the axis gives
    /// NaN and meets nothing.
    template <class Visit>
    void VisitPoint(const Ray& ray, Visit&& visit) const {
        const AxisAngle angle(ray);
        if (!(angle.theta <= m_maxAngle)) {
            return;
        }
        const float radius = m_scale * angle.theta;
        const float k = radius * angle.inverse;
        const float u = m_diameterX * (ray.x * k);
        if (!(std::fabs(u) <= 0.5F)) {
            return;
        }
        const float v = m_diameterY * (ray.y * k);
        if (!(std::fabs(v) <= 0.5F)) {
            return;
        }
        visit(u, v);
    }

private:
    float m_scale;
    float m_maxAngle;
    float m_diameterX;
    float m_diameterY;
};

template <class Pixel>
void Convert(const vcam::VCamJob& job) {
    if (!job.HasPixels(Pixel::kBytes)) {
        ClearRows(job.target, job.targetHeight, job.targetStride);
        return;
    }
    const SourcePixels<Pixel::kBytes> source(job.sourceWidth, job.sourceHeight, job.sourceStride);
    const vcam::ViewGrid view(job);
    const Lens lens(job);
    const float z = RayDepth(job.eyeZ, job.nearPlane);

    float y = view.top;
    for (int row = 0; row < job.targetHeight; ++row) {
        unsigned char* const target = job.target + std::ptrdiff_t{row} * job.targetStride;
        ClearRow(target, job.targetStride);
        const int columns = job.PixelsInsideTarget(row, Pixel::kBytes);
        float x = -view.right;
        for (int column = 0; column < columns; ++column) {
            lens.VisitPoint(TurnedRay(job.matrix, x, y, z), [&](float u, float v) {
                Pixel::Copy(job.source + source.OffsetAt(u, v),
                            target + std::ptrdiff_t{column} * Pixel::kBytes);
            });
            x += view.stepX;
        }
        y += view.stepY;
    }
}

template <unsigned long bits>
void CvtVCamRGB(int sourceWidth, int sourceHeight, int sourceStride, const unsigned char* source,
                float radiusX, float radiusY, float eyeZ, float fieldOfView, float aspect,
                float nearPlane, const float (&matrix)[16], int targetWidth, int targetHeight,
                int targetStride, unsigned char* target) {
    Convert<PixelT<bits>>({sourceWidth, sourceHeight, sourceStride, source, radiusX, radiusY, eyeZ,
                           fieldOfView, aspect, nearPlane, matrix, targetWidth, targetHeight,
                           targetStride, target});
}

/// Where rays meet the lens image, those beyond its rim held at it.
template <CoordinateOrientationType orientation>
struct OutlineLens {
    void WritePoint(const Ray& ray, float* point) const {
        const AxisAngle angle(ray);
        const float extentX = Smaller(scale.radiusX, scale.x * angle.theta);
        const float extentY = Smaller(scale.radiusY, scale.y * angle.theta);
        point[0] = extentX * (ray.x * angle.inverse) + centerX;
        point[1] = TowardsTop<orientation>(centerY, extentY * (ray.y * angle.inverse));
    }

    static float Smaller(float a, float b) { return a < b ? a : b; }

    float centerX;
    float centerY;
    vcam::OutlineScale scale;
};

template <CoordinateOrientationType orientation>
void CalculateVCamROICoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float eyeZ, float fieldOfView, float aspect, float nearPlane,
                                const float (&matrix)[16], float* coordinates, int count) {
    const int n = count / 4;
    if (n <= 0) {
        return;
    }
    const vcam::ViewEdges view({fieldOfView, aspect, nearPlane}, n);
    const OutlineLens<orientation> lens{centerX, centerY, {radiusX, radiusY, eyeZ}};
    const float z = RayDepth(eyeZ, nearPlane);
    float* const left = SideOf(coordinates, n, 0);
    float* const bottom = SideOf(coordinates, n, 1);
    float* const right = SideOf(coordinates, n, 2);
    float* const top = SideOf(coordinates, n, 3);
    float leftY = view.top;
    float bottomX = -view.right;
    float rightY = -view.top;
    float topX = view.right;
    for (std::ptrdiff_t k = 0; k < n; ++k) {
        lens.WritePoint(TurnedRay(matrix, -view.right, leftY, z), left + 2 * k);
        lens.WritePoint(TurnedRay(matrix, bottomX, -view.top, z), bottom + 2 * k);
        lens.WritePoint(TurnedRay(matrix, view.right, rightY, z), right + 2 * k);
        lens.WritePoint(TurnedRay(matrix, topX, view.top, z), top + 2 * k);
        leftY -= view.stepY;
        bottomX += view.stepX;
        rightY += view.stepY;
        topX -= view.stepX;
    }
}

}  // namespace FisheyeVCamAlgoNS::C

#endif
