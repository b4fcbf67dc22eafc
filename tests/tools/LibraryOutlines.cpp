#include "LibraryOutlines.h"

#include <KivFisheyeLib.h>
#include <gtest/gtest.h>

#include <cmath>

#include "Picture.h"

namespace {

struct alignas(16) TwoPoints {
    float numbers[4];
};

/// A list of the library, at an address that it takes.
class List {
public:
    explicit List(int count) : m_blocks(static_cast<std::size_t>(count) / 2) {}

    float* Data() { return m_blocks.front().numbers; }

    Points AsPoints() const {
        Points points;
        for (const TwoPoints& block : m_blocks) {
            points.emplace_back(block.numbers[0], block.numbers[1]);
            points.emplace_back(block.numbers[2], block.numbers[3]);
        }
        return points;
    }

private:
    std::vector<TwoPoints> m_blocks;
};

}  // namespace

Points LibraryOutlines::OfVirtualCamera(std::uint32_t width, std::uint32_t height,
                                        int count) const {
    KivFisheyeTools::Picture shape(width, height, 4);
    EXPECT_EQ(GetCameraAPI(m_context.get())
                  ->SetOutputVideoParams({width, height, shape.stride, shape.pixels.data()}),
              kResultOk);
    List list(count);
    EXPECT_EQ(GetROIAPI(m_context.get())->GetVCamROI(list.Data(), count), kResultOk);
    return list.AsPoints();
}

std::pair<Points, Points> LibraryOutlines::OfDual(int count) const {
    List first(count);
    List second(count);
    EXPECT_EQ(
        GetROIAPI(m_context.get())->GetDualPanoramaROI(first.Data(), count, second.Data(), count),
        kResultOk);
    return {first.AsPoints(), second.AsPoints()};
}

Points LibraryOutlines::OfWall(int count) const {
    List list(count);
    EXPECT_EQ(GetROIAPI(m_context.get())->GetWallPanoramaROI(list.Data(), count), kResultOk);
    return list.AsPoints();
}

std::pair<Points, Points> LibraryOutlines::OfRing(int count) const {
    List inner(count);
    List outer(count);
    EXPECT_EQ(GetDewarpBoundaryAPI(m_context.get())
                  ->CalculateCeilingTablePanoramaBoundary(nullptr, inner.Data(), count,
                                                          outer.Data(), count),
              kResultOk);
    return {inner.AsPoints(), outer.AsPoints()};
}

Points Finite(const Points& points) {
    Points finite;
    for (const auto& point : points) {
        if (std::isfinite(point.first) && std::isfinite(point.second)) {
            finite.push_back(point);
        }
    }
    return finite;
}
