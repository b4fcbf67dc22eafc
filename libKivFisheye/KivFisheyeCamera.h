#ifndef KIVFISHEYE_CAMERA_H
#define KIVFISHEYE_CAMERA_H

#include <memory>

#include "CameraOutlines.h"
#include "KivFisheyeLib.h"
#include "ObjectLock.h"

/// The object behind a context. It keeps what the client told it and one scene for the mount and
/// view, tells the scene what changed, and has it convert. All of that happens under the object's
/// lock.
class CKivFisheyeCamera : public CObjectRootT<CMultiThreadModel>,
                          public IKivFisheyeCamera,
                          public IKivFisheyeROIImpl<CKivFisheyeCamera>,
                          public IKivFisheyeDewarpBoundaryImpl<CKivFisheyeCamera> {
public:
    class CScene;

    CKivFisheyeCamera();
    ~CKivFisheyeCamera() override;
    CKivFisheyeCamera(const CKivFisheyeCamera&) = delete;
    CKivFisheyeCamera& operator=(const CKivFisheyeCamera&) = delete;

    ResultCode IsPixelFormatAccepted(KivFisheyeLib::PixelFormat format) override;
    ResultCode SetInputVideoParams(const KivFisheyeLib::VideoFrameInfo& info,
                                   KivFisheyeLib::PixelFormat format) override;
    ResultCode SetOutputVideoParams(const KivFisheyeLib::VideoFrameInfo& info) override;
    ResultCode SetMountType(KivFisheyeLib::MountType mount) override;
    ResultCode GetMountType(KivFisheyeLib::MountType* mount) override;
    ResultCode SetViewType(KivFisheyeLib::ViewType view) override;
    ResultCode GetViewType(KivFisheyeLib::ViewType* view) override;
    ResultCode SetMountAndViewType(KivFisheyeLib::MountType mount,
                                   KivFisheyeLib::ViewType view) override;
    ResultCode GetMountAndViewType(KivFisheyeLib::MountType* mount,
                                   KivFisheyeLib::ViewType* view) override;
    ResultCode GetRecommendOutputVideoSize(unsigned int* width, unsigned int* height) override;
    ResultCode GetRecommendOutputVideoRatio(float* ratio) override;
    ResultCode GetRecommendOutputVideoRatio(unsigned int width, unsigned int height,
                                            KivFisheyeLib::MountType mount,
                                            KivFisheyeLib::ViewType view,
                                            const KivFisheyeLib::DewarpParams& params,
                                            float* ratio) override;
    ResultCode SetAbsolutePTZ(float pan, float tilt, float zoom) override;
    ResultCode SetRelativePTZ(float pan, float tilt, float zoom) override;
    ResultCode GetPTZ(float* pan, float* tilt, float* zoom) override;
    ResultCode SetDewarpParams(const KivFisheyeLib::DewarpParams& params) override;
    ResultCode GetDewarpParams(KivFisheyeLib::DewarpParams* params) override;
    ResultCode Process(unsigned long long frameTag) override;
    ResultCode Snapshot(unsigned char** block) override;
    ResultCode FreeSnapshotMemory(unsigned char* block) override;
    ResultCode CvtXYToVCamPanTilt(float x, float y, float& pan, float& tilt) override;
    ResultCode CvtXYToVCamPanTiltZoom(float x, float y, float fieldOfView, float& pan, float& tilt,
                                      float& zoom) override;

    ResultCode GetVCamROI(float* points, int count) override;

    // The scenes read and write these. Those that an operation without a lock reads are stored
    // through RelaxedAccess.h.
    KivFisheyeLib::MountType m_mountType = KivFisheyeLib::MountTypeWall;
    KivFisheyeLib::ViewType m_viewType = KivFisheyeLib::ViewTypeVCam;
    KivFisheyeLib::VideoFrameInfo m_inputInfo{};
    KivFisheyeLib::VideoFrameInfo m_outputInfo{};
    KivFisheyeLib::PixelFormat m_pixelFormat = KivFisheyeLib::PixelFormatRGB32;
    float m_pan = 0.0F;   // degrees
    float m_tilt = 0.0F;  // degrees
    float m_zoom = 1.0F;
    KivFisheyeLib::DewarpParams m_dewarpParams{0.5F, 0.5F, 45.0F, 0.0F};
    std::unique_ptr<CScene> m_scene;  // null where no scene serves the mount and view

    // The virtual camera's view at zoom 1.
    float m_vcamFieldOfView = 90.0F;  // degrees
    float m_vcamEyeX = 0.0F;
    float m_vcamEyeY = 0.0F;
    float m_vcamEyeZ = 1.0F;
    float m_vcamNear = 1.0F;
    float m_vcamFar = 4.0F;

private:
    using Lock = CObjectLockT<CMultiThreadModel>;

    void xCreateScene();
    void xMakeScene();
    void xTellScene(void (CScene::*event)());

    // Memory ran out while the scene or its table was made. The next setter makes it, also one that
    // changes nothing.
    bool m_buildFailed = false;
};

/// One mount and one view bound to one conversion. A scene reads the camera's members anew for
/// every frame and keeps only what its converter prepared.
class CKivFisheyeCamera::CScene {
public:
    virtual ~CScene() = default;
    CScene(const CScene&) = delete;
    CScene& operator=(const CScene&) = delete;

    /// A frame's record or the pixel format was set.
    virtual void OnVideoParamsChanged() = 0;
    /// The lens parameters changed.
    virtual void OnDewarpParamsChanged() {}
    /// Converts one frame.
    virtual ResultCode Process(unsigned long long) { return kResultOk; }
    virtual ResultCode SetAbsolutePTZ(float pan, float tilt, float zoom);
    virtual ResultCode SetRelativePTZ(float pan, float tilt, float zoom);
    /// Stores in the camera what becomes of the angles and the zoom in this scene.
    virtual ResultCode doSetAbsolutePTZ(float pan, float tilt, float zoom, bool zoomingOut) = 0;

protected:
    /// Output goes to `target`, or to the camera's own output frame when that is null.
    CScene(CKivFisheyeCamera* camera, KivFisheyeLib::VideoFrameInfo* target)
        : m_camera(camera), m_target(target != nullptr ? target : &camera->m_outputInfo) {}

    CKivFisheyeCamera* m_camera;
    KivFisheyeLib::VideoFrameInfo* m_target;
};

namespace SceneNS {

/// Makes the scene for the camera's mount and view, ready to convert; null where there is none.
std::unique_ptr<CKivFisheyeCamera::CScene> CreateScene(CKivFisheyeCamera* camera,
                                                       KivFisheyeLib::VideoFrameInfo* target);

}  // namespace SceneNS

#endif
