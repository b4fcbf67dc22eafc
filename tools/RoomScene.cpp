#include "RoomScene.h"

#include <algorithm>
#include <atomic>
#include <cmath>
#include <future>
#include <thread>
#include <vector>

#include "Graticule.h"
#include "Room.h"

namespace KivFisheyeTools {

namespace {

constexpr unsigned kSamplesPerSide = 4;

class SceneRenderer {
public:
    SceneRenderer(const Lens& lens, KivFisheyeLib::MountType mount)
        : m_lens(lens),
          m_pose(PoseOfMount(mount, CameraPositionInRoom(mount))),
          m_graticule(mount) {}

    void RenderRow(std::uint32_t row, std::uint8_t* pixels) const {
        for (std::uint32_t column = 0; column < m_lens.width; ++column) {
            const Color color = ColorOfPixel(column, row);
            *pixels++ = ByteOf(color.red);
            *pixels++ = ByteOf(color.green);
            *pixels++ = ByteOf(color.blue);
        }
    }

private:
    static std::uint8_t ByteOf(double channel) {
        return static_cast<std::uint8_t>(std::lround(std::clamp(channel, 0.0, 1.0) * 255.0));
    }

    static double SampleOffset(unsigned index) { return (index + 0.5) / kSamplesPerSide - 0.5; }

    Color ColorOfPixel(std::uint32_t column, std::uint32_t row) const {
        Color sum{0.0, 0.0, 0.0};
        for (unsigned i = 0; i < kSamplesPerSide; ++i) {
            for (unsigned j = 0; j < kSamplesPerSide; ++j) {
                const Color sample = ColorAt(column + SampleOffset(j), row + SampleOffset(i));
                sum = {sum.red + sample.red, sum.green + sample.green, sum.blue + sample.blue};
            }
        }
        return Scaled(sum, 1.0 / (kSamplesPerSide * kSamplesPerSide));
    }

    Color ColorAt(double column, double row) const {
        const LensPoint point = m_lens.PointAt(column, row);
        if (point.OffAxis() > kLensImageReach) {
            return {0.0, 0.0, 0.0};
        }
        const Vector direction = m_pose.DirectionOf(point);
        return m_graticule.DrawnOver(ColorInRoom(m_pose.position, direction), direction);
    }

    Lens m_lens;
    CameraPose m_pose;
    Graticule m_graticule;
};

}  // namespace

Picture RenderRoomScene(const Lens& lens, KivFisheyeLib::MountType mount,
                        const ProgressListener& listener) {
    Picture picture(lens.width, lens.height, 3);
    const SceneRenderer renderer(lens, mount);
    std::atomic<std::uint32_t> nextRow{0};
    const auto renderRows = [&](bool reports) {
        for (std::uint32_t row = nextRow++; row < lens.height; row = nextRow++) {
            renderer.RenderRow(row, picture.Row(row));
            if (reports && listener) {
                listener(static_cast<double>(row) / lens.height);
            }
        }
    };
    std::vector<std::future<void>> helpers;
    for (unsigned i = 1; i < std::thread::hardware_concurrency(); ++i) {
        helpers.push_back(std::async(std::launch::async, renderRows, false));
    }
    renderRows(true);
    for (std::future<void>& helper : helpers) {
        helper.get();
    }
    return picture;
}

}  // namespace KivFisheyeTools
