#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

#include "CameraRules.h"
#include "KivFisheyeCamera.h"
#include "MemoryUtils.h"

using namespace KivFisheyeLib;

static_assert(sizeof(SnapshotHeader) == 64 && offsetof(SnapshotHeader, width) == 8 &&
              offsetof(SnapshotHeader, height) == 16 && sizeof(SnapshotHeader::height) == 8 &&
              offsetof(SnapshotHeader, planes) == 24 && offsetof(SnapshotHeader, imageSize) == 32 &&
              offsetof(SnapshotHeader, horizontalResolution) == 40 &&
              offsetof(SnapshotHeader, colorsImportant) == 60);

namespace {

struct FreeBlock {
    void operator()(unsigned char* block) const { std::free(block); }
};

struct FreeAligned {
    void operator()(unsigned char* buffer) const { _aligned_free(buffer); }
};

using Block = std::unique_ptr<unsigned char, FreeBlock>;
using AlignedBytes = std::unique_ptr<unsigned char, FreeAligned>;

/// All bytes 0; null when there is no memory.
Block MakeBlock(std::uint32_t size) {
    return Block(static_cast<unsigned char*>(std::calloc(size, 1)));
}

AlignedBytes MakeAlignedBytes(std::uint32_t size) {
    auto* const memory = static_cast<unsigned char*>(_aligned_malloc(size, 16));
    if (memory != nullptr) {
        std::memset(memory, 0, size);
    }
    return AlignedBytes(memory);
}

/// Gives the record its stride. False when a snapshot of it, header included, is beyond 32 bits.
bool SetStride(VideoFrameInfo& image, int bitsPerPixel) {
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint32_t>::max();
    const std::uint64_t rowBytes = static_cast<std::uint64_t>(bitsPerPixel / 8) * image.width;
    const std::uint64_t stride = (rowBytes + 3) & ~std::uint64_t{3};
    if (stride > kMost || stride * image.height > kMost - sizeof(SnapshotHeader)) {
        return false;
    }
    image.stride = static_cast<std::uint32_t>(stride);
    return true;
}

SnapshotHeader HeaderOf(const VideoFrameInfo& image, PixelFormat format) {
    const bool runsFromTop = format == PixelFormatRGB24 || format == PixelFormatRGB32;
    const std::int64_t height = image.height;
    SnapshotHeader header{};
    header.size = sizeof(header);
    header.width = image.width;
    header.height = runsFromTop ? -height : height;
    header.planes = 1;
    header.bitsPerPixel = static_cast<std::uint16_t>(BitsPerPixel(format));
    header.imageSize = image.stride * image.height;
    return header;
}

}  // namespace

ResultCode CKivFisheyeCamera::Snapshot(unsigned char** block) {
    if (block == nullptr) {
        return kResultNullPointer;
    }
    *block = nullptr;
    const Lock lock(this);
    if (m_inputInfo.width == 0 || m_inputInfo.height == 0) {
        return kResultNotReady;
    }
    VideoFrameInfo image{};
    GetRecommendOutputVideoSize(&image.width, &image.height);
    if (!SetStride(image, BitsPerPixel(m_pixelFormat))) {
        return kResultOutOfMemory;
    }
    const SnapshotHeader header = HeaderOf(image, m_pixelFormat);
    Block snapshot = MakeBlock(sizeof(header) + header.imageSize);
    if (snapshot == nullptr) {
        return kResultOutOfMemory;
    }
    std::memcpy(snapshot.get(), &header, sizeof(header));
    if (header.imageSize == 0) {
        *block = snapshot.release();
        return kResultOutOfMemory;
    }
    const AlignedBytes pixels = MakeAlignedBytes(header.imageSize);
    if (pixels == nullptr) {
        *block = snapshot.release();
        return kResultOutOfMemory;
    }
    image.buffer = pixels.get();
    const std::unique_ptr<CScene> scene = SceneNS::CreateScene(this, &image);
    if (scene == nullptr) {
        *block = snapshot.release();
        return kResultOutOfMemory;
    }
    const ResultCode result = scene->Process(0);
    std::memcpy(snapshot.get() + sizeof(header), pixels.get(), header.imageSize);
    *block = snapshot.release();
    return result;
}

ResultCode CKivFisheyeCamera::FreeSnapshotMemory(unsigned char* block) {
    if (block == nullptr) {
        return kResultNoChange;
    }
    std::free(block);
    return kResultOk;
}
