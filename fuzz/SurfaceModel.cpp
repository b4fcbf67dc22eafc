#include "SurfaceModel.h"

#include <cmath>
#include <cstdint>
#include <cstring>

#include "AllocationLimit.h"

using namespace KivFisheyeLib;

namespace {

constexpr std::uint64_t kMostOffset = 0x7FFFFFFF;
constexpr std::uint64_t kEntryBytes = 4;

std::uint64_t PixelsOf(FrameSize size) {
    return std::uint64_t{size.width} * size.height;
}

}  // namespace

bool SurfaceModel::CanShowInput() const {
    const std::uint64_t rowBytes = static_cast<std::uint64_t>(BytesPerPixel(format)) * input.width;
    return input.width <= kMostOffset && input.height <= kMostOffset && rowBytes <= input.stride &&
           std::uint64_t{input.stride} * (input.height - 1) + rowBytes <= kMostOffset;
}

bool SurfaceModel::TableFails(FrameSize size) const {
    if (size.width == 0 || size.height == 0) {
        return false;
    }
    const bool isEmptyInput = input.width == 0 || input.height == 0;
    return size.width > kMostOffset || size.height > kMostOffset || PixelsOf(size) > kMostOffset ||
           PixelsOf(size) * kEntryBytes > kMostBytes || (!isEmptyInput && !CanShowInput());
}

bool SurfaceModel::TableMayFail(FrameSize size) const {
    return TableFails(size) || PixelsOf(size) * kEntryBytes > kMostBytes / 2;
}

ResultCode SurfaceModel::Build(Scene whenOutOfMemory, bool ranOut) {
    if (IsPanorama() && (ranOut || TableFails(OutputSize()))) {
        m_scene = whenOutOfMemory;
        return kThrown;
    }
    m_scene = Scene::Ready;
    return kResultOk;
}

ResultCode SurfaceModel::MakeScene(bool ranOut) {
    m_scene = Scene::None;
    return HasScene(mount, view) ? Build(Scene::NotMade, ranOut) : kResultOk;
}

ResultCode SurfaceModel::MakeSceneAndConvert(bool ranOut) {
    const ResultCode made = MakeScene(ranOut);
    // A virtual camera needs memory when it converts.
    const bool converts = m_scene == Scene::Ready && HasBothFrames();
    return made == kResultOk && converts && ranOut ? kThrown : made;
}

ResultCode SurfaceModel::TellScene(bool ranOut) {
    if (IsThere()) {
        return Build(Scene::NoTable, ranOut);
    }
    return m_scene == Scene::NotMade ? MakeScene(ranOut) : kResultOk;
}

ResultCode SurfaceModel::SetInput(const VideoFrameInfo& record, PixelFormat newFormat,
                                  bool ranOut) {
    if (!IsValidRecord(record, newFormat)) {
        return kResultInvalidArgument;
    }
    input = record;
    format = newFormat;
    return TellScene(ranOut);
}

ResultCode SurfaceModel::SetOutput(const VideoFrameInfo& record, bool ranOut) {
    if (!IsValidRecord(record, format) || record.width % 8 != 0) {
        return kResultInvalidArgument;
    }
    output = record;
    return TellScene(ranOut);
}

ResultCode SurfaceModel::SetMount(MountType newMount, bool ranOut) {
    if (newMount == mount && !IsFailed()) {
        return kResultNoChange;
    }
    return SetMountAndView(newMount, view, ranOut);
}

ResultCode SurfaceModel::SetView(ViewType newView, bool ranOut) {
    if (newView == view && !IsFailed()) {
        return kResultNoChange;
    }
    return SetMountAndView(mount, newView, ranOut);
}

ResultCode SurfaceModel::SetMountAndView(MountType newMount, ViewType newView, bool ranOut) {
    if (!IsAllowed(newMount, newView)) {
        return kResultInvalidArgument;
    }
    mount = newMount;
    view = newView;
    return MakeSceneAndConvert(ranOut);
}

ResultCode SurfaceModel::SetLens(const DewarpParams& newLens, bool ranOut) {
    if (!IsValidLens(newLens)) {
        return kResultInvalidArgument;
    }
    const bool isSame = std::memcmp(&newLens, &lens, sizeof(lens)) == 0;
    if (isSame && !IsFailed()) {
        return kResultOk;
    }
    lens = newLens;
    // A virtual camera reads the lens anew for every frame.
    return TellScene(ranOut);
}

ResultCode SurfaceModel::Aimed(Aim wanted, bool isZoomingOut) {
    if (view == ViewTypeVCam) {
        aim = Limited(mount, wanted, isZoomingOut);
    } else {
        aim.pan = mount == MountTypeWall ? 0.0F : Wrapped(wanted.pan);
    }
    return kResultOk;
}

ResultCode SurfaceModel::SetAbsolute(Aim wanted) {
    if (!IsThere()) {
        return kResultNotReady;
    }
    if (wanted.zoom < 1.0F) {
        wanted.zoom = aim.zoom;
    }
    return Aimed(wanted, false);
}

ResultCode SurfaceModel::SetRelative(Aim change) {
    if (!IsThere()) {
        return kResultNotReady;
    }
    if (change.pan == 0.0F && change.tilt == 0.0F && change.zoom == 0.0F) {
        return kResultNoChange;
    }
    return Aimed({aim.pan + change.pan, aim.tilt + change.tilt, aim.zoom + change.zoom},
                 change.zoom < 0.0F);
}

ResultCode SurfaceModel::Process(bool ranOut) const {
    if (!HasBothFrames()) {
        return kResultNullPointer;
    }
    if (!IsThere()) {
        return kResultNotReady;
    }
    return ranOut && !IsPanorama() ? kThrown : kResultOk;
}

Conversion SurfaceModel::ConversionOfScene() const {
    if (view == ViewTypeVCam) {
        return Conversion::VCam;
    }
    if (mount == MountTypeWall) {
        return Conversion::Panorama;
    }
    if (std::isnan(aim.pan)) {
        return Conversion::None;
    }
    if (view == ViewTypeFullPanorama) {
        return Conversion::Panorama;
    }
    return 360.0F - aim.pan < 1e-7F ? Conversion::UnturnedDual : Conversion::Dual;
}

Conversion SurfaceModel::PresentConversion() const {
    return HasBothFrames() && m_scene == Scene::Ready ? ConversionOfScene() : Conversion::None;
}
