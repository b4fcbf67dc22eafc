#include <DownwardFisheyeAlgo.h>
#include <FrontwardFisheyeAlgo.h>
#include <UpwardFisheyeAlgo.h>

#include "FrameCases.h"

namespace {

namespace Ceiling = DownwardFisheyeAlgoNS;
namespace Table = UpwardFisheyeAlgoNS;
namespace WallView = FrontwardFisheyeAlgoNS;

constexpr int kCases = 10;

template <int bits, class Converter, class... Arguments>
void Convert(Converter& converter, Arguments... arguments) {
    if constexpr (bits == 24) {
        converter.CvtRGB24(arguments...);
    } else {
        converter.CvtRGB32(arguments...);
    }
}

/// Adds the picture that a converter makes, which takes a pan or none before the frames.
template <int bits, class Converter, class... Pan>
void AddPicture(Converter& converter, const CaseFrames& frames,
                const std::vector<unsigned char>& src, Digest& digest, Pan... pan) {
    std::vector<unsigned char> dst = frames.Output();
    Convert<bits>(converter, pan..., src.data(), dst.data());
    digest.Add(dst);
}

/// The last argument is the ratio of a ring's radii, or a wall's angle.
template <int bits, class Converter>
void InitFor(Converter& converter, const CaseFrames& frames, float shape) {
    converter.Init(frames.srcWidth, frames.srcHeight, frames.srcStride, frames.dstWidth,
                   frames.dstHeight, frames.dstStride, bits, frames.radiusX, frames.radiusY, shape);
}

/// A converter's pictures, with a pan or without: a table's conversion takes a way of its own then.
template <class Converter, int bits, bool isTurned>
void PrintPictures(const std::string& view, float (CaseGenerator::*nextShape)()) {
    const auto makeCase = [nextShape](CaseGenerator& generator, Digest& digest) {
        const CaseFrames frames = generator.NextFrames(bits / 8);
        const std::vector<unsigned char> src = frames.Source(bits / 8);
        Converter converter;
        InitFor<bits>(converter, frames, (generator.*nextShape)());
        if constexpr (isTurned) {
            AddPicture<bits>(converter, frames, src, digest, generator.NextPan());
        } else {
            AddPicture<bits>(converter, frames, src, digest);
        }
    };
    PrintFamily(view + "-" + std::to_string(bits), kCases, makeCase);
}

template <class Converter, int bits>
void PrintRing(const std::string& view) {
    PrintPictures<Converter, bits, true>(view, &CaseGenerator::NextRatio);
}

template <class Converter, int bits>
void PrintUnturned(const std::string& view, float (CaseGenerator::*nextShape)()) {
    PrintPictures<Converter, bits, false>(view, nextShape);
}

template <int bits>
void PrintOfBits() {
    PrintRing<Ceiling::CPanoramaSimpleConverter, bits>("ceiling-full-direct");
    PrintRing<Ceiling::CPanoramaConverter, bits>("ceiling-full-table");
    PrintRing<Ceiling::CDualPanoramaSimpleConverter, bits>("ceiling-dual-direct");
    PrintRing<Ceiling::CDualPanoramaConverter, bits>("ceiling-dual-table");
    PrintRing<Table::CPanoramaSimpleConverter, bits>("table-full-direct");
    PrintRing<Table::CPanoramaConverter, bits>("table-full-table");
    PrintRing<Table::CDualPanoramaSimpleConverter, bits>("table-dual-direct");
    PrintRing<Table::CDualPanoramaConverter, bits>("table-dual-table");

    constexpr auto kRatio = &CaseGenerator::NextRatio;
    PrintUnturned<Ceiling::CPanoramaConverter, bits>("ceiling-full-unturned-table", kRatio);
    PrintUnturned<Ceiling::CDualPanoramaConverter, bits>("ceiling-dual-unturned-table", kRatio);
    PrintUnturned<Table::CPanoramaConverter, bits>("table-full-unturned-table", kRatio);
    PrintUnturned<Table::CDualPanoramaConverter, bits>("table-dual-unturned-table", kRatio);

    constexpr auto kAngle = &CaseGenerator::NextWallViewAngle;
    PrintUnturned<WallView::CPanoramaSimpleConverter, bits>("wall-full-direct", kAngle);
    PrintUnturned<WallView::CPanoramaConverter, bits>("wall-full-table", kAngle);
}

}  // namespace

void PrintConverterDigests() {
    PrintOfBits<24>();
    PrintOfBits<32>();
}
