#include "support/CameraStorm.h"

#include <gtest/gtest.h>

#include <cstring>
#include <tuple>

#include "support/OutlineOperations.h"

using namespace KivFisheyeLib;

namespace {

constexpr auto kNoMount = static_cast<MountType>(7);
constexpr MountType kMounts[] = {MountTypeWall, MountTypeCeiling, MountTypeTable, kNoMount};
constexpr ViewType kViews[] = {ViewTypeVCam, ViewTypeDualPanorama, ViewTypeFullPanorama};

/// The bytes of all of these, one after the other. None of them has padding.
template <class... Values>
CameraAnswer Answer(const Values&... values) {
    CameraAnswer answer;
    (answer.append(reinterpret_cast<const char*>(&values), sizeof values), ...);
    return answer;
}

CameraOrders Orders(int mount, int view) {
    CameraOrders orders;
    orders.mount = mount;
    orders.view = view;
    return orders;
}

/// A frame with the lock held from before it is converted until it is copied, so that no other
/// thread converts into the same memory.
CameraAnswer ConvertUnderLock(CKivFisheyeCamera& camera) {
    const CObjectLockT<CMultiThreadModel> lock(&camera);
    const VideoFrameInfo& output = camera.m_outputInfo;
    const std::size_t bytes = std::size_t{output.stride} * output.height;
    std::memset(output.buffer, 0xCD, bytes);
    CameraAnswer answer = Answer(camera.Process(0));
    answer.append(reinterpret_cast<const char*>(output.buffer), bytes);
    return answer;
}

}  // namespace

bool CameraPose::operator<(const CameraPose& other) const {
    return std::tie(mount, view, angles) < std::tie(other.mount, other.view, other.angles);
}

CameraPose PoseOf(const CKivFisheyeCamera& camera) {
    return {camera.m_mountType,
            camera.m_viewType,
            {camera.m_pan, camera.m_tilt, camera.m_zoom, camera.m_vcamEyeZ, camera.m_vcamNear,
             camera.m_vcamFar, camera.m_vcamFieldOfView}};
}

void SetPose(CKivFisheyeCamera& camera, const CameraPose& pose) {
    std::tie(camera.m_pan, camera.m_tilt, camera.m_zoom, camera.m_vcamEyeZ, camera.m_vcamNear,
             camera.m_vcamFar, camera.m_vcamFieldOfView) = std::tuple_cat(pose.angles);
    EXPECT_EQ(camera.SetMountAndViewType(pose.mount, pose.view), kResultOk);
}

void CameraOrders::Add(const CameraOrders& later) {
    const auto add = [](int& last, int next) { last = next >= 0 ? next : last; };
    add(input, later.input);
    add(output, later.output);
    add(lens, later.lens);
    add(mount, later.mount);
    add(view, later.view);
}

ResultCode ResultIn(const CameraAnswer& answer) {
    ResultCode result = 0;
    std::memcpy(&result, answer.data(), sizeof result);
    return result;
}

CameraStorm::CameraStorm()
    : m_inputs{ClientFrame::OfCoordinates(24, 20, kFormats[0]),
               ClientFrame::OfCoordinates(17, 23, kFormats[1])},
      m_outputs{ClientFrame(24, 6, kFormats[0]), ClientFrame(16, 9, kFormats[1])} {
    AddSettersOfFrames();
    AddSettersOfPoses();
    AddGetters();
    AddRecommendations();
    AddPictures();
    AddOutlines();
}

CameraStorm::~CameraStorm() {
    CKivFisheyeCamera().FreeSnapshotMemory(m_block);
}

template <class Call>
void CameraStorm::Add(const std::string& name, Kind kind, Call call, const CameraOrders& orders) {
    m_operations.push_back({name, kind, call, orders});
}

void CameraStorm::AddSettersOfFrames() {
    for (int i = 0; i < 2; ++i) {
        const auto index = static_cast<std::size_t>(i);
        CameraOrders orders[3];
        orders[0].input = i;
        orders[1].output = i;
        orders[2].lens = i;
        const VideoFrameInfo input = m_inputs.at(index).record;
        const VideoFrameInfo output = m_outputs.at(index).record;
        Add(
            "SetInputVideoParams", Kind::Setter,
            [=](auto& camera) { return Answer(camera.SetInputVideoParams(input, kFormats[i])); },
            orders[0]);
        Add(
            "SetOutputVideoParams", Kind::Setter,
            [=](auto& camera) { return Answer(camera.SetOutputVideoParams(output)); }, orders[1]);
        Add(
            "SetDewarpParams", Kind::Setter,
            [i](auto& camera) { return Answer(camera.SetDewarpParams(kLenses[i])); }, orders[2]);
    }
}

