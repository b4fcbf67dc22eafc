#ifndef KIVFISHEYE_FUZZ_SURFACE_MODEL_H
#define KIVFISHEYE_FUZZ_SURFACE_MODEL_H

#include "KivFisheyeLib.h"
#include "SurfaceRules.h"

/// Stands for the result of a call that threw for want of memory.
constexpr ResultCode kThrown = -1;

/// What a conversion does to the output frame.
enum class Conversion {
    None,         ///< nothing is written
    VCam,         ///< rows are cleared, and pixels of the lens copied
    Panorama,     ///< every pixel is written, row padding is not
    Dual,         ///< the same, but for an odd last row
    UnturnedDual  ///< the odd last row becomes zero bytes
};

/// What a context remembers, and how it answers. Operations take `ranOut`: whether an allocation
/// was refused and the call threw. They give the result that is due.
class SurfaceModel {
public:
    ResultCode SetInput(const KivFisheyeLib::VideoFrameInfo& record,
                        KivFisheyeLib::PixelFormat format, bool ranOut);
    ResultCode SetOutput(const KivFisheyeLib::VideoFrameInfo& record, bool ranOut);
    ResultCode SetMount(KivFisheyeLib::MountType mount, bool ranOut);
    ResultCode SetView(KivFisheyeLib::ViewType view, bool ranOut);
    ResultCode SetMountAndView(KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view,
                               bool ranOut);
    ResultCode SetLens(const KivFisheyeLib::DewarpParams& lens, bool ranOut);
    ResultCode SetAbsolute(Aim wanted);
    ResultCode SetRelative(Aim change);
    ResultCode Process(bool ranOut) const;

    /// Whether a table for an output of this size cannot be made.
    bool TableFails(FrameSize output) const;
    /// Also where only the library's need of further memory decides.
    bool TableMayFail(FrameSize output) const;

    /// What a conversion into the context's own output does now.
    Conversion PresentConversion() const;
    /// What one of this mount and view does that has all it needs.
    Conversion ConversionOfScene() const;

    bool HasBothFrames() const { return input.buffer != nullptr && output.buffer != nullptr; }
    bool IsPanorama() const { return view != KivFisheyeLib::ViewTypeVCam; }
    /// Whether pixels of the input can be copied: all lie within what 32-bit offsets reach, and
    /// rows within their stride.
    bool CanShowInput() const;
    FrameSize InputSize() const { return {input.width, input.height}; }
    FrameSize OutputSize() const { return {output.width, output.height}; }

    KivFisheyeLib::MountType mount = KivFisheyeLib::MountTypeWall;
    KivFisheyeLib::ViewType view = KivFisheyeLib::ViewTypeVCam;
    KivFisheyeLib::PixelFormat format = KivFisheyeLib::PixelFormatRGB32;
    KivFisheyeLib::VideoFrameInfo input{};
    KivFisheyeLib::VideoFrameInfo output{};
    KivFisheyeLib::DewarpParams lens{0.5F, 0.5F, 45.0F, 0.0F};
    Aim aim{0.0F, 0.0F, 1.0F};

private:
    enum class Scene {
        None,  ///< the mount and view have none
        Ready,
        NoTable,  ///< there was no memory for its table
        NotMade   ///< there was no memory to make it
    };

    bool IsFailed() const { return m_scene == Scene::NoTable || m_scene == Scene::NotMade; }
    bool IsThere() const { return m_scene == Scene::Ready || m_scene == Scene::NoTable; }
    ResultCode Build(Scene whenOutOfMemory, bool ranOut);
    ResultCode TellScene(bool ranOut);
    ResultCode MakeScene(bool ranOut);
    ResultCode MakeSceneAndConvert(bool ranOut);
    ResultCode Aimed(Aim wanted, bool isZoomingOut);

    Scene m_scene = Scene::Ready;
};

#endif
