#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "KivFisheyeLib.h"
#include "support/ClientFrame.h"
#include "support/CoordinateFrame.h"
#include "support/VCamForms.h"
#include "support/VCamModel.h"
#include "support/VCamRoom.h"

// A client that asks for the pan and tilt of a point and sets them finds the point in the middle of
// the picture.

using namespace KivFisheyeLib;

namespace {

constexpr float kZooms[] = {2.0F, 4.0F, 8.0F};

struct LensRadii {
    float x;
    float y;
};

constexpr LensRadii kLenses[] = {{0.5F, 0.5F}, {0.375F, 0.5F}, {0.45F, 0.31F}};

/// The largest angle off the axis at which a view of this zoom stays on the lens.
double LimitAt(float zoom) {
    return 90.0 - (90.0 - 10.0 * (static_cast<double>(zoom) - 2.0)) / 2.0;
}

class AimedCamera {
public:
    AimedCamera(MountType mount, PixelFormat format, const LensRadii& radii)
        : m_bytes(BytesPerPixelOf(format)),
          m_input(ClientFrame::OfCoordinates(1024, 900, format)),
          m_output(kOutputWidth, kOutputHeight, format) {
        EXPECT_EQ(Camera().SetMountAndViewType(mount, ViewTypeVCam), kResultOk);
        EXPECT_EQ(Camera().SetDewarpParams({radii.x, radii.y, 45.0F, 0.0F}), kResultOk);
        EXPECT_EQ(Camera().SetInputVideoParams(m_input.record, format), kResultOk);
        EXPECT_EQ(Camera().SetOutputVideoParams(m_output.record), kResultOk);
        m_frame = PackedVCam(1024, 900, kOutputWidth, kOutputHeight, m_bytes);
        m_frame.radiusX = radii.x;
        m_frame.radiusY = radii.y;
        m_frame.eyeZ = 0.01F;
    }

    IKivFisheyeCamera& Camera() const { return *GetCameraAPI(m_context.get()); }
    const VCamFrame& Frame() const { return m_frame; }

    /// The point of the source at (x, y), fractions of the lens's half axes from its centre.
    PicturePoint LensPoint(double x, double y) const {
        return {(m_frame.srcWidth - 1) * (0.5 + x * static_cast<double>(m_frame.radiusX)),
                (m_frame.srcHeight - 1) * (0.5 + y * static_cast<double>(m_frame.radiusY))};
    }

    /// Aims at a point of the source, and gives the one in the middle of the picture.
    PicturePoint MiddleAimedAt(const PicturePoint& point, float zoom) {
        float pan = 0.0F;
        float tilt = 0.0F;
        EXPECT_EQ(Camera().CvtXYToVCamPanTilt(FractionX(point), FractionY(point), pan, tilt),
                  kResultOk);
        EXPECT_EQ(Camera().SetAbsolutePTZ(pan, tilt, zoom), kResultOk);
        return MiddleShown();
    }

    PicturePoint MiddleShown() {
        EXPECT_EQ(Camera().Process(0), kResultOk);
        PicturePoint sum{0.0, 0.0};
        for (const int column : {kOutputWidth / 2 - 1, kOutputWidth / 2}) {
            const std::size_t at = std::size_t{kOutputHeight / 2} * m_output.record.stride +
                                   static_cast<std::size_t>(column * m_bytes);
            const auto place = PlaceIn(&m_output.bytes[at], m_bytes);
            EXPECT_TRUE(place.has_value());
            const PicturePoint middle = MiddleOf(Form(), place.value_or(PixelPlace{0, 0}));
            sum.column += middle.column / 2.0;
            sum.row += middle.row / 2.0;
        }
        return sum;
    }

    float FractionX(const PicturePoint& point) const {
        return static_cast<float>(point.column / (m_frame.srcWidth - 1));
    }
    float FractionY(const PicturePoint& point) const {
        return static_cast<float>(point.row / (m_frame.srcHeight - 1));
    }

    /// Two source pixels and what this processor's form is off by.
    double Tolerance() const {
        return 2.0 + std::max(ArccosineError(Form(), m_frame, m_frame.radiusX, m_frame.srcWidth),
                              ArccosineError(Form(), m_frame, m_frame.radiusY, m_frame.srcHeight));
    }

private:
    struct ContextDeleter {
        void operator()(void* context) const { DeleteKivFisheyeCameraContext(context); }
    };

