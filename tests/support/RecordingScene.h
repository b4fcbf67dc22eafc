#ifndef KIVFISHEYE_TESTS_RECORDING_SCENE_H
#define KIVFISHEYE_TESTS_RECORDING_SCENE_H

#include <functional>
#include <memory>
#include <vector>

#include "KivFisheyeCamera.h"

/// What a scene was asked to do.
struct SceneCalls {
    struct Ptz {
        float pan;
        float tilt;
        float zoom;
        bool zoomingOut;
    };

    int videoChanges = 0;
    int dewarpChanges = 0;
    std::vector<unsigned long long> frameTags;
    std::vector<Ptz> ptz;
    bool isDeleted = false;

    /// What `Process` and `doSetAbsolutePTZ` answer.
    ResultCode result = kResultOk;
    /// What happens inside each of the four calls.
    std::function<void()> inside = [] {};
};

/// A scene that notes its calls and converts nothing.
class RecordingScene : public CKivFisheyeCamera::CScene {
public:
    RecordingScene(CKivFisheyeCamera* camera, SceneCalls* calls)
        : CScene(camera, nullptr), m_calls(calls) {}
    ~RecordingScene() override { m_calls->isDeleted = true; }

    void OnVideoParamsChanged() override {
        ++m_calls->videoChanges;
        m_calls->inside();
    }

    void OnDewarpParamsChanged() override {
        ++m_calls->dewarpChanges;
        m_calls->inside();
    }

    ResultCode Process(unsigned long long frameTag) override {
        m_calls->frameTags.push_back(frameTag);
        m_calls->inside();
        return m_calls->result;
    }

    ResultCode doSetAbsolutePTZ(float pan, float tilt, float zoom, bool zoomingOut) override {
        m_calls->ptz.push_back({pan, tilt, zoom, zoomingOut});
        m_calls->inside();
        return m_calls->result;
    }

private:
    SceneCalls* m_calls;
};

/// A camera whose scene notes its calls. The camera stands for no real mount and view then; it gets
/// a scene of its own again by the next change of either.
struct RecordedCamera {
    RecordedCamera() { camera.m_scene = std::make_unique<RecordingScene>(&camera, &calls); }

    SceneCalls calls;
    CKivFisheyeCamera camera;
};

#endif
