#include <array>
#include <cstddef>
#include <memory>

#include "SurfaceClient.h"
#include "SurfaceFunctions.h"

// Plays an input as a client of the library: one to three contexts, of which each operation takes
// one, and the functions that need none. After every call the result, what the getters give and
// what was written must be what a plain model says.

namespace {

using Clients = std::array<std::unique_ptr<SurfaceClient>, 3>;

struct ClientOperation {
    const char* name;
    void (SurfaceClient::*run)();
};

constexpr ClientOperation kClientOperations[] = {
    {"IsPixelFormatAccepted", &SurfaceClient::AskForFormat},
    {"SetInputVideoParams", &SurfaceClient::SetInput},
    {"SetOutputVideoParams", &SurfaceClient::SetOutput},
    {"SetOutputVideoParams", &SurfaceClient::SetRecommendedOutput},
    {"SetMountType", &SurfaceClient::SetMount},
    {"SetViewType", &SurfaceClient::SetView},
    {"SetMountAndViewType", &SurfaceClient::SetMountAndView},
    {"SetDewarpParams", &SurfaceClient::SetLens},
    {"SetAbsolutePTZ", &SurfaceClient::SetAbsolute},
    {"SetRelativePTZ", &SurfaceClient::SetRelative},
    {"getters without places", &SurfaceClient::GetWithNull},
    {"the first operations", &SurfaceClient::Prepare},
    {"the first operations", &SurfaceClient::Prepare},
    {"Process", &SurfaceClient::Process},
    {"Process", &SurfaceClient::Process},
    {"Snapshot", &SurfaceClient::Snapshot},
    {"Snapshot beside Process", &SurfaceClient::SnapshotBesideProcess},
    {"FreeSnapshotMemory", &SurfaceClient::FreeSnapshot},
    {"GetRecommendOutputVideoSize", &SurfaceClient::RecommendSize},
    {"GetRecommendOutputVideoRatio", &SurfaceClient::RecommendRatio},
    {"GetRecommendOutputVideoRatio of a lens", &SurfaceClient::RecommendRatioOf},
    {"CvtXYToVCamPanTilt", &SurfaceClient::AimAtPoint},
    {"CvtXYToVCamPanTiltZoom", &SurfaceClient::AimAtPointAndZoom},
    {"GetVCamROI", &SurfaceClient::OutlineVCam},
    {"GetDualPanoramaROI", &SurfaceClient::OutlineDual},
    {"GetWallPanoramaROI", &SurfaceClient::OutlineWall},
    {"GetCeilingTablePanoramaROI", &SurfaceClient::OutlineRing},
    {"CalculateWallPanoramaBoundary", &SurfaceClient::BoundWall},
    {"CalculateCeilingTablePanoramaBoundary", &SurfaceClient::BoundRing},
};

constexpr void (*kFunctions[])(Play&) = {
    ConvertByConverter,  FitSizes, FitRectangle, LayMesh, CalculateInThreeDimensions,
    AskForInstructionSet};

void RunOnClient(Play& play, std::unique_ptr<SurfaceClient>& client) {
    if (client == nullptr) {
        BeginOperation("CreateKivFisheyeCameraContext");
        client = std::make_unique<SurfaceClient>(play);
        client->ExpectState();
        CountOutcome(PresentOperation(), "done");
    }
    const ClientOperation operation = play.choices.OneOf(kClientOperations);
    BeginOperation(operation.name);
    (client.get()->*operation.run)();
    client->ExpectState();
}

/// The first byte of an operation says whom it is for.
void RunNext(Play& play, Clients& clients) {
    const int kind = play.choices.Byte();
    if (kind < 200) {
        const std::size_t client = kind < 120 ? 0 : kind < 170 ? 1 : 2;
        RunOnClient(play, clients[client]);
    } else if (kind < 210) {
        play.refusal = play.choices.Between(1, 3);
    } else if (kind < 216) {
        BeginOperation("DeleteKivFisheyeCameraContext");
        clients[static_cast<std::size_t>(kind) % clients.size()].reset();
        CountOutcome(PresentOperation(), "done");
    } else {
        play.choices.OneOf(kFunctions)(play);
    }
}

void ReturnBlocks(Play& play, Clients& clients) {
    BeginOperation("FreeSnapshotMemory at the end");
    if (!play.blocks.empty() && clients[0] == nullptr) {
        clients[0] = std::make_unique<SurfaceClient>(play);
    }
    while (!play.blocks.empty()) {
        clients[0]->FreeSnapshot();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    Play play(data, size);
    Clients clients;
    while (!play.choices.IsEmpty() && !play.work.IsDone()) {
        RunNext(play, clients);
    }
    ReturnBlocks(play, clients);
    for (std::unique_ptr<SurfaceClient>& client : clients) {
        if (client != nullptr) {
            client->ExpectState();
        }
    }
    return 0;
}
