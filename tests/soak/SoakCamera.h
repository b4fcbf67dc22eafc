#ifndef KIVFISHEYE_TESTS_SOAK_CAMERA_H
#define KIVFISHEYE_TESTS_SOAK_CAMERA_H

#include <array>
#include <cstdint>
#include <random>
#include <vector>

#include "KivFisheyeLib.h"

/// A context with small frames that is driven at random: every frame it turns, and now and then
/// everything else about it changes. Whatever it answers is looked at; `std::runtime_error` tells
/// of an answer that is wrong. Buffers are made once, so that nothing but the library asks for
/// memory.
class SoakCamera {
public:
    explicit SoakCamera(std::mt19937& engine);
    ~SoakCamera();
    SoakCamera(const SoakCamera&) = delete;
    SoakCamera& operator=(const SoakCamera&) = delete;

    /// Changes what chance says, and converts a frame.
    void NextFrame();

    /// Brings the context to a state that is always the same, and converts a frame.
    void Settle();

    /// Holds the next frame, in the present state, against one of a new context that was told the
    /// same, byte for byte.
    void CompareWithNewContext();

    /// Takes a snapshot and keeps it.
    void LoseSnapshot();

    const std::vector<unsigned char>& Output() const { return m_output; }

private:
    using Action = void (SoakCamera::*)();

    int Chance(int low, int high);
    float Chance(float low, float high);
    float Angle();
    void Create();
    void SetFrames();
    void Convert();
    KivFisheyeLib::VideoFrameInfo Frame(int width, int height,
                                        std::vector<unsigned char>& buffer) const;

    void Turn();
    void ChangeLens();
    void ChangeMountAndView();
    void ChangeMountThenView();
    void TakeSceneAway();
    void ChangeInput();
    void ChangeOutput();
    void TakeSnapshot();
    void TraceOutlines();
    void SetNonsense();
    void Recreate();

    std::mt19937& m_engine;
    void* m_context = nullptr;
    IKivFisheyeCamera* m_camera = nullptr;
    std::vector<unsigned char> m_input;
    std::vector<unsigned char> m_output;
    std::vector<unsigned char> m_expected;
    std::vector<float> m_points;
    KivFisheyeLib::PixelFormat m_format = KivFisheyeLib::PixelFormatRGB32;
    std::array<int, 2> m_inputSize{};
    std::array<int, 2> m_outputSize{};
    KivFisheyeLib::MountType m_mount = KivFisheyeLib::MountTypeWall;
    KivFisheyeLib::ViewType m_view = KivFisheyeLib::ViewTypeVCam;
    KivFisheyeLib::DewarpParams m_lens{};
};

#endif
