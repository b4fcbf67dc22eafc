#ifndef KIVFISHEYE_TESTS_CONTEXT_MEMORY_H
#define KIVFISHEYE_TESTS_CONTEXT_MEMORY_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "KivFisheyeLib.h"
#include "support/ClientFrame.h"

/// A mount and a view that have a scene.
struct MountedView {
    KivFisheyeLib::MountType mount;
    KivFisheyeLib::ViewType view;

    bool IsPanorama() const { return view != KivFisheyeLib::ViewTypeVCam; }
};

constexpr MountedView kMountedViews[] = {
    {KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::ViewTypeFullPanorama},
    {KivFisheyeLib::MountTypeTable, KivFisheyeLib::ViewTypeFullPanorama},
    {KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::ViewTypeDualPanorama},
    {KivFisheyeLib::MountTypeTable, KivFisheyeLib::ViewTypeDualPanorama},
    {KivFisheyeLib::MountTypeWall, KivFisheyeLib::ViewTypeFullPanorama},
    {KivFisheyeLib::MountTypeCeiling, KivFisheyeLib::ViewTypeVCam},
    {KivFisheyeLib::MountTypeTable, KivFisheyeLib::ViewTypeVCam},
    {KivFisheyeLib::MountTypeWall, KivFisheyeLib::ViewTypeVCam}};

/// "ceiling, dual panorama".
std::string NameOf(const MountedView& view);

/// A context of its own with both frames, and what it takes of the heap, in bytes. Frames are the
/// client's and do not count.
class MeasuredContext {
public:
    /// The output has the recommended size, or with a width another one.
    MeasuredContext(const MountedView& view, KivFisheyeLib::PixelFormat format,
                    std::uint32_t srcWidth, std::uint32_t srcHeight, std::uint32_t dstWidth = 0,
                    std::uint32_t dstHeight = 0);
    ~MeasuredContext();
    MeasuredContext(const MeasuredContext&) = delete;
    MeasuredContext& operator=(const MeasuredContext&) = delete;

    /// Between frames.
    std::size_t Held() const { return m_held; }
    /// The most at one time while it was made and set, `Held` included.
    std::size_t MostWhileSet() const { return m_mostWhileSet; }
    /// For the time of a `Process`, beyond what is held.
    std::size_t ForProcess();
    /// For the time of a `Snapshot`, beyond what is held; the block that it hands out included.
    std::size_t ForSnapshot();

    IKivFisheyeCamera& Camera() { return *m_camera; }
    const ClientFrame& Input() const { return m_input; }
    const ClientFrame& Output() const { return m_output; }

private:
    ClientFrame m_input;
    ClientFrame m_output;
    void* m_context = nullptr;
    IKivFisheyeCamera* m_camera = nullptr;
    std::size_t m_held = 0;
    std::size_t m_mostWhileSet = 0;
};

#endif