void CameraStorm::AddSettersOfPoses() {
    for (const MountType mount : kMounts) {
        Add(
            "SetMountType", Kind::Setter,
            [=](auto& camera) { return Answer(camera.SetMountType(mount)); },
            Orders(static_cast<int>(mount), -1));
    }
    for (const ViewType view : kViews) {
        Add(
            "SetViewType", Kind::Setter,
            [=](auto& camera) { return Answer(camera.SetViewType(view)); },
            Orders(-1, static_cast<int>(view)));
        for (const MountType mount : {MountTypeWall, MountTypeCeiling, MountTypeTable}) {
            Add(
                "SetMountAndViewType", Kind::Setter,
                [=](auto& camera) { return Answer(camera.SetMountAndViewType(mount, view)); },
                Orders(static_cast<int>(mount), static_cast<int>(view)));
        }
    }
    // Half a turn, and zooms that stay or go to their end: few poses come of it.
    static constexpr float kAims[][3] = {{0.0F, 30.0F, 0.5F},
                                         {0.0F, 30.0F, 4.0F},
                                         {180.0F, 0.0F, 0.5F},
                                         {180.0F, 0.0F, 4.0F},
                                         {180.0F, 0.0F, 1.0F}};
    for (const auto& aim : kAims) {
        Add("SetAbsolutePTZ", Kind::Setter,
            [&aim](auto& camera) { return Answer(camera.SetAbsolutePTZ(aim[0], aim[1], aim[2])); });
    }
    for (const float zoom : {0.0F, 20.0F}) {
        Add("SetRelativePTZ", Kind::Setter,
            [=](auto& camera) { return Answer(camera.SetRelativePTZ(0.0F, 0.0F, zoom)); });
    }
}

void CameraStorm::AddGetters() {
    Add("IsPixelFormatAccepted", Kind::QuestionWithoutLock, [](auto& camera) {
        return Answer(camera.IsPixelFormatAccepted(PixelFormatRGB24),
                      camera.IsPixelFormatAccepted(PixelFormatBottomUpRGB32));
    });
    Add("GetMountType", Kind::Question, [](auto& camera) {
        auto mount = kNoMount;
        const ResultCode result = camera.GetMountType(&mount);
        return Answer(result, mount);
    });
    Add("GetViewType", Kind::Question, [](auto& camera) {
        auto view = ViewTypeVCam;
        const ResultCode result = camera.GetViewType(&view);
        return Answer(result, view);
    });
    Add("GetMountAndViewType", Kind::Question, [](auto& camera) {
        auto mount = kNoMount;
        auto view = ViewTypeVCam;
        const ResultCode result = camera.GetMountAndViewType(&mount, &view);
        return Answer(result, mount, view);
    });
    Add("GetPTZ", Kind::Question, [](auto& camera) {
        float ptz[3] = {};
        const ResultCode result = camera.GetPTZ(&ptz[0], &ptz[1], &ptz[2]);
        return Answer(result, ptz);
    });
    Add("GetDewarpParams", Kind::Question, [](auto& camera) {
        DewarpParams lens{};
        const ResultCode result = camera.GetDewarpParams(&lens);
        return Answer(result, lens);
    });
}

