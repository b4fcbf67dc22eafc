#include "OutlineBenchmark.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "DownwardFisheyeOpenGLAlgo.h"
#include "DownwardFisheyeOpenGLAlgo_C.h"
#include "FisheyeAlgoCommon_C.h"
#include "FisheyeVCamAlgo_C.h"
#include "FrameTimer.h"
#include "FrontwardFisheyeOpenGLAlgo.h"
#include "FrontwardFisheyeOpenGLAlgo_C.h"
#include "MemoryUtils.h"
#include "PanoramaOutlines.h"
#include "ring/RingMesh.h"
#include "vcam/VCamMounts.h"
#if defined(__x86_64__)
#include "DownwardFisheyeOpenGLAlgo_SSE2.h"
#include "FisheyeAlgoCommon_SSE2.h"
#include "FisheyeVCamAlgo_SSE2.h"
#include "FrontwardFisheyeOpenGLAlgo_SSE2.h"
#endif

namespace {

constexpr int kPoints = 4096;
constexpr int kColumns = 256;
constexpr int kRows = 256;

constexpr float kCenter = 0.5F;
constexpr float kRadiusX = 0.45F;
constexpr float kRadiusY = 0.5F;
constexpr float kInnerRadiusRatio = 0.2F;
constexpr float kWallViewAngle = 45.0F;
constexpr CoordinateOrientationType kWindows = CoordinateOrientationWindows;

using Fill = std::function<void(float* points)>;

void Add(const std::string& scene, const std::string& contestant, int points, const Fill& fill) {
    const auto list = std::make_shared<CAlignedBufferT<float, 64>>();
    RegisterTimed(scene + "/" + contestant, [=](benchmark::State& state) {
        if (list->count() == 0) {
            list->Allocate(std::size_t{2} * static_cast<std::size_t>(points));
        }
        TimeFrames(
            state, static_cast<std::size_t>(points),
            [&] {
                fill(list->data());
                benchmark::ClobberMemory();
            },
            false);
    });
}

using EllipseKernel = void(float, float, float, float, float*, int);

Fill Ellipse(EllipseKernel& kernel) {
    return
        [&kernel](float* points) { kernel(kCenter, kCenter, kRadiusX, kRadiusY, points, kPoints); };
}

/// Both halves, together of as many points.
Fill HalfRings(DownwardFisheyeAlgoNS::DualOutlineFunction& kernel) {
    return [&kernel](float* points) {
        kernel(kRadiusX, kRadiusY, kInnerRadiusRatio, false, 77.0F, points, kPoints / 2,
               points + kPoints, kPoints / 2, kWindows);
    };
}

using WallOutlineKernel = void(float, float, float, float, float, float*, int);

Fill WallOutline(WallOutlineKernel& kernel) {
    return [&kernel](float* points) {
        kernel(kCenter, kCenter, kRadiusX, kRadiusY, kWallViewAngle, points, kPoints);
    };
}

/// At zoom 4.
Fill VCamOutline(vcam::OutlineFunction& kernel) {
    return [&kernel](float* points) {
        float matrix[16];
        DownwardFisheyeAlgoNS::GetModelViewMatrix(77.0F, 40.0F, matrix);
        kernel(kCenter, kCenter, kRadiusX, kRadiusY, 0.01F, 70.0F, 1.5F, 0.01F, matrix, points,
               kPoints);
    };
}

Fill Mesh(ring::MeshFunction& kernel, float shape) {
    return [&kernel, shape](float* points) { kernel(kColumns, kRows, shape, false, points); };
}

Fill DualMesh(ring::DualMeshFunction& kernel) {
    return [&kernel](float* points) {
        kernel(kColumns, kRows / 2, kRows / 2, kInnerRadiusRatio, false, points);
    };
}

struct Fills {
    Fill ellipse;
    Fill halfRings;
    Fill wallOutline;
    Fill vcamOutline;
    Fill ringMesh;
    Fill dualMesh;
    Fill wallMesh;
};

void AddAll(const std::string& contestant, const Fills& fills) {
    Add("outline/ring/4096", contestant, kPoints, fills.ellipse);
    Add("outline/dual/4096", contestant, kPoints, fills.halfRings);
    Add("outline/wall/4096", contestant, kPoints, fills.wallOutline);
    Add("outline/vcam/4096", contestant, kPoints, fills.vcamOutline);
    Add("mesh/ring/256x256", contestant, kColumns * kRows, fills.ringMesh);
    Add("mesh/dual/256x256", contestant, kColumns * kRows, fills.dualMesh);
    Add("mesh/wall/256x256", contestant, kColumns * kRows, fills.wallMesh);
}

void CalculateEllipse(float centerX, float centerY, float radiusX, float radiusY, float* points,
                      int count) {
    CalculateEllipseCoordinate(centerX, centerY, radiusX, radiusY, points, count, kWindows);
}

void CalculateWallOutline(float, float, float radiusX, float radiusY, float wallViewAngle,
                          float* points, int count) {
    FrontwardFisheyeAlgoNS::CalculatePanoramaBoundaryCoordinate(radiusX, radiusY, wallViewAngle,
                                                                false, points, count, kWindows);
}

void CalculateVCamOutline(float, float, float radiusX, float radiusY, float eyeZ, float fieldOfView,
                          float aspect, float nearPlane, const float (&matrix)[16],
                          float* coordinates, int count) {
    FisheyeVCamAlgoNS::CalculateVCamROICoordinate(radiusX, radiusY, eyeZ, fieldOfView, aspect,
                                                  nearPlane, matrix, false, coordinates, count,
                                                  kWindows);
}

}  // namespace

