#include "SurfaceClient.h"

#include <algorithm>
#include <cstring>
#include <utility>

using namespace KivFisheyeLib;

namespace {

void ExpectBits(const void* actual, const void* expected, std::size_t size, const char* what) {
    Expect(std::memcmp(actual, expected, size) == 0, what, " is not as it was stored");
}

}  // namespace

const char* NameOf(ResultCode result) {
    switch (result) {
        case kThrown:
            return "bad_alloc";
        case kResultOk:
            return "Ok";
        case kResultNoChange:
            return "NoChange";
        case kResultNotReady:
            return "NotReady";
        case kResultInvalidArgument:
            return "InvalidArgument";
        case kResultNullPointer:
            return "NullPointer";
        case kResultOutOfMemory:
            return "OutOfMemory";
        default:
            return "a number without a meaning";
    }
}

void ExpectResult(ResultCode actual, ResultCode expected) {
    Expect(actual == expected, "the result is ", NameOf(actual), " instead of ", NameOf(expected));
    CountOutcome(PresentOperation(), NameOf(actual));
}

SurfaceClient::SurfaceClient(Play& play)
    : m_play(play),
      m_context(CreateKivFisheyeCameraContext()),
      m_camera(GetCameraAPI(m_context)),
      m_outlines(GetROIAPI(m_context)),
      m_boundaries(GetDewarpBoundaryAPI(m_context)) {
    Expect(m_context != nullptr && static_cast<void*>(m_camera) == m_context,
           "the context is not its camera");
    Expect(m_outlines != nullptr && m_boundaries != nullptr, "an interface is missing");
}

SurfaceClient::~SurfaceClient() {
    DeleteKivFisheyeCameraContext(m_context);
}

void SurfaceClient::AskForFormat() {
    const PixelFormat format = MakeFormat();
    Run([&] { return m_camera->IsPixelFormatAccepted(format); },
        [&](bool) { return IsAcceptedFormat(format) ? kResultOk : kResultNoChange; });
}

void SurfaceClient::SetInput() {
    const PixelFormat format = MakeFormat();
    VideoFrameInfo record{};
    auto memory = MakeFrame(format, false, &record);
    Run([&] { return m_camera->SetInputVideoParams(record, format); },
        [&](bool ranOut) { return m_model.SetInput(record, format, ranOut); });
    if (IsValidRecord(record, format)) {
        m_input = std::move(memory);
    }
}

void SurfaceClient::SetOutput() {
    VideoFrameInfo record{};
    auto memory =
        MakeFrame(m_play.choices.OnceIn(16) ? MakeFormat() : m_model.format, true, &record);
    Run([&] { return m_camera->SetOutputVideoParams(record); },
        [&](bool ranOut) { return m_model.SetOutput(record, ranOut); });
    StoreOutput(record, std::move(memory));
}

void SurfaceClient::SetRecommendedOutput() {
    const FrameSize size =
        RecommendedSize(m_model.InputSize(), m_model.mount, m_model.view, m_model.lens);
    constexpr std::uint32_t kMostPixels = 8192;
    if (m_model.input.width == 0 || size.width > kMostPixels ||
        size.width * std::uint64_t{size.height} > kMostPixels) {
        return;
    }
    const auto bytes = static_cast<std::uint32_t>(BytesPerPixel(m_model.format));
    const std::uint32_t stride = (size.width * bytes + 3) / 4 * 4;
    auto memory = MakeGuarded(m_play.choices, std::size_t{stride} * size.height);
    const VideoFrameInfo record{size.width, size.height, stride, memory->data()};
    Run([&] { return m_camera->SetOutputVideoParams(record); },
        [&](bool ranOut) { return m_model.SetOutput(record, ranOut); });
    StoreOutput(record, std::move(memory));
}

void SurfaceClient::SetLens() {
    const DewarpParams lens = MakeLens();
    Run([&] { return m_camera->SetDewarpParams(lens); },
        [&](bool ranOut) { return m_model.SetLens(lens, ranOut); });
}

