#include "levels/DispatchEntries.h"

#include <cstring>

#include "DownwardFisheyeAlgo.h"
#include "DownwardFisheyeOpenGLAlgo.h"
#include "FisheyeAlgoCommon.h"
#include "FisheyeVCamAlgo.h"
#include "FrontwardFisheyeAlgo.h"
#include "FrontwardFisheyeOpenGLAlgo.h"
#include "PanoramaOutlines.h"
#include "UpwardFisheyeAlgo.h"
#include "UpwardFisheyeOpenGLAlgo.h"
#include "support/CoordinateFrame.h"
#include "vcam/VCamOutline.h"

namespace {

namespace Ceiling = DownwardFisheyeAlgoNS;
namespace Table = UpwardFisheyeAlgoNS;
namespace WallView = FrontwardFisheyeAlgoNS;
namespace VCam = FisheyeVCamAlgoNS;

constexpr const char* kCeiling = "DownwardFisheyeAlgoNS::";
constexpr const char* kTable = "UpwardFisheyeAlgoNS::";
constexpr const char* kWall = "FrontwardFisheyeAlgoNS::";
constexpr const char* kVCam = "FisheyeVCamAlgoNS::";
constexpr const char* kGlobal = "";

// `CalculateDualPanoramaROICoordinate` is another name for what both forms share.
constexpr const char* kDualOutline =
    "ring::FillBothHalves<void *calculate_outer_inner_ellipse_coordinate<";

constexpr FormsByLevel kOfPoints = {"C",    "C",    "SSE2", "SSE2", "SSE2",
                                    "SSE2", "SSE2", "SSE2", "SSE2"};
constexpr FormsByLevel kOfTables = {"C", "C", "C", "C", "C", "SSE41", "SSE41", "AVX", "AVX"};
constexpr FormsByLevel kOfVCams = kOfTables;
constexpr FormsByLevel kOfConversions = {"C",     "C",     "C",     "C",    "C",
                                         "SSE41", "SSE41", "SSE41", "SSE41"};

constexpr int kSrcWidth = 61;
constexpr int kSrcHeight = 47;
constexpr int kDstWidth = 32;
constexpr int kDstHeight = 16;
constexpr float kRadius = 0.5F;
constexpr int kPoints = 64;
constexpr float kMatrix[16] = {1.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.8F, -0.6F, 0.0F,
                               0.0F, 0.6F, 0.8F, 0.0F, 0.0F, 0.0F, 0.0F,  1.0F};

template <int bits>
std::vector<unsigned char> Source() {
    return CoordinateFrame(kSrcWidth, kSrcHeight, kSrcWidth * bits / 8, bits / 8);
}

/// Half the ring is a hole, or a wall's panorama is one degree high.
template <int bits, class Converter>
void Init(Converter& converter) {
    constexpr float kShape = 0.5F;
    converter.Init(kSrcWidth, kSrcHeight, kSrcWidth * bits / 8, kDstWidth, kDstHeight,
                   kDstWidth * bits / 8, bits, kRadius, kRadius, kShape);
}

/// The conversion of 24 bits is not behind a pointer, and shows the entries of any table.
template <class Converter, int bits>
void Build(EntryOutput& output) {
    Converter converter;
    Init<bits>(converter);
    converter.CvtRGB24(Source<bits>().data(), output.Picture());
}

template <int bits, class Converter, class... Pan>
void Convert(Converter& converter, EntryOutput& output, Pan... pan) {
    if constexpr (bits == 24) {
        converter.CvtRGB24(pan..., Source<bits>().data(), output.Picture());
    } else {
        converter.CvtRGB32(pan..., Source<bits>().data(), output.Picture());
    }
}

template <class Converter, int bits>
void ConvertTurned(EntryOutput& output) {
    Converter converter;
    Init<bits>(converter);
    Convert<bits>(converter, output, 30.0F);
}

template <class Converter, int bits>
void ConvertUnturned(EntryOutput& output) {
    Converter converter;
    Init<bits>(converter);
    Convert<bits>(converter, output);
}

template <vcam::ConvertFunction& convert, int bits>
void ConvertVCam(EntryOutput& output) {
    convert(kSrcWidth, kSrcHeight, kSrcWidth * bits / 8, Source<bits>().data(), kRadius, kRadius,
            0.01F, 50.0F, 1.5F, 1.01F, kMatrix, kDstWidth, kDstHeight, kDstWidth * bits / 8,
            output.Picture());
}

using FullMesh = void(int columns, int rows, float shape, bool centerAtOrigin, float* coordinates);
using DualMesh = void(int columns, int rowsFirst, int rowsSecond, float innerRadiusRatio,
                      bool centerAtOrigin, float* coordinates);

template <FullMesh& mesh>
void LayFull(EntryOutput& output) {
    mesh(64, 6, 0.3F, false, output.floats.data());
}

template <DualMesh& mesh>
void LayDual(EntryOutput& output) {
    mesh(64, 3, 2, 0.3F, false, output.floats.data());
}

template <CoordinateOrientationType orientation>
void DrawEllipse(EntryOutput& output) {
    CalculateEllipseCoordinate(kRadius, kRadius, kRadius, 0.4F, output.floats.data(), kPoints,
                               orientation);
}

void DrawDual(EntryOutput& output) {
    float* const points = output.floats.data();
    Ceiling::CalculateDualPanoramaROICoordinate(kRadius, 0.4F, 0.3F, false, 77.0F, points, kPoints,
                                                points + std::ptrdiff_t{2} * kPoints, kPoints,
                                                CoordinateOrientationWindows);
}

template <CoordinateOrientationType orientation>
void DrawWall(EntryOutput& output) {
    WallView::CalculatePanoramaBoundaryCoordinate(kRadius, 0.4F, 50.0F, false, output.floats.data(),
                                                  kPoints, orientation);
}

template <CoordinateOrientationType orientation>
void DrawVCam(EntryOutput& output) {
    VCam::CalculateVCamROICoordinate(kRadius, 0.4F, 0.01F, 50.0F, 1.5F, 1.01F, kMatrix, false,
                                     output.floats.data(), kPoints, orientation);
}

// clang-format off
const DispatchEntry kEntries[] = {
    {kOfPoints, kCeiling, "(anonymous namespace)::CDispatcher::_calculate_panorama_texture_coordinate_impl", "CalculatePanoramaTextureCoordinate", LayFull<Ceiling::CalculatePanoramaTextureCoordinate>},
    {kOfPoints, kCeiling, "(anonymous namespace)::CDispatcher::_calculate_dual_panorama_texture_coordinate_impl", "CalculateDualPanoramaTextureCoordinate", LayDual<Ceiling::CalculateDualPanoramaTextureCoordinate>},
    {kOfPoints, kCeiling, "(anonymous namespace)::CDispatcher::_calculate_dual_panorama_roi_coordinate_impl", kDualOutline, DrawDual},
    {kOfPoints, kTable, "(anonymous namespace)::CDispatcher::_calculate_panorama_texture_coordinate_impl", "CalculatePanoramaTextureCoordinate", LayFull<Table::CalculatePanoramaTextureCoordinate>},
    {kOfPoints, kTable, "(anonymous namespace)::CDispatcher::_calculate_dual_panorama_texture_coordinate_impl", "CalculateDualPanoramaTextureCoordinate", LayDual<Table::CalculateDualPanoramaTextureCoordinate>},
    {kOfPoints, kWall, "(anonymous namespace)::CDispatcher::_calculate_panorama_texture_coordinate_impl", "CalculatePanoramaTextureCoordinate", LayFull<WallView::CalculatePanoramaTextureCoordinate>},
    {kOfPoints, kWall, "(anonymous namespace)::CDispatcher::_calculate_panorama_boundary_windows_coordinate_impl", "CalculatePanoramaBoundaryCoordinate<(CoordinateOrientationType)0>", DrawWall<CoordinateOrientationWindows>},
    {kOfPoints, kWall, "(anonymous namespace)::CDispatcher::_calculate_panorama_boundary_texture_coordinate_impl", "CalculatePanoramaBoundaryCoordinate<(CoordinateOrientationType)0>", DrawWall<CoordinateOrientationTexture>},
    {kOfPoints, kGlobal, "(anonymous namespace)::CDispatcher::_calculate_ellipse_windows_coordinate_impl", "CalculateEllipseCoordinate<(CoordinateOrientationType)0>", DrawEllipse<CoordinateOrientationWindows>},
    {kOfPoints, kGlobal, "(anonymous namespace)::CDispatcher::_calculate_ellipse_texture_coordinate_impl", "CalculateEllipseCoordinate<(CoordinateOrientationType)1>", DrawEllipse<CoordinateOrientationTexture>},
    {kOfPoints, kVCam, "(anonymous namespace)::CalculateVCamROICoordinateImpl::_windows_impl", "CalculateVCamROICoordinate<(CoordinateOrientationType)0>", DrawVCam<CoordinateOrientationWindows>},
    {kOfPoints, kVCam, "(anonymous namespace)::CalculateVCamROICoordinateImpl::_texture_impl", "CalculateVCamROICoordinate<(CoordinateOrientationType)1>", DrawVCam<CoordinateOrientationTexture>},
    {kOfVCams, kVCam, "(anonymous namespace)::CvtVCamRGBImpl::_cvt_rgb24_impl", "CvtVCamRGB<24ul>", ConvertVCam<VCam::CvtVCamRGB24, 24>},
    {kOfVCams, kVCam, "(anonymous namespace)::CvtVCamRGBImpl::_cvt_rgb32_impl", "CvtVCamRGB<32ul>", ConvertVCam<VCam::CvtVCamRGB32, 32>},
    {kOfTables, kTable, "CPanoramaConverter::Impl::_init_table_rgb24_impl", "InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, -1>", Build<Table::CPanoramaConverter, 24>},
    {kOfTables, kTable, "CPanoramaConverter::Impl::_init_table_rgb32_impl", "InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>", Build<Table::CPanoramaConverter, 32>},
    {kOfTables, kCeiling, "CPanoramaConverter::Impl::_init_table_rgb24_impl", "InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, -1>", Build<Ceiling::CPanoramaConverter, 24>},
    {kOfTables, kCeiling, "CPanoramaConverter::Impl::_init_table_rgb32_impl", "InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>", Build<Ceiling::CPanoramaConverter, 32>},
    {kOfTables, kWall, "CPanoramaConverter::Impl::_init_table_rgb24_impl", "InitPanoramaCoorToFisheyeAddrOffsetTableRGB<24, -1>", Build<WallView::CPanoramaConverter, 24>},
    {kOfTables, kWall, "CPanoramaConverter::Impl::_init_table_rgb32_impl", "InitPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>", Build<WallView::CPanoramaConverter, 32>},
    {kOfTables, kTable, "CDualPanoramaConverter::Impl::_init_table_rgb24_impl", "InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<24, -1>", Build<Table::CDualPanoramaConverter, 24>},
    {kOfTables, kTable, "CDualPanoramaConverter::Impl::_init_table_rgb32_impl", "InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>", Build<Table::CDualPanoramaConverter, 32>},
    {kOfTables, kCeiling, "CDualPanoramaConverter::Impl::_init_table_rgb24_impl", "InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<24, -1>", Build<Ceiling::CDualPanoramaConverter, 24>},
    {kOfTables, kCeiling, "CDualPanoramaConverter::Impl::_init_table_rgb32_impl", "InitDualPanoramaCoorToFisheyeAddrOffsetTableRGB<32, -1>", Build<Ceiling::CDualPanoramaConverter, 32>},
    {kOfConversions, kTable, "CPanoramaSimpleConverter::Impl::_cvt_rgb24_impl", "CvtPanoramaRGB<24ul>", ConvertTurned<Table::CPanoramaSimpleConverter, 24>},
    {kOfConversions, kTable, "CPanoramaSimpleConverter::Impl::_cvt_rgb32_impl", "CvtPanoramaRGB<32ul>", ConvertTurned<Table::CPanoramaSimpleConverter, 32>},
    {kOfConversions, kCeiling, "CPanoramaSimpleConverter::Impl::_cvt_rgb24_impl", "CvtPanoramaRGB<24ul>", ConvertTurned<Ceiling::CPanoramaSimpleConverter, 24>},
    {kOfConversions, kCeiling, "CPanoramaSimpleConverter::Impl::_cvt_rgb32_impl", "CvtPanoramaRGB<32ul>", ConvertTurned<Ceiling::CPanoramaSimpleConverter, 32>},
    {kOfConversions, kWall, "CPanoramaSimpleConverter::Impl::_cvt_rgb24_impl", "CvtPanoramaRGB<24ul>", ConvertUnturned<WallView::CPanoramaSimpleConverter, 24>},
    {kOfConversions, kWall, "CPanoramaSimpleConverter::Impl::_cvt_rgb32_impl", "CvtPanoramaRGB<32ul>", ConvertUnturned<WallView::CPanoramaSimpleConverter, 32>},
    {kOfConversions, kTable, "CDualPanoramaSimpleConverter::Impl::_cvt_rgb24_impl", "CvtDualPanoramaRGB<24ul>", ConvertTurned<Table::CDualPanoramaSimpleConverter, 24>},
    {kOfConversions, kTable, "CDualPanoramaSimpleConverter::Impl::_cvt_rgb32_impl", "CvtDualPanoramaRGB<32ul>", ConvertTurned<Table::CDualPanoramaSimpleConverter, 32>},
    {kOfConversions, kCeiling, "CDualPanoramaSimpleConverter::Impl::_cvt_rgb24_impl", "CvtDualPanoramaRGB<24ul>", ConvertTurned<Ceiling::CDualPanoramaSimpleConverter, 24>},
    {kOfConversions, kCeiling, "CDualPanoramaSimpleConverter::Impl::_cvt_rgb32_impl", "CvtDualPanoramaRGB<32ul>", ConvertTurned<Ceiling::CDualPanoramaSimpleConverter, 32>},
    {kOfConversions, kWall, "CPanoramaConverter::Impl::_cvt_rgb32_impl", "CvtPanoramaRGB32ByFisheyeAddrOffsetTable<-1>", ConvertUnturned<WallView::CPanoramaConverter, 32>},
};
// clang-format on

}  // namespace

bool EntryOutput::operator==(const EntryOutput& other) const {
    return std::memcmp(floats.data(), other.floats.data(), sizeof floats) == 0;
}

std::string DispatchEntry::Pointer() const {
    return algorithm + pointer;
}

std::string DispatchEntry::Kernel(int level) const {
    const std::string space = algorithm + forms.at(static_cast<std::size_t>(level)) + "::";
    const std::size_t place = kernel.find('*');
    return place == std::string::npos ? space + kernel + "("
                                      : std::string(kernel).replace(place, 1, space);
}

std::vector<DispatchEntry> AllDispatchEntries() {
    return {std::begin(kEntries), std::end(kEntries)};
}
