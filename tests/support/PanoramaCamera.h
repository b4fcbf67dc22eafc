#ifndef KIVFISHEYE_TESTS_PANORAMA_CAMERA_H
#define KIVFISHEYE_TESTS_PANORAMA_CAMERA_H

#include <gtest/gtest.h>

#include <vector>

#include "DownwardFisheyeAlgo.h"
#include "FrontwardFisheyeAlgo.h"
#include "KivFisheyeCamera.h"
#include "PanoramaScenes.h"
#include "UpwardFisheyeAlgo.h"
#include "support/ClientFrame.h"
#include "support/Joined.h"
#include "support/RingModel.h"

// The panoramas of every mount in both pixel sizes, for typed tests: the wall's, which do not turn,
// apart from the others.

template <KivFisheyeLib::PixelFormat format>
struct CeilingPanorama {
    static constexpr auto kMountType = KivFisheyeLib::MountTypeCeiling;
    static constexpr auto kOtherMountType = KivFisheyeLib::MountTypeTable;
    static constexpr auto kView = KivFisheyeLib::ViewTypeFullPanorama;
    static constexpr auto kFormat = format;
    static constexpr auto kMount = Mount::Ceiling;
    using Scene = SceneNS::CCeilingFullPanoramaScene;
    using Converter = DownwardFisheyeAlgoNS::CPanoramaConverter;
    using DirectConverter = DownwardFisheyeAlgoNS::CPanoramaSimpleConverter;
};

template <KivFisheyeLib::PixelFormat format>
struct TablePanorama {
    static constexpr auto kMountType = KivFisheyeLib::MountTypeTable;
    static constexpr auto kOtherMountType = KivFisheyeLib::MountTypeCeiling;
    static constexpr auto kView = KivFisheyeLib::ViewTypeFullPanorama;
    static constexpr auto kFormat = format;
    static constexpr auto kMount = Mount::Table;
    using Scene = SceneNS::CTableFullPanoramaScene;
    using Converter = UpwardFisheyeAlgoNS::CPanoramaConverter;
    using DirectConverter = UpwardFisheyeAlgoNS::CPanoramaSimpleConverter;
};

template <KivFisheyeLib::PixelFormat format>
struct CeilingDualPanorama : CeilingPanorama<format> {
    static constexpr auto kView = KivFisheyeLib::ViewTypeDualPanorama;
    using Scene = SceneNS::CCeilingDualPanoramaScene;
    using Converter = DownwardFisheyeAlgoNS::CDualPanoramaConverter;
    using DirectConverter = DownwardFisheyeAlgoNS::CDualPanoramaSimpleConverter;
};

template <KivFisheyeLib::PixelFormat format>
struct TableDualPanorama : TablePanorama<format> {
    static constexpr auto kView = KivFisheyeLib::ViewTypeDualPanorama;
    using Scene = SceneNS::CTableDualPanoramaScene;
    using Converter = UpwardFisheyeAlgoNS::CDualPanoramaConverter;
    using DirectConverter = UpwardFisheyeAlgoNS::CDualPanoramaSimpleConverter;
};

template <KivFisheyeLib::PixelFormat format>
struct WallPanorama {
    static constexpr auto kMountType = KivFisheyeLib::MountTypeWall;
    static constexpr auto kOtherMountType = KivFisheyeLib::MountTypeCeiling;
    static constexpr auto kView = KivFisheyeLib::ViewTypeFullPanorama;
    static constexpr auto kFormat = format;
    using Scene = SceneNS::CWallFullPanoramaScene;
    using Converter = FrontwardFisheyeAlgoNS::CPanoramaConverter;
    using DirectConverter = FrontwardFisheyeAlgoNS::CPanoramaSimpleConverter;
};

using WallPanoramas = testing::Types<WallPanorama<KivFisheyeLib::PixelFormatRGB24>,
                                     WallPanorama<KivFisheyeLib::PixelFormatRGB32>>;
using FullPanoramas = testing::Types<CeilingPanorama<KivFisheyeLib::PixelFormatRGB24>,
                                     CeilingPanorama<KivFisheyeLib::PixelFormatRGB32>,
                                     TablePanorama<KivFisheyeLib::PixelFormatRGB24>,
                                     TablePanorama<KivFisheyeLib::PixelFormatRGB32>>;
