#ifndef KIVFISHEYE_VIEW_JOB_H
#define KIVFISHEYE_VIEW_JOB_H

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// Where a virtual camera looks, in degrees: turned off the lens axis by tilt about x, then about
/// the axis by pan, anticlockwise as seen on the frame.
struct View {
    float pan;
    float tilt;
};

/// A way to look around: the eye, which stands on the near distance too, and the view of each
/// frame. Views are 90 degrees high.
struct Move {
    const char* name;
    float eyeZ;
    View (*viewOfFrame)(int frame);
};

/// A table camera that turns and tilts: every ray meets the lens.
extern const Move kTurn;
/// A ceiling camera that turns only: every ray meets the lens.
extern const Move kPan;
/// A table camera that shows the whole lens circle and turns.
extern const Move kWide;

/// A source frame, the lens circle that fills it, and an output frame. Source pixels tell their
/// position.
struct ViewJob {
    static constexpr float kFieldOfView = 90.0F;
    static constexpr float kRadius = 0.5F;

    ViewJob(const Move& howItMoves, int sideInPixels, int width, int height, int bits);

    float Aspect() const { return static_cast<float>(dstWidth) / static_cast<float>(dstHeight); }
    /// Half the view's height, one unit in front of the eye.
    double HalfHeight() const;
    /// How far apart on the source are rays that are one radian apart at the eye.
    double PixelsPerRadian() const;
    std::size_t Pixels() const {
        return static_cast<std::size_t>(dstWidth) * static_cast<std::size_t>(dstHeight);
    }

    Move move;
    int side;
    int dstWidth;
    int dstHeight;
    int bytesPerPixel;
    int srcStride;
    int dstStride;
    std::vector<unsigned char> src;
    std::vector<unsigned char> dst;
};

/// A contestant at work on a job.
class ViewDrawer {
public:
    ViewDrawer() = default;
    ViewDrawer(const ViewDrawer&) = delete;
    ViewDrawer& operator=(const ViewDrawer&) = delete;
    virtual ~ViewDrawer() = default;

    virtual void Draw(const View& view) = 0;
    /// Brings the picture into the job's output, if it was drawn elsewhere. Not timed.
    virtual void Deliver() {}
    /// How far off its angle, in radians, a ray may be taken to be.
    virtual double AngleError() const { return 0.0; }
};

/// Draws two views and throws `std::runtime_error`, whose text names the contestant, unless nearly
/// all pixels of both are within two pixels of where the lens shows their rays.
void CheckViews(const std::string& name, ViewJob& job, ViewDrawer& drawer);

#endif
