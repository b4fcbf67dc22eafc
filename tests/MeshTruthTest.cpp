#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <random>
#include <type_traits>

#include "DownwardFisheyeOpenGLAlgo.h"
#include "FrontwardFisheyeOpenGLAlgo.h"
#include "UpwardFisheyeOpenGLAlgo.h"
#include "support/Between.h"
#include "support/CoordinateFrame.h"
#include "support/Joined.h"
#include "support/KernelForm.h"
#include "support/PanoramaCamera.h"
#include "support/PointList.h"
#include "support/RandomFrame.h"

// A client that draws a mesh and one that takes the library's picture see the same: where a vertex
// lies on the frame is what the pixel in its row and column shows.

using namespace KivFisheyeLib;

namespace {

#if defined(__x86_64__)
constexpr int kLanes = 4;
namespace CeilingLanes = DownwardFisheyeAlgoNS::SSE2;
namespace TableLanes = UpwardFisheyeAlgoNS::SSE2;
namespace WallLanes = FrontwardFisheyeAlgoNS::SSE2;
#else
constexpr int kLanes = 1;
namespace CeilingLanes = DownwardFisheyeAlgoNS::C;
namespace TableLanes = UpwardFisheyeAlgoNS::C;
namespace WallLanes = FrontwardFisheyeAlgoNS::C;
#endif

/// A function that fills a mesh, and to how many columns it rounds its rows up.
template <class Function>
struct MeshForm {
    const char* name;
    Function* fill;
    int group;
};

using MeshFunction = void(int columns, int rows, float shape, bool centerAtOrigin, float* mesh);
using DualMeshFunction = void(int columns, int rowsFirst, int rowsSecond, float shape,
                              bool centerAtOrigin, float* mesh);

template <class Panorama>
constexpr bool kIsDual = Panorama::kView == ViewTypeDualPanorama;

/// The entry, which is one of the forms, the scalar form and the lanes of a panorama's mesh.
template <class Panorama>
auto FormsOf() {
    using Function = std::conditional_t<kIsDual<Panorama>, DualMeshFunction, MeshFunction>;
    struct Forms {
        MeshForm<Function> forms[3];
    };
    const auto forms = [](Function& entry, Function& scalar, Function& lanes) {
        return Forms{{{"entry", &entry, 4}, {"C", &scalar, 1}, {"lanes", &lanes, kLanes}}};
    };
    if constexpr (Panorama::kMountType == MountTypeWall) {
        return forms(FrontwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate,
                     FrontwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate,
                     WallLanes::CalculatePanoramaTextureCoordinate);
    } else if constexpr (Panorama::kMountType == MountTypeCeiling && kIsDual<Panorama>) {
        return forms(DownwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate,
                     DownwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate,
                     CeilingLanes::CalculateDualPanoramaTextureCoordinate);
    } else if constexpr (Panorama::kMountType == MountTypeCeiling) {
        return forms(DownwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate,
                     DownwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate,
                     CeilingLanes::CalculatePanoramaTextureCoordinate);
    } else if constexpr (kIsDual<Panorama>) {
        return forms(UpwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate,
                     UpwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate,
                     TableLanes::CalculateDualPanoramaTextureCoordinate);
    } else {
        return forms(UpwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate,
                     UpwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate,
                     TableLanes::CalculatePanoramaTextureCoordinate);
    }
}

/// Random frames and a random lens.
struct Scenario {
    Scenario(std::mt19937& engine, PixelFormat format, int columnGroup)
        : columns(Between(engine, 1, 160 / columnGroup) * columnGroup),
          rows(Between(engine, 2, 60)),
          lens{Radius(engine), Radius(engine), Between(engine, 10.0F, 90.0F),
               Between(engine, 0.0F, 0.8F)},
          input(RandomInput(engine, 1, 300, format)),
          output(Side(columns), Side(rows), format) {}

    std::string Description() const {
        return testing::PrintToString(columns) + " columns, " + testing::PrintToString(rows) +
               " rows, source " + testing::PrintToString(input.Width()) + "x" +
               testing::PrintToString(input.Height()) + ", radii " +
               testing::PrintToString(lens.radiusX) + " and " +
               testing::PrintToString(lens.radiusY) + ", wall angle " +
               testing::PrintToString(lens.wallViewAngle) + ", ratio " +
               testing::PrintToString(lens.innerRadiusRatio);
    }

    int columns;
    int rows;
    DewarpParams lens;
    ClientFrame input;
    ClientFrame output;

private:
    static float Radius(std::mt19937& engine) { return Between(engine, 0.05F, 1.0F); }
    static std::uint32_t Side(int side) { return static_cast<std::uint32_t>(side); }
};

template <class Panorama>
class MeshTruth : public testing::Test {
protected:
    /// How far a mesh and a picture may be apart, in the mesh's units. On a wall the lanes'
    /// arctangent makes it. On a ring the angle runs, by up to 160 sums in the scalar mesh and by a
    /// sum for each step of at most four lanes in the picture. They are below 8 radians, so that
    /// each may be off by 2^-22, and the radius is 0.5 at most.
    static double Error() {
        constexpr double kOfSum = 0.5 / (1 << 22);
        constexpr int kSums = 160;
        const int sumsOfPicture = kSums / std::min(LanesOf(FormOfTables()), 4);
        return Panorama::kMountType == MountTypeWall ? 2e-3
                                                     : 1e-6 + (kSums + sumsOfPicture) * kOfSum;
    }

    static int RowsShown(const Scenario& scenario) {
        return kIsDual<Panorama> ? scenario.rows / 2 * 2 : scenario.rows;
    }

