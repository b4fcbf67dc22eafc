#ifndef KIVFISHEYE_TESTS_VCAM_FORMS_H
#define KIVFISHEYE_TESTS_VCAM_FORMS_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "KivFisheyeLib.h"
#include "support/GuardedBuffer.h"
#include "support/VCamModel.h"
#include "support/VCamSettings.h"
#include "vcam/VCamJob.h"

/// One kernel of the virtual camera.
struct VCamKernel {
    VCamForm form;
    int bytesPerPixel;

    std::string Name() const;
    /// Whether this processor has the instructions.
    bool CanRun() const;
    void operator()(const VCamFrame& frame, const unsigned char* src, unsigned char* dst) const;
    /// The output of a frame that held `fill`, with what is written beyond it.
    std::vector<unsigned char> Picture(const VCamFrame& frame,
                                       const std::vector<unsigned char>& src,
                                       unsigned char fill = 0xCD) const;
    /// The same by the model.
    std::vector<unsigned char> ModelPicture(const VCamFrame& frame,
                                            const std::vector<unsigned char>& src,
                                            unsigned char fill = 0xCD) const;
    /// The source pixels that it shows, told by a source whose pixels tell their places. Packed
    /// frames of whole groups only.
    SourcePlaces Places(const VCamFrame& frame) const;
    SourcePlaces Places(const VCamFrame& frame,
                        const std::vector<unsigned char>& coordinates) const;
};

inline void PrintTo(const VCamKernel& kernel, std::ostream* out) {
    *out << kernel.Name();
}

inline const VCamKernel kVCamKernels[] = {{VCamForm::C, 3},     {VCamForm::C, 4},
                                          {VCamForm::SSE41, 3}, {VCamForm::SSE41, 4},
                                          {VCamForm::AVX, 3},   {VCamForm::AVX, 4}};

inline std::string NameOfKernel(const testing::TestParamInfo<VCamKernel>& info) {
    return info.param.Name();
}

/// The entry that picks the form, `CvtVCamRGB24` or `CvtVCamRGB32`.
vcam::ConvertFunction* VCamEntry(int bytesPerPixel);

void Call(vcam::ConvertFunction* convert, const VCamFrame& frame, const unsigned char* src,
          unsigned char* dst);

std::vector<unsigned char> BytesOf(const GuardedBuffer& buffer);

/// The matrix that a mount's scene hands to the kernel for its stored angles.
std::array<float, 16> VCamMatrix(KivFisheyeLib::MountType mount, float pan, float tilt);

/// What the mount makes of a wanted pan, tilt and zoom.
VCamSettings SettingsOf(KivFisheyeLib::MountType mount, float pan, float tilt, float zoom);

/// The frame with the camera that these settings describe.
VCamFrame WithSettings(VCamFrame frame, KivFisheyeLib::MountType mount,
                       const VCamSettings& settings);

/// How far a form's position may be from the exact one because of its arccosine, in source pixels
/// of a side.
double ArccosineError(VCamForm form, const VCamFrame& frame, float radius, int side);

/// A test of every kernel that this processor can run.
class VCamKernelTest : public testing::TestWithParam<VCamKernel> {
protected:
    void SetUp() override {
        if (!GetParam().CanRun()) {
            GTEST_SKIP() << "this processor lacks the instructions of " << GetParam().Name();
        }
    }

    static VCamForm Form() { return GetParam().form; }
    static int Bytes() { return GetParam().bytesPerPixel; }
};

#define KIVFISHEYE_TEST_VCAM_KERNELS(suite) \
    INSTANTIATE_TEST_SUITE_P(, suite, testing::ValuesIn(kVCamKernels), NameOfKernel)

#endif
