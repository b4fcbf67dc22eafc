#ifndef KIVFISHEYE_TESTS_SERIAL_CAMERA_H
#define KIVFISHEYE_TESTS_SERIAL_CAMERA_H

#include <algorithm>
#include <array>
#include <cmath>
#include <tuple>

#include "KivFisheyeLib.h"

/// A plain model of what a camera without frames keeps and answers, for one thread. It does not
/// know how a virtual camera zooms out.
class SerialCamera {
public:
    using MountType = KivFisheyeLib::MountType;
    using ViewType = KivFisheyeLib::ViewType;

    ResultCode SetMountType(MountType mount) {
        return mount == m_mount ? kResultNoChange : SetMountAndViewType(mount, m_view);
    }

    ResultCode SetViewType(ViewType view) {
        return view == m_view ? kResultNoChange : SetMountAndViewType(m_mount, view);
    }

    ResultCode SetMountAndViewType(MountType mount, ViewType view) {
        if (mount == KivFisheyeLib::MountTypeWall && view == KivFisheyeLib::ViewTypeDualPanorama) {
            return kResultInvalidArgument;
        }
        m_mount = mount;
        m_view = view;
        return kResultOk;
    }

    ResultCode GetMountAndViewType(MountType* mount, ViewType* view) const {
        *mount = m_mount;
        *view = m_view;
        return kResultOk;
    }

    ResultCode SetAbsolutePTZ(float pan, float tilt, float zoom) {
        if (m_view == KivFisheyeLib::ViewTypeVCam) {
            AimVirtualCamera(pan, tilt, zoom < 1.0F ? m_ptz[2] : zoom);
        } else {
            m_ptz[0] = m_mount == KivFisheyeLib::MountTypeWall ? 0.0F : Wrapped(pan);
        }
        return kResultOk;
    }

    ResultCode SetRelativePTZ(float pan, float tilt, float zoom) {
        if (pan == 0.0F && tilt == 0.0F && zoom == 0.0F) {
            return kResultNoChange;
        }
        return SetAbsolutePTZ(m_ptz[0] + pan, m_ptz[1] + tilt, m_ptz[2] + zoom);
    }

    ResultCode GetPTZ(float* pan, float* tilt, float* zoom) const {
        std::tie(*pan, *tilt, *zoom) = std::tuple_cat(m_ptz);
        return kResultOk;
    }

    ResultCode SetDewarpParams(const KivFisheyeLib::DewarpParams& lens) {
        if (lens.innerRadiusRatio > 0.8F) {
            return kResultInvalidArgument;
        }
        m_lens = {lens.radiusX, lens.radiusY, lens.wallViewAngle, lens.innerRadiusRatio};
        return kResultOk;
    }

    ResultCode GetDewarpParams(KivFisheyeLib::DewarpParams* lens) const {
        *lens = {m_lens[0], m_lens[1], m_lens[2], m_lens[3]};
        return kResultOk;
    }

    bool operator<(const SerialCamera& other) const {
        return std::tie(m_mount, m_view, m_ptz, m_lens) <
               std::tie(other.m_mount, other.m_view, other.m_ptz, other.m_lens);
    }

private:
    static float Wrapped(float pan) {
        const float turn = std::fmod(pan, 360.0F);
        return turn < 0.0F ? turn + 360.0F : turn;
    }

    void AimVirtualCamera(float pan, float tilt, float zoom) {
        const bool looksUp = m_mount != KivFisheyeLib::MountTypeTable;
        const bool looksDown = m_mount != KivFisheyeLib::MountTypeCeiling;
        zoom = std::clamp(zoom, 1.0F, 10.0F);
        // How far it may look from the lens's axis: below 2 not at all.
        const float limit = zoom < 2.0F ? 0.0F : 45.0F + 5.0F * (zoom - 2.0F);
        m_ptz = {looksUp && looksDown ? std::clamp(pan, -limit, limit) : Wrapped(pan),
                 std::clamp(tilt, looksDown ? -limit : 0.0F, looksUp ? limit : 0.0F), zoom};
    }

    MountType m_mount = KivFisheyeLib::MountTypeWall;
    ViewType m_view = KivFisheyeLib::ViewTypeVCam;
    std::array<float, 3> m_ptz{0.0F, 0.0F, 1.0F};
    std::array<float, 4> m_lens{0.5F, 0.5F, 45.0F, 0.0F};
};

#endif