    /// The vertices without the padding of their rows, around the origin.
    template <class Form>
    static std::vector<Point> Vertices(const Form& form, const Scenario& scenario) {
        const int rows = RowsShown(scenario);
        const int pitch = (scenario.columns + form.group - 1) / form.group * form.group;
        PointList mesh((pitch * rows + 1) / 2 * 2);
        const float shape = ShapeOf<Panorama>(scenario.lens);
        if constexpr (kIsDual<Panorama>) {
            form.fill(scenario.columns, rows / 2, rows / 2, shape, true, mesh.Floats());
        } else {
            form.fill(scenario.columns, rows, shape, true, mesh.Floats());
        }
        const std::vector<Point> padded = mesh.Points();
        std::vector<Point> vertices;
        for (int row = 0; row < rows; ++row) {
            const auto first = padded.begin() + std::ptrdiff_t{row} * pitch;
            vertices.insert(vertices.end(), first, first + scenario.columns);
        }
        return vertices;
    }

    /// Whether a place along one side of the frame, with 0 in its middle, is that of a pixel. The
    /// scalar form rounds down, the others to the nearest.
    static bool IsPlaceOf(int pixel, double fromMiddle, int side, double error) {
        const double place = (fromMiddle + 0.5) * (side - 1) - pixel;
        const double slack = error * (side - 1) + 1e-3;
        const double lowest = FormOfTables() == KernelForm::C ? 0.0 : -0.5;
        return place >= lowest - slack && place <= lowest + 1.0 + slack;
    }

    /// Whether a pixel is what the vertex lies on, or there is none beyond the frame. A vertex on
    /// the axis is not a number, and its pixel black.
    static bool IsShown(const std::optional<PixelPlace>& pixel, const Point& vertex,
                        const Scenario& scenario) {
        const double twiceX = 2.0 * static_cast<double>(scenario.lens.radiusX);
        const double twiceY = 2.0 * static_cast<double>(scenario.lens.radiusY);
        const Point place{twiceX * vertex.x, twiceY * vertex.y};
        if (!pixel) {
            return !(std::fabs(place.x) <= 0.5 - Error() * twiceX - 1e-5 &&
                     std::fabs(place.y) <= 0.5 - Error() * twiceY - 1e-5);
        }
        return IsPlaceOf(pixel->column, place.x, scenario.input.Width(), Error() * twiceX) &&
               IsPlaceOf(pixel->row, place.y, scenario.input.Height(), Error() * twiceY);
    }

    /// Holds a mesh against a picture, which may have its columns the other way round.
    static void ExpectShown(const std::vector<Point>& vertices, const Scenario& scenario,
                            bool isMirrored) {
        int wrong = 0;
        int shown = 0;
        for (int row = 0; row < RowsShown(scenario); ++row) {
            for (int column = 0; column < scenario.columns; ++column) {
                const int pixelColumn = isMirrored ? scenario.columns - 1 - column : column;
                const auto pixel = PlaceIn(
                    scenario.output.bytes.data() + std::ptrdiff_t{row} * scenario.output.Stride() +
                        std::ptrdiff_t{pixelColumn} * BytesPerPixelOf(Panorama::kFormat),
                    BytesPerPixelOf(Panorama::kFormat));
                const auto at = static_cast<std::size_t>(row * scenario.columns + column);
                wrong += IsShown(pixel, vertices[at], scenario) ? 0 : 1;
                shown += pixel ? 1 : 0;
            }
        }
        EXPECT_EQ(wrong, 0) << "vertices of " << vertices.size();
        EXPECT_TRUE(shown > 0 || scenario.lens.radiusX > 0.5F || scenario.lens.radiusY > 0.5F);
    }

    /// Makes a picture with `convert(scenario)` of every scenario, and holds each form against it.
    template <class Paint>
    static void HoldsFor(Paint paint, bool isMirrored) {
        std::mt19937 engine(29);
        for (int i = 0; i < 40; ++i) {
            Scenario scenario(engine, Panorama::kFormat, i % 2 == 0 ? 4 : 1);
            paint(scenario);
            const auto forms = FormsOf<Panorama>();
            for (const auto& form : forms.forms) {
                if (form.fill == forms.forms[0].fill && scenario.columns % form.group != 0) {
                    continue;
                }
                SCOPED_TRACE(scenario.Description() + ", " + form.name);
                ExpectShown(Vertices(form, scenario), scenario, isMirrored);
            }
        }
    }

    template <class Converter, class... Pan>
    static void Paint(Scenario& scenario, Pan... pan) {
        Converter converter;
        Init<Panorama>(converter, scenario.input, scenario.output, scenario.lens);
        Convert<Panorama>(converter, pan..., scenario.input.bytes.data(),
                          scenario.output.bytes.data());
    }
};

using EveryPanorama = Joined<Panoramas, WallPanoramas>::Types;
TYPED_TEST_SUITE(MeshTruth, EveryPanorama);

TYPED_TEST(MeshTruth, IsWhatTheTableShows) {
    this->HoldsFor(
        [this](Scenario& scenario) {
            this->template Paint<typename TypeParam::Converter>(scenario);
        },
        false);
}

// A ceiling's direct full panorama runs the other way round than its table.
TYPED_TEST(MeshTruth, IsWhatTheDirectConversionShows) {
    constexpr bool kIsMirrored = TypeParam::kMountType == MountTypeCeiling && !kIsDual<TypeParam>;
    this->HoldsFor(
        [this](Scenario& scenario) {
            using Converter = typename TypeParam::DirectConverter;
            if constexpr (TypeParam::kMountType == MountTypeWall) {
                this->template Paint<Converter>(scenario);
            } else {
                this->template Paint<Converter>(scenario, 0.0F);
            }
        },
        kIsMirrored);
}

}  // namespace
