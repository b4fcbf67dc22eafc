#ifndef KIVFISHEYE_TESTS_RING_FAMILIES_H
#define KIVFISHEYE_TESTS_RING_FAMILIES_H

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "DownwardFisheyeAlgo.h"
#include "DownwardFisheyeAlgo_C.h"
#include "PanoramaTable.h"
#include "UpwardFisheyeAlgo.h"
#include "UpwardFisheyeAlgo_C.h"
#include "support/Joined.h"
#include "support/RingModel.h"

// The ring's converters and kernels under one set of names, so that a typed test covers both mounts
// and both pixel sizes.

struct TableCamera {
    static constexpr Mount kMount = Mount::Table;
    static constexpr const char* kName = "Table";
    using DirectConverter = UpwardFisheyeAlgoNS::CPanoramaSimpleConverter;
    using TableConverter = UpwardFisheyeAlgoNS::CPanoramaConverter;
    using DualDirectConverter = UpwardFisheyeAlgoNS::CDualPanoramaSimpleConverter;
    using DualTableConverter = UpwardFisheyeAlgoNS::CDualPanoramaConverter;
    template <unsigned long bits>
    static constexpr auto kConvert = UpwardFisheyeAlgoNS::C::CvtPanoramaRGB<bits>;
    template <unsigned long bits>
    static constexpr auto kConvertDual = UpwardFisheyeAlgoNS::C::CvtDualPanoramaRGB<bits>;
    template <int bits>
    static constexpr auto kBuildTable =
        UpwardFisheyeAlgoNS::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>;
    template <int bits>
    static constexpr auto kBuildDualTable =
        UpwardFisheyeAlgoNS::C::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>;
};

struct CeilingCamera {
    static constexpr Mount kMount = Mount::Ceiling;
    static constexpr const char* kName = "Ceiling";
    using DirectConverter = DownwardFisheyeAlgoNS::CPanoramaSimpleConverter;
    using TableConverter = DownwardFisheyeAlgoNS::CPanoramaConverter;
    using DualDirectConverter = DownwardFisheyeAlgoNS::CDualPanoramaSimpleConverter;
    using DualTableConverter = DownwardFisheyeAlgoNS::CDualPanoramaConverter;
    template <unsigned long bits>
    static constexpr auto kConvert = DownwardFisheyeAlgoNS::C::CvtPanoramaRGB<bits>;
    template <unsigned long bits>
    static constexpr auto kConvertDual = DownwardFisheyeAlgoNS::C::CvtDualPanoramaRGB<bits>;
    template <int bits>
    static constexpr auto kBuildTable =
        DownwardFisheyeAlgoNS::C::InitPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>;
    template <int bits>
    static constexpr auto kBuildDualTable =
        DownwardFisheyeAlgoNS::C::InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<bits, kNoSource>;
};

template <class Camera, int bits>
struct RingFamily : Camera {
    static constexpr const char* kView = "";
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

    /// What the models say: the picture of the direct conversion, the entries of the table, and the
    /// picture by such entries turned by a pan of at least 0, all in a frame that held `frame`.
    static void PaintDirect(const Ring& ring, float pan, const std::vector<unsigned char>& src,
                            std::vector<unsigned char>& frame) {
        Paint(DirectOffsets(Camera::kMount, ring, kBytes, pan), ring, kBytes, RowStart::Cleared,
              src, frame);
    }
    static std::vector<int> ExpectedEntries(const Ring& ring, int bytesPerPixel = kBytes) {
        return TableOffsets(Camera::kMount, ring, bytesPerPixel);
    }
    static void PaintTurned(const std::vector<int>& entries, const Ring& ring, float pan,
                            const std::vector<unsigned char>& src,
                            std::vector<unsigned char>& frame) {
        const auto shift =
            static_cast<int>(std::fmod(pan, 360.0F) * static_cast<float>(ring.dstWidth) / 360.0F);
        Paint(TurnedOffsets(entries, ring, shift), ring, kBytes, RowStart::Kept, src, frame);
    }

    /// In how many positions whole columns can turn the ring.
    static int Positions(const Ring& ring) { return ring.dstWidth; }

    /// The conversion by a bare table.
    static void ConvertTurned(const PanoramaTable& table, float pan, const unsigned char* src,
                              unsigned char* dst) {
        table.ConvertTurned<kKernelBits>(pan, src, dst);
    }

