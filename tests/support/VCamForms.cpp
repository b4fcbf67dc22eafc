#include "support/VCamForms.h"

#include <algorithm>

#include "FisheyeVCamAlgo.h"
#include "FisheyeVCamAlgo_C.h"
#include "vcam/VCamMounts.h"
#if defined(__x86_64__)
#include "FisheyeVCamAlgo_AVX.h"
#include "FisheyeVCamAlgo_SSE41.h"
#endif

namespace {

vcam::ConvertFunction* KernelOf(const VCamKernel& kernel) {
    const bool is24 = kernel.bytesPerPixel == 3;
#if defined(__x86_64__)
    switch (kernel.form) {
        case VCamForm::SSE41:
            return is24 ? FisheyeVCamAlgoNS::SSE41::CvtVCamRGB<24>
                        : FisheyeVCamAlgoNS::SSE41::CvtVCamRGB<32>;
        case VCamForm::AVX:
            return is24 ? FisheyeVCamAlgoNS::AVX::CvtVCamRGB<24>
                        : FisheyeVCamAlgoNS::AVX::CvtVCamRGB<32>;
        case VCamForm::C:
            break;
    }
#endif
    return is24 ? FisheyeVCamAlgoNS::C::CvtVCamRGB<24> : FisheyeVCamAlgoNS::C::CvtVCamRGB<32>;
}

}  // namespace

std::string VCamKernel::Name() const {
    return NameOf(form) + "_" + std::to_string(8 * bytesPerPixel);
}

bool VCamKernel::CanRun() const {
    return ::CanRun(form);
}

void VCamKernel::operator()(const VCamFrame& frame, const unsigned char* src,
                            unsigned char* dst) const {
    Call(KernelOf(*this), frame, src, dst);
}

std::vector<unsigned char> VCamKernel::Picture(const VCamFrame& frame,
                                               const std::vector<unsigned char>& src,
                                               unsigned char fill) const {
    std::vector<unsigned char> dst(
        frame.OutputBytes() + BytesBeyondFrame(form, frame, bytesPerPixel), fill);
    (*this)(frame, src.data(), dst.data());
    return dst;
}

std::vector<unsigned char> VCamKernel::ModelPicture(const VCamFrame& frame,
                                                    const std::vector<unsigned char>& src,
                                                    unsigned char fill) const {
    std::vector<unsigned char> dst(
        frame.OutputBytes() + BytesBeyondFrame(form, frame, bytesPerPixel), fill);
    PaintModel(form, frame, bytesPerPixel, src, dst);
    return dst;
}

SourcePlaces VCamKernel::Places(const VCamFrame& frame) const {
    return Places(frame,
                  CoordinateFrame(frame.srcWidth, frame.srcHeight, frame.srcStride, bytesPerPixel));
}

SourcePlaces VCamKernel::Places(const VCamFrame& frame,
                                const std::vector<unsigned char>& coordinates) const {
    const auto picture = Picture(frame, coordinates);
    SourcePlaces places;
    const auto pixelBytes = static_cast<std::size_t>(bytesPerPixel);
    for (std::size_t at = 0; at + pixelBytes <= picture.size(); at += pixelBytes) {
        places.push_back(PlaceIn(&picture[at], bytesPerPixel));
    }
    return places;
}

vcam::ConvertFunction* VCamEntry(int bytesPerPixel) {
    return bytesPerPixel == 3 ? FisheyeVCamAlgoNS::CvtVCamRGB24 : FisheyeVCamAlgoNS::CvtVCamRGB32;
}

void Call(vcam::ConvertFunction* convert, const VCamFrame& frame, const unsigned char* src,
          unsigned char* dst) {
    float matrix[16];
    std::copy(frame.matrix.begin(), frame.matrix.end(), &matrix[0]);
    convert(frame.srcWidth, frame.srcHeight, frame.srcStride, src, frame.radiusX, frame.radiusY,
            frame.eyeZ, frame.fieldOfView, frame.aspect, frame.nearPlane, matrix, frame.dstWidth,
            frame.dstHeight, frame.dstStride, dst);
}

std::vector<unsigned char> BytesOf(const GuardedBuffer& buffer) {
    return {buffer.data(), buffer.data() + buffer.size()};
}

std::array<float, 16> VCamMatrix(KivFisheyeLib::MountType mount, float pan, float tilt) {
    float elements[16];
    if (mount == KivFisheyeLib::MountTypeWall) {
        FrontwardFisheyeAlgoNS::GetModelViewMatrix(pan, tilt, elements);
    } else {
        const bool isCeiling = mount == KivFisheyeLib::MountTypeCeiling;
        DownwardFisheyeAlgoNS::GetModelViewMatrix(isCeiling ? 360.0F - pan : pan, tilt, elements);
    }
    std::array<float, 16> matrix{};
    std::copy(std::begin(elements), std::end(elements), matrix.begin());
    return matrix;
}

VCamSettings SettingsOf(KivFisheyeLib::MountType mount, float pan, float tilt, float zoom) {
    switch (mount) {
        case KivFisheyeLib::MountTypeCeiling:
            return CeilingSettings(pan, tilt, zoom);
        case KivFisheyeLib::MountTypeTable:
            return TableSettings(pan, tilt, zoom);
        case KivFisheyeLib::MountTypeWall:
            break;
    }
    return WallSettings(pan, tilt, zoom);
}

VCamFrame WithSettings(VCamFrame frame, KivFisheyeLib::MountType mount,
                       const VCamSettings& settings) {
    frame.eyeZ = settings.eyeZ;
    frame.nearPlane = settings.nearPlane;
    frame.fieldOfView = settings.fieldOfView;
    frame.matrix = VCamMatrix(mount, settings.pan, settings.tilt);
    return frame;
}

double ArccosineError(VCamForm form, const VCamFrame& frame, float radius, int side) {
    constexpr double kPi = 3.14159265358979323846;
    constexpr double kLargestError = 0.0058;
    return form == VCamForm::C ? 0.0
                               : kLargestError * (1.0 + static_cast<double>(frame.eyeZ)) / kPi *
                                     2.0 * static_cast<double>(radius) * side;
}
