#include <algorithm>
#include <cstring>

#include "SurfaceClient.h"

// Still pictures: the result, the block that comes with it, its header and its pixels.

using namespace KivFisheyeLib;

namespace {

std::uint64_t StrideOf(FrameSize size, int bytesPerPixel) {
    return (std::uint64_t{size.width} * static_cast<std::uint64_t>(bytesPerPixel) + 3) / 4 * 4;
}

/// The memory that the picture of a snapshot takes.
struct SnapshotMemory {
    SnapshotMemory(FrameSize size, int bytesPerPixel)
        : stride(StrideOf(size, bytesPerPixel)), imageBytes(stride * size.height) {}

    bool IsThere() const {
        constexpr std::uint64_t kMostStride = 0xFFFFFFFF;
        return stride <= kMostStride && imageBytes + sizeof(SnapshotHeader) <= kMostBytes;
    }

    std::uint64_t stride;
    std::uint64_t imageBytes;
};

/// What may come of a snapshot: the result, and whether there is a block.
struct SnapshotOutcome {
    bool operator==(const SnapshotOutcome& other) const {
        return result == other.result && hasBlock == other.hasBlock;
    }

    ResultCode result;
    bool hasBlock;
};

SnapshotOutcome OutcomeDue(const SurfaceModel& model, FrameSize size) {
    if (model.input.width == 0 || model.input.height == 0) {
        return {kResultNotReady, false};
    }
    const SnapshotMemory memory(size, BytesPerPixel(model.format));
    if (!memory.IsThere()) {
        return {kResultOutOfMemory, false};
    }
    if (memory.imageBytes == 0 || !HasScene(model.mount, model.view)) {
        return {kResultOutOfMemory, true};
    }
    if (model.IsPanorama() && model.TableFails(size)) {
        return {kThrown, false};
    }
    return {kResultOk, true};
}

}  // namespace

FrameSize SurfaceClient::SnapshotSize() const {
    return RecommendedSize(m_model.InputSize(), m_model.mount, m_model.view, m_model.lens);
}

void SurfaceClient::ExpectBlock(const unsigned char* block, bool isConverted) const {
    const FrameSize size = SnapshotSize();
    const int bytes = BytesPerPixel(m_model.format);
    const SnapshotMemory memory(size, bytes);
    SnapshotHeader expected{};
    expected.size = 64;
    expected.width = size.width;
    expected.height = -std::int64_t{size.height};
    expected.planes = 1;
    expected.bitsPerPixel = static_cast<std::uint16_t>(bytes * 8);
    expected.imageSize = static_cast<std::uint32_t>(memory.imageBytes);
    Expect(std::memcmp(block, &expected, sizeof(expected)) == 0, "the header is not that of ",
           size.width, " by ", size.height, " pixels of ", bytes, " bytes");
    const FrameShape shape{size.width, size.height, static_cast<std::uint32_t>(memory.stride),
                           bytes};
    const unsigned char* const pixels = block + sizeof(expected);
    if (!isConverted) {
        Expect(IsFilledWith(pixels, memory.imageBytes, 0), "a snapshot of nothing has pixels");
        return;
    }
    CheckPicture(pixels, shape, InputShape(), RuleOf(m_model.ConversionOfScene(), shape), 0);
}

/// Makes a snapshot and looks at it. The block, if any, is the caller's.
unsigned char* SurfaceClient::TakeSnapshot(ResultCode* result) {
    unsigned char stale = 0;
    unsigned char* block = &stale;
    *result = Call([&] { return m_camera->Snapshot(&block); });
    Expect(block != &stale, "the pointer to the block was not written");
    const FrameSize size = SnapshotSize();
    const SnapshotOutcome actual{*result, block != nullptr};
    const SnapshotOutcome due = OutcomeDue(m_model, size);
    const SnapshotOutcome whenRefused[] = {
        {kResultOutOfMemory, false}, {kResultOutOfMemory, true}, {kThrown, false}};
    bool isDue = actual == due;
    for (const SnapshotOutcome& outcome : whenRefused) {
        isDue = isDue || (m_hasRefused && actual == outcome);
    }
    // Beside its entries a table takes some memory of which the client knows only about how much.
    isDue = isDue || (due.result == kResultOk && m_model.IsPanorama() &&
                      m_model.TableMayFail(size) && actual == SnapshotOutcome{kThrown, false});
    Expect(isDue, "the result is ", NameOf(actual.result), actual.hasBlock ? " with" : " without",
           " a block instead of ", NameOf(due.result), due.hasBlock ? " with" : " without",
           " one, for ", size.width, " by ", size.height, " pixels");
    CountOutcome(PresentOperation(), actual.hasBlock == (actual.result == kResultOk)
                                         ? NameOf(actual.result)
                                         : "OutOfMemory with a block");
    if (block != nullptr) {
        ExpectBlock(block, *result == kResultOk);
        m_play.work.Take(size);
    }
    return block;
}

void SurfaceClient::Snapshot() {
    if (m_play.choices.OnceIn(16)) {
        Run([&] { return m_camera->Snapshot(nullptr); }, [](bool) { return kResultNullPointer; });
        return;
    }
    ResultCode result = kResultOk;
    unsigned char* const block = TakeSnapshot(&result);
    if (block == nullptr) {
        return;
    }
    m_play.blocks.push_back(block);
    if (m_play.choices.OnceIn(2)) {
        FreeSnapshot();
    }
}

void SurfaceClient::FreeSnapshot() {
    if (m_play.blocks.empty() || m_play.choices.OnceIn(8)) {
        Run([&] { return m_camera->FreeSnapshotMemory(nullptr); },
            [](bool) { return kResultNoChange; });
        return;
    }
    unsigned char* const block = m_play.blocks.back();
    m_play.blocks.pop_back();
    Run([&] { return m_camera->FreeSnapshotMemory(block); }, [](bool) { return kResultOk; });
}

/// The output, where it has the size of the snapshot, has the same bytes.
void SurfaceClient::SnapshotBesideProcess() {
    FillOutput(0);
    m_play.work.Take({m_model.output.width & 0xFFFF, m_model.output.height});
    const ResultCode processed = Call([&] { return m_camera->Process(0); });
    if (m_output != nullptr) {
        RememberOutput();
    }
    ResultCode result = kResultOk;
    unsigned char* const block = TakeSnapshot(&result);
    if (block == nullptr) {
        return;
    }
    const FrameSize size = SnapshotSize();
    // Without its table a panorama's `Process` succeeds and writes nothing.
    const bool isComparable =
        processed == kResultOk && m_model.PresentConversion() != Conversion::None &&
        result == kResultOk && m_model.output.width == size.width &&
        m_model.output.height == size.height &&
        m_model.output.stride == StrideOf(size, BytesPerPixel(m_model.format));
    CountOutcome(PresentOperation(), isComparable ? "compared" : "not comparable");
    Expect(
        !isComparable || std::equal(m_known.begin(), m_known.end(), block + sizeof(SnapshotHeader)),
        "the snapshot is not the picture that Process makes");
    m_camera->FreeSnapshotMemory(block);
}
