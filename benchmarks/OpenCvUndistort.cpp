#include <cmath>
#include <opencv2/calib3d.hpp>

#include "OpenCvFrames.h"
#include "OpenCvViews.h"
#include "vcam/VCamMounts.h"

namespace {

class Undistort : public ViewDrawer {
public:
    explicit Undistort(ViewJob& job) : m_frames(job) {
        const double centre = (job.side - 1) / 2.0;
        const double pixelsPerRadian = job.PixelsPerRadian();
        m_lens = {pixelsPerRadian, 0.0, centre, 0.0, pixelsPerRadian, centre, 0.0, 0.0, 1.0};

        const double centreX = (job.dstWidth - 1) / 2.0;
        const double centreY = (job.dstHeight - 1) / 2.0;
        const double top = job.HalfHeight();
        m_view = {
            centreX / top / job.Aspect(), 0.0, centreX, 0.0, centreY / top, centreY, 0.0, 0.0, 1.0};
    }

    void Draw(const View& view) override {
        // This model looks along z with y downwards, so y and z change their signs. It wants the
        // way back, from the lens to the view.
        float m[16];
        DownwardFisheyeAlgoNS::GetModelViewMatrix(view.pan, view.tilt, m);
        const cv::Matx33d toView(m[0], -m[1], -m[2], -m[4], m[5], m[6], -m[8], m[9], m[10]);
        cv::fisheye::initUndistortRectifyMap(m_lens, cv::Vec4d::all(0.0), toView, m_view,
                                             m_frames.dst.size(), CV_32FC1, m_mapX, m_mapY);
        m_frames.Remap(0, m_mapX, m_mapY);
    }

private:
    OpenCvFrames m_frames;
    cv::Matx33d m_lens;
    cv::Matx33d m_view;
    cv::Mat m_mapX;
    cv::Mat m_mapY;
};

}  // namespace

std::unique_ptr<ViewDrawer> OpenCvUndistort(ViewJob& job) {
    return std::make_unique<Undistort>(job);
}