    /// The scalar kernels.
    static void ConvertByKernel(const Ring& ring, float pan, const unsigned char* src,
                                unsigned char* dst) {
        ConvertBy(Camera::template kConvert<kKernelBits>, ring, pan, src, dst);
    }

    static std::vector<int> BuildTable(const Ring& ring) {
        return BuildTableBy(Camera::template kBuildTable<bits>, ring);
    }

protected:
    static constexpr auto kKernelBits = static_cast<unsigned long>(bits);

    template <class Kernel>
    static void ConvertBy(Kernel kernel, const Ring& ring, float pan, const unsigned char* src,
                          unsigned char* dst) {
        kernel(ring.srcWidth, ring.srcHeight, ring.srcStride, src, ring.dstWidth, ring.dstHeight,
               ring.dstStride, dst, ring.radiusX, ring.radiusY, ring.innerRadiusRatio, pan);
    }

    template <class Builder>
    static std::vector<int> BuildTableBy(Builder build, const Ring& ring) {
        CAlignedBufferT<int, 32> table;
        table.Allocate(static_cast<unsigned long long>(ring.dstWidth) *
                       static_cast<unsigned long long>(ring.dstHeight));
        build(ring.srcWidth, ring.srcHeight, ring.srcStride, ring.dstWidth, ring.dstHeight,
              ring.dstStride, ring.radiusX, ring.radiusY, ring.innerRadiusRatio, table);
        return std::vector<int>(table.data(), table.data() + table.count());
    }
};

/// The same names for the dual panorama.
template <class Camera, int bits>
struct DualFamily : RingFamily<Camera, bits> {
    static constexpr const char* kView = "Dual";
    using Base = RingFamily<Camera, bits>;
    using DirectConverter = typename Camera::DualDirectConverter;
    using TableConverter = typename Camera::DualTableConverter;
    using Base::kBytes;

    static void PaintDirect(const Ring& ring, float pan, const std::vector<unsigned char>& src,
                            std::vector<unsigned char>& frame) {
        PaintBothHalves(DualDirectOffsets(Camera::kMount, ring, kBytes, pan), ring, kBytes, src,
                        frame);
    }
    static std::vector<int> ExpectedEntries(const Ring& ring, int bytesPerPixel = kBytes) {
        return DualTableOffsets(Camera::kMount, ring, bytesPerPixel);
    }
    static void PaintTurned(const std::vector<int>& entries, const Ring& ring, float pan,
                            const std::vector<unsigned char>& src,
                            std::vector<unsigned char>& frame) {
        Paint(DualTurnedOffsets(entries, ring, DualTurnOf(ring.dstWidth, pan)), ring, kBytes,
              RowStart::Kept, src, frame);
    }

    static int Positions(const Ring& ring) { return 2 * ring.dstWidth; }

    static void ConvertTurned(const PanoramaTable& table, float pan, const unsigned char* src,
                              unsigned char* dst) {
        table.ConvertDualTurned<Base::kKernelBits>(pan, src, dst);
    }

    static void ConvertByKernel(const Ring& ring, float pan, const unsigned char* src,
                                unsigned char* dst) {
        Base::ConvertBy(Camera::template kConvertDual<Base::kKernelBits>, ring, pan, src, dst);
    }

    static std::vector<int> BuildTable(const Ring& ring) {
        return Base::BuildTableBy(Camera::template kBuildDualTable<bits>, ring);
    }
};

using RingFamilies = ::testing::Types<RingFamily<TableCamera, 24>, RingFamily<TableCamera, 32>,
                                      RingFamily<CeilingCamera, 24>, RingFamily<CeilingCamera, 32>>;
using DualFamilies = ::testing::Types<DualFamily<TableCamera, 24>, DualFamily<TableCamera, 32>,
                                      DualFamily<CeilingCamera, 24>, DualFamily<CeilingCamera, 32>>;
using PanoramaFamilies = Joined<RingFamilies, DualFamilies>::Types;

struct RingFamilyNames {
    template <class Family>
    static std::string GetName(int) {
        return std::string(Family::kName) + Family::kView + std::to_string(Family::kBits);
    }
};

/// The middle of the pans that turn the ring to this position, where no rounding reaches the next.
template <class Family>
float PanAt(int position, const Ring& ring) {
    return static_cast<float>((position + 0.5) * 360.0 / Family::Positions(ring));
}

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
