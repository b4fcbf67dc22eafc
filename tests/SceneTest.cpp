#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <typeinfo>

#include "KivFisheyeCamera.h"
#include "VCamScenes.h"
#include "support/PanoramaCamera.h"

using namespace KivFisheyeLib;

namespace {

constexpr auto kNoMount = static_cast<MountType>(7);
constexpr auto kNoView = static_cast<ViewType>(3);
constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

/// A scene with nothing but what it must have.
class PlainScene : public CKivFisheyeCamera::CScene {
public:
    PlainScene(CKivFisheyeCamera* camera, VideoFrameInfo* target) : CScene(camera, target) {}
    void OnVideoParamsChanged() override {}
    ResultCode doSetAbsolutePTZ(float, float, float, bool) override { return kResultOk; }
    const VideoFrameInfo* Target() const { return m_target; }
    const CKivFisheyeCamera* Camera() const { return m_camera; }
};

TEST(Scene, ConvertsNothingByItself) {
    CKivFisheyeCamera camera;
    PlainScene scene(&camera, nullptr);
    EXPECT_EQ(scene.Process(1), kResultOk);
    scene.OnDewarpParamsChanged();
}

TEST(Scene, ServesTheCamerasOutputUnlessToldAnother) {
    CKivFisheyeCamera camera;
    VideoFrameInfo record{};
    EXPECT_EQ(PlainScene(&camera, nullptr).Target(), &camera.m_outputInfo);
    EXPECT_EQ(PlainScene(&camera, &record).Target(), &record);
    EXPECT_EQ(PlainScene(&camera, &record).Camera(), &camera);
}

/// The scene for a mount and view; null where there is none.
const std::type_info* SceneTypeOf(std::uint32_t mount, std::uint32_t view) {
    static const std::type_info* const kScenes[3][3] = {
        {&typeid(SceneNS::CWallVCamScene), nullptr, &typeid(SceneNS::CWallFullPanoramaScene)},
        {&typeid(SceneNS::CCeilingVCamScene), &typeid(SceneNS::CCeilingDualPanoramaScene),
         &typeid(SceneNS::CCeilingFullPanoramaScene)},
        {&typeid(SceneNS::CTableVCamScene), &typeid(SceneNS::CTableDualPanoramaScene),
         &typeid(SceneNS::CTableFullPanoramaScene)}};
    return mount < 3 && view < 3 ? kScenes[mount][view] : nullptr;
}

TEST(SceneFactory, ServesEveryPairButADualPanoramaOfAWall) {
    for (const std::uint32_t mount : {0U, 1U, 2U, 3U, 7U, 0xFFFFFFFFU}) {
        for (const std::uint32_t view : {0U, 1U, 2U, 3U, 0xFFFFFFFFU}) {
            CKivFisheyeCamera camera;
            camera.m_mountType = static_cast<MountType>(mount);
            camera.m_viewType = static_cast<ViewType>(view);
            const auto scene = SceneNS::CreateScene(&camera, nullptr);
            const CKivFisheyeCamera::CScene* const made = scene.get();
            const std::type_info* const expected = SceneTypeOf(mount, view);
            ASSERT_EQ(made != nullptr, expected != nullptr) << mount << ", " << view;
            if (made != nullptr) {
                EXPECT_EQ(typeid(*made), *expected) << mount << ", " << view;
            }
        }
    }
}

template <class Scene>
bool HasScene(const CKivFisheyeCamera& camera) {
    return dynamic_cast<Scene*>(camera.m_scene.get()) != nullptr;
}

TEST(SceneFactory, AChangeOfMountOrViewMakesTheSceneForIt) {
    CKivFisheyeCamera camera;
    EXPECT_TRUE(HasScene<SceneNS::CWallVCamScene>(camera));
    camera.SetMountType(MountTypeCeiling);
    EXPECT_TRUE(HasScene<SceneNS::CCeilingVCamScene>(camera));
    camera.SetViewType(ViewTypeFullPanorama);
    EXPECT_TRUE(HasScene<SceneNS::CCeilingFullPanoramaScene>(camera));
    camera.SetMountType(MountTypeTable);
    EXPECT_TRUE(HasScene<SceneNS::CTableFullPanoramaScene>(camera));
    camera.SetViewType(ViewTypeVCam);
    EXPECT_TRUE(HasScene<SceneNS::CTableVCamScene>(camera));
    camera.SetMountAndViewType(MountTypeCeiling, ViewTypeFullPanorama);
    EXPECT_TRUE(HasScene<SceneNS::CCeilingFullPanoramaScene>(camera));
    camera.SetMountType(MountTypeWall);
    EXPECT_TRUE(HasScene<SceneNS::CWallFullPanoramaScene>(camera));
    camera.SetViewType(ViewTypeVCam);
    EXPECT_TRUE(HasScene<SceneNS::CWallVCamScene>(camera));
    camera.SetMountAndViewType(MountTypeTable, ViewTypeDualPanorama);
    EXPECT_TRUE(HasScene<SceneNS::CTableDualPanoramaScene>(camera));
    camera.SetMountType(MountTypeCeiling);
    EXPECT_TRUE(HasScene<SceneNS::CCeilingDualPanoramaScene>(camera));
    camera.SetViewType(kNoView);
    EXPECT_EQ(camera.m_scene, nullptr);
    camera.SetMountAndViewType(kNoMount, ViewTypeFullPanorama);
    EXPECT_EQ(camera.m_scene, nullptr);
}

template <class Panorama>
class RingPanorama : public testing::Test {
protected:
    RingPanorama() {
        camera.SetMountAndViewType(Panorama::kMountType, Panorama::kView);
        camera.m_tilt = 20.0F;
        camera.m_zoom = 3.0F;
    }

