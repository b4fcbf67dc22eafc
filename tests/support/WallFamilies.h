#ifndef KIVFISHEYE_TESTS_WALL_FAMILIES_H
#define KIVFISHEYE_TESTS_WALL_FAMILIES_H

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "FrontwardFisheyeAlgo.h"
#include "support/CoordinateFrame.h"
#include "support/InForm.h"
#include "support/WallKernelSet.h"
#include "support/WallModel.h"

/// A wall's converters and kernels for one pixel size, so that a typed test covers both.
template <int bits>
struct WallFamily {
    static constexpr int kBits = bits;
    static constexpr int kBytes = bits / 8;
    using DirectConverter = FrontwardFisheyeAlgoNS::CPanoramaSimpleConverter;
    using TableConverter = FrontwardFisheyeAlgoNS::CPanoramaConverter;

    template <class Converter>
    static void Init(Converter& converter, const Wall& wall, int bitsPerPixel = bits) {
        converter.Init(wall.srcWidth, wall.srcHeight, wall.srcStride, wall.dstWidth, wall.dstHeight,
                       wall.dstStride, bitsPerPixel, wall.radiusX, wall.radiusY,
                       wall.wallViewAngle);
    }

    /// Calls `CvtRGB24` or `CvtRGB32`.
    template <class Converter>
    static void Convert(Converter& converter, const unsigned char* src, unsigned char* dst) {
        constexpr auto kConvert = bits == 24 ? &Converter::CvtRGB24 : &Converter::CvtRGB32;
        (converter.*kConvert)(src, dst);
    }

    /// The kernels of a form.
    static void ConvertByKernel(KernelForm form, const Wall& wall, const unsigned char* src,
                                unsigned char* dst) {
        WallKernelsOf(form, bits)
            .convert(wall.srcWidth, wall.srcHeight, wall.srcStride, src, wall.dstWidth,
                     wall.dstHeight, wall.dstStride, dst, wall.radiusX, wall.radiusY,
                     wall.wallViewAngle);
    }

    static void BuildInto(CAlignedBufferT<int, 32>& table, KernelForm form, const Wall& wall) {
        WallKernelsOf(form, bits)
            .build(wall.srcWidth, wall.srcHeight, wall.srcStride, wall.dstWidth, wall.dstHeight,
                   wall.dstStride, wall.radiusX, wall.radiusY, wall.wallViewAngle, table);
    }

    /// What the model of a form says of the table.
    static std::vector<int> ExpectedEntries(const Wall& wall, int bytesPerPixel, KernelForm form) {
        return TableOffsets(wall, bytesPerPixel, form);
    }
};

using WallFamilies = ::testing::Types<WallFamily<24>, WallFamily<32>>;

struct WallFamilyNames {
    template <class Family>
    static std::string GetName(int) {
        return "Bits" + std::to_string(Family::kBits);
    }
};

using WallFormNames = FormNames<WallFamilyNames>;

/// A source that tells its places.
template <class Family>
std::vector<unsigned char> SourceOf(const Wall& wall) {
    return CoordinateFrame(wall.srcWidth, wall.srcHeight, wall.srcStride, Family::kBytes);
}

/// Any access through null ends the process.
inline void ExpectWritesNothing(FrontwardFisheyeAlgoNS::CPanoramaConverter& converter) {
    converter.CvtRGB24(nullptr, nullptr);
    converter.CvtRGB32(nullptr, nullptr);
}

/// Calls `check(wall, src)` with many walls and random pixels for each.
template <class Family, class Check>
void ForRandomWalls(std::uint32_t seed, Check&& check) {
    constexpr int kWalls = 400;
    WallGenerator generator(seed);
    for (int i = 0; i < kWalls; ++i) {
        const Wall wall = generator.NextWall(Family::kBytes);
        const auto src = generator.NextBytes(wall.SourceBytes(Family::kBytes));
        ASSERT_NO_FATAL_FAILURE(check(wall, src)) << "case " << i << ": " << wall;
    }
}

/// What the direct and what the table-driven conversion must make of a frame that held 0xCD.
template <class Family>
std::vector<unsigned char> ExpectedDirectPicture(const Wall& wall,
                                                 const std::vector<unsigned char>& src,
                                                 KernelForm form = FormOfDirectConversions()) {
    std::vector<unsigned char> frame(wall.OutputBytes(), 0xCD);
    Paint(DirectOffsets(wall, Family::kBytes, form), wall, Family::kBytes, RowStart::Cleared, src,
          frame);
    return frame;
}

/// What a form's kernel makes of such a frame, and the picture by the table that it builds.
template <class Family>
std::vector<unsigned char> KernelPicture(const Wall& wall, const std::vector<unsigned char>& src) {
    std::vector<unsigned char> frame(wall.OutputBytes(), 0xCD);
    Family::ConvertByKernel(wall, src.data(), frame.data());
    return frame;
}

template <class Family>
std::vector<unsigned char> BuiltTablePicture(const Wall& wall,
                                             const std::vector<unsigned char>& src) {
    std::vector<unsigned char> frame(wall.OutputBytes(), 0xCD);
    Paint(Family::BuildTable(wall), wall, Family::kBytes, RowStart::Kept, src, frame);
    return frame;
}

template <class Family>
std::vector<unsigned char> ExpectedTablePicture(const Wall& wall,
                                                const std::vector<unsigned char>& src) {
    std::vector<unsigned char> frame(wall.OutputBytes(), 0xCD);
    Paint(TableOffsets(wall, Family::kBytes), wall, Family::kBytes, RowStart::Kept, src, frame);
    return frame;
}

/// What a converter that was given the wall makes of such a frame.
template <class Family, class Converter>
std::vector<unsigned char> PictureOf(Converter& converter, const Wall& wall,
                                     const std::vector<unsigned char>& src) {
    std::vector<unsigned char> frame(wall.OutputBytes(), 0xCD);
    Family::Convert(converter, src.data(), frame.data());
    return frame;
}

/// The picture of a new converter of either kind.
template <class Family, class Converter>
std::vector<unsigned char> NewPictureOf(const Wall& wall, const std::vector<unsigned char>& src) {
    Converter converter;
    Family::Init(converter, wall);
    return PictureOf<Family>(converter, wall, src);
}

template <class Family>
std::vector<unsigned char> DirectPicture(const Wall& wall, const std::vector<unsigned char>& src) {
    return NewPictureOf<Family, typename Family::DirectConverter>(wall, src);
}

template <class Family>
std::vector<unsigned char> TablePicture(const Wall& wall, const std::vector<unsigned char>& src) {
    return NewPictureOf<Family, typename Family::TableConverter>(wall, src);
}

#endif
