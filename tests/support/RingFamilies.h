#ifndef KIVFISHEYE_TESTS_RING_FAMILIES_H
#define KIVFISHEYE_TESTS_RING_FAMILIES_H

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "DownwardFisheyeAlgo.h"
#include "PanoramaTable.h"
#include "UpwardFisheyeAlgo.h"
#include "support/InForm.h"
#include "support/Joined.h"
#include "support/RingKernelSet.h"
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
};

struct CeilingCamera {
    static constexpr Mount kMount = Mount::Ceiling;
    static constexpr const char* kName = "Ceiling";
    using DirectConverter = DownwardFisheyeAlgoNS::CPanoramaSimpleConverter;
    using TableConverter = DownwardFisheyeAlgoNS::CPanoramaConverter;
    using DualDirectConverter = DownwardFisheyeAlgoNS::CDualPanoramaSimpleConverter;
    using DualTableConverter = DownwardFisheyeAlgoNS::CDualPanoramaConverter;
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
                            std::vector<unsigned char>& frame,
                            KernelForm form = FormOfDirectConversions()) {
        Paint(DirectOffsets(Camera::kMount, ring, kBytes, pan, form), ring, kBytes,
              RowStart::Cleared, src, frame);
    }
    static std::vector<int> ExpectedEntries(const Ring& ring, int bytesPerPixel = kBytes,
                                            KernelForm form = FormOfTables()) {
        return TableOffsets(Camera::kMount, ring, bytesPerPixel, form);
    }
    static void PaintTurned(const std::vector<int>& entries, const Ring& ring, float pan,
                            const std::vector<unsigned char>& src,
                            std::vector<unsigned char>& frame) {
        const auto shift =
            static_cast<int>(std::fmod(pan, 360.0F) * static_cast<float>(ring.dstWidth) / 360.0F);
        Paint(TurnedOffsets(entries, ring, shift), ring, kBytes, RowStart::Kept, src, frame);
    }

    /// How many of a frame's rows a direct conversion writes.
    static int DrawnRows(const Ring& ring) { return ring.dstHeight; }

    /// In how many positions whole columns can turn the ring.
    static int Positions(const Ring& ring) { return ring.dstWidth; }

    /// The conversion by a bare table.
    static void ConvertTurned(const PanoramaTable& table, float pan, const unsigned char* src,
                              unsigned char* dst) {
        table.ConvertTurned<kKernelBits>(pan, src, dst);
    }

    /// The kernels of a form.
    static void ConvertByKernel(KernelForm form, const Ring& ring, float pan,
                                const unsigned char* src, unsigned char* dst) {
        ConvertBy(*RingKernelsOf(Camera::kMount, form, bits).convert, ring, pan, src, dst);
    }
    static void BuildInto(CAlignedBufferT<int, 32>& table, KernelForm form, const Ring& ring) {
        BuildBy(*RingKernelsOf(Camera::kMount, form, bits).build, ring, table);
    }

protected:
    static constexpr auto kKernelBits = static_cast<unsigned long>(bits);

    static void ConvertBy(ring::ConvertFunction& convert, const Ring& ring, float pan,
                          const unsigned char* src, unsigned char* dst) {
        convert(ring.srcWidth, ring.srcHeight, ring.srcStride, src, ring.dstWidth, ring.dstHeight,
                ring.dstStride, dst, ring.radiusX, ring.radiusY, ring.innerRadiusRatio, pan);
    }

    static void BuildBy(BuildFunction& build, const Ring& ring, CAlignedBufferT<int, 32>& table) {
        build(ring.srcWidth, ring.srcHeight, ring.srcStride, ring.dstWidth, ring.dstHeight,
              ring.dstStride, ring.radiusX, ring.radiusY, ring.innerRadiusRatio, table);
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
                            std::vector<unsigned char>& frame,
                            KernelForm form = FormOfDirectConversions()) {
        PaintBothHalves(DualDirectOffsets(Camera::kMount, ring, kBytes, pan, form), ring, kBytes,
                        form, src, frame);
    }
    static std::vector<int> ExpectedEntries(const Ring& ring, int bytesPerPixel = kBytes,
                                            KernelForm form = FormOfTables()) {
        return DualTableOffsets(Camera::kMount, ring, bytesPerPixel, form);
    }
    static void PaintTurned(const std::vector<int>& entries, const Ring& ring, float pan,
                            const std::vector<unsigned char>& src,
                            std::vector<unsigned char>& frame) {
        Paint(DualTurnedOffsets(entries, ring, DualTurnOf(ring.dstWidth, pan)), ring, kBytes,
              RowStart::Kept, src, frame);
    }

    static int DrawnRows(const Ring& ring) { return ring.dstHeight / 2 * 2; }
    static int Positions(const Ring& ring) { return 2 * ring.dstWidth; }

    static void ConvertTurned(const PanoramaTable& table, float pan, const unsigned char* src,
                              unsigned char* dst) {
        table.ConvertDualTurned<Base::kKernelBits>(pan, src, dst);
    }

    static void ConvertByKernel(KernelForm form, const Ring& ring, float pan,
                                const unsigned char* src, unsigned char* dst) {
        Base::ConvertBy(*RingKernelsOf(Camera::kMount, form, bits).convertDual, ring, pan, src,
                        dst);
    }
    static void BuildInto(CAlignedBufferT<int, 32>& table, KernelForm form, const Ring& ring) {
        Base::BuildBy(*RingKernelsOf(Camera::kMount, form, bits).buildDual, ring, table);
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

using RingFormNames = FormNames<RingFamilyNames>;

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

/// What a form's kernel, and what the model of that form, make of such a frame.
template <class Family>
std::vector<unsigned char> KernelPicture(const Ring& ring, float pan,
                                         const std::vector<unsigned char>& src,
                                         unsigned char fill = 0xCD) {
    std::vector<unsigned char> frame(ring.OutputBytes(), fill);
    Family::ConvertByKernel(ring, pan, src.data(), frame.data());
    return frame;
}

template <class Family>
std::vector<unsigned char> ModelPicture(const Ring& ring, float pan,
                                        const std::vector<unsigned char>& src,
                                        KernelForm form = FormOfDirectConversions()) {
    std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
    Family::PaintDirect(ring, pan, src, frame, form);
    return frame;
}

/// The picture by the table that a form's kernel builds.
template <class Family>
std::vector<unsigned char> BuiltTablePicture(const Ring& ring,
                                             const std::vector<unsigned char>& src) {
    std::vector<unsigned char> frame(ring.OutputBytes(), 0xCD);
    Paint(Family::BuildTable(ring), ring, Family::kBytes, RowStart::Kept, src, frame);
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
