#include "SurfaceFunctions.h"

#include <cmath>
#include <cstring>

#include "DownwardFisheyeAlgo.h"
#include "DownwardFisheyeOpenGLAlgo.h"
#include "FrontwardFisheyeAlgo.h"
#include "FrontwardFisheyeOpenGLAlgo.h"
#include "KivFisheyeCommon.h"
#include "UpwardFisheyeAlgo.h"
#include "UpwardFisheyeOpenGLAlgo.h"

namespace {

int AnySide(FuzzInput& choices) {
    return choices.OnceIn(4) ? static_cast<int>(choices.Bits(4)) : choices.Between(0, 4000);
}

using SizeFunction = void (*)(int, int, float, float, float, int&, int&);
using RatioFunction = float (*)(int, int, float, float, float);

struct Sides {
    int width;
    int height;
};

void ExpectFit(SizeFunction size, RatioFunction ratio, Sides source,
               const KivFisheyeLib::DewarpParams& lens, float shape, FrameSize dueSize,
               float dueRatio) {
    int width = 0;
    int height = 0;
    size(source.width, source.height, lens.radiusX, lens.radiusY, shape, width, height);
    ExpectEqual(static_cast<std::uint32_t>(width), dueSize.width, "the fitting width");
    ExpectEqual(static_cast<std::uint32_t>(height), dueSize.height, "the fitting height");
    ExpectNumber(ratio(source.width, source.height, lens.radiusX, lens.radiusY, shape), dueRatio,
                 "the fitting ratio");
}

/// A grid of vertices, as one form of a mesh function fills it.
struct Mesh {
    int Rows() const { return rows + (isDual ? otherRows : 0); }

    int columns;
    int rows;
    int otherRows;
    float shape;
    bool centerAtOrigin;
    bool isDual;
};

using FullMesh = void (*)(int, int, float, bool, float*);
using DualMesh = void (*)(int, int, int, float, bool, float*);

/// How long rows are: as many columns, columns rounded up to 4, or one of these.
enum class Pitch { Exact, Rounded, Either };

struct MeshEntry {
    const char* name;
    FullMesh full;
    DualMesh dual;
    Pitch pitch;
};

constexpr MeshEntry kMeshes[] = {
    {"TableMesh", UpwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate, nullptr, Pitch::Either},
    {"TableMesh.C", UpwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Exact},
    {"TableDualMesh", nullptr, UpwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate,
     Pitch::Either},
    {"TableDualMesh.C", nullptr, UpwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate,
     Pitch::Exact},
    {"CeilingMesh", DownwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Either},
    {"CeilingMesh.C", DownwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Exact},
    {"CeilingDualMesh", nullptr, DownwardFisheyeAlgoNS::CalculateDualPanoramaTextureCoordinate,
     Pitch::Either},
    {"CeilingDualMesh.C", nullptr, DownwardFisheyeAlgoNS::C::CalculateDualPanoramaTextureCoordinate,
     Pitch::Exact},
    {"WallMesh", FrontwardFisheyeAlgoNS::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Either},
    {"WallMesh.C", FrontwardFisheyeAlgoNS::C::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Exact},
#if defined(__x86_64__)
    {"TableMesh.SSE2", UpwardFisheyeAlgoNS::SSE2::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Rounded},
    {"TableDualMesh.SSE2", nullptr,
     UpwardFisheyeAlgoNS::SSE2::CalculateDualPanoramaTextureCoordinate, Pitch::Rounded},
    {"CeilingMesh.SSE2", DownwardFisheyeAlgoNS::SSE2::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Rounded},
    {"CeilingDualMesh.SSE2", nullptr,
     DownwardFisheyeAlgoNS::SSE2::CalculateDualPanoramaTextureCoordinate, Pitch::Rounded},
    {"WallMesh.SSE2", FrontwardFisheyeAlgoNS::SSE2::CalculatePanoramaTextureCoordinate, nullptr,
     Pitch::Rounded},
#endif
};

/// Every coordinate that is written lies on the lens, for a ring or latitudes that it has.
void ExpectCoordinates(const GuardedBuffer& memory, const Mesh& mesh, bool isComplete) {
    const float middle = mesh.centerAtOrigin ? 0.0F : 0.5F;
    for (std::size_t i = 0; i < memory.size(); i += sizeof(float)) {
        float number = 0.0F;
        std::memcpy(&number, memory.data() + i, sizeof(number));
        if (IsFilledWith(memory.data() + i, sizeof(number), kFill)) {
            Expect(!isComplete, "coordinate ", i / sizeof(number), " was not written");
            continue;
        }
        const bool isOnLens = std::isnan(number) || std::fabs(number - middle) < 0.51F;
        const bool isUsual = mesh.shape >= 0.0F && mesh.shape <= 0.8F;
        Expect(!isUsual || isOnLens, "coordinate ", i / sizeof(number), " is ", number);
    }
}

}  // namespace

