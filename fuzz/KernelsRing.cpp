#include <cmath>
#include <vector>

#include "KernelsJobs.h"
#include "KernelsPanoramas.h"
#include "support/RingKernelSet.h"

// The kernels of cameras that see a ring.

namespace {

/// Whether geometry says what the job shows.
bool IsUsual(const RingJob& job) {
    return IsBetween(0.0F, job.radiusX, 1.0F) && IsBetween(0.0F, job.radiusY, 1.0F) &&
           IsBetween(0.0F, job.innerRadiusRatio, 0.8F) && IsBetween(-720.0F, job.pan, 720.0F) &&
           ShowsPixels(job, job.bytesPerPixel);
}

ExactRing GeometryOf(const RingJob& job, Path path, KernelForm form) {
    Ring ring = job;
    if (!job.isDual) {
        return path == Path::Direct ? ExactRing::Direct(job.mount, ring, job.pan, form)
                                    : ExactRing::Table(job.mount, ring, form);
    }
    ring.dstHeight = ring.dstHeight / 2 * 2;
    return path == Path::Direct ? ExactRing::DualDirect(job.mount, ring, job.pan, form)
                                : ExactRing::DualTable(job.mount, ring, form);
}

/// What a direct conversion makes of a frame.
void PaintDirect(const RingJob& job, KernelForm form, const std::vector<int>& entries,
                 const std::vector<unsigned char>& source, std::vector<unsigned char>& frame) {
    if (!ShowsPixels(job, job.bytesPerPixel)) {
        ClearFirstRows(frame, job.isDual ? job.dstHeight / 2 * 2 : job.dstHeight, job.dstStride);
    } else if (job.isDual) {
        PaintBothHalves(entries, job, job.bytesPerPixel, form, source, frame);
    } else {
        Paint(entries, job, job.bytesPerPixel, RowStart::Cleared, source, frame);
    }
}

}  // namespace

void CheckGeometry(const RingJob& job, Path path, KernelForm form, std::vector<int> entries) {
    if (!IsUsual(job) || (job.isDual && job.dstHeight < 2)) {
        return;
    }
    const int rows = job.isDual ? job.dstHeight / 2 * 2 : job.dstHeight;
    entries.resize(static_cast<std::size_t>(rows * job.dstWidth));
    const ExactRing exact = GeometryOf(job, path, form);
    const auto exactAt = [&](int x, int y) {
        const ExactPoint point = exact.PointAt(x, y);
        return ExactPlace{point.column, point.row,
                          std::fmax(std::fabs(point.u), std::fabs(point.v)) - 0.5, false};
    };
    CheckPlaces(form, entries, job, job.bytesPerPixel, exactAt,
                {exact.ErrorOfColumn(), exact.ErrorOfRow(), exact.ErrorOfFraction()},
                Attempt{job, "distance from geometry of " + NameOf(form)});
}

void CheckRingDirect(KernelsInput& input) {
    const RingJob job = NextRing(input, Frames::Any);
    CheckDirectForms(
        job,
        [&](KernelForm form, const unsigned char* src, unsigned char* dst) {
            const RingKernelSet kernels = RingKernelsOf(job.mount, form, 8 * job.bytesPerPixel);
            ring::ConvertFunction& convert = *(job.isDual ? kernels.convertDual : kernels.convert);
            convert(job.srcWidth, job.srcHeight, job.srcStride, src, job.dstWidth, job.dstHeight,
                    job.dstStride, dst, job.radiusX, job.radiusY, job.innerRadiusRatio, job.pan);
        },
        [&](KernelForm form, const std::vector<int>& entries,
            const std::vector<unsigned char>& source,
            std::vector<unsigned char>& frame) { PaintDirect(job, form, entries, source, frame); });
}

void CheckRingTable(KernelsInput& input) {
    const RingJob job = NextRing(input, Frames::Usable);
    CheckTableForms(job, [&](KernelForm form) {
        const RingKernelSet kernels = RingKernelsOf(job.mount, form, 8 * job.bytesPerPixel);
        return job.isDual ? kernels.buildDual : kernels.build;
    });
}
