#include "soak/SoakCamera.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "support/Between.h"

using namespace KivFisheyeLib;

namespace {

constexpr int kLongestSide = 160;
constexpr std::size_t kBufferBytes = std::size_t{kLongestSide} * kLongestSide * 4;
constexpr unsigned char kUntouched = 0xCD;
constexpr int kPoints = 64;
constexpr auto kNoMount = static_cast<MountType>(7);
constexpr DewarpParams kWholeLens{0.5F, 0.5F, 45.0F, 0.0F};

void Require(bool isRight, const char* what) {
    if (!isRight) {
        throw std::runtime_error(std::string("wrong: ") + what + ".");
    }
}

bool HasScene(MountType mount, ViewType view) {
    return mount <= MountTypeTable && !(mount == MountTypeWall && view == ViewTypeDualPanorama);
}

}  // namespace

SoakCamera::SoakCamera(std::mt19937& engine)
    : m_engine(engine),
      m_input(kBufferBytes),
      m_output(kBufferBytes),
      m_expected(kBufferBytes),
      m_points(std::size_t{4} * kPoints + 4) {
    for (unsigned char& byte : m_input) {
        byte = static_cast<unsigned char>(engine());
    }
    Create();
}

SoakCamera::~SoakCamera() {
    DeleteKivFisheyeCameraContext(m_context);
}

int SoakCamera::Chance(int low, int high) {
    return Between(m_engine, low, high);
}

float SoakCamera::Chance(float low, float high) {
    return Between(m_engine, low, high);
}

/// Degrees, once in a while none that makes sense.
float SoakCamera::Angle() {
    return Chance(0, 499) == 0 ? std::nanf("") : Chance(-400.0F, 400.0F);
}

VideoFrameInfo SoakCamera::Frame(int width, int height, std::vector<unsigned char>& buffer) const {
    const int bytesPerPixel = m_format == PixelFormatRGB24 ? 3 : 4;
    return {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height),
            static_cast<std::uint32_t>((width * bytesPerPixel + 3) / 4 * 4), buffer.data()};
}

void SoakCamera::Create() {
    m_context = CreateKivFisheyeCameraContext();
    m_camera = GetCameraAPI(m_context);
    m_mount = MountTypeWall;
    m_view = ViewTypeVCam;
    m_lens = kWholeLens;
    m_inputSize = {64, 48};
    m_outputSize = {40, 24};
    SetFrames();
}

void SoakCamera::SetFrames() {
    const VideoFrameInfo input = Frame(m_inputSize[0], m_inputSize[1], m_input);
    const VideoFrameInfo output = Frame(m_outputSize[0], m_outputSize[1], m_output);
    Require(m_camera->SetInputVideoParams(input, m_format) == kResultOk, "an input was refused");
    Require(m_camera->SetOutputVideoParams(output) == kResultOk, "an output was refused");
}

void SoakCamera::Convert() {
    const ResultCode expected = HasScene(m_mount, m_view) ? kResultOk : kResultNotReady;
    Require(m_camera->Process(0) == expected, "a frame was not answered as it should be");
}

void SoakCamera::NextFrame() {
    constexpr struct {
        int percent;
        Action action;
    } kActions[] = {{8, &SoakCamera::ChangeLens},          {3, &SoakCamera::ChangeMountAndView},
                    {3, &SoakCamera::ChangeMountThenView}, {1, &SoakCamera::TakeSceneAway},
                    {3, &SoakCamera::ChangeInput},         {3, &SoakCamera::ChangeOutput},
                    {3, &SoakCamera::TakeSnapshot},        {5, &SoakCamera::TraceOutlines},
                    {2, &SoakCamera::SetNonsense},         {1, &SoakCamera::Recreate}};
    Turn();
    int roll = Chance(0, 99);
    for (const auto& candidate : kActions) {
        if (roll >= 0 && roll < candidate.percent) {
            (this->*candidate.action)();
        }
        roll -= candidate.percent;
    }
    Convert();
}

