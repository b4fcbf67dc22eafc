#include "PanoramaMesh.h"

#include <DownwardFisheyeOpenGLAlgo.h>
#include <FrontwardFisheyeOpenGLAlgo.h>
#include <UpwardFisheyeOpenGLAlgo.h>

#include <cmath>

#include "ViewCamera.h"

namespace KivFisheyeTools {

namespace {

/// What the library tells of the vertices. The scalar functions pad no rows, take any number of
/// columns, and give the same coordinates on every processor.
std::vector<float> LensCoordinates(const ViewArguments& view, const MeshSize& size) {
    const bool isDual = IsDualPanorama(view);
    const bool isCeiling = MountOfName(view.mount) == KivFisheyeLib::MountTypeCeiling;
    const int columns = static_cast<int>(size.columns);
    const int rows = static_cast<int>(size.rows);
    const int rowsSecond = isDual ? static_cast<int>(size.rowsSecond) : 0;
    const std::size_t allRows = std::size_t{size.rows} + static_cast<std::size_t>(rowsSecond);
    std::vector<float> coordinates(2 * allRows * size.columns);
    if (MountOfName(view.mount) == KivFisheyeLib::MountTypeWall) {
        FrontwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate(
            columns, rows, view.lens.wallViewAngle, true, coordinates.data());
    } else if (isDual) {
        const auto calculate =
            isCeiling ? DownwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate
                      : UpwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate;
        calculate(columns, rows, rowsSecond, view.lens.innerRadiusRatio, true, coordinates.data());
    } else {
        const auto calculate = isCeiling
                                   ? DownwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate
                                   : UpwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate;
        calculate(columns, rows, view.lens.innerRadiusRatio, true, coordinates.data());
    }
    return coordinates;
}

/// Width over height of the whole panorama.
float RatioOf(const ViewArguments& view) {
    constexpr unsigned kSide = 1000;
    KivFisheyeLib::DewarpParams lens = view.lens;
    lens.radiusX = kUsualLens.radiusX;
    lens.radiusY = kUsualLens.radiusY;
    float ratio = 1.0F;
    Expect(Camera()->GetRecommendOutputVideoRatio(kSide, kSide, MountOfName(view.mount),
                                                  ViewOfName(view.view), lens, &ratio),
           "the library recommends no ratio for this panorama");
    return ratio;
}

/// What lies exactly on the lens's axis is no number; it is the centre, to which its neighbours
/// lead.
Point PlaceInFrame(float u, float v, const KivFisheyeLib::DewarpParams& lens) {
    const auto along = [](float radius, float coordinate) {
        return 0.5F + (std::isfinite(coordinate) ? 2.0F * radius * coordinate : 0.0F);
    };
    return {along(lens.radiusX, u), along(lens.radiusY, v)};
}

/// From 0 at the first of several to 1 at the last.
float PartOf(std::uint32_t index, std::uint32_t count) {
    return static_cast<float>(index) / static_cast<float>(count - 1);
}

/// Fills a grid whose height in the plane is `height` from `top` down.
void FillGrid(const float* coordinates, float width, float top, float height,
              const KivFisheyeLib::DewarpParams& lens, MeshGrid* grid) {
    for (std::uint32_t row = 0; row < grid->rows; ++row) {
        const float y = top - height * PartOf(row, grid->rows);
        for (std::uint32_t column = 0; column < grid->columns; ++column) {
            grid->positions.push_back({width * PartOf(column, grid->columns), y});
            grid->texture.push_back(PlaceInFrame(coordinates[0], coordinates[1], lens));
            coordinates += 2;
        }
    }
}

}  // namespace

std::vector<MeshGrid> PanoramaMesh(const ViewArguments& view, const MeshSize& size) {
    const std::vector<float> coordinates = LensCoordinates(view, size);
    const float width = RatioOf(view);
    MeshGrid first{"full", size.columns, size.rows, {}, {}};
    if (ViewOfName(view.view) == KivFisheyeLib::ViewTypeFullPanorama) {
        FillGrid(coordinates.data(), width, 1.0F, 1.0F, view.lens, &first);
        return {first};
    }
    first.name = "upper";
    MeshGrid second{"lower", size.columns, size.rowsSecond, {}, {}};
    const float* lower = coordinates.data() + std::size_t{2} * size.columns * size.rows;
    FillGrid(coordinates.data(), width, 1.0F, 0.5F, view.lens, &first);
    FillGrid(lower, width, 0.5F, 0.5F, view.lens, &second);
    return {first, second};
}

}  // namespace KivFisheyeTools
