#ifndef KIVFISHEYE_FUZZ_SURFACE_CLIENT_H
#define KIVFISHEYE_FUZZ_SURFACE_CLIENT_H

#include <array>
#include <memory>
#include <new>
#include <vector>

#include "AllocationLimit.h"
#include "Check.h"
#include "FuzzInput.h"
#include "KivFisheyeLib.h"
#include "Outcomes.h"
#include "Pictures.h"
#include "SurfaceModel.h"

/// How much one input may make the library do.
struct Work {
    bool IsDone() const { return pixelsLeft <= 0; }
    void Take(FrameSize size) {
        pixelsLeft -=
            50 + static_cast<long>(size.width % 65536) * static_cast<long>(size.height % 65536);
    }

    long pixelsLeft = 60000;
};

/// What the operations of one input share.
struct Play {
    Play(const unsigned char* data, std::size_t size) : choices(data, size) {}

    FuzzInput choices;
    Work work;
    /// Which allocation of the next call is refused, from 1; 0 for none.
    int refusal = 0;
    /// Snapshots that were not given back yet.
    std::vector<unsigned char*> blocks;
};

/// The result's name, for people.
const char* NameOf(ResultCode result);

/// Calls the library and tells kThrown from results.
template <class Call>
ResultCode ResultOf(const Call& call) {
    try {
        return call();
    } catch (const std::bad_alloc&) {
        return kThrown;
    }
}

/// Fails unless an operation answered as it should.
void ExpectResult(ResultCode actual, ResultCode expected);

/// One context, its frames, and what it should remember.
class SurfaceClient {
public:
    explicit SurfaceClient(Play& play);
    ~SurfaceClient();
    SurfaceClient(const SurfaceClient&) = delete;
    SurfaceClient& operator=(const SurfaceClient&) = delete;

    // Frames, mount, view, lens and angles.
    void AskForFormat();
    void SetInput();
    void SetOutput();
    void SetRecommendedOutput();
    void SetMount();
    void SetView();
    void SetMountAndView();
    void SetLens();
    void SetAbsolute();
    void SetRelative();
    void GetWithNull();

    // Pictures.
    void Prepare();
    void Process();
    void Snapshot();
    void SnapshotBesideProcess();
    void FreeSnapshot();

    // Numbers and outlines.
    void RecommendSize();
    void RecommendRatio();
    void RecommendRatioOf();
    void AimAtPoint();
    void AimAtPointAndZoom();
    void OutlineVCam();
    void OutlineDual();
    void OutlineWall();
    void OutlineRing();
    void BoundWall();
    void BoundRing();

    /// What the getters give is what the model remembers.
    void ExpectState();

private:
    /// Calls the library, perhaps with an allocation refused.
    template <class Operation>
    ResultCode Call(const Operation& operation) {
        if (m_play.refusal > 0) {
            RefuseAllocation(m_play.refusal);
            m_play.refusal = 0;
        }
        const ResultCode result = ResultOf(operation);
        m_hasRefused = EndRefusal();
        return result;
    }
    /// Also looks at the result: `rule` takes whether a refused allocation made the call throw, and
    /// gives the result that is due.
    template <class Operation, class Rule>
    ResultCode Run(const Operation& operation, const Rule& rule) {
        const ResultCode result = Call(operation);
        ExpectResult(result, rule(m_hasRefused && result == kThrown));
        return result;
    }
    template <class Operation, class Rule>
    void RunConversion(const Operation& operation, const Rule& rule);

    std::unique_ptr<GuardedBuffer> MakeFrame(KivFisheyeLib::PixelFormat format, bool isOutput,
                                             KivFisheyeLib::VideoFrameInfo* record);
    KivFisheyeLib::PixelFormat MakeFormat();
    KivFisheyeLib::DewarpParams MakeLens();
    KivFisheyeLib::MountType MakeMount();
    KivFisheyeLib::ViewType MakeView();
    Aim MakeAim(bool isChange);

    FrameShape InputShape() const;
    FrameShape OutputShape() const;
    void StoreOutput(const KivFisheyeLib::VideoFrameInfo& record,
                     std::unique_ptr<GuardedBuffer> memory);
    void FillOutput(unsigned char value);
    void RememberOutput();
    PictureRule RuleOf(Conversion conversion, const FrameShape& shape) const;
    void ExpectPicture(Conversion conversion, unsigned char background);
    void ExpectTwin(unsigned char background) const;
    unsigned char* TakeSnapshot(ResultCode* result);
    FrameSize SnapshotSize() const;
    void ExpectBlock(const unsigned char* block, bool isConverted) const;

    Play& m_play;
    void* m_context;
    IKivFisheyeCamera* m_camera;
    IKivFisheyeROI* m_outlines;
    IKivFisheyeDewarpBoundary* m_boundaries;
    SurfaceModel m_model;
    std::unique_ptr<GuardedBuffer> m_input;
    std::unique_ptr<GuardedBuffer> m_output;
    /// What the output holds since it was last looked at.
    std::vector<unsigned char> m_known;
    bool m_hasRefused = false;
};

#endif