void SoakCamera::Turn() {
    const float pan = Angle();
    const float tilt = Angle();
    ResultCode result = kResultOk;
    if (Chance(0, 1) == 0) {
        result = m_camera->SetAbsolutePTZ(pan, tilt, Chance(0.0F, 12.0F));
    } else {
        result = m_camera->SetRelativePTZ(pan / 20.0F, tilt / 20.0F, Chance(-2.0F, 2.0F));
    }
    const ResultCode expected = HasScene(m_mount, m_view) ? kResultOk : kResultNotReady;
    Require(result == expected, "a turn was not answered as it should be");
}

void SoakCamera::ChangeLens() {
    const float radius = Chance(0, 19) == 0 ? 0.0F : Chance(0.2F, 0.6F);
    m_lens = {radius, Chance(0, 99) == 0 ? std::nanf("") : Chance(0.2F, 0.6F), Chance(10.0F, 90.0F),
              Chance(0.0F, 0.8F)};
    Require(m_camera->SetDewarpParams(m_lens) == kResultOk, "a lens was refused");
}

void SoakCamera::ChangeMountAndView() {
    do {
        m_mount = static_cast<MountType>(Chance(0, 2));
        m_view = static_cast<ViewType>(Chance(0, 2));
    } while (!HasScene(m_mount, m_view));
    Require(m_camera->SetMountAndViewType(m_mount, m_view) == kResultOk,
            "a mount and view were refused");
}

void SoakCamera::ChangeMountThenView() {
    const auto mount = static_cast<MountType>(Chance(0, 2));
    const auto view = static_cast<ViewType>(Chance(0, 2));
    const auto answer = [](bool isSame, bool isPair) {
        return isSame ? kResultNoChange : isPair ? kResultOk : kResultInvalidArgument;
    };
    Require(m_camera->SetMountType(mount) == answer(mount == m_mount, HasScene(mount, m_view)),
            "a mount was not answered as it should be");
    m_mount = HasScene(mount, m_view) ? mount : m_mount;
    Require(m_camera->SetViewType(view) ==
                answer(view == m_view, m_mount == kNoMount || HasScene(m_mount, view)),
            "a view was not answered as it should be");
    m_view = m_mount == kNoMount || HasScene(m_mount, view) ? view : m_view;
}

void SoakCamera::TakeSceneAway() {
    m_mount = kNoMount;
    Require(m_camera->SetMountAndViewType(m_mount, m_view) == kResultOk, "a number was refused");
}

void SoakCamera::ChangeInput() {
    m_format = Chance(0, 1) == 0 ? PixelFormatRGB24 : PixelFormatRGB32;
    m_inputSize = {Chance(1, kLongestSide), Chance(1, kLongestSide)};
    SetFrames();
}

void SoakCamera::ChangeOutput() {
    m_outputSize = {8 * Chance(1, kLongestSide / 8), Chance(1, kLongestSide)};
    SetFrames();
}

void SoakCamera::TakeSnapshot() {
    unsigned int width = 0;
    unsigned int height = 0;
    m_camera->GetRecommendOutputVideoSize(&width, &height);
    // Lenses without a radius have no picture, and those with NaN have one that nothing holds.
    const bool hasPicture =
        HasScene(m_mount, m_view) && width - 1 < 8 * kLongestSide && height - 1 < 8 * kLongestSide;
    unsigned char* block = nullptr;
    const ResultCode result = m_camera->Snapshot(&block);
    Require(hasPicture ? result == kResultOk && block != nullptr : result == kResultOutOfMemory,
            "a snapshot was not answered as it should be");
    const ResultCode expected = block != nullptr ? kResultOk : kResultNoChange;
    Require(m_camera->FreeSnapshotMemory(block) == expected, "a snapshot was not taken back");
}

