#ifndef KIVFISHEYE_FISHEYE_VCAM_ALGO_SSE41_H
#define KIVFISHEYE_FISHEYE_VCAM_ALGO_SSE41_H

#include <algorithm>
#include <cstddef>

#include "OutputRows.h"
#include "Pixel.h"
#include "SourceLanes.h"
#include "TargetRegion.h"
#include "sse/PixelRounding.h"
#include "sse/sseMath.h"
#include "sse/sseUtil.h"
#include "vcam/RaySteps.h"
#include "vcam/VCamJob.h"

KIVFISHEYE_TARGET_BEGIN("sse4.1")

/// The virtual camera in four lanes. A position is rounded to the nearest pixel, ties to the even
/// one. Rows are drawn in whole groups: where the width is no multiple of 4, up to 3 pixels beyond
/// the end of each row are written, so the output needs room for them after its last row.
namespace FisheyeVCamAlgoNS::SSE41 {

using Floats = sse::sse4Floats;
using Mask = sse::sseMask;
using sse::LaneGroups;
using sse::LaneIndices;
using sse::sseAcosOfTanOfHalfAsin;
using sse::sseTanOfHalfAsin;

#include "vcam/VCamLanes.inl"

template <class Pixel>
void Convert(const vcam::VCamJob& job) {
    const int widestRow = job.PixelsInsideWidestRow(Pixel::kBytes);
    if (!job.HasPixels(Pixel::kBytes)) {
        ClearRows(job.target, job.targetHeight, job.targetStride);
        return;
    }
    const vcam::ViewGrid view(job);
    const LensLanes lens(job, view);
    RayWalk walk(job, view);
    const SourceLanes<Pixel> source(job.source, job.sourceWidth, job.sourceHeight,
                                    job.sourceStride);
    const int groups = (widestRow - 1) / kLanes + 1;
    for (int row = 0; row < job.targetHeight; ++row) {
        unsigned char* const target = job.target + std::ptrdiff_t{row} * job.targetStride;
        ClearRow(target, job.targetStride);
        const int inside = job.PixelsInsideTarget(row, Pixel::kBytes);
        const int columns = inside < job.targetWidth ? inside : groups * kLanes;
        // Two blocks of samples: while one is found, the one before it is copied.
        Samples samples[2][kBlock];
        CopyTask<Pixel> found{source, samples[1], 0, target, columns};
        RayLanes ray = walk.row;
        for (int first = 0; first < groups; first += kBlock) {
            Samples* const block = samples[first / kBlock % 2];
            const int count = std::min(groups - first, kBlock);
            const int column = first * kLanes;
            found.RunFrom(Locate(lens, walk.groupStep, row, count, found, &ray, block));
            found.samples = block;
            found.groups = count;
            found.target = target + std::ptrdiff_t{column} * Pixel::kBytes;
            found.columns = columns - column;
        }
        found.RunFrom(0);
        walk.row.Advance(walk.rowStep);
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

}  // namespace FisheyeVCamAlgoNS::SSE41

KIVFISHEYE_TARGET_END

#endif
