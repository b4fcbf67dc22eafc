#ifndef KIVFISHEYE_FISHEYE_VCAM_ALGO_AVX_H
#define KIVFISHEYE_FISHEYE_VCAM_ALGO_AVX_H

#include <algorithm>
#include <cstddef>

#include "MemoryUtils.h"
#include "OutputRows.h"
#include "Pixel.h"
#include "SourceLanes.h"
#include "TargetRegion.h"
#include "sse/PixelRounding.h"
#include "sse/avxMath.h"
#include "vcam/RaySteps.h"
#include "vcam/VCamJob.h"

KIVFISHEYE_TARGET_BEGIN("avx")

/// The virtual camera in eight lanes. A position is rounded by adding one half and truncating. Only
/// whole groups are drawn, and what the width has beyond a multiple of 8 is black. Throws
/// `std::bad_alloc` when there is no memory for the samples of one row.
namespace FisheyeVCamAlgoNS::AVX {

using Floats = sse::AVX::avx8Floats;
using Mask = sse::AVX::avx8Mask;
using sse::AVX::LaneGroups;
using sse::AVX::LaneIndices;
using sse::AVX::sseAcosOfTanOfHalfAsin;
using sse::AVX::sseTanOfHalfAsin;

#include "vcam/VCamLanes.inl"

template <class Pixel>
void Convert(const vcam::VCamJob& job) {
    const int widestRow = job.PixelsInsideWidestRow(Pixel::kBytes);
    const int groups = std::min(job.targetWidth / kLanes, (widestRow - 1) / kLanes + 1);
    if (!job.HasPixels(Pixel::kBytes) || groups <= 0) {
        ClearRows(job.target, job.targetHeight, job.targetStride);
        return;
    }
    const vcam::ViewGrid view(job);
    const LensLanes lens(job, view);
    RayWalk walk(job, view);
    const SourceLanes<Pixel> source(job.source, job.sourceWidth, job.sourceHeight,
                                    job.sourceStride);
    CAlignedBufferT<Samples, alignof(Samples)> samples;
    samples.Allocate(static_cast<unsigned long long>(groups));
    // A block of samples is copied to its row while the next row's are found, which then take its
    // place: a whole row after the memory was asked for their pixels.
    for (int row = 0;; ++row) {
        unsigned char* target = job.target;
        int columns = 0;
        if (row > 0) {
            target = job.target + std::ptrdiff_t{row - 1} * job.targetStride;
            columns = job.PixelsInsideTarget(row - 1, Pixel::kBytes);
            ClearRow(target, job.targetStride);
        }
        RayLanes ray = walk.row;
        for (int first = 0; first < groups; first += kBlock) {
            Samples* const block = samples.data() + first;
            const int count = std::min(groups - first, kBlock);
            const int column = first * kLanes;
            const CopyTask<Pixel> found{source, block, row > 0 ? count : 0,
                                        target + std::ptrdiff_t{column} * Pixel::kBytes,
                                        columns - column};
            if (row < job.targetHeight) {
                Locate(lens, walk.groupStep, row, count, found, &ray, block);
            } else {
                found.RunFrom(0);
            }
        }
        if (row == job.targetHeight) {
            return;
        }
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

}  // namespace FisheyeVCamAlgoNS::AVX

KIVFISHEYE_TARGET_END

#endif
