#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "support/CoordinateFrame.h"
#include "support/RingGenerator.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"

// Every form of the virtual camera's kernel against a plain loop with its rounding, bit for bit.

using namespace KivFisheyeLib;

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();
constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable};

/// Makes frames of all shapes, the same ones for the same seed.
class VCamGenerator {
public:
    explicit VCamGenerator(std::uint32_t seed) : m_numbers(seed) {}

    VCamFrame Next(int bytesPerPixel) {
        VCamFrame frame;
        frame.srcWidth = NextSide(90);
        frame.srcHeight = NextSide(90);
        frame.srcStride = frame.srcWidth * bytesPerPixel + m_numbers.NextInt(0, 9);
        frame.dstWidth =
            m_numbers.NextInt(0, 3) == 0 ? m_numbers.NextInt(1, 60) : 8 * m_numbers.NextInt(1, 25);
        frame.dstHeight = NextSide(40);
        frame.dstStride = frame.dstWidth * bytesPerPixel + m_numbers.NextInt(0, 9);
        frame.radiusX = NextRadius();
        frame.radiusY = NextRadius();
        frame.aspect = static_cast<float>(frame.dstWidth) / static_cast<float>(frame.dstHeight);
        const MountType mount = kMounts[m_numbers.NextInt(0, 2)];
        const float zoom = static_cast<float>(m_numbers.NextInt(10, 100)) / 10.0F;
        const auto pan = static_cast<float>(m_numbers.NextInt(-90, 360));
        const auto tilt = static_cast<float>(m_numbers.NextInt(-90, 90));
        frame = WithSettings(frame, mount, SettingsOf(mount, pan, tilt, zoom));
        if (m_numbers.NextInt(0, 3) == 0) {
            MakeUnusual(frame);
        }
        return frame;
    }

    std::vector<unsigned char> NextBytes(std::size_t count) { return m_numbers.NextBytes(count); }

private:
    int NextSide(int highest) {
        return m_numbers.NextInt(0, 3) == 0 ? m_numbers.NextInt(1, 3)
                                            : m_numbers.NextInt(1, highest);
    }

    float NextRadius() {
        constexpr float kRadii[] = {0.0F, 0.1F, 0.5F, 0.5F, 0.5F, 0.7F, 1.0F, kNan};
        return m_numbers.NextInt(0, 1) == 0
                   ? kRadii[m_numbers.NextInt(0, 7)]
                   : static_cast<float>(m_numbers.NextInt(0, 1000)) / 1000.0F;
    }

    /// Values that no scene makes.
    void MakeUnusual(VCamFrame& frame) {
        constexpr float kEyes[] = {0.5F, 0.0F, 1.0F, 0.01F, kNan};
        constexpr float kFields[] = {90.0F, 37.5F, 10.0F, 0.0F, 170.0F, kNan};
        constexpr float kAspects[] = {1.0F, 0.3F, 5.0F, -1.0F};
        constexpr float kNears[] = {0.01F, 1.0F, 3.0F, 0.0F, -0.5F};
        frame.eyeZ = kEyes[m_numbers.NextInt(0, 4)];
        frame.fieldOfView = kFields[m_numbers.NextInt(0, 5)];
        frame.aspect = kAspects[m_numbers.NextInt(0, 3)];
        frame.nearPlane = kNears[m_numbers.NextInt(0, 4)];
        if (m_numbers.NextInt(0, 2) == 0) {
            for (float& element : frame.matrix) {
                element = static_cast<float>(m_numbers.NextInt(-1000, 1000)) / 1000.0F;
            }
        }
    }

    RingGenerator m_numbers;
};

class VCamKernels : public VCamKernelTest {
protected:
    static void ExpectModelBits(const VCamFrame& frame, const std::vector<unsigned char>& src) {
        const auto picture = GetParam().Picture(frame, src);
        const auto expected = GetParam().ModelPicture(frame, src);
        std::size_t at = 0;
        while (at < expected.size() && picture[at] == expected[at]) {
            ++at;
        }
        ASSERT_EQ(at, expected.size()) << "the first other byte; " << frame;
    }

    static void ExpectModelBits(const VCamFrame& frame) {
        ExpectModelBits(frame, CoordinateFrame(frame.srcWidth, frame.srcHeight, frame.srcStride,
                                               GetParam().bytesPerPixel));
    }
};

