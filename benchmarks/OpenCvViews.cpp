#include "OpenCvViews.h"

#include <cmath>
#include <stdexcept>

#include "OpenCvFrames.h"
#include "ViewModel.h"
#include "vcam/VCamMounts.h"

namespace {

// Some arrays of a strip fit into a second level cache.
constexpr int kStripRows = 16;

cv::Mat Strip(const ViewJob& job, float value = 0.0F) {
    if (job.dstHeight % kStripRows != 0) {
        throw std::invalid_argument("The output's height is not a multiple of the strips' height.");
    }
    return cv::Mat(kStripRows, job.dstWidth, CV_32FC1, cv::Scalar(value));
}

float Centre(const ViewJob& job) {
    return static_cast<float>(job.side - 1) / 2.0F;
}

/// One component of the rays, turned, in source directions. Within a frame it grows by the same
/// amount from strip to strip.
class RayStrip {
public:
    explicit RayStrip(const ViewJob& job) : m_first(Strip(job)), m_rays(Strip(job)) {}

    /// A row of the matrix, along x, y and z.
    void Begin(const cv::Mat& viewX, const cv::Mat& viewY, double x, double y, double z) {
        m_perViewY = y;
        cv::addWeighted(viewX, x, viewY, y, -z, m_first);
    }
    /// `drop` is how far in the view the strip is below the first one.
    const cv::Mat& At(double drop) {
        m_first.convertTo(m_rays, CV_32F, 1.0, -drop * m_perViewY);
        return m_rays;
    }

private:
    cv::Mat m_first;
    cv::Mat m_rays;
    double m_perViewY = 0.0;
};

class Strips : public ViewDrawer {
public:
    explicit Strips(ViewJob& job)
        : m_job(job),
          m_frames(job),
          m_viewX(Strip(job)),
          m_viewY(Strip(job)),
          m_right(job),
          m_down(job),
          m_depth(job),
          m_distance(Strip(job)),
          m_scale(Strip(job)),
          m_mapX(Strip(job)),
          m_mapY(Strip(job)),
          m_centre(Strip(job, Centre(job))) {
        const double top = job.HalfHeight();
        m_perRow = 2.0 * top / (job.dstHeight - 1);
        const double perColumn = 2.0 * top * job.Aspect() / (job.dstWidth - 1);
        for (int row = 0; row < kStripRows; ++row) {
            for (int column = 0; column < job.dstWidth; ++column) {
                m_viewX.at<float>(row, column) =
                    static_cast<float>(perColumn * column - top * job.Aspect());
                m_viewY.at<float>(row, column) = static_cast<float>(top - m_perRow * row);
            }
        }
    }

    void Draw(const View& view) override {
        float m[16];
        DownwardFisheyeAlgoNS::GetModelViewMatrix(view.pan, view.tilt, m);
        m_right.Begin(m_viewX, m_viewY, m[0], m[4], m[8]);
        m_down.Begin(m_viewX, m_viewY, -m[1], -m[5], -m[9]);
        m_depth.Begin(m_viewX, m_viewY, -m[2], -m[6], -m[10]);
        for (int row = 0; row < m_job.dstHeight; row += kStripRows) {
            const double drop = m_perRow * row;
            const cv::Mat& right = m_right.At(drop);
            const cv::Mat& down = m_down.At(drop);
            cv::magnitude(right, down, m_distance);
            cv::phase(m_depth.At(drop), m_distance, m_scale);
            cv::divide(m_scale, m_distance, m_scale, m_job.PixelsPerRadian());
            // With arrays, as adding a number takes OpenCV longer.
            cv::multiply(right, m_scale, m_mapX);
            cv::add(m_mapX, m_centre, m_mapX);
            cv::multiply(down, m_scale, m_mapY);
            cv::add(m_mapY, m_centre, m_mapY);
            m_frames.Remap(row, m_mapX, m_mapY);
        }
    }

private:
    ViewJob& m_job;
    OpenCvFrames m_frames;
    double m_perRow = 0.0;
    cv::Mat m_viewX;  // the first strip's rays before they are turned
    cv::Mat m_viewY;
    RayStrip m_right;
    RayStrip m_down;
    RayStrip m_depth;
    cv::Mat m_distance;
    cv::Mat m_scale;
    cv::Mat m_mapX;
    cv::Mat m_mapY;
    cv::Mat m_centre;
};

class TurnedMap : public ViewDrawer {
public:
    explicit TurnedMap(ViewJob& job)
        : m_job(job),
          m_frames(job),
          m_right(job.dstHeight, job.dstWidth, CV_32FC1),
          m_down(job.dstHeight, job.dstWidth, CV_32FC1),
          m_part(Strip(job)),
          m_mapX(Strip(job)),
          m_mapY(Strip(job)) {
        const View unturned{0.0F, job.move.viewOfFrame(0).tilt};
        for (int row = 0; row < job.dstHeight; ++row) {
            for (int column = 0; column < job.dstWidth; ++column) {
                const LensOffset offset = OffsetOfRay(job, unturned, column, row);
                m_right.at<float>(row, column) = static_cast<float>(offset.x);
                m_down.at<float>(row, column) = static_cast<float>(offset.y);
            }
        }
    }

    void Draw(const View& view) override {
        const double pan = view.pan * CV_PI / 180.0;
        for (int row = 0; row < m_job.dstHeight; row += kStripRows) {
            Combine(row, std::cos(pan), std::sin(pan), m_mapX);
            Combine(row, -std::sin(pan), std::cos(pan), m_mapY);
            m_frames.Remap(row, m_mapX, m_mapY);
        }
    }

private:
    /// Faster than one call of `cv::addWeighted`.
    void Combine(int firstRow, double ofRight, double ofDown, cv::Mat& map) {
        const cv::Range rows(firstRow, firstRow + kStripRows);
        m_right.rowRange(rows).convertTo(m_part, CV_32F, ofRight, Centre(m_job));
        cv::scaleAdd(m_down.rowRange(rows), ofDown, m_part, map);
    }

    ViewJob& m_job;
    OpenCvFrames m_frames;
    cv::Mat m_right;  // offsets from the lens axis
    cv::Mat m_down;
    cv::Mat m_part;
    cv::Mat m_mapX;
    cv::Mat m_mapY;
};

}  // namespace

std::unique_ptr<ViewDrawer> OpenCvStrips(ViewJob& job) {
    return std::make_unique<Strips>(job);
}

std::unique_ptr<ViewDrawer> OpenCvTurnedMap(ViewJob& job) {
    return std::make_unique<TurnedMap>(job);
}
