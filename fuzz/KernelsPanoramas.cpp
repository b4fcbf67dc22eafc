#include "KernelsPanoramas.h"

#include <cmath>
#include <ostream>

#include "Check.h"
#include "Outcomes.h"

namespace {

std::vector<int> NoEntries(const PanoramaFrames& frames) {
    return std::vector<int>(static_cast<std::size_t>(frames.dstWidth * frames.dstHeight),
                            kNoSource);
}

/// Any pan, or one around where the turned table moves by one more column.
float NextPan(KernelsInput& input, const RingJob& job) {
    if (input.OnceIn(4)) {
        return input.Value(-720.0F, 720.0F);
    }
    if (!input.OnceIn(3) || job.dstWidth < 1) {
        return input.Value(0.0F, 360.0F);
    }
    const int positions = job.isDual ? 2 * job.dstWidth : job.dstWidth;
    const float pan =
        360.0F * static_cast<float>(input.Between(1, positions)) / static_cast<float>(positions);
    const float towards[] = {pan, 0.0F, 720.0F};
    return std::nextafter(pan, input.OneOf(towards));
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const RingJob& job) {
    return out << (job.isDual ? "a dual panorama" : "a full panorama") << " of a "
               << (job.mount == Mount::Table ? "table, " : "ceiling, ") << 8 * job.bytesPerPixel
               << " bits, " << static_cast<const Ring&>(job) << ", pan " << job.pan;
}

RingJob NextRing(KernelsInput& input, Frames which) {
    constexpr const char* kKinds[2][2] = {{"full, table", "dual, table"},
                                          {"full, ceiling", "dual, ceiling"}};
    RingJob job;
    job.mount = input.Between(0, 1) == 0 ? Mount::Table : Mount::Ceiling;
    job.isDual = input.Between(0, 1) == 1;
    job.bytesPerPixel = input.BytesPerPixel();
    CountOutcome(PresentOperation(), kKinds[job.mount == Mount::Table ? 0 : 1][job.isDual ? 1 : 0]);
    input.SetWild(input.OnceIn(4));
    static_cast<PanoramaFrames&>(job) = NextFrames(input, job.bytesPerPixel, which);
    job.innerRadiusRatio = input.Value(0.0F, 0.8F);
    job.pan = NextPan(input, job);
    return job;
}

std::ostream& operator<<(std::ostream& out, const WallJob& job) {
    return out << "a wall's panorama, " << 8 * job.bytesPerPixel << " bits, "
               << static_cast<const Wall&>(job);
}

WallJob NextWall(KernelsInput& input, Frames which) {
    WallJob job;
    job.bytesPerPixel = input.BytesPerPixel();
    input.SetWild(input.OnceIn(4));
    static_cast<PanoramaFrames&>(job) = NextFrames(input, job.bytesPerPixel, which);
    job.wallViewAngle = input.Value(10.0F, 90.0F);
    return job;
}

std::vector<int> EntriesOf(const RingJob& job, Path path, KernelForm form) {
    if (!HasSource(job)) {
        return NoEntries(job);
    }
    if (path == Path::Direct) {
        return job.isDual ? DualDirectOffsets(job.mount, job, job.bytesPerPixel, job.pan, form)
                          : DirectOffsets(job.mount, job, job.bytesPerPixel, job.pan, form);
    }
    return job.isDual ? DualTableOffsets(job.mount, job, job.bytesPerPixel, form)
                      : TableOffsets(job.mount, job, job.bytesPerPixel, form);
}

std::vector<int> EntriesOf(const WallJob& job, Path path, KernelForm form) {
    if (!HasSource(job)) {
        return NoEntries(job);
    }
    return path == Path::Direct ? DirectOffsets(job, job.bytesPerPixel, form)
                                : TableOffsets(job, job.bytesPerPixel, form);
}
