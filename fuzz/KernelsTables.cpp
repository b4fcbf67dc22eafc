#include <cmath>
#include <vector>

#include "KernelsCheck.h"
#include "KernelsJobs.h"
#include "KernelsPanoramas.h"
#include "support/HandMadeTable.h"
#include "support/RingFamilies.h"
#include "support/RingGenerator.h"
#include "support/WallFamilies.h"

// Conversions by tables, and the exported converters, which make their tables themselves.

namespace {

/// What a conversion by a table makes of a frame: a pan below the smallest turns nothing, and one
/// without an end shows nothing.
template <class Family>
void PaintTurned(const std::vector<int>& entries, const RingJob& job,
                 const std::vector<unsigned char>& source, std::vector<unsigned char>& frame) {
    constexpr float kSmallestPan = 1.1920929e-07F;
    if (job.pan < kSmallestPan) {
        Paint(entries, job, Family::kBytes, RowStart::Kept, source, frame);
    } else if (std::isfinite(job.pan)) {
        Family::PaintTurned(entries, job, job.pan, source, frame);
    }
}

/// Expects `convert(src, dst)` to turn a table of these entries.
template <class Family, class Convert>
void CheckTurning(const RingJob& job, const std::vector<int>& entries, const char* what,
                  Convert&& convert) {
    const auto source = SourceOf(job, Family::kBytes);
    CheckPicture(
        source, OutputBytes(job), convert,
        [&](std::vector<unsigned char>& frame) {
            PaintTurned<Family>(entries, job, source, frame);
        },
        Attempt{job, what});
}

/// Expects a converter to make its table, and to convert by it as it is. Gives the table's entries.
template <class Family, class Job>
std::vector<int> CheckInitialised(typename Family::TableConverter& converter, const Job& job) {
    const auto source = SourceOf(job, Family::kBytes);
    std::vector<int> entries = EntriesOf(job, Path::Table, FormOfTables());
    Family::Init(converter, job);
    CheckPicture(
        source, OutputBytes(job),
        [&](const unsigned char* src, unsigned char* dst) { Family::Convert(converter, src, dst); },
        [&](std::vector<unsigned char>& frame) {
            Paint(entries, job, Family::kBytes, RowStart::Kept, source, frame);
        },
        Attempt{job, "the converter without a pan"});
    return entries;
}

template <class Family>
void CheckConverter(const RingJob& job) {
    typename Family::TableConverter converter;
    const std::vector<int> entries = CheckInitialised<Family>(converter, job);
    CheckTurning<Family>(job, entries, "the converter with a pan",
                         [&](const unsigned char* src, unsigned char* dst) {
                             Family::Convert(converter, job.pan, src, dst);
                         });
}

template <class Family>
void CheckConverter(const WallJob& job) {
    typename Family::TableConverter converter;
    CheckInitialised<Family>(converter, job);
}

template <class Family>
void CheckTurned(const RingJob& job, const std::vector<int>& entries) {
    const HandMadeTable table(entries, job, Family::kBytes);
    CheckTurning<Family>(job, entries, "the turned table",
                         [&](const unsigned char* src, unsigned char* dst) {
                             Family::ConvertTurned(table, job.pan, src, dst);
                         });
}

/// Calls `check(family)` with an object of the job's family.
template <class Camera, class Check>
void WithFamilyOf(const RingJob& job, Check&& check) {
    if (job.bytesPerPixel == 3) {
        job.isDual ? check(DualFamily<Camera, 24>()) : check(RingFamily<Camera, 24>());
    } else {
        job.isDual ? check(DualFamily<Camera, 32>()) : check(RingFamily<Camera, 32>());
    }
}

}  // namespace

void CheckTurnedTable(KernelsInput& input) {
    RingJob job = NextRing(input, Frames::Usable);
    if (!HasSource(job)) {
        return;
    }
    // Tiles are 2048 columns wide and 32 rows high.
    if (input.OnceIn(64)) {
        const int padding = job.dstStride - job.dstWidth * job.bytesPerPixel;
        job.dstWidth = input.Between(2040, 2060);
        job.dstHeight = input.Between(30, 35);
        job.dstStride = job.dstWidth * job.bytesPerPixel + padding;
    }
    const auto entries = RingGenerator(input.Bits(4)).NextEntries(job, job.bytesPerPixel);
    WithFamilyOf<TableCamera>(job,
                              [&](auto family) { CheckTurned<decltype(family)>(job, entries); });
}

void CheckRingConverters(KernelsInput& input) {
    const RingJob job = NextRing(input, Frames::Usable);
    const auto check = [&](auto family) { CheckConverter<decltype(family)>(job); };
    if (job.mount == Mount::Table) {
        WithFamilyOf<TableCamera>(job, check);
    } else {
        WithFamilyOf<CeilingCamera>(job, check);
    }
}

void CheckWallConverters(KernelsInput& input) {
    const WallJob job = NextWall(input, Frames::Usable);
    if (job.bytesPerPixel == 3) {
        CheckConverter<WallFamily<24>>(job);
    } else {
        CheckConverter<WallFamily<32>>(job);
    }
}