TEST_P(VCamKernels, GiveTheBitsOfThePlainLoopInRandomFrames) {
    for (const std::uint32_t seed : {4711U, 90125U}) {
        VCamGenerator generator(seed);
        for (int i = 0; i < 150; ++i) {
            const VCamFrame frame = generator.Next(Bytes());
            const auto src = generator.NextBytes(frame.SourceBytes(Bytes()));
            ASSERT_NO_FATAL_FAILURE(ExpectModelBits(frame, src))
                << "seed " << seed << ", case " << i;
        }
    }
}

TEST_P(VCamKernels, GiveTheBitsOfThePlainLoopOnEveryMountAtEveryZoom) {
    VCamFrame sizes = PackedVCam(201, 151, 104, 37, Bytes());
    sizes.srcStride += 5;
    sizes.dstStride += 7;
    for (const MountType mount : kMounts) {
        for (const float zoom : {1.0F, 1.25F, 1.5F, 1.99F, 2.0F, 2.1F, 4.0F, 7.3F, 10.0F}) {
            for (const float pan : {0.0F, 33.0F, 45.0F, 180.0F, 300.0F}) {
                const float tilt = mount == MountTypeTable ? -41.0F : 41.0F;
                const VCamFrame frame =
                    WithSettings(sizes, mount, SettingsOf(mount, pan, tilt, zoom));
                ASSERT_NO_FATAL_FAILURE(ExpectModelBits(frame))
                    << "mount " << mount << ", pan " << pan << ", zoom " << zoom;
            }
        }
    }
}

// Long rows and many of them let a ray that is summed differently drift apart.
TEST_P(VCamKernels, GiveTheBitsOfThePlainLoopInLargeFrames) {
    VCamFrame frame = PackedVCam(1023, 1021, 1288, 160, Bytes());
    frame.radiusX = 0.47F;
    frame.radiusY = 0.61F;
    for (const MountType mount : kMounts) {
        for (const float zoom : {1.0F, 1.4F, 3.0F}) {
            const float tilt = mount == MountTypeTable ? -50.0F : 50.0F;
            ASSERT_NO_FATAL_FAILURE(
                ExpectModelBits(WithSettings(frame, mount, SettingsOf(mount, 77.0F, tilt, zoom))))
                << "mount " << mount << ", zoom " << zoom;
        }
    }
}

TEST_P(VCamKernels, GiveTheBitsOfThePlainLoopForEveryLens) {
    for (const float radiusX : {0.0F, 0.1F, 0.5F, 0.7F, 1.0F, kNan, kInfinity, -0.4F}) {
        for (const float radiusY : {0.0F, 0.1F, 0.5F, 0.7F, 1.0F, kNan, kInfinity, -0.4F}) {
            for (const float eye : {1.0F, 0.5F, 0.01F}) {
                VCamFrame frame = PackedVCam(99, 77, 48, 25, Bytes());
                frame.radiusX = radiusX;
                frame.radiusY = radiusY;
                frame.eyeZ = eye;
                frame.nearPlane = eye;
                frame.matrix = VCamMatrix(MountTypeWall, 5.0F, 3.0F);
                ASSERT_NO_FATAL_FAILURE(ExpectModelBits(frame));
            }
        }
    }
}

TEST_P(VCamKernels, GiveTheBitsOfThePlainLoopForEverySourceSize) {
    for (const int width : {1, 2, 3, 5, 64}) {
        for (const int height : {1, 2, 3, 7, 63}) {
            for (const int padding : {0, 1, 6}) {
                VCamFrame frame = PackedVCam(width, height, 40, 33, Bytes());
                frame.srcStride += padding;
                ASSERT_NO_FATAL_FAILURE(ExpectModelBits(frame));
                frame.matrix = VCamMatrix(MountTypeCeiling, 20.0F, 30.0F);
                ASSERT_NO_FATAL_FAILURE(ExpectModelBits(frame));
            }
        }
    }
}

// The near rectangle's distance changes the ray's direction by roundings only.
TEST_P(VCamKernels, GiveTheBitsOfThePlainLoopForEveryNearDistance) {
    for (const float eye : {1.0F, 0.5F, 0.01F}) {
        for (const float nearPlane :
             {1.0F, 0.3F, 0.01F, 1e-5F, 17.0F, 0.0F, -1.0F, kNan, kInfinity}) {
            VCamFrame frame = PackedVCam(401, 399, 56, 41, Bytes());
            frame.eyeZ = eye;
            frame.nearPlane = nearPlane;
            frame.matrix = VCamMatrix(MountTypeTable, 20.0F, -30.0F);
            ASSERT_NO_FATAL_FAILURE(ExpectModelBits(frame));
        }
    }
}

