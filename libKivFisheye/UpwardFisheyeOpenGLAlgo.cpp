#include "UpwardFisheyeOpenGLAlgo.h"

#include "KernelPointer.h"
#include "ring/RingMesh.h"
#include "ring/RingMesh_C.h"
#include "ring/RingMount.h"
#if defined(__x86_64__)
#include "ring/RingMesh_SSE2.h"
#endif

namespace UpwardFisheyeAlgoNS {

namespace {

using Mount = ring::TableMount;

struct CDispatcher {
    static ring::MeshFunction& _calculate_panorama_texture_coordinate_dispatch;
    static ring::DualMeshFunction& _calculate_dual_panorama_texture_coordinate_dispatch;
    static KernelPointer<ring::MeshFunction> _calculate_panorama_texture_coordinate_impl;
    static KernelPointer<ring::DualMeshFunction> _calculate_dual_panorama_texture_coordinate_impl;
};

}  // namespace

#include "ring/RingMesh.inl"

}  // namespace UpwardFisheyeAlgoNS