    static constexpr int kOutputWidth = 64;
    static constexpr int kOutputHeight = 61;

    static VCamForm Form() { return FormOfLevel(GetCPUInstructionSet()); }

    int m_bytes;
    ClientFrame m_input;
    ClientFrame m_output;
    VCamFrame m_frame;
    std::unique_ptr<void, ContextDeleter> m_context{CreateKivFisheyeCameraContext()};
};

/// Calls `check(x, y)` with points all round the lens, fractions of its half axes from the centre,
/// up to `reach`.
template <class Check>
void ForPointsAllRound(double reach, Check&& check) {
    for (const double part : {0.02, 0.2, 0.45, 0.7, 0.9, 0.999}) {
        for (int degrees = 0; degrees < 360; degrees += 15) {
            const double angle = RadiansOf(degrees + 1.0);
            ASSERT_NO_FATAL_FAILURE(
                check(part * reach * std::cos(angle), part * reach * std::sin(angle)));
        }
    }
}

class VCamAiming : public testing::TestWithParam<PixelFormat> {};

// The eye is a hundredth off the centre, by which all angles off the axis grow.
TEST_P(VCamAiming, PutsAnyPointOfACeilingOrTableInTheMiddle) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        for (const LensRadii& radii : kLenses) {
            AimedCamera camera(mount, GetParam(), radii);
            const PicturePoint centre = camera.LensPoint(0.0, 0.0);
            for (const float zoom : kZooms) {
                ForPointsAllRound(LimitAt(zoom) / 90.0, [&](double x, double y) {
                    const PicturePoint point = camera.LensPoint(x, y);
                    ASSERT_LE(Distance(camera.MiddleAimedAt(point, zoom), point),
                              0.01 * Distance(point, centre) + camera.Tolerance())
                        << "mount " << mount << ", zoom " << zoom << ", at " << x << ", " << y;
                });
            }
        }
    }
}

TEST_P(VCamAiming, BeyondTheLimitStopsOnTheWayToThePoint) {
    for (const MountType mount : {MountTypeCeiling, MountTypeTable}) {
        AimedCamera camera(mount, GetParam(), {0.5F, 0.5F});
        for (const float zoom : kZooms) {
            const double limit = LimitAt(zoom) / 90.0;
            for (int degrees = 0; degrees < 360; degrees += 30) {
                const double x = std::cos(RadiansOf(degrees));
                const double y = std::sin(RadiansOf(degrees));
                const PicturePoint nearest = camera.LensPoint(limit * x, limit * y);
                const PicturePoint shown = camera.MiddleAimedAt(camera.LensPoint(x, y), zoom);
                EXPECT_LE(Distance(shown, nearest),
                          0.01 * Distance(nearest, camera.LensPoint(0.0, 0.0)) + camera.Tolerance())
                    << "mount " << mount << ", zoom " << zoom << ", " << degrees << " degrees";
            }
        }
    }
}

/// Where a wall camera that reads pan and tilt evenly off the lens image looks instead, in
/// fractions of the lens's half axes.
struct WallScale {
    WallScale(double x, double y, const VCamFrame& frame) {
        const ViewAxes axes = AxesOf(MountTypeWall, 90.0 * x, -90.0 * y);
        const double aside = std::hypot(axes.forward.x, axes.forward.y);
        const double radius = (1.0 + static_cast<double>(frame.eyeZ)) *
                              std::atan2(aside, -axes.forward.z) / RadiansOf(90.0);
        lensX = aside > 0.0 ? radius * axes.forward.x / aside : 0.0;
        lensY = aside > 0.0 ? -radius * axes.forward.y / aside : 0.0;
    }

    double lensX;
    double lensY;
};

// Pan and tilt of the whole lens square, limit by limit.
template <class Check>
void ForWallPoints(float zoom, Check&& check) {
    constexpr int kSteps = 6;
    const double limit = 0.999 * LimitAt(zoom) / 90.0;
    for (int i = -kSteps; i <= kSteps; ++i) {
        for (int j = -kSteps; j <= kSteps; ++j) {
            const double x = limit * (i + 0.1) / (kSteps + 0.1);
            const double y = limit * (j + 0.1) / (kSteps + 0.1);
            if (std::hypot(x, y) < 1.0) {
                ASSERT_NO_FATAL_FAILURE(check(x, y)) << "at " << x << ", " << y;
            }
        }
    }
}

