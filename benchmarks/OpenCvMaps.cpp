#include "OpenCvMaps.h"

#include <cmath>
#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

namespace {

constexpr float kHalfTurn = 3.14159274F;

struct Maps {
    cv::Mat x;
    cv::Mat y;
    cv::Mat fixed;
};

struct Columns {
    Columns(float first, float last, int count) {
        for (int i = 0; i < count; ++i) {
            const float angle =
                first + (last - first) * static_cast<float>(i) / static_cast<float>(count - 1);
            sines.push_back(std::sin(angle));
            cosines.push_back(std::cos(angle));
        }
    }
    std::vector<float> sines;
    std::vector<float> cosines;
};

void FillRing(int side, Maps& maps) {
    const Columns columns(0.0F, 2.0F * kHalfTurn, maps.x.cols);
    const float scale = static_cast<float>(side - 1);
    for (int row = 0; row < maps.x.rows; ++row) {
        const float radius =
            0.5F * scale * static_cast<float>(row) / static_cast<float>(maps.x.rows - 1);
        auto* const x = maps.x.ptr<float>(row);
        auto* const y = maps.y.ptr<float>(row);
        for (int i = 0; i < maps.x.cols; ++i) {
            x[i] = 0.5F * scale + radius * columns.cosines[static_cast<std::size_t>(i)];
            y[i] = 0.5F * scale - radius * columns.sines[static_cast<std::size_t>(i)];
        }
    }
}

void FillWall(int side, Maps& maps) {
    const Columns columns(-0.5F * kHalfTurn, 0.5F * kHalfTurn, maps.x.cols);
    const Columns rows(-0.25F * kHalfTurn, 0.25F * kHalfTurn, maps.x.rows);
    const float scale = static_cast<float>(side - 1);
    for (int row = 0; row < maps.x.rows; ++row) {
        const float sinPhi = rows.sines[static_cast<std::size_t>(row)];
        const float cosPhi = rows.cosines[static_cast<std::size_t>(row)];
        auto* const x = maps.x.ptr<float>(row);
        auto* const y = maps.y.ptr<float>(row);
        for (int i = 0; i < maps.x.cols; ++i) {
            const float across = cosPhi * columns.sines[static_cast<std::size_t>(i)];
            const float ahead = cosPhi * columns.cosines[static_cast<std::size_t>(i)];
            const float r = std::sqrt(across * across + sinPhi * sinPhi);
            const float k = std::atan2(r, ahead) / r / kHalfTurn * scale;
            x[i] = 0.5F * scale + across * k;
            y[i] = 0.5F * scale + sinPhi * k;
        }
    }
}

}  // namespace

std::function<void()> OpenCvMaps(const PanoramaJob& job, bool isWall) {
    cv::setNumThreads(1);
    Maps maps{cv::Mat(job.dstHeight, job.dstWidth, CV_32FC1),
              cv::Mat(job.dstHeight, job.dstWidth, CV_32FC1), cv::Mat()};
    return [=, side = job.side]() mutable {
        isWall ? FillWall(side, maps) : FillRing(side, maps);
        cv::convertMaps(maps.x, maps.y, maps.fixed, cv::noArray(), CV_16SC2, true);
    };
}
