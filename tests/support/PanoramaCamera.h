#ifndef KIVFISHEYE_TESTS_PANORAMA_CAMERA_H
#define KIVFISHEYE_TESTS_PANORAMA_CAMERA_H

#include <gtest/gtest.h>

#include <vector>

#include "DownwardFisheyeAlgo.h"
#include "KivFisheyeCamera.h"
#include "PanoramaScenes.h"
#include "UpwardFisheyeAlgo.h"
#include "support/ClientFrame.h"
#include "support/RingModel.h"

// The full panoramas of a ceiling and of a table camera in both pixel sizes, for typed tests.

template <KivFisheyeLib::PixelFormat format>
struct CeilingPanorama {
    static constexpr auto kMountType = KivFisheyeLib::MountTypeCeiling;
    static constexpr auto kOtherMountType = KivFisheyeLib::MountTypeTable;
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
    static constexpr auto kFormat = format;
    static constexpr auto kMount = Mount::Table;
    using Scene = SceneNS::CTableFullPanoramaScene;
    using Converter = UpwardFisheyeAlgoNS::CPanoramaConverter;
    using DirectConverter = UpwardFisheyeAlgoNS::CPanoramaSimpleConverter;
};

using Panoramas = testing::Types<CeilingPanorama<KivFisheyeLib::PixelFormatRGB24>,
                                 CeilingPanorama<KivFisheyeLib::PixelFormatRGB32>,
                                 TablePanorama<KivFisheyeLib::PixelFormatRGB24>,
                                 TablePanorama<KivFisheyeLib::PixelFormatRGB32>>;

/// A lens whose four values are told apart by every picture of it, but for the wall's.
constexpr KivFisheyeLib::DewarpParams kUnevenLens{0.5F, 0.375F, 30.0F, 0.25F};

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
                   lens.radiusY, lens.innerRadiusRatio);
}

/// The unturned panorama that a converter of its own makes.
template <class Panorama>
ClientFrame ExpectedPicture(const ClientFrame& input, const ClientFrame& output,
                            const KivFisheyeLib::DewarpParams& lens) {
    ClientFrame expected(output.record.width, output.record.height, Panorama::kFormat);
    typename Panorama::Converter converter;
    Init<Panorama>(converter, input, expected, lens);
    Convert<Panorama>(converter, input.bytes.data(), expected.bytes.data());
    return expected;
}

/// A camera with both frames, set to a full panorama of an uneven lens.
template <class Panorama>
struct PanoramaCamera {
    static constexpr unsigned char kUntouched = 0xCD;
    static constexpr int kBytesPerPixel = BytesPerPixelOf(Panorama::kFormat);

    PanoramaCamera() {
        EXPECT_EQ(camera.SetDewarpParams(kUnevenLens), kResultOk);
        EXPECT_EQ(camera.SetInputVideoParams(input.record, Panorama::kFormat), kResultOk);
        EXPECT_EQ(camera.SetOutputVideoParams(output.record), kResultOk);
        EXPECT_EQ(
            camera.SetMountAndViewType(Panorama::kMountType, KivFisheyeLib::ViewTypeFullPanorama),
            kResultOk);
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
