#include "V360View.h"

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavfilter/buffersink.h>
#include <libavfilter/buffersrc.h>
#include <libavutil/frame.h>
}

#include <cmath>
#include <sstream>
#include <stdexcept>

namespace {

constexpr int kPlanes = 3;

struct FreeGraph {
    void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
};
struct FreeFrame {
    void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
using Frame = std::unique_ptr<AVFrame, FreeFrame>;

void Require(bool works, const char* what) {
    if (!works) {
        throw std::runtime_error(std::string("FFmpeg's v360 filter: ") + what + " failed.");
    }
}

class V360 : public ViewDrawer {
public:
    explicit V360(ViewJob& job)
        : m_job(job),
          m_graph(avfilter_graph_alloc()),
          m_input(av_frame_alloc()),
          m_output(av_frame_alloc()) {
        Require(job.bytesPerPixel == kPlanes, "taking pixels of other than 24 bits");
        Require(m_graph && m_input && m_output, "an allocation");
        m_graph->nb_threads = 1;
        MakeFilters();
        MakeInput();
    }

    void Draw(const View& view) override {
        const std::string pan = std::to_string(std::remainder(-view.pan, 360.0F));
        char response[64];
        Require(avfilter_graph_send_command(m_graph.get(), "v360", "roll", pan.c_str(), response,
                                            sizeof(response), 0) >= 0,
                "a command");
        av_frame_unref(m_output.get());
        Require(av_buffersrc_add_frame_flags(m_source, m_input.get(), AV_BUFFERSRC_FLAG_KEEP_REF) >=
                        0 &&
                    av_buffersink_get_frame(m_sink, m_output.get()) >= 0,
                "a conversion");
    }

    void Deliver() override {
        for (int row = 0; row < m_job.dstHeight; ++row) {
            for (int plane = 0; plane < kPlanes; ++plane) {
                const unsigned char* const from = RowOf(*m_output, plane, row);
                unsigned char* const to =
                    m_job.dst.data() + std::ptrdiff_t{row} * m_job.dstStride + plane;
                for (int column = 0; column < m_job.dstWidth; ++column) {
                    to[std::ptrdiff_t{column} * kPlanes] = from[column];
                }
            }
        }
    }

private:
    static unsigned char* RowOf(const AVFrame& frame, int plane, int row) {
        return frame.data[plane] + std::ptrdiff_t{row} * frame.linesize[plane];
    }

    void MakeFilters() {
        std::ostringstream frames;
        frames << "video_size=" << m_job.side << 'x' << m_job.side << ":pix_fmt=" << AV_PIX_FMT_GBRP
               << ":time_base=1/25:pixel_aspect=1/1";
        m_source = Make("buffer", frames.str());

        // The view's width follows from its height; angles on the lens count (1 + eye) times.
        const double halfWidth =
            std::atan(m_job.HalfHeight() * m_job.Aspect()) / std::acos(-1.0) * 180.0;
        const double lens = 180.0 / (1.0 + m_job.move.eyeZ);
        std::ostringstream options;
        options << "input=fisheye:output=flat:interp=near:reset_rot=1:rorder=rpy"
                << ":ih_fov=" << lens << ":iv_fov=" << lens << ":h_fov=" << 2.0 * halfWidth
                << ":v_fov=" << ViewJob::kFieldOfView << ":w=" << m_job.dstWidth
                << ":h=" << m_job.dstHeight << ":pitch=" << m_job.move.viewOfFrame(0).tilt;
        AVFilterContext* const filter = Make("v360", options.str());
        m_sink = Make("buffersink", "");
        Require(avfilter_link(m_source, 0, filter, 0) >= 0 &&
                    avfilter_link(filter, 0, m_sink, 0) >= 0 &&
                    avfilter_graph_config(m_graph.get(), nullptr) >= 0,
                "setting up");
    }

    AVFilterContext* Make(const char* name, const std::string& options) {
        AVFilterContext* filter = nullptr;
        Require(avfilter_graph_create_filter(&filter, avfilter_get_by_name(name), name,
                                             options.c_str(), nullptr, m_graph.get()) >= 0,
                name);
        return filter;
    }

    void MakeInput() {
        m_input->format = AV_PIX_FMT_GBRP;
        m_input->width = m_job.side;
        m_input->height = m_job.side;
        Require(av_frame_get_buffer(m_input.get(), 0) >= 0, "an allocation");
        const unsigned char* pixel = m_job.src.data();
        for (int row = 0; row < m_job.side; ++row) {
            for (int column = 0; column < m_job.side; ++column, pixel += kPlanes) {
                for (int plane = 0; plane < kPlanes; ++plane) {
                    RowOf(*m_input, plane, row)[column] = pixel[plane];
                }
            }
        }
    }

    ViewJob& m_job;
    std::unique_ptr<AVFilterGraph, FreeGraph> m_graph;
    AVFilterContext* m_source = nullptr;
    AVFilterContext* m_sink = nullptr;
    Frame m_input;
    Frame m_output;
};

}  // namespace

std::unique_ptr<ViewDrawer> FfmpegV360(ViewJob& job) {
    return std::make_unique<V360>(job);
}
