#include "memory/ContextMemory.h"

#include <stdexcept>

#include "memory/HeapUse.h"

using namespace KivFisheyeLib;

namespace {

void Require(ResultCode result) {
    if (result != kResultOk) {
        throw std::runtime_error("a context refused what it was told.");
    }
}

/// Has a context of its own say which output suits the input.
ClientFrame MakeOutput(const MountedView& view, const ClientFrame& input, PixelFormat format,
                       std::uint32_t width, std::uint32_t height) {
    if (width == 0) {
        void* const context = CreateKivFisheyeCameraContext();
        IKivFisheyeCamera* const camera = GetCameraAPI(context);
        Require(camera->SetInputVideoParams(input.record, format));
        Require(camera->SetMountAndViewType(view.mount, view.view));
        Require(camera->GetRecommendOutputVideoSize(&width, &height));
        DeleteKivFisheyeCameraContext(context);
    }
    return ClientFrame(width, height, format);
}

/// The most bytes in use while `action` runs, beyond those before.
template <class Action>
std::size_t MostDuring(Action&& action) {
    const std::size_t before = HeapInUse().bytes;
    StartHeapPeak();
    action();
    return HeapPeak() - before;
}

}  // namespace

std::string NameOf(const MountedView& view) {
    const char* const mount = view.mount == MountTypeWall      ? "wall"
                              : view.mount == MountTypeCeiling ? "ceiling"
                                                               : "table";
    const char* const name = view.view == ViewTypeVCam           ? "virtual camera"
                             : view.view == ViewTypeDualPanorama ? "dual panorama"
                                                                 : "full panorama";
    return std::string(mount) + ", " + name;
}

MeasuredContext::MeasuredContext(const MountedView& view, PixelFormat format,
                                 std::uint32_t srcWidth, std::uint32_t srcHeight,
                                 std::uint32_t dstWidth, std::uint32_t dstHeight)
    : m_input(ClientFrame::OfCoordinates(srcWidth, srcHeight, format)),
      m_output(MakeOutput(view, m_input, format, dstWidth, dstHeight)) {
    const std::size_t before = HeapInUse().bytes;
    m_mostWhileSet = MostDuring([&] {
        m_context = CreateKivFisheyeCameraContext();
        m_camera = GetCameraAPI(m_context);
        Require(m_camera->SetMountAndViewType(view.mount, view.view));
        Require(m_camera->SetInputVideoParams(m_input.record, format));
        Require(m_camera->SetOutputVideoParams(m_output.record));
    });
    m_held = HeapInUse().bytes - before;
}

MeasuredContext::~MeasuredContext() {
    DeleteKivFisheyeCameraContext(m_context);
}

std::size_t MeasuredContext::ForProcess() {
    return MostDuring([this] { Require(m_camera->Process(0)); });
}

std::size_t MeasuredContext::ForSnapshot() {
    unsigned char* block = nullptr;
    const std::size_t most = MostDuring([&] { Require(m_camera->Snapshot(&block)); });
    Require(m_camera->FreeSnapshotMemory(block));
    return most;
}
