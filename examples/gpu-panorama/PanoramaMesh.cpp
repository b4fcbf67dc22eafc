#include "PanoramaMesh.h"

#include <DownwardFisheyeOpenGLAlgo.h>
#include <FrontwardFisheyeOpenGLAlgo.h>
#include <UpwardFisheyeOpenGLAlgo.h>

#include <cstddef>
#include <stdexcept>

using namespace KivFisheyeLib;

namespace {

/// The lens point of every vertex, row by row.
std::vector<float> LensPoints(const PanoramaView& view) {
    const bool isDual = view.view == ViewTypeDualPanorama;
    // A vector's memory begins at a multiple of 16 bytes, as the library asks.
    std::vector<float> points(std::size_t{2} * static_cast<std::size_t>(view.columns) *
                              static_cast<std::size_t>(view.rows) * (isDual ? 2 : 1));
    if (view.mount == MountTypeWall) {
        FrontwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate(
            view.columns, view.rows, view.lens.wallViewAngle, true, points.data());
        return points;
    }
    const bool isCeiling = view.mount == MountTypeCeiling;
    const float inner = view.lens.innerRadiusRatio;
    if (isDual) {
        const auto fill = isCeiling ? DownwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate
                                    : UpwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate;
        fill(view.columns, view.rows, view.rows, inner, true, points.data());
    } else {
        const auto fill = isCeiling ? DownwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate
                                    : UpwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate;
        fill(view.columns, view.rows, inner, true, points.data());
    }
    return points;
}

/// The middle of one of `count` places, spread evenly from the middle of the first pixel to that of
/// the last. The outermost ones reach out a little, so that these pixels are drawn for certain.
float PixelOf(int place, int count, int pixels) {
    constexpr float kReach = 1.0F / 64.0F;
    const float middle =
        static_cast<float>(place) * static_cast<float>(pixels - 1) / static_cast<float>(count - 1) +
        0.5F;
    return place == 0 ? middle - kReach : place == count - 1 ? middle + kReach : middle;
}

/// Adds the grid at `index` of `grids`, which share a picture's height.
void AddGrid(const PanoramaView& view, int width, int height, int grids, int index,
             PanoramaMesh& mesh) {
    const int gridHeight = height / grids;
    const int top = index * gridHeight;
    const auto first = static_cast<std::uint32_t>(mesh.positions.size() / 2);
    const auto columns = static_cast<std::uint32_t>(view.columns);
    for (int row = 0; row < view.rows; ++row) {
        const float y = static_cast<float>(top) + PixelOf(row, view.rows, gridHeight);
        for (int column = 0; column < view.columns; ++column) {
            const float x = PixelOf(column, view.columns, width);
            mesh.positions.push_back(2.0F * x / static_cast<float>(width) - 1.0F);
            mesh.positions.push_back(1.0F - 2.0F * y / static_cast<float>(height));
        }
    }
    for (std::uint32_t row = 0; row + 1 < static_cast<std::uint32_t>(view.rows); ++row) {
        for (std::uint32_t column = 0; column + 1 < columns; ++column) {
            const std::uint32_t corner = first + row * columns + column;
            for (const std::uint32_t next : {corner, corner + columns, corner + 1, corner + 1,
                                             corner + columns, corner + columns + 1}) {
                mesh.corners.push_back(next);
            }
        }
    }
}

}  // namespace

PanoramaMesh MakePanoramaMesh(const PanoramaView& view, int width, int height) {
    const bool isDual = view.view == ViewTypeDualPanorama;
    if (view.view == ViewTypeVCam || (isDual && view.mount == MountTypeWall)) {
        throw std::invalid_argument("this view has no grid");
    }
    const int grids = isDual ? 2 : 1;
    if (view.columns < 4 || view.columns % 4 != 0 || view.rows < 2) {
        throw std::invalid_argument("a grid has a multiple of 4 columns, and two rows or more");
    }
    if (width < 2 || height / grids < 2 || height % grids != 0) {
        throw std::invalid_argument("the picture of a grid has two rows and columns or more");
    }
    PanoramaMesh mesh;
    for (int grid = 0; grid < grids; ++grid) {
        AddGrid(view, width, height, grids, grid, mesh);
    }
    mesh.lensPoints = LensPoints(view);
    return mesh;
}
