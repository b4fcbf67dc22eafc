#include "OpenCvPeers.h"

#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

std::vector<std::pair<std::string, std::function<void()>>> OpenCvRemaps(PanoramaJob& job) {
    cv::setNumThreads(1);
    cv::Mat mapX(job.dstHeight, job.dstWidth, CV_32FC1);
    cv::Mat mapY(job.dstHeight, job.dstWidth, CV_32FC1);
    const int* entry = job.table.data();
    for (int y = 0; y < job.dstHeight; ++y) {
        for (int x = 0; x < job.dstWidth; ++x, ++entry) {
            const int row = *entry / job.srcStride;
            const int column = *entry % job.srcStride / job.bytesPerPixel;
            mapX.at<float>(y, x) = *entry < 0 ? -1.0F : static_cast<float>(column);
            mapY.at<float>(y, x) = *entry < 0 ? -1.0F : static_cast<float>(row);
        }
    }
    cv::Mat fixedMap;
    cv::Mat unused;
    cv::convertMaps(mapX, mapY, fixedMap, unused, CV_16SC2, true);

    const int type = job.bytesPerPixel == 3 ? CV_8UC3 : CV_8UC4;
    const cv::Mat src(job.side, job.side, type, job.src.data(),
                      static_cast<std::size_t>(job.srcStride));
    cv::Mat dst(job.dstHeight, job.dstWidth, type, job.dst.data(),
                static_cast<std::size_t>(job.dstStride));
    return {
        {"opencv-fixed",
         [=]() mutable { cv::remap(src, dst, fixedMap, cv::noArray(), cv::INTER_NEAREST); }},
        {"opencv-float", [=]() mutable { cv::remap(src, dst, mapX, mapY, cv::INTER_NEAREST); }}};
}
