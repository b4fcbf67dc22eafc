#include <KivFisheyeLib.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "ForeignClient.h"

using namespace KivFisheyeLib;

namespace {

float places[32];

/// Notes each call as its name and arguments. What leads into `places` is noted as its index there.
struct Calls {
    std::vector<std::string> notes;
    bool isDeleted = false;

    template <class... Arguments>
    ResultCode Note(const char* name, Arguments... arguments) {
        std::ostringstream note;
        note << name;
        ((note << ' ', Write(note, arguments)), ...);
        notes.push_back(note.str());
        return 100 + static_cast<ResultCode>(notes.size());
    }

private:
    template <class Value>
    static void Write(std::ostream& out, Value value) {
        out << value;
    }
    template <class Value>
    static void Write(std::ostream& out, Value* place) {
        const auto distance =
            reinterpret_cast<std::intptr_t>(place) - reinterpret_cast<std::intptr_t>(places);
        out << '[' << distance / static_cast<std::intptr_t>(sizeof(float)) << ']';
    }
    static void Write(std::ostream& out, const VideoFrameInfo& info) {
        out << info.width << ',' << info.height << ',' << info.stride << ',';
        Write(out, info.buffer);
    }
    static void Write(std::ostream& out, const DewarpParams& params) {
        out << params.radiusX << ',' << params.radiusY << ',' << params.wallViewAngle << ','
            << params.innerRadiusRatio;
    }
};

class NotedCamera : public IKivFisheyeCamera {
public:
    explicit NotedCamera(Calls* calls) : m_calls(calls) {}
    ~NotedCamera() override { m_calls->isDeleted = true; }

    ResultCode IsPixelFormatAccepted(PixelFormat format) override {
        return m_calls->Note("IsPixelFormatAccepted", format);
    }
    ResultCode SetInputVideoParams(const VideoFrameInfo& info, PixelFormat format) override {
        return m_calls->Note("SetInputVideoParams", info, format);
    }
    ResultCode SetOutputVideoParams(const VideoFrameInfo& info) override {
        return m_calls->Note("SetOutputVideoParams", info);
    }
    ResultCode SetMountType(MountType mount) override {
        return m_calls->Note("SetMountType", mount);
    }
    ResultCode GetMountType(MountType* mount) override {
        return m_calls->Note("GetMountType", mount);
    }
    ResultCode SetViewType(ViewType view) override { return m_calls->Note("SetViewType", view); }
    ResultCode GetViewType(ViewType* view) override { return m_calls->Note("GetViewType", view); }
    ResultCode SetMountAndViewType(MountType mount, ViewType view) override {
        return m_calls->Note("SetMountAndViewType", mount, view);
    }
    ResultCode GetMountAndViewType(MountType* mount, ViewType* view) override {
        return m_calls->Note("GetMountAndViewType", mount, view);
    }
    ResultCode GetRecommendOutputVideoSize(unsigned int* width, unsigned int* height) override {
        return m_calls->Note("GetRecommendOutputVideoSize", width, height);
    }
    ResultCode GetRecommendOutputVideoRatio(float* ratio) override {
        return m_calls->Note("GetRecommendOutputVideoRatio", ratio);
    }
    ResultCode GetRecommendOutputVideoRatio(unsigned int width, unsigned int height,
                                            MountType mount, ViewType view,
                                            const DewarpParams& params, float* ratio) override {
        return m_calls->Note("GetRecommendOutputVideoRatio", width, height, mount, view, params,
                             ratio);
    }
    ResultCode SetAbsolutePTZ(float pan, float tilt, float zoom) override {
        return m_calls->Note("SetAbsolutePTZ", pan, tilt, zoom);
    }
    ResultCode SetRelativePTZ(float pan, float tilt, float zoom) override {
        return m_calls->Note("SetRelativePTZ", pan, tilt, zoom);
    }
    ResultCode GetPTZ(float* pan, float* tilt, float* zoom) override {
        return m_calls->Note("GetPTZ", pan, tilt, zoom);
    }
    ResultCode SetDewarpParams(const DewarpParams& params) override {
        return m_calls->Note("SetDewarpParams", params);
    }
    ResultCode GetDewarpParams(DewarpParams* params) override {
        return m_calls->Note("GetDewarpParams", params);
    }
    ResultCode Process(unsigned long long frameTag) override {
        return m_calls->Note("Process", frameTag);
    }
    ResultCode Snapshot(unsigned char** block) override { return m_calls->Note("Snapshot", block); }
    ResultCode FreeSnapshotMemory(unsigned char* block) override {
        return m_calls->Note("FreeSnapshotMemory", block);
    }
    ResultCode CvtXYToVCamPanTilt(float x, float y, float& pan, float& tilt) override {
        return m_calls->Note("CvtXYToVCamPanTilt", x, y, &pan, &tilt);
    }
    ResultCode CvtXYToVCamPanTiltZoom(float x, float y, float fieldOfView, float& pan, float& tilt,
                                      float& zoom) override {
        return m_calls->Note("CvtXYToVCamPanTiltZoom", x, y, fieldOfView, &pan, &tilt, &zoom);
    }

private:
    Calls* m_calls;
};

class NotedOutlines : public IKivFisheyeROI {
public:
    explicit NotedOutlines(Calls* calls) : m_calls(calls) {}
    ~NotedOutlines() override { m_calls->isDeleted = true; }