void RegisterOutlineBenchmarks() {
    namespace Ring = DownwardFisheyeAlgoNS;
    namespace Wall = FrontwardFisheyeAlgoNS;
    namespace VCam = FisheyeVCamAlgoNS;
    AddAll("library",
           {Ellipse(CalculateEllipse), HalfRings(Ring::CalculateDualPanoramaROICoordinate),
            WallOutline(CalculateWallOutline), VCamOutline(CalculateVCamOutline),
            Mesh(Ring::CalculatePanoramaTextureCoordinate, kInnerRadiusRatio),
            DualMesh(Ring::CalculateDualPanoramaTextureCoordinate),
            Mesh(Wall::CalculatePanoramaTextureCoordinate, kWallViewAngle)});
    AddAll("form-C", {Ellipse(C::CalculateEllipseCoordinate<kWindows>),
                      HalfRings(Ring::C::CalculateDualPanoramaROICoordinate),
                      WallOutline(Wall::C::CalculatePanoramaBoundaryCoordinate<kWindows>),
                      VCamOutline(VCam::C::CalculateVCamROICoordinate<kWindows>),
                      Mesh(Ring::C::CalculatePanoramaTextureCoordinate, kInnerRadiusRatio),
                      DualMesh(Ring::C::CalculateDualPanoramaTextureCoordinate),
                      Mesh(Wall::C::CalculatePanoramaTextureCoordinate, kWallViewAngle)});
#if defined(__x86_64__)
    AddAll("form-SSE2", {Ellipse(SSE2::CalculateEllipseCoordinate<kWindows>),
                         HalfRings(Ring::SSE2::CalculateDualPanoramaROICoordinate),
                         WallOutline(Wall::SSE2::CalculatePanoramaBoundaryCoordinate<kWindows>),
                         VCamOutline(VCam::SSE2::CalculateVCamROICoordinate<kWindows>),
                         Mesh(Ring::SSE2::CalculatePanoramaTextureCoordinate, kInnerRadiusRatio),
                         DualMesh(Ring::SSE2::CalculateDualPanoramaTextureCoordinate),
                         Mesh(Wall::SSE2::CalculatePanoramaTextureCoordinate, kWallViewAngle)});
#endif
}
