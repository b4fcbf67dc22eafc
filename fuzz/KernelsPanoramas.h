#ifndef KIVFISHEYE_FUZZ_KERNELS_PANORAMAS_H
#define KIVFISHEYE_FUZZ_KERNELS_PANORAMAS_H

#include <algorithm>
#include <vector>

#include "KernelsCheck.h"
#include "KernelsDistances.h"
#include "KernelsInput.h"
#include "PanoramaConverters.h"
#include "support/RingModel.h"
#include "support/WallModel.h"

// What the jobs of rings and walls share.

/// Clears the first `rows` rows of a frame.
inline void ClearFirstRows(std::vector<unsigned char>& frame, int rows, int stride) {
    std::fill_n(frame.begin(), std::max(rows, 0) * stride, static_cast<unsigned char>(0));
}

/// One ring panorama.
struct RingJob : Ring {
    Mount mount = Mount::Table;
    int bytesPerPixel = 3;
    bool isDual = false;
    float pan = 0.0F;

    float Shape() const { return innerRadiusRatio; }
};

std::ostream& operator<<(std::ostream& out, const RingJob& job);

RingJob NextRing(KernelsInput& input, Frames which);

/// One wall panorama.
struct WallJob : Wall {
    int bytesPerPixel = 3;

    float Shape() const { return wallViewAngle; }
};

std::ostream& operator<<(std::ostream& out, const WallJob& job);

WallJob NextWall(KernelsInput& input, Frames which);

/// The offsets of a job in one of its forms.
std::vector<int> EntriesOf(const RingJob& job, Path path, KernelForm form);
std::vector<int> EntriesOf(const WallJob& job, Path path, KernelForm form);

/// Expects a form to show what geometry says, where the job is one that cameras have.
void CheckGeometry(const RingJob& job, Path path, KernelForm form, std::vector<int> entries);
void CheckGeometry(const WallJob& job, Path path, KernelForm form, const std::vector<int>& entries);

inline bool IsBetween(float lowest, float value, float highest) {
    return lowest <= value && value <= highest;
}

/// Expects the direct conversion of each form to leave what `paint(form, entries, source, frame)`
/// makes of a frame. `convert(form, src, dst)` runs it.
template <class Job, class Convert, class Paint>
void CheckDirectForms(const Job& job, Convert&& convert, Paint&& paint) {
    const auto source = SourceOf(job, job.bytesPerPixel);
    for (const KernelForm form : PictureFormsUpTo(KernelForm::SSE41)) {
        const Attempt words{job, "the direct conversion in " + NameOf(form)};
        std::vector<int> entries;
        if (ShowsPixels(job, job.bytesPerPixel)) {
            entries = EntriesOf(job, Path::Direct, form);
            CheckEntries(entries, job, job.bytesPerPixel, words);
        }
        CheckPicture(
            source, OutputBytes(job),
            [&](const unsigned char* src, unsigned char* dst) { convert(form, src, dst); },
            [&](std::vector<unsigned char>& frame) { paint(form, entries, source, frame); }, words);
        CheckGeometry(job, Path::Direct, form, entries);
    }
}

/// Expects the builder of each form, `builderOf(form)`, to fill the job's table and nothing else.
template <class Job, class BuilderOf>
void CheckTableForms(const Job& job, BuilderOf&& builderOf) {
    std::vector<int> ofFour;
    for (const KernelForm form : PictureFormsUpTo(KernelForm::AVX)) {
        const Attempt words{job, "the table in " + NameOf(form)};
        const std::vector<int> entries = EntriesOf(job, Path::Table, form);
        CheckEntries(entries, job, job.bytesPerPixel, words);
        BuildFunction& build = *builderOf(form);
        CheckStores<int>(
            entries.size(),
            [&](int* memory, GuardedBuffer::Side) {
                auto table = CAlignedBufferT<int, 32>::Borrow(memory, entries.size());
                build(job.srcWidth, job.srcHeight, job.srcStride, job.dstWidth, job.dstHeight,
                      job.dstStride, job.radiusX, job.radiusY, job.Shape(), table);
            },
            [&](const std::vector<int>&) { return entries; }, words);
        CheckGeometry(job, Path::Table, form, entries);
        if (form == KernelForm::SSE41) {
            ofFour = entries;
        } else if (form == KernelForm::AVX) {
            CheckOnlyTiesDiffer(ofFour, entries, job, job.bytesPerPixel, words);
        }
    }
}

#endif
