#ifndef KIVFISHEYE_OPENCV_FRAMES_H
#define KIVFISHEYE_OPENCV_FRAMES_H

#include <opencv2/core.hpp>
#include <opencv2/core/utility.hpp>
#include <opencv2/imgproc.hpp>

#include "ViewJob.h"

/// A job's frames as OpenCV takes them. A pixel of 32 bits is one number: OpenCV copies that faster
/// than four bytes.
struct OpenCvFrames {
    explicit OpenCvFrames(ViewJob& job)
        : src(job.side, job.side, TypeOf(job), job.src.data(),
              static_cast<std::size_t>(job.srcStride)),
          dst(job.dstHeight, job.dstWidth, TypeOf(job), job.dst.data(),
              static_cast<std::size_t>(job.dstStride)) {
        cv::setNumThreads(1);
    }

    static int TypeOf(const ViewJob& job) { return job.bytesPerPixel == 3 ? CV_8UC3 : CV_32SC1; }

    /// Copies the nearest source pixels to the output's rows from `firstRow` on.
    void Remap(int firstRow, const cv::Mat& mapX, const cv::Mat& mapY) {
        cv::Mat rows = dst.rowRange(firstRow, firstRow + mapX.rows);
        cv::remap(src, rows, mapX, mapY, cv::INTER_NEAREST);
    }

    cv::Mat src;
    cv::Mat dst;
};

#endif
