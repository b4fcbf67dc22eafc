#include <memory>
#include <type_traits>

#include "KivFisheyeCamera.h"
#include "PanoramaScenes.h"
#include "VCamScenes.h"

using namespace KivFisheyeLib;

ResultCode CKivFisheyeCamera::CScene::SetAbsolutePTZ(float pan, float tilt, float zoom) {
    return doSetAbsolutePTZ(pan, tilt, zoom, false);
}

ResultCode CKivFisheyeCamera::CScene::SetRelativePTZ(float pan, float tilt, float zoom) {
    if (pan == 0.0F && tilt == 0.0F && zoom == 0.0F) {
        return kResultNoChange;
    }
    return doSetAbsolutePTZ(m_camera->m_pan + pan, m_camera->m_tilt + tilt, m_camera->m_zoom + zoom,
                            zoom < 0.0F);
}

namespace SceneNS {

namespace {

using ScenePointer = std::unique_ptr<CKivFisheyeCamera::CScene>;

/// What a mount that has no scene for a view names instead.
struct NoScene;

template <class Scene>
ScenePointer MakeScene(CKivFisheyeCamera* camera, VideoFrameInfo* target) {
    if constexpr (std::is_same_v<Scene, NoScene>) {
        return nullptr;
    } else {
        return std::make_unique<Scene>(camera, target);
    }
}

/// One of a mount's scenes, by the camera's view.
template <class VCamScene, class DualPanoramaScene, class FullPanoramaScene>
ScenePointer SceneOfView(CKivFisheyeCamera* camera, VideoFrameInfo* target) {
    switch (camera->m_viewType) {
        case ViewTypeVCam:
            return MakeScene<VCamScene>(camera, target);
        case ViewTypeDualPanorama:
            return MakeScene<DualPanoramaScene>(camera, target);
        case ViewTypeFullPanorama:
            return MakeScene<FullPanoramaScene>(camera, target);
    }
    return nullptr;
}

}  // namespace

ScenePointer CreateScene(CKivFisheyeCamera* camera, VideoFrameInfo* target) {
    switch (camera->m_mountType) {
        case MountTypeWall:
            return SceneOfView<CWallVCamScene, NoScene, CWallFullPanoramaScene>(camera, target);
        case MountTypeCeiling:
            return SceneOfView<CCeilingVCamScene, CCeilingDualPanoramaScene,
                               CCeilingFullPanoramaScene>(camera, target);
        case MountTypeTable:
            return SceneOfView<CTableVCamScene, CTableDualPanoramaScene, CTableFullPanoramaScene>(
                camera, target);
    }
    return nullptr;
}

}  // namespace SceneNS
