#ifndef KIVFISHEYE_FISHEYE_VCAM_ALGO_C_H
#define KIVFISHEYE_FISHEYE_VCAM_ALGO_C_H

#include <cmath>
#include <cstddef>

#include "OutputRows.h"
#include "Pixel.h"
#include "SourcePixels.h"
#include "vcam/VCamJob.h"

/// The virtual camera in scalar arithmetic: the definition of the view. One pixel at a time, exact
/// roots and arccosines, and the source pixel that holds the point.
namespace FisheyeVCamAlgoNS::C {

/// Where rays meet the lens image.
class Lens {
public:
    explicit Lens(const vcam::VCamJob& job)
        : m_scale((job.eyeZ + 1.0F) * vcam::kRadiusPerRadian),
          m_maxAngle(1.5707964F / (job.eyeZ + 1.0F)),
          m_diameterX(job.radiusX + job.radiusX),
          m_diameterY(job.radiusY + job.radiusY) {}

    /// Calls `visit(u, v)` when the ray meets the lens inside the frame. A ray along the axis gives
    /// NaN and meets nothing.
    template <class Visit>
    void VisitPoint(float x, float y, float z, Visit&& visit) const {
        const float rr = x * x + y * y;
        const float length = std::sqrt(rr + z * z);
        const auto theta = static_cast<float>(std::acos(static_cast<double>(-z / length)));
        if (!(theta <= m_maxAngle)) {
            return;
        }
        const float radius = m_scale * theta;
        const auto inverse = static_cast<float>(1.0 / std::sqrt(static_cast<double>(rr)));
        const float k = radius * inverse;
        const float u = m_diameterX * (x * k);
        if (!(std::fabs(u) <= 0.5F)) {
            return;
        }
        const float v = m_diameterY * (y * k);
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
    if (!job.HasSource(Pixel::kBytes) || job.targetWidth <= 0) {
        ClearRows(job.target, job.targetHeight, job.targetStride);
        return;
    }
    if (job.targetHeight <= 0) {
        return;
    }
    const SourcePixels<Pixel::kBytes> source(job.sourceWidth, job.sourceHeight, job.sourceStride);
    const vcam::ViewRectangle view(job);
    const Lens lens(job);
    const float(&m)[16] = job.matrix;
    // From the eye to the rectangle.
    const float z = (job.eyeZ - job.nearPlane) - job.eyeZ;

    float y = view.top;
    for (int row = 0; row < job.targetHeight; ++row) {
        unsigned char* const target = job.target + std::ptrdiff_t{row} * job.targetStride;
        ClearRow(target, job.targetStride);
        const int columns = job.PixelsInsideTarget(row, Pixel::kBytes);
        float x = -view.right;
        for (int column = 0; column < columns; ++column) {
            const float rayX = ((x * m[0] + y * m[4]) + z * m[8]) + 0.0F * m[12];
            const float rayY = ((x * m[1] + y * m[5]) + z * m[9]) + 0.0F * m[13];
            const float rayZ = ((x * m[2] + y * m[6]) + z * m[10]) + 0.0F * m[14];
            lens.VisitPoint(rayX, rayY, rayZ, [&](float u, float v) {
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

}  // namespace FisheyeVCamAlgoNS::C

#endif
