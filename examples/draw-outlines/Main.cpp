#include <Arguments.h>
#include <Camera.h>
#include <KivFisheyeLib.h>
#include <Png.h>

#include <algorithm>
#include <array>
#include <cmath>

using namespace KivFisheyeLib;

namespace {

/// Lists of points lie at multiples of 16 bytes; 512 is a multiple of what each operation asks for.
constexpr int kCount = 512;
struct alignas(16) Outline {
    std::array<float, std::size_t{2} * kCount> points;
};

using Color = std::array<unsigned char, 4>;
constexpr Color kYellow{255, 255, 0, 255};
constexpr Color kCyan{0, 255, 255, 255};

/// Three pixels each way around a place, those that are in the picture.
void Dot(Picture& picture, float x, float y, const Color& color) {
    const long column = std::lround(x);
    const long row = std::lround(y);
    const long rowsEnd = std::min(row + 2, static_cast<long>(picture.height));
    const long columnsEnd = std::min(column + 2, static_cast<long>(picture.width));
    for (long atRow = std::max(row - 1, 0L); atRow < rowsEnd; ++atRow) {
        for (long atColumn = std::max(column - 1, 0L); atColumn < columnsEnd; ++atColumn) {
            std::copy(color.begin(), color.end(),
                      picture.At(static_cast<std::uint32_t>(atColumn),
                                 static_cast<std::uint32_t>(atRow)));
        }
    }
}

/// Draws an outline, whose last point is joined to its first.
void Draw(Picture& picture, const Outline& outline, const Color& color) {
    // As fractions of the frame, 0 is the middle of the first pixel and 1 that of the last.
    const auto width = static_cast<float>(picture.width - 1);
    const auto height = static_cast<float>(picture.height - 1);
    for (std::size_t i = 0; i < outline.points.size(); i += 2) {
        const std::size_t next = (i + 2) % outline.points.size();
        const float x = outline.points[i] * width;
        const float y = outline.points[i + 1] * height;
        const float stepX = outline.points[next] * width - x;
        const float stepY = outline.points[next + 1] * height - y;
        const float steps = std::ceil(std::hypot(stepX, stepY));
        // A point in the lens's very centre is NaN, and has no place to draw.
        const int count = std::isnan(steps) ? 0 : static_cast<int>(steps);
        for (int step = 0; step < count; ++step) {
            const float part = static_cast<float>(step) / steps;
            Dot(picture, x + part * stepX, y + part * stepY, color);
        }
    }
}

/// What the camera's view shows. An outline lies on a picture, the view need not be made.
void DrawView(void* context, MountType mount, ViewType view, Picture& picture) {
    IKivFisheyeROI& roi = *GetROIAPI(context);
    IKivFisheyeDewarpBoundary& boundary = *GetDewarpBoundaryAPI(context);
    Outline first{};
    Outline second{};
    if (view == ViewTypeVCam) {
        Require(roi.GetVCamROI(first.points.data(), kCount), "GetVCamROI");
        Draw(picture, first, kYellow);
    } else if (view == ViewTypeDualPanorama) {
        Require(roi.GetDualPanoramaROI(first.points.data(), kCount, second.points.data(), kCount),
                "GetDualPanoramaROI");
        Draw(picture, second, kCyan);
        Draw(picture, first, kYellow);
    } else if (mount == MountTypeWall) {
        Require(roi.GetWallPanoramaROI(first.points.data(), kCount), "GetWallPanoramaROI");
        Draw(picture, first, kYellow);
    } else {
        // The boundary interface does the same for any lens, whatever the context is set to; null
        // stands for the context's own.
        Require(boundary.CalculateCeilingTablePanoramaBoundary(nullptr, first.points.data(), kCount,
                                                               second.points.data(), kCount),
                "CalculateCeilingTablePanoramaBoundary");
        Draw(picture, first, kYellow);
        Draw(picture, second, kYellow);
    }
}

void Run(const Arguments& arguments) {
    const MountType mount = MountOf(arguments[0]);
    const ViewType view = ViewOf(mount, arguments[1]);
    const PanTiltZoom aim = PanTiltZoomOf(arguments, 4);
    Picture fisheye = ReadPng(arguments[2]);
    const Context context = MakeContext();
    IKivFisheyeCamera& camera = *GetCameraAPI(context.get());
    SetUp(camera, mount, view, fisheye);
    // A virtual camera's outline depends on the shape of its picture.
    Picture shape = RecommendedPicture(camera);
    Require(camera.SetOutputVideoParams(FrameOf(shape)), "SetOutputVideoParams");
    Require(camera.SetAbsolutePTZ(aim.pan, aim.tilt, aim.zoom), "SetAbsolutePTZ");
    PanTiltZoom taken{};
    camera.GetPTZ(&taken.pan, &taken.tilt, &taken.zoom);
    if (view == ViewTypeDualPanorama && taken.pan == 180.0F) {
        // At half a turn exactly the picture is not turned, but its outlines would be.
        camera.SetAbsolutePTZ(0.0F, taken.tilt, taken.zoom);
    }
    DrawView(context.get(), mount, view, fisheye);
    WritePng(arguments[3], fisheye);
}

}  // namespace

/// Draws on a fisheye picture the outline of what a view shows of it.
int main(int argc, char** argv) {
    const Example example{"draw-outlines",
                          "wall|ceiling|table vcam|full|dual INPUT.png OUTPUT.png [PAN TILT ZOOM]",
                          {4, 7}};
    return RunExample(example, argc, argv, Run);
}
