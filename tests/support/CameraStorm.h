#ifndef KIVFISHEYE_TESTS_CAMERA_STORM_H
#define KIVFISHEYE_TESTS_CAMERA_STORM_H

#include <array>
#include <atomic>
#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "KivFisheyeCamera.h"
#include "support/ClientFrame.h"

// Every operation of a camera's three interfaces, with arguments from short lists, so that a camera
// that is told nothing else has few states and each operation few answers.

/// A camera's mount and view with its angles and virtual camera.
struct CameraPose {
    KivFisheyeLib::MountType mount;
    KivFisheyeLib::ViewType view;
    std::array<float, 7> angles;

    bool operator<(const CameraPose& other) const;
};

CameraPose PoseOf(const CKivFisheyeCamera& camera);

/// Gives a camera this pose and the scene for it.
void SetPose(CKivFisheyeCamera& camera, const CameraPose& pose);

/// What a camera was told last, as indices into the lists, and numbers of mounts and views; -1
/// where it was not told.
struct CameraOrders {
    int input = -1;
    int output = -1;
    int lens = -1;
    int mount = -1;
    int view = -1;

    bool IsAboutPose() const { return input < 0 && output < 0 && lens < 0; }
    void Add(const CameraOrders& later);
};

/// Everything that an operation gives, as bytes: the result first, then what it wrote.
using CameraAnswer = std::string;
ResultCode ResultIn(const CameraAnswer& answer);

struct CameraOperation {
    enum class Kind { Setter, Question, QuestionWithoutLock };

    std::string name;
    Kind kind;
    std::function<CameraAnswer(CKivFisheyeCamera&)> call;
    CameraOrders orders;
};

/// The lists, and the operations that use them.
class CameraStorm {
public:
    static constexpr KivFisheyeLib::PixelFormat kFormats[2] = {KivFisheyeLib::PixelFormatRGB32,
                                                               KivFisheyeLib::PixelFormatRGB24};
    static constexpr KivFisheyeLib::DewarpParams kLenses[2] = {{0.5F, 0.5F, 45.0F, 0.0F},
                                                               {0.375F, 0.45F, 30.0F, 0.25F}};

    CameraStorm();
    CameraStorm(const CameraStorm&) = delete;
    CameraStorm& operator=(const CameraStorm&) = delete;
    ~CameraStorm();

    const std::vector<CameraOperation>& Operations() const { return m_operations; }

    /// Every pose that setters lead to from a new camera's.
    std::set<CameraPose> ReachablePoses() const;

    /// Tells a camera all of it. An output of one format beside an input of another is what is left
    /// when a client changes the input alone.
    void Tell(CKivFisheyeCamera& camera, const CameraPose& pose, int input, int output, int lens);

    /// Where in the lists a camera's present frames and lens are.
    CameraOrders OrdersIn(const CKivFisheyeCamera& camera) const;

private:
    using Kind = CameraOperation::Kind;

    void AddSettersOfFrames();
    void AddSettersOfPoses();
    void AddGetters();
    void AddRecommendations();
    void AddPictures();
    void AddOutlines();
    CameraAnswer TakeSnapshot(CKivFisheyeCamera& camera);

    template <class Call>
    void Add(const std::string& name, Kind kind, Call call, const CameraOrders& orders = {});

    std::array<ClientFrame, 2> m_inputs;
    std::array<ClientFrame, 2> m_outputs;
    std::vector<CameraOperation> m_operations;
    /// The last snapshot, for the thread that takes the next one to give back.
    std::atomic<unsigned char*> m_block{nullptr};
};

#endif