using DualPanoramas = testing::Types<CeilingDualPanorama<KivFisheyeLib::PixelFormatRGB24>,
                                     CeilingDualPanorama<KivFisheyeLib::PixelFormatRGB32>,
                                     TableDualPanorama<KivFisheyeLib::PixelFormatRGB24>,
                                     TableDualPanorama<KivFisheyeLib::PixelFormatRGB32>>;
using Panoramas = Joined<FullPanoramas, DualPanoramas>::Types;

/// A lens whose four values are told apart by every picture of it, but for the wall's.
constexpr KivFisheyeLib::DewarpParams kUnevenLens{0.5F, 0.375F, 30.0F, 0.25F};

/// The value that a mount's panorama takes beside the two radii.
template <class Panorama>
float ShapeOf(const KivFisheyeLib::DewarpParams& lens) {
    return Panorama::kMountType == KivFisheyeLib::MountTypeWall ? lens.wallViewAngle
                                                                : lens.innerRadiusRatio;
}

/// `CvtRGB24` or `CvtRGB32` of a converter, with a pan or without.
template <class Panorama, class Converter, class... Arguments>
void Convert(Converter& converter, Arguments... arguments) {
    if constexpr (BytesPerPixelOf(Panorama::kFormat) == 3) {
        converter.CvtRGB24(arguments...);
    } else {
        converter.CvtRGB32(arguments...);
    }
}

template <class Panorama, class Converter>
void Init(Converter& converter, const ClientFrame& input, const ClientFrame& output,
          const KivFisheyeLib::DewarpParams& lens) {
    converter.Init(input.Width(), input.Height(), input.Stride(), output.Width(), output.Height(),
                   output.Stride(), 8 * BytesPerPixelOf(Panorama::kFormat), lens.radiusX,
                   lens.radiusY, ShapeOf<Panorama>(lens));
}

/// The unturned panorama that a converter of its own makes in a frame of this fill. It is asked to
/// turn by a whole turn: only a conversion that turns leaves a dual panorama's odd last row alone.
template <class Panorama>
ClientFrame ExpectedPicture(const ClientFrame& input, const ClientFrame& output,
                            const KivFisheyeLib::DewarpParams& lens, unsigned char fill = 0xCD) {
    ClientFrame expected(output.record.width, output.record.height, Panorama::kFormat, fill);
    typename Panorama::Converter converter;
    Init<Panorama>(converter, input, expected, lens);
    if constexpr (Panorama::kMountType == KivFisheyeLib::MountTypeWall) {
        Convert<Panorama>(converter, input.bytes.data(), expected.bytes.data());
    } else {
        Convert<Panorama>(converter, 360.0F, input.bytes.data(), expected.bytes.data());
    }
    return expected;
}

/// A camera with both frames, set to a panorama of an uneven lens.
template <class Panorama>
struct PanoramaCamera {
    static constexpr unsigned char kUntouched = 0xCD;
    static constexpr int kBytesPerPixel = BytesPerPixelOf(Panorama::kFormat);

    PanoramaCamera() {
        EXPECT_EQ(camera.SetDewarpParams(kUnevenLens), kResultOk);
        EXPECT_EQ(camera.SetInputVideoParams(input.record, Panorama::kFormat), kResultOk);
        EXPECT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
        EXPECT_EQ(camera.SetMountAndViewType(Panorama::kMountType, Panorama::kView), kResultOk);
        output.Fill(kUntouched);
    }

    ClientFrame Expected() const { return ExpectedPicture<Panorama>(input, output, kUnevenLens); }

    /// Converts one frame and says whether the output shows exactly this.
    bool Shows(const std::vector<unsigned char>& bytes) {
        output.Fill(kUntouched);
        return camera.Process(0) == kResultOk && output.bytes == bytes;
    }

    ClientFrame input = ClientFrame::OfCoordinates(61, 47, Panorama::kFormat);
    ClientFrame output{64, 9, Panorama::kFormat, kUntouched};
    CKivFisheyeCamera camera;
};

#endif