void SurfaceClient::SetAbsolute() {
    const Aim wanted = MakeAim(false);
    Run([&] { return m_camera->SetAbsolutePTZ(wanted.pan, wanted.tilt, wanted.zoom); },
        [&](bool) { return m_model.SetAbsolute(wanted); });
}

void SurfaceClient::SetRelative() {
    const Aim change = MakeAim(true);
    Run([&] { return m_camera->SetRelativePTZ(change.pan, change.tilt, change.zoom); },
        [&](bool) { return m_model.SetRelative(change); });
}

void SurfaceClient::GetWithNull() {
    constexpr auto kUntouched = static_cast<std::uint32_t>(0x12345678);
    constexpr float kUntouchedNumber = -54321.0F;
    auto mount = static_cast<MountType>(kUntouched);
    auto view = static_cast<ViewType>(kUntouched);
    float numbers[3] = {kUntouchedNumber, kUntouchedNumber, kUntouchedNumber};
    const bool isMountNull = m_play.choices.OnceIn(2);
    const int missing = m_play.choices.Between(1, 7);
    const auto number = [&](int i) { return (missing >> i & 1) != 0 ? nullptr : &numbers[i]; };
    const auto refused = [](bool) { return kResultInvalidArgument; };
    Run([&] { return m_camera->GetMountType(nullptr); }, refused);
    Run([&] { return m_camera->GetViewType(nullptr); }, refused);
    Run([&] { return m_camera->GetDewarpParams(nullptr); }, refused);
    Run(
        [&] {
            return m_camera->GetMountAndViewType(isMountNull ? nullptr : &mount,
                                                 isMountNull && missing < 4 ? &view : nullptr);
        },
        refused);
    Run([&] { return m_camera->GetPTZ(number(0), number(1), number(2)); },
        [](bool) { return kResultNullPointer; });
    Expect(mount == kUntouched && view == kUntouched, "a refused getter wrote mount or view");
    for (const float value : numbers) {
        ExpectNumber(value, kUntouchedNumber, "a number that a refused getter was to leave");
    }
    Expect(GetCameraAPI(nullptr) == nullptr && GetROIAPI(nullptr) == nullptr &&
               GetDewarpBoundaryAPI(nullptr) == nullptr,
           "a null context has an interface");
    DeleteKivFisheyeCameraContext(nullptr);
}

void SurfaceClient::ExpectState() {
    MountType mount{};
    ViewType view{};
    MountType bothMount{};
    ViewType bothView{};
    DewarpParams lens{};
    Aim aim{};
    Expect(m_camera->GetMountType(&mount) == kResultOk &&
               m_camera->GetViewType(&view) == kResultOk &&
               m_camera->GetMountAndViewType(&bothMount, &bothView) == kResultOk &&
               m_camera->GetDewarpParams(&lens) == kResultOk &&
               m_camera->GetPTZ(&aim.pan, &aim.tilt, &aim.zoom) == kResultOk,
           "a getter behind it did not answer Ok");
    ExpectEqual<std::uint32_t>(mount, m_model.mount, "the mount behind it");
    ExpectEqual<std::uint32_t>(view, m_model.view, "the view behind it");
    Expect(bothMount == mount && bothView == view, "mount and view are not what they are alone");
    ExpectBits(&lens, &m_model.lens, sizeof(lens), "the lens");
    ExpectNumber(aim.pan, m_model.aim.pan, "pan behind it");
    ExpectNumber(aim.tilt, m_model.aim.tilt, "tilt behind it");
    ExpectNumber(aim.zoom, m_model.aim.zoom, "zoom behind it");
    // The sign of a zero, which the model does not follow, shows later.
    m_model.aim = aim;
    Expect(m_output == nullptr || std::equal(m_known.begin(), m_known.end(), m_output->data()),
           "the output changed");
}
