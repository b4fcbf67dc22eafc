#ifndef KIVFISHEYE_TOOLS_PANORAMA_MESH_H
#define KIVFISHEYE_TOOLS_PANORAMA_MESH_H

#include <cstdint>
#include <string>
#include <vector>

#include "Point.h"
#include "ViewArguments.h"

namespace KivFisheyeTools {

/// A grid of vertices, row by row from the top left.
struct MeshGrid {
    std::string name;
    std::uint32_t columns;
    std::uint32_t rows;
    /// In the plane of the panorama, which is 1 high and begins at the bottom left; y runs up.
    std::vector<Point> positions;
    /// Where the fisheye frame shows what belongs there.
    std::vector<Point> texture;
};

struct MeshSize {
    std::uint32_t columns;
    std::uint32_t rows;
    /// Of the lower half of a dual panorama.
    std::uint32_t rowsSecond;
};

/// The grid of a full panorama, or the two of a dual one, the upper half first. The panorama is as
/// wide as suits a round lens.
std::vector<MeshGrid> PanoramaMesh(const ViewArguments& view, const MeshSize& size);

}  // namespace KivFisheyeTools

#endif
