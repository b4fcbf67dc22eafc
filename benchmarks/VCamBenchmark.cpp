#include "VCamBenchmark.h"

#include <cstring>
#include <functional>
#include <memory>
#include <string>

#include "FrameTimer.h"
#include "VCamForms.h"
#include "ViewJob.h"
#ifdef KIVFISHEYE_WITH_OPENCV
#include "OpenCvViews.h"
#endif
#ifdef KIVFISHEYE_WITH_AVFILTER
#include "V360View.h"
#endif

namespace {

using MakeDrawer = std::function<std::unique_ptr<ViewDrawer>(ViewJob& job)>;

class FormDrawer : public ViewDrawer {
public:
    FormDrawer(ViewJob& job, const VCamForm& form) : m_job(job), m_form(form) {}
    void Draw(const View& view) override {
        DrawView(m_job, view, *m_form.ConvertOf(m_job.bytesPerPixel));
    }
    double AngleError() const override { return m_form.hasFastArccosine ? 0.0058 : 0.0; }

private:
    ViewJob& m_job;
    VCamForm m_form;
};

class CopyOfOutput : public ViewDrawer {
public:
    explicit CopyOfOutput(ViewJob& job) : m_job(job), m_picture(job.dst) {}
    void Draw(const View&) override {
        std::memcpy(m_job.dst.data(), m_picture.data(), m_picture.size());
    }

private:
    ViewJob& m_job;
    std::vector<unsigned char> m_picture;
};

/// The contestants of one scene. Frames are made when the first of them runs.
class Scene {
public:
    Scene(const Move& move, int side, int dstWidth, int dstHeight, int bits)
        : m_name("vcam/" + std::to_string(side) + "/" + std::to_string(dstWidth) + "x" +
                 std::to_string(dstHeight) + "/rgb" + std::to_string(bits) + "/" + move.name),
          m_job([=] { return std::make_unique<ViewJob>(move, side, dstWidth, dstHeight, bits); }) {}

    void Add(const std::string& contestant, const MakeDrawer& make, bool isView = true) {
        const std::string name = m_name + "/" + contestant;
        const auto seat = std::make_shared<Seat>();
        RegisterTimed(name, [this, name, make, isView, seat](benchmark::State& state) {
            ViewJob& job = Job();
            if (!seat->drawer) {
                seat->drawer = make(job);
                if (isView) {
                    CheckViews(name, job, *seat->drawer);
                }
            }
            // Every run begins with another direction, as that decides how the source is read.
            seat->frame += 40;
            TimeFrames(
                state, job.Pixels(),
                [&] { seat->drawer->Draw(job.move.viewOfFrame(seat->frame++)); }, false);
        });
    }

private:
    struct Seat {
        std::unique_ptr<ViewDrawer> drawer;
        int frame = 0;
    };

    ViewJob& Job() {
        if (!m_made) {
            m_made = m_job();
        }
        return *m_made;
    }

    std::string m_name;
    std::function<std::unique_ptr<ViewJob>()> m_job;
    std::unique_ptr<ViewJob> m_made;
};

void AddLibrary(Scene& scene) {
    const auto add = [&](const std::string& name, const VCamForm& form) {
        scene.Add(name, [form](ViewJob& job) { return std::make_unique<FormDrawer>(job, form); });
    };
    add("library", BestVCamForm());
    for (const VCamForm& form : VCamFormsOfProcessor()) {
        add(std::string("form-") + form.name, form);
    }
    scene.Add(
        "memcpy", [](ViewJob& job) { return std::make_unique<CopyOfOutput>(job); }, false);
}

void AddOthers([[maybe_unused]] Scene& scene, [[maybe_unused]] const Move& move,
               [[maybe_unused]] int bits) {
#ifdef KIVFISHEYE_WITH_OPENCV
    scene.Add("opencv-strips", OpenCvStrips);
    if (&move == &kPan) {
        scene.Add("opencv-turned-map", OpenCvTurnedMap);
    }
#ifdef KIVFISHEYE_WITH_OPENCV_CALIB3D
    scene.Add("opencv-undistort", OpenCvUndistort);
#endif
#endif
#ifdef KIVFISHEYE_WITH_AVFILTER
    // Its pixels are three planes of bytes, and it takes one new angle a frame.
    if (&move == &kPan && bits == 24) {
        scene.Add("ffmpeg-v360", FfmpegV360);
    }
#endif
}

void RegisterMoves(int side, int dstWidth, int dstHeight, int bits) {
    // Benchmarks keep a pointer to their scene until the program ends.
    static std::vector<std::unique_ptr<Scene>> scenes;
    for (const Move* move : {&kTurn, &kPan, &kWide}) {
        scenes.push_back(std::make_unique<Scene>(*move, side, dstWidth, dstHeight, bits));
        AddLibrary(*scenes.back());
        if (move != &kWide) {
            AddOthers(*scenes.back(), *move, bits);
        }
    }
}

}  // namespace

void RegisterVCamBenchmarks() {
    for (const int side : {1024, 2880}) {
        for (const int bits : {24, 32}) {
            RegisterMoves(side, 1024, 1024, bits);
            RegisterMoves(side, 1280, 720, bits);
        }
    }
}