// The eye sets how far off the axis a ray may be. Around where each pixel goes dark, neighbouring
// numbers tell apart what differs by a rounding.
TEST_P(VCamKernels, GiveTheBitsOfThePlainLoopWherePixelsReachTheRim) {
    VCamFrame frame = PackedVCam(50, 50, 16, 1, Bytes());
    frame.radiusX = 0.3F;
    frame.radiusY = 0.3F;
    frame.fieldOfView = 100.0F;
    frame.aspect = 1.0F;
    for (std::size_t column = 0; column < 16; ++column) {
        float shown = 0.0F;
        float dark = 1.0F;
        while (std::nextafter(shown, dark) < dark) {
            frame.eyeZ = (shown + dark) / 2.0F;
            const bool isShown = ModelPlaces(Form(), frame, Bytes())[column].has_value();
            (isShown ? shown : dark) = frame.eyeZ;
        }
        ASSERT_TRUE(shown > 0.0F && dark < 1.0F) << "column " << column;
        frame.eyeZ = shown;
        for (int i = 0; i < 20; ++i) {
            frame.eyeZ = std::nextafter(frame.eyeZ, 0.0F);
        }
        for (int i = 0; i < 40; ++i) {
            ASSERT_NO_FATAL_FAILURE(ExpectModelBits(frame)) << "column " << column;
            frame.eyeZ = std::nextafter(frame.eyeZ, 1.0F);
        }
    }
}

TEST_P(VCamKernels, AnglesThatAreNoNumberGiveBlack) {
    const VCamFrame sizes = PackedVCam(40, 30, 24, 11, Bytes());
    const std::vector<unsigned char> src(sizes.SourceBytes(Bytes()), 0x55);
    const std::vector<unsigned char> black(sizes.OutputBytes(), 0);
    for (const MountType mount : kMounts) {
        for (const float value : {kNan, kInfinity, -kInfinity}) {
            VCamFrame frame = sizes;
            frame.matrix = VCamMatrix(mount, value, 10.0F);
            EXPECT_EQ(GetParam().Picture(frame, src), black) << "pan " << value;
            frame.matrix = VCamMatrix(mount, 10.0F, value);
            EXPECT_EQ(GetParam().Picture(frame, src), black) << "tilt " << value;
        }
        const VCamFrame frame = WithSettings(sizes, mount, SettingsOf(mount, 10.0F, 0.0F, kNan));
        EXPECT_EQ(GetParam().Picture(frame, src), black) << "zoom";
    }
}

TEST_P(VCamKernels, ZoomOfInfinityIsTheLargestZoom) {
    const VCamFrame sizes = PackedVCam(40, 30, 24, 11, Bytes());
    const auto src = CoordinateFrame(40, 30, sizes.srcStride, Bytes());
    const auto at = [&](float zoom) {
        return GetParam().Picture(
            WithSettings(sizes, MountTypeCeiling, SettingsOf(MountTypeCeiling, 9.0F, 40.0F, zoom)),
            src);
    };
    EXPECT_EQ(at(kInfinity), at(10.0F));
    EXPECT_EQ(at(-kInfinity), at(1.0F));
    EXPECT_NE(at(10.0F), at(1.0F));
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamKernels);

class VCamEntries : public testing::TestWithParam<int> {};

TEST_P(VCamEntries, RunTheFormOfThisProcessor) {
    const VCamForm form = FormOfLevel(GetCPUInstructionSet());
    // Four pixels more than whole groups of eight tell the forms apart.
    VCamFrame frame = PackedVCam(300, 200, 108, 45, GetParam());
    frame.eyeZ = 0.01F;
    frame.matrix = VCamMatrix(MountTypeCeiling, 33.0F, 20.0F);
    const auto src = CoordinateFrame(300, 200, frame.srcStride, GetParam());
    std::vector<unsigned char> picture(frame.OutputBytes(), 0xCD);
    for (int call = 0; call < 2; ++call) {
        Call(VCamEntry(GetParam()), frame, src.data(), picture.data());
        for (const VCamForm other : {VCamForm::C, VCamForm::SSE41, VCamForm::AVX}) {
            const VCamKernel kernel{other, GetParam()};
            if (kernel.CanRun()) {
                EXPECT_EQ(picture == kernel.ModelPicture(frame, src), other == form)
                    << kernel.Name() << ", call " << call;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, VCamEntries, testing::Values(3, 4));

}  // namespace
