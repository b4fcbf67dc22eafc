#ifndef GPU_PANORAMA_PANORAMA_MESH_H
#define GPU_PANORAMA_PANORAMA_MESH_H

#include <KivFisheyeTypes.h>

#include <cstdint>
#include <vector>

/// Which panorama, of which lens, and how finely its grid is made.
struct PanoramaView {
    KivFisheyeLib::MountType mount;
    KivFisheyeLib::ViewType view;  // full or dual
    KivFisheyeLib::DewarpParams lens;
    int columns;  // of vertices: a multiple of 4
    int rows;     // in each grid: at least 2
};

/// Grids that cover a panorama: one, or the two halves of a dual one, the first above the other.
/// The first and the last vertex of each row lie in the middle of the picture's outermost pixels.
struct PanoramaMesh {
    /// x and y by turns, -1 to 1 across the picture and upward.
    std::vector<float> positions;
    /// Where the library says that each vertex lies on the lens image: u and v around its centre,
    /// the rim at 0.5, v downward.
    std::vector<float> lensPoints;
    /// Three to a triangle.
    std::vector<std::uint32_t> corners;
};

/// Makes the mesh for a picture of `width` by `height` pixels; a dual one has an even height.
/// Throws `std::invalid_argument` for views that have no grid and sizes that are too small.
PanoramaMesh MakePanoramaMesh(const PanoramaView& view, int width, int height);

#endif