void CameraStorm::AddRecommendations() {
    Add("GetRecommendOutputVideoSize", Kind::Question, [](auto& camera) {
        unsigned int size[2] = {};
        const ResultCode result = camera.GetRecommendOutputVideoSize(&size[0], &size[1]);
        return Answer(result, size);
    });
    Add("GetRecommendOutputVideoRatio", Kind::QuestionWithoutLock, [](auto& camera) {
        float ratio = 0.0F;
        const ResultCode result = camera.GetRecommendOutputVideoRatio(&ratio);
        return Answer(result, ratio);
    });
    Add("GetRecommendOutputVideoRatio, given", Kind::QuestionWithoutLock, [](auto& camera) {
        float ratio = 0.0F;
        const ResultCode result = camera.GetRecommendOutputVideoRatio(
            24, 20, MountTypeCeiling, ViewTypeDualPanorama, kLenses[1], &ratio);
        return Answer(result, ratio);
    });
    Add("CvtXYToVCamPanTilt", Kind::QuestionWithoutLock, [](auto& camera) {
        float aim[2] = {};
        const ResultCode result = camera.CvtXYToVCamPanTilt(0.25F, 0.625F, aim[0], aim[1]);
        return Answer(result, aim);
    });
    Add("CvtXYToVCamPanTiltZoom", Kind::QuestionWithoutLock, [](auto& camera) {
        float aim[3] = {};
        const ResultCode result =
            camera.CvtXYToVCamPanTiltZoom(0.75F, 0.25F, 1.0F, aim[0], aim[1], aim[2]);
        return Answer(result, aim);
    });
}

void CameraStorm::AddPictures() {
    Add("Process", Kind::Question, [](auto& camera) { return Answer(camera.Process(0)); });
    Add("Process, seen", Kind::Question, ConvertUnderLock);
    Add("Snapshot", Kind::Question, [this](auto& camera) { return TakeSnapshot(camera); });
}

CameraAnswer CameraStorm::TakeSnapshot(CKivFisheyeCamera& camera) {
    unsigned char* block = nullptr;
    CameraAnswer answer = Answer(camera.Snapshot(&block));
    if (block != nullptr) {
        SnapshotHeader header{};
        std::memcpy(&header, block, sizeof header);
        answer.append(reinterpret_cast<const char*>(block), sizeof header + header.imageSize);
    }
    unsigned char* const earlier = m_block.exchange(block);
    EXPECT_EQ(camera.FreeSnapshotMemory(earlier), earlier == nullptr ? kResultNoChange : kResultOk);
    return answer;
}

void CameraStorm::AddOutlines() {
    for (const OutlineOperation& operation : kOutlineOperations) {
        Add(operation.name, Kind::Question, [operation](auto& camera) {
            alignas(16) float first[32] = {};
            alignas(16) float second[32] = {};
            const ResultCode result = operation.call(camera, first, 16, second, 16);
            return Answer(result, first, second);
        });
    }
}

std::set<CameraPose> CameraStorm::ReachablePoses() const {
    CKivFisheyeCamera camera;
    std::set<CameraPose> poses{PoseOf(camera)};
    std::vector<CameraPose> fresh(poses.begin(), poses.end());
    while (!fresh.empty()) {
        const CameraPose pose = fresh.back();
        fresh.pop_back();
        for (const CameraOperation& operation : m_operations) {
            if (operation.kind == Kind::Setter && operation.orders.IsAboutPose()) {
                SetPose(camera, pose);
                operation.call(camera);
                if (poses.insert(PoseOf(camera)).second) {
                    fresh.push_back(PoseOf(camera));
                }
            }
        }
    }
    return poses;
}

void CameraStorm::Tell(CKivFisheyeCamera& camera, const CameraPose& pose, int input, int output,
                       int lens) {
    const auto in = static_cast<std::size_t>(input);
    const auto out = static_cast<std::size_t>(output);
    camera.SetInputVideoParams(m_inputs.at(out).record, kFormats[output]);
    camera.SetOutputVideoParams(m_outputs.at(out).record);
    camera.SetInputVideoParams(m_inputs.at(in).record, kFormats[input]);
    camera.SetDewarpParams(kLenses[lens]);
    SetPose(camera, pose);
}

CameraOrders CameraStorm::OrdersIn(const CKivFisheyeCamera& camera) const {
    CameraOrders orders;
    for (int i = 0; i < 2; ++i) {
        const auto index = static_cast<std::size_t>(i);
        if (IsSameRecord(camera.m_inputInfo, m_inputs.at(index).record) &&
            camera.m_pixelFormat == kFormats[i]) {
            orders.input = i;
        }
        if (IsSameRecord(camera.m_outputInfo, m_outputs.at(index).record)) {
            orders.output = i;
        }
        if (Answer(camera.m_dewarpParams) == Answer(kLenses[i])) {
            orders.lens = i;
        }
    }
    orders.mount = static_cast<int>(camera.m_mountType);
    orders.view = static_cast<int>(camera.m_viewType);
    return orders;
}