    ResultCode GetVCamROI(float* points, int count) override {
        return m_calls->Note("GetVCamROI", points, count);
    }
    ResultCode GetDualPanoramaROI(float* first, int firstCount, float* second,
                                  int secondCount) override {
        return m_calls->Note("GetDualPanoramaROI", first, firstCount, second, secondCount);
    }
    ResultCode GetWallPanoramaROI(float* points, int count) override {
        return m_calls->Note("GetWallPanoramaROI", points, count);
    }
    ResultCode GetCeilingTablePanoramaROI(float* inner, int innerCount, float* outer,
                                          int outerCount) override {
        return m_calls->Note("GetCeilingTablePanoramaROI", inner, innerCount, outer, outerCount);
    }

private:
    Calls* m_calls;
};

class NotedBoundaries : public IKivFisheyeDewarpBoundary {
public:
    explicit NotedBoundaries(Calls* calls) : m_calls(calls) {}
    ~NotedBoundaries() override { m_calls->isDeleted = true; }

    ResultCode CalculateWallPanoramaBoundary(const DewarpParams* params, float* points,
                                             int count) override {
        return m_calls->Note("CalculateWallPanoramaBoundary", params, points, count);
    }
    ResultCode CalculateCeilingTablePanoramaBoundary(const DewarpParams* params, float* inner,
                                                     int innerCount, float* outer,
                                                     int outerCount) override {
        return m_calls->Note("CalculateCeilingTablePanoramaBoundary", params, inner, innerCount,
                             outer, outerCount);
    }

private:
    Calls* m_calls;
};

/// The results that `Calls` gives to the first `count` calls.
std::vector<std::int64_t> ResultsOf(int count) {
    std::vector<std::int64_t> results;
    for (int call = 1; call <= count; ++call) {
        results.push_back(100 + call);
    }
    return results;
}

TEST(VtableOrder, CameraOperationsStandWhereClientsExpectThem) {
    Calls calls;
    NotedCamera camera(&calls);
    EXPECT_EQ(CallCameraOperations(&camera, places), ResultsOf(22));
    const std::vector<std::string> expected = {
        "IsPixelFormatAccepted 7",
        "SetInputVideoParams 1,2,3,[0] 8",
        "SetOutputVideoParams 4,5,6,[1]",
        "SetMountType 9",
        "GetMountType [2]",
        "SetViewType 10",
        "GetViewType [3]",
        "SetMountAndViewType 11 12",
        "GetMountAndViewType [4] [5]",
        "GetRecommendOutputVideoSize [6] [7]",
        "GetRecommendOutputVideoRatio [8]",
        "GetRecommendOutputVideoRatio 13 14 15 16 0.25,0.5,0.75,1 [9]",
        "SetAbsolutePTZ 17.5 18.5 19.5",
        "SetRelativePTZ 20.5 21.5 22.5",
        "GetPTZ [10] [11] [12]",
        "SetDewarpParams 1.25,1.5,1.75,2",
        "GetDewarpParams [13]",
        "Process 98784247832",  // 0x1700000018
        "Snapshot [14]",
        "FreeSnapshotMemory [15]",
        "CvtXYToVCamPanTilt 25.5 26.5 [16] [17]",
        "CvtXYToVCamPanTiltZoom 27.5 28.5 29.5 [18] [19] [20]",
    };
    EXPECT_EQ(calls.notes, expected);
}

TEST(VtableOrder, OutlineOperationsStandWhereClientsExpectThem) {
    Calls calls;
    NotedOutlines outlines(&calls);
    EXPECT_EQ(CallOutlineOperations(&outlines, places), ResultsOf(4));
    const std::vector<std::string> expected = {
        "GetVCamROI [0] 30",
        "GetDualPanoramaROI [1] 31 [2] 32",
        "GetWallPanoramaROI [3] 33",
        "GetCeilingTablePanoramaROI [4] 34 [5] 35",
    };
    EXPECT_EQ(calls.notes, expected);
}

TEST(VtableOrder, BoundaryOperationsStandWhereClientsExpectThem) {
    Calls calls;
    NotedBoundaries boundaries(&calls);
    EXPECT_EQ(CallBoundaryOperations(&boundaries, places), ResultsOf(2));
    const std::vector<std::string> expected = {
        "CalculateWallPanoramaBoundary [0] [1] 36",
        "CalculateCeilingTablePanoramaBoundary [2] [3] 37 [4] 38",
    };
    EXPECT_EQ(calls.notes, expected);
}

TEST(VtableOrder, TheDestructorComesFirst) {
    Calls camera;
    DeleteCamera(new NotedCamera(&camera));
    EXPECT_TRUE(camera.isDeleted);
    Calls outlines;
    DeleteOutlines(new NotedOutlines(&outlines));
    EXPECT_TRUE(outlines.isDeleted);
    Calls boundaries;
    DeleteBoundaries(new NotedBoundaries(&boundaries));
    EXPECT_TRUE(boundaries.isDeleted);
}

}  // namespace
