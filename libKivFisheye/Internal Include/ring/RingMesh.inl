// The texture coordinates of a mount that sees a ring: both forms, what the pointers start at, and
// the entries. Included once inside the namespace of each mount, where `Mount` is the mount and
// `CDispatcher` has the pointers.

namespace C {

void CalculatePanoramaTextureCoordinate(int columns, int rows, float innerRadiusRatio,
                                        bool centerAtOrigin, float* coordinates) {
    ring::WriteFullMesh<Mount, ring::C::MeshColumns>(columns, rows, innerRadiusRatio,
                                                     centerAtOrigin, coordinates);
}

void CalculateDualPanoramaTextureCoordinate(int columns, int rowsFirst, int rowsSecond,
                                            float innerRadiusRatio, bool centerAtOrigin,
                                            float* coordinates) {
    ring::WriteDualMesh<Mount, ring::C::MeshColumns>(columns, rowsFirst, rowsSecond,
                                                     innerRadiusRatio, centerAtOrigin, coordinates);
}

}  // namespace C

#if defined(__x86_64__)
namespace SSE2 {

void CalculatePanoramaTextureCoordinate(int columns, int rows, float innerRadiusRatio,
                                        bool centerAtOrigin, float* coordinates) {
    ring::WriteFullMesh<Mount, ring::SSE2::MeshColumns>(columns, rows, innerRadiusRatio,
                                                        centerAtOrigin, coordinates);
}

void CalculateDualPanoramaTextureCoordinate(int columns, int rowsFirst, int rowsSecond,
                                            float innerRadiusRatio, bool centerAtOrigin,
                                            float* coordinates) {
    ring::WriteDualMesh<Mount, ring::SSE2::MeshColumns>(
        columns, rowsFirst, rowsSecond, innerRadiusRatio, centerAtOrigin, coordinates);
}

}  // namespace SSE2
#else
namespace SSE2 = C;
#endif

// clang-format off
ring::MeshFunction& CDispatcher::_calculate_panorama_texture_coordinate_dispatch = FirstCallOf<_calculate_panorama_texture_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculatePanoramaTextureCoordinate>, KernelIn<Form::SSE2, SSE2::CalculatePanoramaTextureCoordinate>>;
ring::DualMeshFunction& CDispatcher::_calculate_dual_panorama_texture_coordinate_dispatch = FirstCallOf<_calculate_dual_panorama_texture_coordinate_impl, Sse2OrC, KernelIn<Form::C, C::CalculateDualPanoramaTextureCoordinate>, KernelIn<Form::SSE2, SSE2::CalculateDualPanoramaTextureCoordinate>>;
KernelPointer<ring::MeshFunction> CDispatcher::_calculate_panorama_texture_coordinate_impl(_calculate_panorama_texture_coordinate_dispatch);
KernelPointer<ring::DualMeshFunction> CDispatcher::_calculate_dual_panorama_texture_coordinate_impl(_calculate_dual_panorama_texture_coordinate_dispatch);
// clang-format on

void CalculatePanoramaTextureCoordinate(int columns, int rows, float innerRadiusRatio,
                                        bool centerAtOrigin, float* coordinates) {
    CDispatcher::_calculate_panorama_texture_coordinate_impl(columns, rows, innerRadiusRatio,
                                                             centerAtOrigin, coordinates);
}

void CalculateDualPanoramaTextureCoordinate(int columns, int rowsFirst, int rowsSecond,
                                            float innerRadiusRatio, bool centerAtOrigin,
                                            float* coordinates) {
    CDispatcher::_calculate_dual_panorama_texture_coordinate_impl(
        columns, rowsFirst, rowsSecond, innerRadiusRatio, centerAtOrigin, coordinates);
}