void SoakCamera::LoseSnapshot() {
    unsigned char* block = nullptr;
    Require(m_camera->Snapshot(&block) == kResultOk, "a snapshot was refused");
}

/// Every outline; those that the mount does not have are refused.
void SoakCamera::TraceOutlines() {
    const auto address = (reinterpret_cast<std::uintptr_t>(m_points.data()) + 15) / 16 * 16;
    auto* const first = reinterpret_cast<float*>(address);
    float* const second = first + 2 * kPoints;
    IKivFisheyeROI* const roi = GetROIAPI(m_context);
    IKivFisheyeDewarpBoundary* const boundary = GetDewarpBoundaryAPI(m_context);
    Require(roi->GetVCamROI(first, kPoints) == kResultOk, "a virtual camera has no outline");
    roi->GetDualPanoramaROI(first, kPoints, second, kPoints);
    roi->GetWallPanoramaROI(first, kPoints);
    roi->GetCeilingTablePanoramaROI(first, kPoints, second, kPoints);
    Require(boundary->CalculateWallPanoramaBoundary(nullptr, first, kPoints) == kResultOk &&
                boundary->CalculateWallPanoramaBoundary(&kWholeLens, first, kPoints) == kResultOk &&
                boundary->CalculateCeilingTablePanoramaBoundary(nullptr, first, kPoints, second,
                                                                kPoints) == kResultOk,
            "a boundary was refused");
}

void SoakCamera::SetNonsense() {
    VideoFrameInfo frame = Frame(m_outputSize[0], m_outputSize[1], m_output);
    frame.stride += 4;
    Require(m_camera->SetOutputVideoParams(frame) == kResultInvalidArgument &&
                m_camera->SetInputVideoParams(frame, m_format) == kResultInvalidArgument &&
                m_camera->SetDewarpParams({2.0F, 0.5F, 45.0F, 0.0F}) == kResultInvalidArgument &&
                m_camera->SetMountAndViewType(MountTypeWall, ViewTypeDualPanorama) ==
                    kResultInvalidArgument,
            "nonsense was accepted");
}

void SoakCamera::Recreate() {
    DeleteKivFisheyeCameraContext(m_context);
    Create();
}

void SoakCamera::Settle() {
    m_lens = kWholeLens;
    m_format = PixelFormatRGB32;
    m_inputSize = {80, 80};
    m_outputSize = {96, 32};
    m_mount = MountTypeCeiling;
    m_view = ViewTypeFullPanorama;
    Require(m_camera->SetDewarpParams(m_lens) == kResultOk, "a lens was refused");
    SetFrames();
    Require(m_camera->SetMountAndViewType(m_mount, m_view) == kResultOk, "a view was refused");
    Require(m_camera->SetAbsolutePTZ(33.0F, 0.0F, 1.0F) == kResultOk, "a pan was refused");
    std::fill(m_output.begin(), m_output.end(), kUntouched);
    Convert();
}

void SoakCamera::CompareWithNewContext() {
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 0.0F;
    m_camera->GetPTZ(&pan, &tilt, &zoom);
    void* const context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* const camera = GetCameraAPI(context);
    camera->SetInputVideoParams(Frame(m_inputSize[0], m_inputSize[1], m_input), m_format);
    camera->SetOutputVideoParams(Frame(m_outputSize[0], m_outputSize[1], m_expected));
    camera->SetDewarpParams(m_lens);
    camera->SetMountAndViewType(m_mount, m_view);
    for (IKivFisheyeCamera* const each : {m_camera, camera}) {
        each->SetAbsolutePTZ(pan, tilt, zoom);
    }
    std::fill(m_output.begin(), m_output.end(), kUntouched);
    std::fill(m_expected.begin(), m_expected.end(), kUntouched);
    Convert();
    camera->Process(0);
    DeleteKivFisheyeCameraContext(context);
    Require(m_output == m_expected, "a picture is not that of a new context");
}
