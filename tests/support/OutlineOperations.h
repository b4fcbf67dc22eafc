#ifndef KIVFISHEYE_TESTS_OUTLINE_OPERATIONS_H
#define KIVFISHEYE_TESTS_OUTLINE_OPERATIONS_H

#include <gtest/gtest.h>

#include <ostream>

#include "KivFisheyeCamera.h"
#include "support/ClientFrame.h"

/// A lens whose four values are told apart by every outline.
constexpr KivFisheyeLib::DewarpParams kOutlineLens{0.45F, 0.3F, 35.0F, 0.25F};

/// A lens that a camera refuses, and whose outlines can be asked for all the same.
constexpr KivFisheyeLib::DewarpParams kRefusedLens{1.5F, 0.375F, 200.0F, 0.9F};

/// One of the operations that fill lists of points. Those with a single list do not look at the
/// second.
struct OutlineOperation {
    using Call = ResultCode(CKivFisheyeCamera& camera, float* first, int firstCount, float* second,
                            int secondCount);

    const char* name;
    int lists;
    int pointsInGroup;
    KivFisheyeLib::MountType mount;  ///< one that it serves
    Call* call;
};

inline std::ostream& operator<<(std::ostream& out, const OutlineOperation& operation) {
    return out << operation.name;
}

constexpr OutlineOperation kVCamRoi{"GetVCamROI", 1, 16, KivFisheyeLib::MountTypeWall,
                                    [](CKivFisheyeCamera& camera, float* points, int count, float*,
                                       int) { return camera.GetVCamROI(points, count); }};
constexpr OutlineOperation kDualRoi{
    "GetDualPanoramaROI", 2, 8, KivFisheyeLib::MountTypeCeiling,
    [](CKivFisheyeCamera& camera, float* first, int firstCount, float* second, int secondCount) {
        return camera.GetDualPanoramaROI(first, firstCount, second, secondCount);
    }};
constexpr OutlineOperation kWallRoi{"GetWallPanoramaROI", 1, 16, KivFisheyeLib::MountTypeWall,
                                    [](CKivFisheyeCamera& camera, float* points, int count, float*,
                                       int) { return camera.GetWallPanoramaROI(points, count); }};
constexpr OutlineOperation kRingRoi{
    "GetCeilingTablePanoramaROI", 2, 4, KivFisheyeLib::MountTypeTable,
    [](CKivFisheyeCamera& camera, float* inner, int innerCount, float* outer, int outerCount) {
        return camera.GetCeilingTablePanoramaROI(inner, innerCount, outer, outerCount);
    }};
constexpr OutlineOperation kOwnWallBoundary{
    "CalculateWallPanoramaBoundary of the camera's lens", 1, 16, KivFisheyeLib::MountTypeCeiling,
    [](CKivFisheyeCamera& camera, float* points, int count, float*, int) {
        return camera.CalculateWallPanoramaBoundary(nullptr, points, count);
    }};
constexpr OutlineOperation kGivenWallBoundary{
    "CalculateWallPanoramaBoundary of a given lens", 1, 16, KivFisheyeLib::MountTypeTable,
    [](CKivFisheyeCamera& camera, float* points, int count, float*, int) {
        return camera.CalculateWallPanoramaBoundary(&kRefusedLens, points, count);
    }};
constexpr OutlineOperation kOwnRingBoundary{
    "CalculateCeilingTablePanoramaBoundary of the camera's lens", 2, 4,
    KivFisheyeLib::MountTypeWall,
    [](CKivFisheyeCamera& camera, float* inner, int innerCount, float* outer, int outerCount) {
        return camera.CalculateCeilingTablePanoramaBoundary(nullptr, inner, innerCount, outer,
                                                            outerCount);
    }};
constexpr OutlineOperation kGivenRingBoundary{
    "CalculateCeilingTablePanoramaBoundary of a given lens", 2, 4, KivFisheyeLib::MountTypeWall,
    [](CKivFisheyeCamera& camera, float* inner, int innerCount, float* outer, int outerCount) {
        return camera.CalculateCeilingTablePanoramaBoundary(&kRefusedLens, inner, innerCount, outer,
                                                            outerCount);
    }};

constexpr OutlineOperation kOutlineOperations[] = {
    kVCamRoi,         kDualRoi,           kWallRoi,         kRingRoi,
    kOwnWallBoundary, kGivenWallBoundary, kOwnRingBoundary, kGivenRingBoundary};

/// A camera with `kOutlineLens` and an output frame, on this mount in this view.
struct OutlineCamera {
    explicit OutlineCamera(KivFisheyeLib::MountType mount,
                           KivFisheyeLib::ViewType view = KivFisheyeLib::ViewTypeVCam) {
        EXPECT_EQ(camera.SetDewarpParams(kOutlineLens), kResultOk);
        EXPECT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
        EXPECT_EQ(camera.SetMountAndViewType(mount, view), kResultOk);
    }

    ClientFrame output{64, 40, KivFisheyeLib::PixelFormatRGB32};
    CKivFisheyeCamera camera;
};

#endif
