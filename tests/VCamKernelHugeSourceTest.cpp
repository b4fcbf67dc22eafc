#include <gtest/gtest.h>
#include <sys/mman.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "support/VCamForms.h"
#include "support/VCamModel.h"

// Sources so large that single precision has no number for each of their columns, or that a byte
// offset takes all bits of an int.

using namespace KivFisheyeLib;

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr unsigned char kAny = 0x11;
constexpr unsigned char kLast = 0x77;
constexpr unsigned char kForeign = 0xEE;

class VCamKernelHugeSources : public VCamKernelTest {
protected:
    /// The lens with which a ray through the view's right upper corner meets the frame's border.
    static float RadiusThatReachesTheBorder(const VCamFrame& frame) {
        const double y = std::tan(5.0 * kPi / 180.0);
        const double x = y * static_cast<double>(frame.aspect);
        const double phi = 2.0 * std::atan(std::hypot(x, y));
        return static_cast<float>(0.5 / (2.0 * phi / kPi * x / std::hypot(x, y)));
    }

    static bool Shows(const std::vector<unsigned char>& picture, unsigned char byte) {
        return std::find(picture.begin(), picture.end(), byte) != picture.end();
    }

    /// Widens the lens along the frame's long side bit by bit, until the view's right end has gone
    /// past the frame's border.
    static void ExpectEndsWithItsLastPixel(VCamFrame& frame, float* radius) {
        const auto pixel = static_cast<std::size_t>(Bytes());
        std::vector<unsigned char> src(frame.SourceBytes(Bytes()) + pixel, kAny);
        std::fill(src.end() - static_cast<std::ptrdiff_t>(2 * pixel), src.end(), kLast);
        std::fill(src.end() - static_cast<std::ptrdiff_t>(pixel), src.end(), kForeign);
        const auto isRightEndInside = [&](float candidate) {
            *radius = candidate;
            return ModelPlaces(Form(), frame, Bytes())[7].has_value();
        };
        // The vector forms' arccosine moves the place where the border is met.
        float inside = RadiusThatReachesTheBorder(frame) * 0.98F;
        float outside = RadiusThatReachesTheBorder(frame) * 1.02F;
        ASSERT_TRUE(isRightEndInside(inside));
        ASSERT_FALSE(isRightEndInside(outside));
        while (std::nextafter(inside, outside) < outside) {
            const float middle = (inside + outside) / 2.0F;
            (isRightEndInside(middle) ? inside : outside) = middle;
        }
        int pictures = 0;
        for (int i = 0; i < 4; ++i, inside = std::nextafter(inside, 0.0F)) {
            *radius = inside;
            const auto picture = GetParam().Picture(frame, src);
            ASSERT_FALSE(Shows(picture, kForeign)) << frame;
            pictures += Shows(picture, kLast) ? 1 : 0;
        }
        EXPECT_GT(pictures, 0) << "the last pixel was never reached: " << frame;
    }
};

// The last pixel's position rounds up, and may lead to the pixel after it: one that the source does
// not have.
TEST_P(VCamKernelHugeSources, SidesBeyondTwoToThe23EndWithTheirLastPixel) {
    for (const int side : {(1 << 23) + 2, (1 << 23) + 3, (1 << 24) + 4}) {
        VCamFrame wide = PackedVCam(side, 1, 8, 1, Bytes());
        wide.fieldOfView = 10.0F;
        ASSERT_NO_FATAL_FAILURE(ExpectEndsWithItsLastPixel(wide, &wide.radiusX));
        VCamFrame high = PackedVCam(1, side, 8, 1, Bytes());
        high.fieldOfView = 10.0F;
        high.matrix = {0.0F, -1.0F, 0.0F, 0.0F, 1.0F, 0.0F, 0.0F, 0.0F,
                       0.0F, 0.0F,  1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 1.0F};
        ASSERT_NO_FATAL_FAILURE(ExpectEndsWithItsLastPixel(high, &high.radiusY));
    }
}

/// Memory that is there only where it is touched.
class SparseMemory {
public:
    explicit SparseMemory(std::size_t size)
        : m_size(size),
          m_memory(mmap(nullptr, size, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0)) {}
    ~SparseMemory() { munmap(m_memory, m_size); }
    SparseMemory(const SparseMemory&) = delete;
    SparseMemory& operator=(const SparseMemory&) = delete;

    unsigned char* data() const {
        return m_memory == MAP_FAILED ? nullptr : static_cast<unsigned char*>(m_memory);
    }

private:
    std::size_t m_size;
    void* m_memory;
};

// 38551 strides of 55705 bytes and 64 pixels of 3 bytes are exactly the largest int, and so are
// 37295 of 57581 and 63 of 4.
TEST_P(VCamKernelHugeSources, AFrameThatEndsAtTheLargestOffsetIsShown) {
    constexpr std::size_t kSize = 2147483647;
    VCamFrame frame = Bytes() == 3 ? PackedVCam(64, 38552, 16, 32, Bytes())
                                   : PackedVCam(63, 37296, 16, 32, Bytes());
    frame.srcStride = Bytes() == 3 ? 55705 : 57581;
    frame.eyeZ = 0.01F;
    frame.fieldOfView = 10.0F;
    frame.radiusX = 0.75F;
    frame.radiusY = 0.75F;
    frame.matrix = VCamMatrix(MountTypeCeiling, 180.0F, 58.0F);
    ASSERT_EQ(frame.SourceBytes(Bytes()), kSize);
    const SparseMemory src(kSize);
    if (src.data() == nullptr) {
        GTEST_SKIP() << "no address space of 2 GiB";
    }
    // Every pixel that the picture shows tells which one it is.
    const SourcePlaces places = ModelPlaces(Form(), frame, Bytes());
    const auto pixelOf = [&](const PixelPlace& place) {
        return src.data() + std::ptrdiff_t{place.row} * frame.srcStride +
               std::ptrdiff_t{place.column} * Bytes();
    };
    int lowest = 0;
    for (const auto& place : places) {
        if (place) {
            lowest = std::max(lowest, place->row);
            unsigned char* const pixel = pixelOf(*place);
            pixel[0] = static_cast<unsigned char>(place->column);
            pixel[1] = static_cast<unsigned char>(place->row & 0xFF);
            pixel[2] = static_cast<unsigned char>(place->row >> 8);
        }
    }
    EXPECT_GT(lowest, frame.srcHeight - 150);
    std::vector<unsigned char> picture(frame.OutputBytes(), 0xCD);
    GetParam()(frame, src.data(), picture.data());
    for (std::size_t i = 0; i < places.size(); ++i) {
        const unsigned char* const pixel = &picture[static_cast<std::size_t>(Bytes()) * i];
        const PixelPlace shown{pixel[0], pixel[1] + 256 * pixel[2]};
        EXPECT_EQ(shown, places[i].value_or(PixelPlace{0, 0})) << "pixel " << i;
    }
}

KIVFISHEYE_TEST_VCAM_KERNELS(VCamKernelHugeSources);

}  // namespace
