#include <DownwardFisheyeAlgo.h>
#include <FrontwardFisheyeAlgo.h>
#include <KivFisheyeLib.h>
#include <UpwardFisheyeAlgo.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "OffscreenContext.h"
#include "PanoramaRenderer.h"
#include "support/CoordinateFrame.h"

// The panorama that a graphics processor draws from the library's grids, pixel by pixel against
// what the grids say and against the panorama that the library draws itself.

using namespace KivFisheyeLib;

namespace {

constexpr int kBytes = 4;

struct Scene {
    const char* name;
    MountType mount;
    ViewType view;
    DewarpParams lens;
    int srcWidth;
    int srcHeight;
    int width;
    int height;
};

std::ostream& operator<<(std::ostream& out, const Scene& scene) {
    return out << scene.name;
}

constexpr Scene kScenes[] = {
    {"WallFull", MountTypeWall, ViewTypeFullPanorama, {0.5F, 0.5F, 45, 0}, 512, 512, 320, 160},
    {"WallHigh", MountTypeWall, ViewTypeFullPanorama, {0.3F, 0.45F, 80, 0}, 600, 400, 256, 200},
    {"TableFull", MountTypeTable, ViewTypeFullPanorama, {0.5F, 0.5F, 45, 0.2F}, 512, 512, 640, 120},
    {"TableDual", MountTypeTable, ViewTypeDualPanorama, {0.3F, 0.45F, 45, 0}, 600, 400, 320, 240},
    {"CeilingFull",
     MountTypeCeiling,
     ViewTypeFullPanorama,
     {0.28F, 0.5F, 45, 0.5F},
     640,
     360,
     512,
     64},
    {"CeilingDual",
     MountTypeCeiling,
     ViewTypeDualPanorama,
     {0.4F, 0.4F, 45, 0.1F},
     300,
     300,
     256,
     160},
};

std::vector<unsigned char> SourceOf(const Scene& scene) {
    return CoordinateFrame(scene.srcWidth, scene.srcHeight, scene.srcWidth * kBytes, kBytes);
}

template <class Converter, class Turn>
void Convert(const Scene& scene, float shape, const unsigned char* src, unsigned char* dst,
             const Turn& turn) {
    Converter converter;
    converter.Init(scene.srcWidth, scene.srcHeight, scene.srcWidth * kBytes, scene.width,
                   scene.height, scene.width * kBytes, 8 * kBytes, scene.lens.radiusX,
                   scene.lens.radiusY, shape);
    turn(converter, src, dst);
}

Picture OfProcessor(const Scene& scene) {
    const std::vector<unsigned char> src = SourceOf(scene);
    Picture picture(static_cast<std::uint32_t>(scene.width),
                    static_cast<std::uint32_t>(scene.height));
    const auto unturned = [](auto& converter, const unsigned char* from, unsigned char* to) {
        converter.CvtRGB32(0.0F, from, to);
    };
    const auto unturnable = [](auto& converter, const unsigned char* from, unsigned char* to) {
        converter.CvtRGB32(from, to);
    };
    const bool isDual = scene.view == ViewTypeDualPanorama;
    const float inner = scene.lens.innerRadiusRatio;
    unsigned char* const dst = picture.pixels.data();
    if (scene.mount == MountTypeWall) {
        Convert<FrontwardFisheyeAlgoNS::CPanoramaConverter>(scene, scene.lens.wallViewAngle,
                                                            src.data(), dst, unturnable);
    } else if (scene.mount == MountTypeTable) {
        isDual ? Convert<UpwardFisheyeAlgoNS::CDualPanoramaConverter>(scene, inner, src.data(), dst,
                                                                      unturned)
               : Convert<UpwardFisheyeAlgoNS::CPanoramaConverter>(scene, inner, src.data(), dst,
                                                                  unturned);
    } else {
        isDual ? Convert<DownwardFisheyeAlgoNS::CDualPanoramaConverter>(scene, inner, src.data(),
                                                                        dst, unturned)
               : Convert<DownwardFisheyeAlgoNS::CPanoramaConverter>(scene, inner, src.data(), dst,
                                                                    unturned);
    }
    return picture;
}

PanoramaView ViewOf(const Scene& scene, int columns, int rows) {
    return {scene.mount, scene.view, scene.lens, columns, rows};
}

Picture OfGraphics(const Scene& scene, int columns, int rows) {
    const OffscreenContext context;
    Picture source(static_cast<std::uint32_t>(scene.srcWidth),
                   static_cast<std::uint32_t>(scene.srcHeight));
    source.pixels = SourceOf(scene);
    return RenderPanorama(source, ViewOf(scene, columns, rows), scene.width, scene.height);
}

std::optional<PixelPlace> PlaceAt(const Picture& picture, int x, int y) {
    return PlaceIn(picture.At(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y)),
                   kBytes);
}

