#include <cmath>
#include <cstring>
#include <utility>

#include "SurfaceClient.h"
#include "SurfaceGeometry.h"

// Conversions of a context into its output, and what the picture has to look like.

using namespace KivFisheyeLib;

namespace {

bool IsBetween(float number, float least, float most) {
    return number >= least && number <= most;
}

bool IsUsualLens(const DewarpParams& lens) {
    // A running radius may pass the frame's edge by a rounding, where the lens touches it.
    return IsBetween(lens.radiusX, 0.05F, 0.49F) && IsBetween(lens.radiusY, 0.05F, 0.49F) &&
           IsBetween(lens.wallViewAngle, 10.0F, 90.0F) &&
           IsBetween(lens.innerRadiusRatio, 0.0F, 0.8F);
}

/// Whether a virtual camera's middle surely lies in the lens.
bool IsUsualAim(MountType mount, const Aim& aim) {
    return IsBetween(aim.zoom, 2.0F, 10.0F) && IsBetween(aim.tilt, -45.0F, 45.0F) &&
           IsBetween(aim.pan, mount == MountTypeWall ? -45.0F : -360.0F,
                     mount == MountTypeWall ? 45.0F : 720.0F);
}

bool IsNan(const Aim& aim) {
    return std::isnan(aim.pan) || std::isnan(aim.tilt) || std::isnan(aim.zoom);
}

}  // namespace

FrameShape SurfaceClient::InputShape() const {
    const VideoFrameInfo& input = m_model.input;
    return {input.width, input.height, input.stride, BytesPerPixel(m_model.format)};
}

FrameShape SurfaceClient::OutputShape() const {
    const VideoFrameInfo& output = m_model.output;
    return {output.width, output.height, output.stride, BytesPerPixel(m_model.format)};
}

void SurfaceClient::StoreOutput(const VideoFrameInfo& record,
                                std::unique_ptr<GuardedBuffer> memory) {
    if (record.buffer != nullptr && m_model.output.buffer == record.buffer) {
        m_output = std::move(memory);
        RememberOutput();
    }
}

void SurfaceClient::FillOutput(unsigned char value) {
    if (m_output != nullptr) {
        std::memset(m_output->data(), value, m_output->size());
        m_known.assign(m_output->size(), value);
    }
}

void SurfaceClient::RememberOutput() {
    m_known.assign(m_output->data(), m_output->data() + m_output->size());
}

PictureRule SurfaceClient::RuleOf(Conversion conversion, const FrameShape& shape) const {
    const DewarpParams& lens = m_model.lens;
    const bool isUsual =
        IsUsualLens(lens) && m_model.CanShowInput() && shape.RowBytes() <= shape.stride;
    PictureRule rule{shape.height, PictureRule::Padding::Kept};
    rule.isBlack = std::isnan(lens.radiusX) || std::isnan(lens.radiusY) || !m_model.CanShowInput();
    switch (conversion) {
        case Conversion::None:
            rule.writtenRows = 0;
            break;
        case Conversion::VCam:
            rule.padding = PictureRule::Padding::Cleared;
            rule.isBlack = rule.isBlack || IsNan(m_model.aim);
            rule.showsSomething =
                isUsual && shape.height >= 3 && IsUsualAim(m_model.mount, m_model.aim);
            break;
        case Conversion::Panorama:
            rule.isFull = isUsual && m_model.mount != MountTypeWall;
            rule.showsSomething = isUsual;
            break;
        case Conversion::UnturnedDual:
            rule.clearsOtherRows = true;
            [[fallthrough]];
        case Conversion::Dual:
            rule.writtenRows = shape.height / 2 * 2;
            rule.isFull = isUsual;
            break;
    }
    return rule;
}

void SurfaceClient::ExpectPicture(Conversion conversion, unsigned char background) {
    if (m_output == nullptr) {
        return;
    }
    Expect(m_output->IsSurroundingUntouched(), "bytes around the output changed");
    Expect(conversion != Conversion::None ||
               IsFilledWith(m_output->data(), m_output->size(), background),
           "the output changed");
    CheckPicture(m_output->data(), OutputShape(), InputShape(), RuleOf(conversion, OutputShape()),
                 background);
    if (conversion == Conversion::VCam) {
        CheckView(m_output->data(), OutputShape(), m_model);
    } else if (conversion != Conversion::None) {
        ExpectTwin(background);
    }
    RememberOutput();
}

template <class Operation, class Rule>
void SurfaceClient::RunConversion(const Operation& operation, const Rule& rule) {
    const auto background = m_play.choices.OnceIn(2) ? kFill : static_cast<unsigned char>(0xDD);
    FillOutput(background);
    m_play.work.Take({m_model.output.width & 0xFFFF, m_model.output.height});
    const ResultCode result = Run(operation, rule);
    if (result == kThrown && !m_model.IsPanorama()) {
        // A frame may be converted in part.
        if (m_output != nullptr) {
            RememberOutput();
        }
        return;
    }
    ExpectPicture(result == kResultOk ? m_model.PresentConversion() : Conversion::None, background);
}

void SurfaceClient::SetMount() {
    const MountType mount = MakeMount();
    RunConversion([&] { return m_camera->SetMountType(mount); },
                  [&](bool ranOut) { return m_model.SetMount(mount, ranOut); });
}

void SurfaceClient::SetView() {
    const ViewType view = MakeView();
    RunConversion([&] { return m_camera->SetViewType(view); },
                  [&](bool ranOut) { return m_model.SetView(view, ranOut); });
}

void SurfaceClient::SetMountAndView() {
    const MountType mount = MakeMount();
    const ViewType view = MakeView();
    RunConversion([&] { return m_camera->SetMountAndViewType(mount, view); },
                  [&](bool ranOut) { return m_model.SetMountAndView(mount, view, ranOut); });
}

void SurfaceClient::Process() {
    const unsigned long long tag = m_play.choices.Bits(4);
    RunConversion([&] { return m_camera->Process(tag); },
                  [&](bool ranOut) { return m_model.Process(ranOut); });
}

/// What a client does first.
void SurfaceClient::Prepare() {
    BeginOperation("SetMountAndViewType");
    SetMountAndView();
    BeginOperation("SetInputVideoParams");
    SetInput();
    BeginOperation("SetOutputVideoParams");
    SetRecommendedOutput();
    BeginOperation("Process");
    Process();
}