void FitSizes(Play& play) {
    BeginOperation("FitSizes");
    FuzzInput& choices = play.choices;
    const Sides source{AnySide(choices), AnySide(choices)};
    const KivFisheyeLib::DewarpParams lens{choices.Number(0.0F, 1.0F), choices.Number(0.0F, 1.0F),
                                           choices.Number(10.0F, 90.0F),
                                           choices.Number(0.0F, 0.8F)};
    const FrameSize full = RingSize(source.width, source.height, lens, false);
    const FrameSize dual = RingSize(source.width, source.height, lens, true);
    const float fullRatio = RingRatio(lens, false);
    const float dualRatio = RingRatio(lens, true);
    const float inner = lens.innerRadiusRatio;
    ExpectFit(UpwardFisheyeAlgoNS::GetBestFitPanoramaSize,
              UpwardFisheyeAlgoNS::GetBestFitPanoramaRatio, source, lens, inner, full, fullRatio);
    ExpectFit(DownwardFisheyeAlgoNS::GetBestFitPanoramaSize,
              DownwardFisheyeAlgoNS::GetBestFitPanoramaRatio, source, lens, inner, full, fullRatio);
    ExpectFit(UpwardFisheyeAlgoNS::GetBestFitDualPanoramaSize,
              UpwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio, source, lens, inner, dual,
              dualRatio);
    ExpectFit(DownwardFisheyeAlgoNS::GetBestFitDualPanoramaSize,
              DownwardFisheyeAlgoNS::GetBestFitDualPanoramaRatio, source, lens, inner, dual,
              dualRatio);
    ExpectFit(FrontwardFisheyeAlgoNS::GetBestFitPanoramaSize,
              FrontwardFisheyeAlgoNS::GetBestFitPanoramaRatio, source, lens, lens.wallViewAngle,
              WallSize(source.width, source.height, lens),
              WallRatio(source.width, source.height, lens));
    CountOutcome(PresentOperation(), "done");
}

void FitRectangle(Play& play) {
    BeginOperation("GetRatioRectSize");
    FuzzInput& choices = play.choices;
    const Sides source{AnySide(choices), AnySide(choices)};
    const Sides bound{AnySide(choices), AnySide(choices)};
    const auto [width, height] =
        GetRatioRectSize(source.width, source.height, bound.width, bound.height);
    const bool isEmpty =
        source.width == 0 || source.height == 0 || bound.width == 0 || bound.height == 0;
    const auto ratioOf = [](Sides sides) {
        return static_cast<float>(sides.width) / static_cast<float>(sides.height);
    };
    Sides due{0, 0};
    if (!isEmpty) {
        const float ratio = ratioOf(source);
        due = ratio >= ratioOf(bound)
                  ? Sides{bound.width, Truncated(static_cast<float>(bound.width) / ratio)}
                  : Sides{Truncated(static_cast<float>(bound.height) * ratio), bound.height};
    }
    ExpectEqual(width, due.width, "the width");
    ExpectEqual(height, due.height, "the height");
    CountOutcome(PresentOperation(), isEmpty ? "nothing" : "a rectangle");
}

void LayMesh(Play& play) {
    FuzzInput& choices = play.choices;
    const MeshEntry entry = choices.OneOf(kMeshes);
    BeginOperation(entry.name);
    const auto side = [&](int most) {
        return choices.OnceIn(24) ? -choices.Between(0, 3) : choices.Between(1, most);
    };
    const Mesh mesh{side(40),          side(12),
                    side(12),          choices.Number(0.0F, 0.8F),
                    choices.OnceIn(2), entry.dual != nullptr};
    const bool isNothing = mesh.columns < 1 || mesh.rows < 1 || (mesh.isDual && mesh.otherRows < 1);
    const int pitch = entry.pitch == Pitch::Exact ? mesh.columns : (mesh.columns + 3) / 4 * 4;
    const auto vertices =
        isNothing ? std::size_t{256 * 2 * 12}
                  : static_cast<std::size_t>(pitch) * static_cast<std::size_t>(mesh.Rows());
    const auto memory = MakeGuarded(choices, vertices * 2 * sizeof(float));
    auto* const coordinates = reinterpret_cast<float*>(memory->data());
    if (entry.dual != nullptr) {
        entry.dual(mesh.columns, mesh.rows, mesh.otherRows, mesh.shape, mesh.centerAtOrigin,
                   coordinates);
    } else {
        entry.full(mesh.columns, mesh.rows, mesh.shape, mesh.centerAtOrigin, coordinates);
    }
    Expect(memory->IsSurroundingUntouched(), "bytes around the list changed");
    const bool isComplete = entry.pitch != Pitch::Either || mesh.columns % 4 == 0;
    ExpectCoordinates(*memory, mesh, isComplete && !isNothing);
    CountOutcome(PresentOperation(), isNothing ? "nothing" : "laid");
}

void AskForInstructionSet(Play&) {
    BeginOperation("GetCPUInstructionSet");
    static const int kFirst = GetCPUInstructionSet();
    ExpectEqual(GetCPUInstructionSet(), kFirst, "the level");
    Expect(kFirst >= 0 && kFirst <= 8, "the level is ", kFirst);
    CountOutcome(PresentOperation(), "done");
}