/// One source pixel, and what the grid's form may be off.
double Tolerance(const Scene& scene, float radius, int side) {
    const double formError = scene.mount == MountTypeWall ? 2e-3 : 1e-6;
    return 1.0 + formError * 2.0 * double{radius} * side;
}

/// Of the pixels that were compared.
struct Agreement {
    int close = 0;      // the same place of the lens image
    int identical = 0;  // the same source pixel
};

/// Compares those pixels of both pictures that `isCompared` names. One that is not close is a
/// failure.
template <class IsCompared>
Agreement AgreementOf(const Scene& scene, const Picture& graphics, const IsCompared& isCompared) {
    const Picture processor = OfProcessor(scene);
    const double mostX = Tolerance(scene, scene.lens.radiusX, scene.srcWidth);
    const double mostY = Tolerance(scene, scene.lens.radiusY, scene.srcHeight);
    Agreement agreement;
    for (int y = 0; y < scene.height; ++y) {
        for (int x = 0; x < scene.width; ++x) {
            const auto expected = PlaceAt(processor, x, y);
            if (!isCompared(x, y) || !expected) {
                continue;
            }
            const auto place = PlaceAt(graphics, x, y);
            const bool isClose = place && std::abs(place->column - expected->column) <= mostX &&
                                 std::abs(place->row - expected->row) <= mostY;
            EXPECT_TRUE(isClose) << "at " << x << ", " << y << " the processor shows " << *expected;
            if (!isClose) {
                return agreement;
            }
            ++agreement.close;
            agreement.identical += *place == *expected ? 1 : 0;
        }
    }
    return agreement;
}

/// The source pixel, with its fraction, at a coordinate of the grid along a side of the frame.
double SourcePixel(float lensCoordinate, float radius, int side) {
    return (side - 1) * (0.5 + 2.0 * double{radius} * double{lensCoordinate});
}

/// From SSE4.1 on the library takes the nearest source pixel, as the graphics processor does; below
/// it cuts the fraction off.
bool TakesTheNearestPixel() {
    constexpr int kSse41 = 5;
    return GetCPUInstructionSet() >= kSse41;
}

class GpuPanorama : public testing::TestWithParam<Scene> {
protected:
    const Scene& scene = GetParam();
    const int grids = scene.view == ViewTypeDualPanorama ? 2 : 1;
    const int gridHeight = scene.height / grids;
    const int inside = (scene.width - 2) * (gridHeight - 2) * grids;

    /// Away from the edges of the grids, whose vertices reach out.
    bool IsInside(int x, int y) const {
        const int row = y % gridHeight;
        return x > 0 && x < scene.width - 1 && row > 0 && row < gridHeight - 1;
    }
};