    /// The pan that is stored when this one is set.
    float StoredPan(float pan) {
        camera.m_pan = 123.0F;
        EXPECT_EQ(camera.SetAbsolutePTZ(pan, 0.0F, 0.0F), kResultOk);
        return camera.m_pan;
    }

    CKivFisheyeCamera camera;
};

using RingPanoramas =
    testing::Types<CeilingPanorama<PixelFormatRGB32>, TablePanorama<PixelFormatRGB32>,
                   CeilingDualPanorama<PixelFormatRGB32>, TableDualPanorama<PixelFormatRGB32>>;
TYPED_TEST_SUITE(RingPanorama, RingPanoramas);

TYPED_TEST(RingPanorama, ThePanIsStoredAs0UpTo360) {
    EXPECT_EQ(this->StoredPan(0.0F), 0.0F);
    EXPECT_EQ(this->StoredPan(45.5F), 45.5F);
    EXPECT_EQ(this->StoredPan(359.75F), 359.75F);
    EXPECT_EQ(this->StoredPan(360.0F), 0.0F);
    EXPECT_EQ(this->StoredPan(370.0F), 10.0F);
    EXPECT_EQ(this->StoredPan(720.0F), 0.0F);
    EXPECT_EQ(this->StoredPan(725.0F), 5.0F);
    EXPECT_EQ(this->StoredPan(-90.0F), 270.0F);
    EXPECT_EQ(this->StoredPan(-450.0F), 270.0F);
    EXPECT_EQ(this->StoredPan(-0.25F), 359.75F);
    EXPECT_EQ(this->StoredPan(3.6e9F), 0.0F) << "10 million turns";
}

TYPED_TEST(RingPanorama, WholeTurnsBackwardAreStoredAsMinusZero) {
    EXPECT_TRUE(std::signbit(this->StoredPan(-0.0F)));
    EXPECT_TRUE(std::signbit(this->StoredPan(-720.0F)));
    EXPECT_EQ(this->StoredPan(-720.0F), 0.0F);
    EXPECT_FALSE(std::signbit(this->StoredPan(720.0F)));
}

TYPED_TEST(RingPanorama, ATinyNegativePanIsStoredAs360) {
    EXPECT_EQ(this->StoredPan(-1e-30F), 360.0F);
    EXPECT_EQ(this->StoredPan(-std::numeric_limits<float>::denorm_min()), 360.0F);
}

TYPED_TEST(RingPanorama, NanAndInfinityAreStoredAsNan) {
    EXPECT_TRUE(std::isnan(this->StoredPan(kNan)));
    EXPECT_TRUE(std::isnan(this->StoredPan(kInfinity)));
    EXPECT_TRUE(std::isnan(this->StoredPan(-kInfinity)));
}

TYPED_TEST(RingPanorama, RelativePanWrapsAround) {
    this->camera.m_pan = 350.0F;
    EXPECT_EQ(this->camera.SetRelativePTZ(20.0F, 0.0F, 0.0F), kResultOk);
    EXPECT_EQ(this->camera.m_pan, 10.0F);
    EXPECT_EQ(this->camera.SetRelativePTZ(-30.0F, 0.0F, 0.0F), kResultOk);
    EXPECT_EQ(this->camera.m_pan, 340.0F);
}

TYPED_TEST(RingPanorama, TiltAndZoomKeepTheirValues) {
    EXPECT_EQ(this->camera.SetAbsolutePTZ(10.0F, 70.0F, 9.0F), kResultOk);
    EXPECT_EQ(this->camera.SetRelativePTZ(10.0F, 70.0F, 9.0F), kResultOk);
    EXPECT_EQ(this->camera.SetRelativePTZ(0.0F, 0.0F, -1.0F), kResultOk);
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 0.0F;
    EXPECT_EQ(this->camera.GetPTZ(&pan, &tilt, &zoom), kResultOk);
    EXPECT_EQ(pan, 20.0F);
    EXPECT_EQ(tilt, 20.0F);
    EXPECT_EQ(zoom, 3.0F);
}

TYPED_TEST(RingPanorama, ThreeZeroDeltasLeaveEvenAnUnusualPanAlone) {
    this->camera.m_pan = 400.0F;
    EXPECT_EQ(this->camera.SetRelativePTZ(0.0F, 0.0F, 0.0F), kResultNoChange);
    EXPECT_EQ(this->camera.m_pan, 400.0F);
    EXPECT_EQ(this->camera.SetRelativePTZ(0.0F, 1.0F, 0.0F), kResultOk);
    EXPECT_EQ(this->camera.m_pan, 40.0F) << "any other delta brings it into its range";
}

TYPED_TEST(RingPanorama, AnglesNeedNoFrames) {
    EXPECT_EQ(this->camera.SetAbsolutePTZ(30.0F, 0.0F, 0.0F), kResultOk);
    EXPECT_EQ(this->camera.m_pan, 30.0F);
    EXPECT_EQ(this->camera.Process(0), kResultNullPointer);
}

TYPED_TEST(RingPanorama, TheSceneItselfIsNotReadyWithoutBothBuffers) {
    ASSERT_NE(this->camera.m_scene, nullptr);
    EXPECT_EQ(this->camera.m_scene->Process(0), kResultNotReady);

    const ClientFrame frame(8, 4, PixelFormatRGB32);
    ASSERT_EQ(this->camera.SetInputVideoParams(frame.record, PixelFormatRGB32), kResultOk);
    EXPECT_EQ(this->camera.m_scene->Process(0), kResultNotReady) << "the output is missing";

    CKivFisheyeCamera outputOnly;
    outputOnly.SetMountAndViewType(TypeParam::kMountType, TypeParam::kView);
    ASSERT_EQ(outputOnly.SetOutputVideoParams(frame.record), kResultOk);
    EXPECT_EQ(outputOnly.m_scene->Process(0), kResultNotReady) << "the input is missing";
    EXPECT_TRUE(frame.IsFilledWith(0));
}

TYPED_TEST(RingPanorama, ATargetWithoutABufferIsNotReady) {
    const ClientFrame frame(8, 4, PixelFormatRGB32);
    this->camera.SetInputVideoParams(frame.record, PixelFormatRGB32);
    this->camera.SetOutputVideoParams(frame.record);
    VideoFrameInfo target = frame.record;
    const auto scene = SceneNS::CreateScene(&this->camera, &target);
    target.buffer = nullptr;
    EXPECT_EQ(scene->Process(0), kResultNotReady);
}

}  // namespace
