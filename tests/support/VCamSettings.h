#ifndef KIVFISHEYE_TESTS_VCAM_SETTINGS_H
#define KIVFISHEYE_TESTS_VCAM_SETTINGS_H

#include "FisheyeVCamAlgo.h"

/// What a mount makes of a wanted pan, tilt and zoom.
struct VCamSettings {
    float eyeZ;
    float nearPlane;
    float farPlane;
    float fieldOfView;
    float pan;
    float tilt;
    float zoom;
};

template <auto& get>
VCamSettings SettingsBy(float pan, float tilt, float zoom, bool zoomingOut) {
    constexpr float kUnwritten = -12345.0F;
    VCamSettings s{kUnwritten, kUnwritten, kUnwritten, kUnwritten,
                   kUnwritten, kUnwritten, kUnwritten};
    get(pan, tilt, zoom, zoomingOut, s.eyeZ, s.nearPlane, s.farPlane, s.fieldOfView, s.pan, s.tilt,
        s.zoom);
    return s;
}

inline VCamSettings WallSettings(float pan, float tilt, float zoom, bool zoomingOut = false) {
    return SettingsBy<FisheyeVCamAlgoNS::GetWallVCamCameraSettings>(pan, tilt, zoom, zoomingOut);
}
inline VCamSettings CeilingSettings(float pan, float tilt, float zoom, bool zoomingOut = false) {
    return SettingsBy<FisheyeVCamAlgoNS::GetCeilingVCamCameraSettings>(pan, tilt, zoom, zoomingOut);
}
inline VCamSettings TableSettings(float pan, float tilt, float zoom, bool zoomingOut = false) {
    return SettingsBy<FisheyeVCamAlgoNS::GetTableVCamCameraSettings>(pan, tilt, zoom, zoomingOut);
}

using SettingsFunction = VCamSettings (*)(float pan, float tilt, float zoom, bool zoomingOut);

constexpr SettingsFunction kEveryMount[] = {WallSettings, CeilingSettings, TableSettings};

#endif