TEST_P(GpuPanorama, ShowsTheSourcePixelsNearestToTheGridsPoints) {
    // Single precision, and what the graphics processor interpolates.
    constexpr double kNearest = 0.5 + 2e-3;
    const Picture picture = OfGraphics(scene, scene.width, gridHeight);
    // A vertex for every pixel, in the same order.
    const std::vector<float> points =
        MakePanoramaMesh(ViewOf(scene, scene.width, gridHeight), scene.width, scene.height)
            .lensPoints;
    int compared = 0;
    for (int y = 0; y < scene.height; ++y) {
        for (int x = 0; x < scene.width; ++x) {
            const auto place = PlaceAt(picture, x, y);
            if (!IsInside(x, y) || !place) {
                continue;
            }
            const auto at = std::size_t{2} * static_cast<std::size_t>(y * scene.width + x);
            const double column = SourcePixel(points[at], scene.lens.radiusX, scene.srcWidth);
            const double row = SourcePixel(points[at + 1], scene.lens.radiusY, scene.srcHeight);
            ASSERT_LE(std::fabs(place->column - column), kNearest) << "at " << x << ", " << y;
            ASSERT_LE(std::fabs(place->row - row), kNearest) << "at " << x << ", " << y;
            ++compared;
        }
    }
    EXPECT_EQ(compared, inside);
}

TEST_P(GpuPanorama, ShowsWhatTheProcessorShows) {
    const Agreement agreement = AgreementOf(scene, OfGraphics(scene, scene.width, gridHeight),
                                            [this](int x, int y) { return IsInside(x, y); });
    EXPECT_EQ(agreement.close, inside);
    if (TakesTheNearestPixel()) {
        EXPECT_GE(agreement.identical, 0.999 * inside);
    }
}

TEST_P(GpuPanorama, DrawsEveryPixel) {
    const Picture picture = OfGraphics(scene, 32, 16);
    int drawn = 0;
    for (int y = 0; y < scene.height; ++y) {
        for (int x = 0; x < scene.width; ++x) {
            drawn += PlaceAt(picture, x, y).has_value() ? 1 : 0;
        }
    }
    EXPECT_EQ(drawn, scene.width * scene.height);
}

/// Between its vertices a coarse grid bends away; at them it is as good as a fine one.
TEST_P(GpuPanorama, OfACoarseGridIsRightAtItsVertices) {
    // 7 columns of 9 pixels and 3 rows of 7 in each grid.
    Scene coarse = scene;
    coarse.width = 64;
    coarse.height = 22 * grids;
    const auto isVertex = [](int x, int y) {
        return x > 0 && x < 63 && x % 9 == 0 && (y % 22 == 7 || y % 22 == 14);
    };
    EXPECT_EQ(AgreementOf(coarse, OfGraphics(coarse, 8, 4), isVertex).close, 6 * 2 * grids);
}

INSTANTIATE_TEST_SUITE_P(Scenes, GpuPanorama, testing::ValuesIn(kScenes),
                         [](const auto& scene) { return std::string(scene.param.name); });

TEST(GpuPanoramaMesh, RefusesViewsWithoutAGridAndSizesThatAreTooSmall) {
    const DewarpParams lens{0.5F, 0.5F, 45.0F, 0.0F};
    EXPECT_THROW(MakePanoramaMesh({MountTypeTable, ViewTypeVCam, lens, 8, 8}, 64, 64),
                 std::invalid_argument);
    EXPECT_THROW(MakePanoramaMesh({MountTypeWall, ViewTypeDualPanorama, lens, 8, 8}, 64, 64),
                 std::invalid_argument);
    EXPECT_THROW(MakePanoramaMesh({MountTypeWall, ViewTypeFullPanorama, lens, 6, 8}, 64, 64),
                 std::invalid_argument);
    EXPECT_THROW(MakePanoramaMesh({MountTypeTable, ViewTypeDualPanorama, lens, 8, 8}, 64, 63),
                 std::invalid_argument);
    EXPECT_THROW(MakePanoramaMesh({MountTypeTable, ViewTypeFullPanorama, lens, 8, 1}, 64, 64),
                 std::invalid_argument);
}

}  // namespace
