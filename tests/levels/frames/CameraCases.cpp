#include <KivFisheyeLib.h>

#include <memory>

#include "FrameCases.h"

using namespace KivFisheyeLib;

namespace {

constexpr int kCases = 8;

using Context = std::unique_ptr<void, decltype(&DeleteKivFisheyeCameraContext)>;

/// A mount and a view, with the words that name them.
struct Scene {
    const char* name;
    MountType mount;
    ViewType view;
};

constexpr Scene kScenes[] = {
    {"ceiling-vcam", MountTypeCeiling, ViewTypeVCam},
    {"ceiling-dual", MountTypeCeiling, ViewTypeDualPanorama},
    {"ceiling-full", MountTypeCeiling, ViewTypeFullPanorama},
    {"table-vcam", MountTypeTable, ViewTypeVCam},
    {"table-dual", MountTypeTable, ViewTypeDualPanorama},
    {"table-full", MountTypeTable, ViewTypeFullPanorama},
    {"wall-vcam", MountTypeWall, ViewTypeVCam},
    {"wall-full", MountTypeWall, ViewTypeFullPanorama},
};

VideoFrameInfo RecordOf(int width, int height, int stride, std::vector<unsigned char>& bytes) {
    return {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height),
            static_cast<std::uint32_t>(stride), bytes.data()};
}

void AddResult(ResultCode result, Digest& digest) {
    digest.Add(&result, sizeof result);
}

DewarpParams NextLens(CaseGenerator& generator, const CaseFrames& frames) {
    return {frames.radiusX, frames.radiusY, generator.NextWallViewAngle(), generator.NextRatio()};
}

void Turn(IKivFisheyeCamera& camera, CaseGenerator& generator, Digest& digest) {
    const float pan = generator.NextPan();
    const float tilt = generator.NextFloat(-90.0F, 90.0F);
    AddResult(camera.SetAbsolutePTZ(pan, tilt, generator.NextFloat(1.0F, 10.0F)), digest);
}

/// A scene's picture, turned twice.
void AddScene(const Scene& scene, PixelFormat format, CaseGenerator& generator, Digest& digest) {
    const int bytesPerPixel = format == PixelFormatRGB24 ? 3 : 4;
    const CaseFrames frames = generator.NextCameraFrames(bytesPerPixel);
    std::vector<unsigned char> src = frames.Source(bytesPerPixel);
    std::vector<unsigned char> dst = frames.Output();
    const Context context(CreateKivFisheyeCameraContext(), DeleteKivFisheyeCameraContext);
    IKivFisheyeCamera& camera = *GetCameraAPI(context.get());
    AddResult(camera.SetMountAndViewType(scene.mount, scene.view), digest);
    AddResult(camera.SetDewarpParams(NextLens(generator, frames)), digest);
    AddResult(camera.SetInputVideoParams(
                  RecordOf(frames.srcWidth, frames.srcHeight, frames.srcStride, src), format),
              digest);
    AddResult(camera.SetOutputVideoParams(
                  RecordOf(frames.dstWidth, frames.dstHeight, frames.dstStride, dst)),
              digest);
    for (int turn = 0; turn < 2; ++turn) {
        Turn(camera, generator, digest);
        AddResult(camera.Process(0), digest);
        digest.Add(dst);
    }
}

/// A context that has an output and no input, turned at random, for the outlines of one view; and
/// the lists that they are drawn into.
class OutlineCase {
public:
    OutlineCase(const Scene& scene, CaseGenerator& generator, Digest& digest)
        : m_frames(generator.NextCameraFrames(4)),
          m_output(m_frames.Output()),
          m_digest(digest),
          m_count(16 * generator.NextInt(1, 6)),
          m_first(static_cast<std::size_t>(2 * m_count)),
          m_second(m_first.size()) {
        IKivFisheyeCamera& camera = *GetCameraAPI(m_context.get());
        AddResult(camera.SetMountAndViewType(scene.mount, scene.view), digest);
        AddResult(camera.SetDewarpParams(NextLens(generator, m_frames)), digest);
        AddResult(camera.SetOutputVideoParams(RecordOf(m_frames.dstWidth, m_frames.dstHeight,
                                                       m_frames.dstStride, m_output)),
                  digest);
        Turn(camera, generator, digest);
        m_otherLens = NextLens(generator, m_frames);
    }

    /// The outlines of rings. Those that the mount lacks leave their points as they are.
    void AddRings() {
        Add(m_roi.GetDualPanoramaROI(m_first.data(), m_count, m_second.data(), m_count));
        Add(m_roi.GetCeilingTablePanoramaROI(m_first.data(), m_count, m_second.data(), m_count));
        Add(m_boundary.CalculateCeilingTablePanoramaBoundary(&m_otherLens, m_first.data(), m_count,
                                                             m_second.data(), m_count));
    }

    /// The outlines of virtual cameras and walls.
    void AddViews() {
        Add(m_roi.GetVCamROI(m_first.data(), m_count));
        Add(m_roi.GetWallPanoramaROI(m_first.data(), m_count));
        Add(m_boundary.CalculateWallPanoramaBoundary(&m_otherLens, m_first.data(), m_count));
    }

private:
    void Add(ResultCode result) {
        AddResult(result, m_digest);
        m_digest.Add(m_first);
        m_digest.Add(m_second);
    }

    CaseFrames m_frames;
    std::vector<unsigned char> m_output;
    Digest& m_digest;
    int m_count;
    std::vector<float> m_first;
    std::vector<float> m_second;
    DewarpParams m_otherLens{};
    Context m_context{CreateKivFisheyeCameraContext(), DeleteKivFisheyeCameraContext};
    IKivFisheyeROI& m_roi = *GetROIAPI(m_context.get());
    IKivFisheyeDewarpBoundary& m_boundary = *GetDewarpBoundaryAPI(m_context.get());
};

}  // namespace

void PrintCameraDigests() {
    for (const Scene& scene : kScenes) {
        const std::string name = scene.name;
        for (const PixelFormat format : {PixelFormatRGB24, PixelFormatRGB32}) {
            PrintFamily(name + (format == PixelFormatRGB24 ? "-camera-24" : "-camera-32"), kCases,
                        [&](CaseGenerator& generator, Digest& digest) {
                            AddScene(scene, format, generator, digest);
                        });
        }
        PrintFamily(name + "-ring-outlines", kCases, [&](CaseGenerator& generator, Digest& digest) {
            OutlineCase(scene, generator, digest).AddRings();
        });
        PrintFamily(name + "-view-outlines", kCases, [&](CaseGenerator& generator, Digest& digest) {
            OutlineCase(scene, generator, digest).AddViews();
        });
    }
}
