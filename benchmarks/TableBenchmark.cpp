#include "TableBenchmark.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "FrameTimer.h"
#include "PanoramaForms.h"
#include "PanoramaJob.h"
#ifdef KIVFISHEYE_WITH_OPENCV
#include "OpenCvMaps.h"
#endif
#ifdef KIVFISHEYE_WITH_AVFILTER
#include "V360Setup.h"
#endif

namespace {

/// A job that is made when its first contestant runs.
class LateJob {
public:
    LateJob(const PanoramaView& view, int side, int bits = 32)
        : m_view(view), m_side(side), m_bits(bits) {}
    PanoramaJob& Get() {
        if (!m_job) {
            m_job = std::make_unique<PanoramaJob>(m_view, m_side, m_bits);
        }
        return *m_job;
    }

private:
    PanoramaView m_view;
    int m_side;
    int m_bits;
    std::unique_ptr<PanoramaJob> m_job;
};

using Run = std::function<void()>;
using MakeRun = std::function<Run(PanoramaJob& job)>;

void Add(const std::string& name, const std::shared_ptr<LateJob>& job, const MakeRun& make) {
    const auto run = std::make_shared<Run>();
    RegisterTimed(name, [=](benchmark::State& state) {
        if (!*run) {
            *run = make(job->Get());
        }
        TimeFrames(state, job->Get().Pixels(), *run, false);
    });
}

PanoramaSize SizeOf(const PanoramaJob& job) {
    return {job.side, job.dstWidth, job.dstHeight};
}

void AddTables(const PanoramaView& view, int side) {
    const auto job = std::make_shared<LateJob>(view, side);
    const std::string scene = "table/" + view.name + "/" + std::to_string(side);
    const MakeRun init = [](PanoramaJob& late) { return late.conversions.init; };
    Add(scene + "/library", job, init);
    Add(scene + "/library-rgb24", std::make_shared<LateJob>(view, side, 24), init);
    for (const PanoramaForm& form : PanoramaFormsOfProcessor()) {
        if (form.view == view.name) {
            Add(scene + "/form-" + form.name, job, [form](PanoramaJob& late) -> Run {
                const auto table = std::make_shared<CAlignedBufferT<int, 32>>();
                table->Allocate(late.Pixels());
                return [=, size = SizeOf(late)] { form.build(size, *table); };
            });
        }
    }
#ifdef KIVFISHEYE_WITH_OPENCV
    Add(scene + "/opencv-maps", job,
        [&name = view.name](PanoramaJob& late) { return OpenCvMaps(late, name == "wall"); });
#endif
#ifdef KIVFISHEYE_WITH_AVFILTER
    if (view.name != "dual") {
        Add(scene + "/ffmpeg-v360", job, FfmpegV360Setup);
    }
#endif
}

void AddDirect(const PanoramaView& view, int side) {
    const auto job = std::make_shared<LateJob>(view, side);
    const std::string scene = "direct/" + view.name + "/" + std::to_string(side);
    for (const PanoramaForm& form : PanoramaFormsOfProcessor()) {
        if (form.view == view.name && form.convert != nullptr) {
            // The library's own choice is the widest form, which comes last.
            Add(scene + (form.name == "SSE41" ? "/library" : "/form-" + form.name), job,
                [form](PanoramaJob& late) -> Run {
                    return [&late, form] {
                        form.convert(SizeOf(late), late.src.data(), late.dst.data());
                    };
                });
        }
    }
}

}  // namespace

void RegisterTableBenchmarks() {
    // Benchmarks keep references to their views until the program ends.
    static const std::vector<PanoramaView> views = PanoramaViews();
    for (const PanoramaView& view : views) {
        for (const int side : {1024, 2880}) {
            AddTables(view, side);
            AddDirect(view, side);
        }
    }
}
