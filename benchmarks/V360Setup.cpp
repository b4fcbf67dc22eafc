#include "V360Setup.h"

extern "C" {
#include <libavfilter/avfilter.h>
#include <libavutil/pixfmt.h>
}

#include <memory>
#include <sstream>
#include <stdexcept>

namespace {

struct FreeGraph {
    void operator()(AVFilterGraph* graph) const { avfilter_graph_free(&graph); }
};
using Graph = std::unique_ptr<AVFilterGraph, FreeGraph>;

AVFilterContext* Make(AVFilterGraph* graph, const char* name, const std::string& options) {
    AVFilterContext* filter = nullptr;
    if (avfilter_graph_create_filter(&filter, avfilter_get_by_name(name), name, options.c_str(),
                                     nullptr, graph) < 0) {
        throw std::runtime_error(std::string("FFmpeg cannot make a filter: ") + name);
    }
    return filter;
}

void SetUp(int side, int width, int height) {
    const Graph graph(avfilter_graph_alloc());
    graph->nb_threads = 1;
    std::ostringstream frames;
    frames << "video_size=" << side << 'x' << side << ":pix_fmt=" << AV_PIX_FMT_GBRP
           << ":time_base=1/25:pixel_aspect=1/1";
    AVFilterContext* const source = Make(graph.get(), "buffer", frames.str());
    std::ostringstream options;
    options << "input=fisheye:output=equirect:interp=near:ih_fov=180:iv_fov=180:w=" << width
            << ":h=" << height;
    AVFilterContext* const filter = Make(graph.get(), "v360", options.str());
    AVFilterContext* const sink = Make(graph.get(), "buffersink", "");
    if (avfilter_link(source, 0, filter, 0) < 0 || avfilter_link(filter, 0, sink, 0) < 0 ||
        avfilter_graph_config(graph.get(), nullptr) < 0) {
        throw std::runtime_error("FFmpeg's v360 filter cannot be set up");
    }
}

}  // namespace

std::function<void()> FfmpegV360Setup(const PanoramaJob& job) {
    return [side = job.side, width = job.dstWidth, height = job.dstHeight] {
        SetUp(side, width, height);
    };
}