TEST_P(VCamAiming, OfAWallCameraLooksWhereItsEvenScaleLeads) {
    for (const LensRadii& radii : kLenses) {
        AimedCamera camera(MountTypeWall, GetParam(), radii);
        for (const float zoom : kZooms) {
            ForWallPoints(zoom, [&](double x, double y) {
                const WallScale scale(x, y, camera.Frame());
                ASSERT_LE(Distance(camera.MiddleAimedAt(camera.LensPoint(x, y), zoom),
                                   camera.LensPoint(scale.lensX, scale.lensY)),
                          camera.Tolerance())
                    << "zoom " << zoom;
            });
        }
    }
}

// The scale takes pan for a bearing and tilt for a height, each a whole quarter turn to the rim,
// while the lens counts the angle off its axis: at 45 and 45 degrees it looks 60 degrees off the
// axis instead of 64, and too high. Worked out over all angles up to the zoom's limit inside the
// lens, the eye's hundredth included, it is off by at most these parts of the lens's longer axis.
TEST_P(VCamAiming, OfAWallCameraIsOffByWhatItsEvenScaleAllows) {
    constexpr double kLargestParts[] = {0.0610, 0.1148, 0.1893};
    for (const LensRadii& radii : kLenses) {
        AimedCamera camera(MountTypeWall, GetParam(), radii);
        const PicturePoint corner = camera.LensPoint(1.0, 1.0);
        const PicturePoint opposite = camera.LensPoint(-1.0, -1.0);
        const double longerAxis =
            std::max(corner.column - opposite.column, corner.row - opposite.row);
        for (std::size_t i = 0; i < 3; ++i) {
            ForWallPoints(kZooms[i], [&](double x, double y) {
                const PicturePoint point = camera.LensPoint(x, y);
                ASSERT_LE(Distance(camera.MiddleAimedAt(point, kZooms[i]), point),
                          kLargestParts[i] * longerAxis + camera.Tolerance())
                    << "zoom " << kZooms[i];
            });
        }
    }
}

TEST_P(VCamAiming, OfAWallCameraIsRightAlongBothAxes) {
    for (const LensRadii& radii : kLenses) {
        AimedCamera camera(MountTypeWall, GetParam(), radii);
        const PicturePoint centre = camera.LensPoint(0.0, 0.0);
        for (const float zoom : kZooms) {
            for (const double part : {-0.999, -0.6, -0.25, 0.1, 0.5, 0.999}) {
                const double along = part * LimitAt(zoom) / 90.0;
                for (const PicturePoint& point :
                     {camera.LensPoint(along, 0.0), camera.LensPoint(0.0, along)}) {
                    EXPECT_LE(Distance(camera.MiddleAimedAt(point, zoom), point),
                              0.01 * Distance(point, centre) + camera.Tolerance())
                        << "zoom " << zoom << ", at " << part;
                }
            }
        }
    }
}

TEST_P(VCamAiming, WithAFieldOfViewOfAQuarterTurnIsZoomTwo) {
    for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
        AimedCamera camera(mount, GetParam(), {0.45F, 0.31F});
        const PicturePoint point = camera.LensPoint(0.2, -0.3);
        float pan = 0.0F;
        float tilt = 0.0F;
        float zoom = 0.0F;
        ASSERT_EQ(
            camera.Camera().CvtXYToVCamPanTiltZoom(camera.FractionX(point), camera.FractionY(point),
                                                   1.57079637F, pan, tilt, zoom),
            kResultOk);
        EXPECT_EQ(zoom, 2.0F);
        const PicturePoint expected = camera.MiddleAimedAt(point, 2.0F);
        camera.Camera().SetAbsolutePTZ(0.0F, 0.0F, 1.0F);
        ASSERT_EQ(camera.Camera().SetAbsolutePTZ(pan, tilt, zoom), kResultOk);
        EXPECT_EQ(Distance(camera.MiddleShown(), expected), 0.0) << "mount " << mount;
    }
}

INSTANTIATE_TEST_SUITE_P(, VCamAiming, testing::Values(PixelFormatRGB24, PixelFormatRGB32));

}  // namespace
