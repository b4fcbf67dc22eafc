#ifndef KIVFISHEYE_TESTS_VCAM_MODEL_H
#define KIVFISHEYE_TESTS_VCAM_MODEL_H

#include <array>
#include <cstddef>
#include <iosfwd>
#include <optional>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/KernelForm.h"

// The virtual camera's conversion one pixel at a time, with the rounding of each of its forms.
// Written in the plainest way and sharing no code with the library.

using VCamForm = KernelForm;

/// One conversion: sizes in pixels, strides in bytes, the field of view in degrees.
struct VCamFrame {
    int srcWidth = 0;
    int srcHeight = 0;
    int srcStride = 0;
    float radiusX = 0.5F;
    float radiusY = 0.5F;
    float eyeZ = 1.0F;
    float fieldOfView = 90.0F;
    float aspect = 1.0F;
    float nearPlane = 1.0F;
    std::array<float, 16> matrix = {1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F,
                                    0.0F, 0.0F, 1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F};
    int dstWidth = 0;
    int dstHeight = 0;
    int dstStride = 0;

    /// Bytes up to the end of the last row's last pixel; 0 without one.
    std::size_t SourceBytes(int bytesPerPixel) const;
    /// Stride times height; 0 when that is negative.
    std::size_t OutputBytes() const;
};

std::ostream& operator<<(std::ostream& out, const VCamFrame& frame);

/// A frame without row padding, seen from the sphere's surface along the axis.
VCamFrame PackedVCam(int srcWidth, int srcHeight, int dstWidth, int dstHeight, int bytesPerPixel);

/// How many pixels of a row a form computes for this width.
int DrawnColumns(VCamForm form, int dstWidth);

/// The source pixel of each drawn output pixel, row by row; none where it stays black.
using SourcePlaces = std::vector<std::optional<PixelPlace>>;

SourcePlaces ModelPlaces(VCamForm form, const VCamFrame& frame, int bytesPerPixel);

/// Bytes that a form writes beyond stride times height.
std::size_t BytesBeyondFrame(VCamForm form, const VCamFrame& frame, int bytesPerPixel);

/// What the form makes of the output bytes `dst`.
void PaintModel(VCamForm form, const VCamFrame& frame, int bytesPerPixel,
                const std::vector<unsigned char>& src, std::vector<unsigned char>& dst);

#endif
