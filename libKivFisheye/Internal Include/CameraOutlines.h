#ifndef KIVFISHEYE_CAMERA_OUTLINES_H
#define KIVFISHEYE_CAMERA_OUTLINES_H

#include <cstdint>

#include "KivFisheyeLib.h"
#include "ObjectLock.h"
#include "PanoramaOutlines.h"

// The outlines of panoramas, for a camera `T` that derives from these interfaces. Those of the view
// ask the camera's mount; the others are the geometry alone.

/// True for a list that the outline kernels can fill: it is there, its first point lies at a
/// multiple of 16 bytes, and its points are one or more whole groups.
inline bool IsPointList(const float* points, int count, int pointsInGroup) {
    return points != nullptr && reinterpret_cast<std::uintptr_t>(points) % 16 == 0 && count > 0 &&
           count % pointsInGroup == 0;
}

inline void FillWallOutline(const KivFisheyeLib::DewarpParams& lens, float* points, int count) {
    FrontwardFisheyeAlgoNS::CalculatePanoramaBoundaryCoordinate(
        lens.radiusX, lens.radiusY, lens.wallViewAngle, false, points, count,
        CoordinateOrientationWindows);
}

/// A table's ring is a ceiling's.
inline void FillRingOutlines(const KivFisheyeLib::DewarpParams& lens, float* inner, int innerCount,
                             float* outer, int outerCount) {
    DownwardFisheyeAlgoNS::CalculatePanoramaBoundaryCoordinate(
        lens.radiusX, lens.radiusY, lens.innerRadiusRatio, false, inner, innerCount, outer,
        outerCount, CoordinateOrientationWindows);
}

/// What outlines need of a camera, copied so that they can be computed without its lock.
struct MountedLens {
    template <class T>
    explicit MountedLens(T* camera) {
        const CObjectLockT<CMultiThreadModel> lock(camera);
        mount = camera->m_mountType;
        params = camera->m_dewarpParams;
    }

    KivFisheyeLib::MountType mount;
    KivFisheyeLib::DewarpParams params;
};

template <class T>
class IKivFisheyeROIImpl : public IKivFisheyeROI {
public:
    ResultCode GetDualPanoramaROI(float* first, int firstCount, float* second,
                                  int secondCount) override {
        if (!IsPointList(first, firstCount, 8) || !IsPointList(second, secondCount, 8)) {
            return kResultInvalidArgument;
        }
        T* const camera = static_cast<T*>(this);
        const CObjectLockT<CMultiThreadModel> lock(camera);
        const KivFisheyeLib::DewarpParams& lens = camera->m_dewarpParams;
        const auto fill = [&](float pan) {
            DownwardFisheyeAlgoNS::CalculateDualPanoramaROICoordinate(
                lens.radiusX, lens.radiusY, lens.innerRadiusRatio, false, pan, first, firstCount,
                second, secondCount, CoordinateOrientationWindows);
        };
        switch (camera->m_mountType) {
            case KivFisheyeLib::MountTypeWall:
                return kResultNotReady;
            case KivFisheyeLib::MountTypeCeiling:
                fill(360.0F - camera->m_pan);
                break;
            case KivFisheyeLib::MountTypeTable:
                fill(camera->m_pan);
                break;
        }
        return kResultOk;
    }

    ResultCode GetWallPanoramaROI(float* points, int count) override {
        if (!IsPointList(points, count, 16)) {
            return kResultInvalidArgument;
        }
        const MountedLens lens(static_cast<T*>(this));
        if (lens.mount != KivFisheyeLib::MountTypeWall) {
            return kResultNotReady;
        }
        FillWallOutline(lens.params, points, count);
        return kResultOk;
    }

    ResultCode GetCeilingTablePanoramaROI(float* inner, int innerCount, float* outer,
                                          int outerCount) override {
        if (!IsPointList(inner, innerCount, 4) || !IsPointList(outer, outerCount, 4)) {
            return kResultInvalidArgument;
        }
        const MountedLens lens(static_cast<T*>(this));
        switch (lens.mount) {
            case KivFisheyeLib::MountTypeWall:
                return kResultNotReady;
            case KivFisheyeLib::MountTypeCeiling:
            case KivFisheyeLib::MountTypeTable:
                FillRingOutlines(lens.params, inner, innerCount, outer, outerCount);
                break;
        }
        return kResultOk;
    }
};

template <class T>
class IKivFisheyeDewarpBoundaryImpl : public IKivFisheyeDewarpBoundary {
public:
    ResultCode CalculateWallPanoramaBoundary(const KivFisheyeLib::DewarpParams* params,
                                             float* points, int count) override {
        if (!IsPointList(points, count, 16)) {
            return kResultInvalidArgument;
        }
        FillWallOutline(xParamsOrOwn(params), points, count);
        return kResultOk;
    }

    ResultCode CalculateCeilingTablePanoramaBoundary(const KivFisheyeLib::DewarpParams* params,
                                                     float* inner, int innerCount, float* outer,
                                                     int outerCount) override {
        if (!IsPointList(inner, innerCount, 4) || !IsPointList(outer, outerCount, 4)) {
            return kResultInvalidArgument;
        }
        FillRingOutlines(xParamsOrOwn(params), inner, innerCount, outer, outerCount);
        return kResultOk;
    }

private:
    KivFisheyeLib::DewarpParams xParamsOrOwn(const KivFisheyeLib::DewarpParams* params) {
        return params != nullptr ? *params : MountedLens(static_cast<T*>(this)).params;
    }
};

#endif
