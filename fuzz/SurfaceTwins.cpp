#include <algorithm>

#include "DownwardFisheyeAlgo.h"
#include "FrontwardFisheyeAlgo.h"
#include "SurfaceClient.h"
#include "UpwardFisheyeAlgo.h"

// A context's panorama is what the converter of its mount makes by itself.

using namespace KivFisheyeLib;

namespace {

class Twin {
public:
    Twin(const SurfaceModel& model, const VideoFrameInfo& target, unsigned char* pixels)
        : m_model(model), m_target(target), m_pixels(pixels) {}

    template <class Converter>
    void Convert(float shape) const {
        const VideoFrameInfo& input = m_model.input;
        const auto asInt = [](std::uint32_t number) { return static_cast<int>(number); };
        const int bits = 8 * BytesPerPixel(m_model.format);
        Converter converter;
        converter.Init(asInt(input.width), asInt(input.height), asInt(input.stride),
                       asInt(m_target.width), asInt(m_target.height), asInt(m_target.stride), bits,
                       m_model.lens.radiusX, m_model.lens.radiusY, shape);
        if (bits == 24) {
            ConvertRGB24(converter);
        } else {
            ConvertRGB32(converter);
        }
    }

private:
    using Wall = FrontwardFisheyeAlgoNS::CPanoramaConverter;

    float Pan() const {
        return m_model.view == ViewTypeDualPanorama ? 360.0F - m_model.aim.pan : m_model.aim.pan;
    }

    template <class Converter>
    void ConvertRGB24(Converter& converter) const {
        converter.CvtRGB24(Pan(), m_model.input.buffer, m_pixels);
    }
    template <class Converter>
    void ConvertRGB32(Converter& converter) const {
        converter.CvtRGB32(Pan(), m_model.input.buffer, m_pixels);
    }
    void ConvertRGB24(Wall& wall) const { wall.CvtRGB24(m_model.input.buffer, m_pixels); }
    void ConvertRGB32(Wall& wall) const { wall.CvtRGB32(m_model.input.buffer, m_pixels); }

    const SurfaceModel& m_model;
    const VideoFrameInfo& m_target;
    unsigned char* m_pixels;
};

}  // namespace

void SurfaceClient::ExpectTwin(unsigned char background) const {
    std::vector<unsigned char> pixels(m_output->size(), background);
    const Twin twin(m_model, m_model.output, pixels.data());
    const float ring = m_model.lens.innerRadiusRatio;
    const bool isDual = m_model.view == ViewTypeDualPanorama;
    if (m_model.mount == MountTypeWall) {
        twin.Convert<FrontwardFisheyeAlgoNS::CPanoramaConverter>(m_model.lens.wallViewAngle);
    } else if (m_model.mount == MountTypeCeiling) {
        isDual ? twin.Convert<DownwardFisheyeAlgoNS::CDualPanoramaConverter>(ring)
               : twin.Convert<DownwardFisheyeAlgoNS::CPanoramaConverter>(ring);
    } else {
        isDual ? twin.Convert<UpwardFisheyeAlgoNS::CDualPanoramaConverter>(ring)
               : twin.Convert<UpwardFisheyeAlgoNS::CPanoramaConverter>(ring);
    }
    Expect(std::equal(pixels.begin(), pixels.end(), m_output->data()),
           "the panorama is not what the mount's converter makes");
}
