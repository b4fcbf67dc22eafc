#ifndef KIVFISHEYE_TESTS_RING_FAMILIES_H
#define KIVFISHEYE_TESTS_RING_FAMILIES_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "DownwardFisheyeAlgo.h"
#include "DownwardFisheyeAlgo_C.h"
#include "UpwardFisheyeAlgo.h"
#include "UpwardFisheyeAlgo_C.h"
#include "support/RingModel.h"

// The ring's converters and kernels under one set of names, so that a typed test covers both mounts
// and both pixel sizes.

struct TableCamera {
    static constexpr Mount kMount = Mount::Table;
    static constexpr const char* kName = "Table";
    using DirectConverter = UpwardFisheyeAlgoNS::CPanoramaSimpleConverter;
    using TableConverter = UpwardFisheyeAlgoNS::CPanoramaConverter;
    template <unsigned long bits>
    static constexpr auto kConvert = UpwardFisheyeAlgoNS::C::CvtPanoramaRGB<bits>;
    template <int bits>
    static constexpr auto kBuildTable =
        UpwardFisheyeAlgoNS::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>;
};

struct CeilingCamera {
    static constexpr Mount kMount = Mount::Ceiling;
    static constexpr const char* kName = "Ceiling";
    using DirectConverter = DownwardFisheyeAlgoNS::CPanoramaSimpleConverter;
    using TableConverter = DownwardFisheyeAlgoNS::CPanoramaConverter;
    template <unsigned long bits>
    static constexpr auto kConvert = DownwardFisheyeAlgoNS::C::CvtPanoramaRGB<bits>;
    template <int bits>
    static constexpr auto kBuildTable =
        DownwardFisheyeAlgoNS::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>;
};

template <class Camera, int bits>
struct RingFamily : Camera {
    static constexpr int kBits = bits;
    static constexpr int kBytes = bits / 8;

    /// Calls `CvtRGB24` or `CvtRGB32`, with a pan or without.
    template <class Converter, class... Arguments>
    static void Convert(Converter& converter, Arguments... arguments) {
        if constexpr (bits == 24) {
            converter.CvtRGB24(arguments...);
        } else {
            converter.CvtRGB32(arguments...);
        }
    }

    template <class Converter>
    static void Init(Converter& converter, const Ring& ring) {
        converter.Init(ring.srcWidth, ring.srcHeight, ring.srcStride, ring.dstWidth, ring.dstHeight,
                       ring.dstStride, bits, ring.radiusX, ring.radiusY, ring.innerRadiusRatio);
    }

    /// The scalar kernels.
    static void ConvertByKernel(const Ring& ring, float pan, const unsigned char* src,
                                unsigned char* dst) {
        constexpr auto kKernelBits = static_cast<unsigned long>(bits);
        Camera::template kConvert<kKernelBits>(
            ring.srcWidth, ring.srcHeight, ring.srcStride, src, ring.dstWidth, ring.dstHeight,
            ring.dstStride, dst, ring.radiusX, ring.radiusY, ring.innerRadiusRatio, pan);
    }

    static std::vector<int> BuildTable(const Ring& ring) {
        CAlignedBufferT<int, 32> table;
        table.Allocate(static_cast<unsigned long long>(ring.dstWidth) *
                       static_cast<unsigned long long>(ring.dstHeight));
        Camera::template kBuildTable<bits>(
            ring.srcWidth, ring.srcHeight, ring.srcStride, ring.dstWidth, ring.dstHeight,
            ring.dstStride, ring.radiusX, ring.radiusY, ring.innerRadiusRatio, table);
        return std::vector<int>(table.data(), table.data() + table.count());
    }
};

using RingFamilies = ::testing::Types<RingFamily<TableCamera, 24>, RingFamily<TableCamera, 32>,
                                      RingFamily<CeilingCamera, 24>, RingFamily<CeilingCamera, 32>>;

struct RingFamilyNames {
    template <class Family>
    static std::string GetName(int) {
        return Family::kName + std::to_string(Family::kBits);
    }
};

/// The pictures of the direct and of the table-driven converter in a frame that held `fill`.
template <class Family>
std::vector<unsigned char> DirectPicture(const Ring& ring, float pan,
                                         const std::vector<unsigned char>& src,
                                         unsigned char fill = 0xCD) {
    typename Family::DirectConverter converter;
    Family::Init(converter, ring);
    std::vector<unsigned char> frame(ring.OutputBytes(), fill);
    Family::Convert(converter, pan, src.data(), frame.data());
    return frame;
}

template <class Family, class... Pan>
std::vector<unsigned char> TablePicture(const Ring& ring, const std::vector<unsigned char>& src,
                                        Pan... pan) {
    typename Family::TableConverter converter;
    Family::Init(converter, ring);
    std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
    Family::Convert(converter, pan..., src.data(), frame.data());
    return frame;
}

#endif
