#include "KivFisheyeCamera.h"
#include "instrset_detect.h"

namespace {

CKivFisheyeCamera* CameraOf(void* context) {
    return static_cast<CKivFisheyeCamera*>(context);
}

}  // namespace

void* CreateKivFisheyeCameraContext() {
    return new CKivFisheyeCamera;
}

void DeleteKivFisheyeCameraContext(void* context) {
    delete CameraOf(context);
}

IKivFisheyeCamera* GetCameraAPI(void* context) {
    return CameraOf(context);
}

IKivFisheyeROI* GetROIAPI(void* context) {
    return CameraOf(context);
}

IKivFisheyeDewarpBoundary* GetDewarpBoundaryAPI(void* context) {
    return CameraOf(context);
}

int GetCPUInstructionSet() {
    return GetCpuInstructionSet();
}
