#include <algorithm>
#include <cmath>
#include <vector>

#include "FrontwardFisheyeAlgo_C.h"
#include "KernelsJobs.h"
#include "KernelsPanoramas.h"
#include "support/RingGenerator.h"
#include "support/WallKernelSet.h"
#if defined(__x86_64__)
#include "FrontwardFisheyeAlgo_SSE41.h"
#endif

// The kernels of wall cameras.

namespace {

/// Whether geometry says what the job shows.
bool IsUsual(const WallJob& job) {
    return IsBetween(0.0F, job.radiusX, 1.0F) && IsBetween(0.0F, job.radiusY, 1.0F) &&
           IsBetween(10.0F, job.wallViewAngle, 90.0F) && ShowsPixels(job, job.bytesPerPixel);
}

/// How many radians the sums may turn a direction: one for each column, and four roundings of the
/// rotation for each row.
double ErrorOfSums(const WallJob& job) {
    return std::ldexp(16.0 + job.dstWidth + 4.0 * job.dstHeight, -23);
}

using TableFunction = void(const unsigned char* src, int dstWidth, int dstHeight, int dstStride,
                           unsigned char* dst, const CAlignedBufferT<int, 32>& table);

TableFunction& TableKernelOf([[maybe_unused]] KernelForm form) {
#if defined(__x86_64__)
    if (form == KernelForm::SSE41) {
        return FrontwardFisheyeAlgoNS::SSE41::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kNoSource>;
    }
#endif
    return FrontwardFisheyeAlgoNS::C::CvtPanoramaRGB32ByFisheyeAddrOffsetTable<kNoSource>;
}

}  // namespace

void CheckGeometry(const WallJob& job, Path path, KernelForm form,
                   const std::vector<int>& entries) {
    if (!IsUsual(job)) {
        return;
    }
    const double sums = ErrorOfSums(job);
    const auto exactAt = [&](int x, int y) {
        const ExactLook look = LookOf(job, x, y);
        return ExactPlace{look.column, look.row,
                          std::fmax(std::fabs(look.u), std::fabs(look.v)) - 0.5,
                          look.offAxis <= 2.0 * sums};
    };
    const double errorX = ErrorOfFraction(form, path, job.radiusX) + sums;
    const double errorY = ErrorOfFraction(form, path, job.radiusY) + sums;
    CheckPlaces(form, entries, job, job.bytesPerPixel, exactAt,
                {errorX * job.srcWidth, errorY * job.srcHeight, std::max(errorX, errorY)},
                Attempt{job, "distance from geometry of " + NameOf(form)});
}

void CheckWallDirect(KernelsInput& input) {
    const WallJob job = NextWall(input, Frames::Any);
    CheckDirectForms(
        job,
        [&](KernelForm form, const unsigned char* src, unsigned char* dst) {
            WallKernelsOf(form, 8 * job.bytesPerPixel)
                .convert(job.srcWidth, job.srcHeight, job.srcStride, src, job.dstWidth,
                         job.dstHeight, job.dstStride, dst, job.radiusX, job.radiusY,
                         job.wallViewAngle);
        },
        [&](KernelForm, const std::vector<int>& entries, const std::vector<unsigned char>& source,
            std::vector<unsigned char>& frame) {
            if (ShowsPixels(job, job.bytesPerPixel)) {
                Paint(entries, job, job.bytesPerPixel, RowStart::Cleared, source, frame);
            } else {
                ClearFirstRows(frame, job.dstHeight, job.dstStride);
            }
        });
}

void CheckWallTable(KernelsInput& input) {
    const WallJob job = NextWall(input, Frames::Usable);
    CheckTableForms(
        job, [&](KernelForm form) { return WallKernelsOf(form, 8 * job.bytesPerPixel).build; });
}

void CheckWallTableKernel(KernelsInput& input) {
    constexpr int kBytes = 4;
    WallJob job;
    job.bytesPerPixel = kBytes;
    static_cast<PanoramaFrames&>(job) = NextFrames(input, kBytes, Frames::Usable);
    if (!HasSource(job)) {
        return;
    }
    const auto source = SourceOf(job, kBytes);
    std::vector<int> entries = RingGenerator(input.Bits(4)).NextEntries({job}, kBytes);
    for (const KernelForm form : PictureFormsUpTo(KernelForm::SSE41)) {
        CheckStores<unsigned char>(
            OutputBytes(job),
            [&](unsigned char* dst, GuardedBuffer::Side side) {
                const ReadOnlyBytes src(source.data(), source.size(), side);
                ReadOnlyBytes memory(entries.data(), entries.size() * sizeof(int), side);
                const auto table = CAlignedBufferT<int, 32>::Borrow(
                    reinterpret_cast<int*>(memory.data()), entries.size());
                TableKernelOf(form)(src.data(), job.dstWidth, job.dstHeight, job.dstStride, dst,
                                    table);
            },
            [&](std::vector<unsigned char> frame) {
                Paint(entries, job, kBytes, RowStart::Kept, source, frame);
                return frame;
            },
            Attempt{job, "the conversion by a table in " + NameOf(form)});
    }
}
