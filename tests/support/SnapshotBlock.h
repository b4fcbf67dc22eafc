#ifndef KIVFISHEYE_TESTS_SNAPSHOT_BLOCK_H
#define KIVFISHEYE_TESTS_SNAPSHOT_BLOCK_H

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "KivFisheyeCamera.h"

/// A snapshot that a camera has made, given back at the end.
class SnapshotBlock {
public:
    static constexpr std::size_t kHeaderSize = 64;

    explicit SnapshotBlock(CKivFisheyeCamera& camera) : m_camera(camera) {
        unsigned char stale = 0;
        m_block = &stale;
        m_result = camera.Snapshot(&m_block);
        if (m_block == &stale) {
            ADD_FAILURE() << "the caller's pointer is as it was";
            m_block = nullptr;
        }
    }
    ~SnapshotBlock() {
        EXPECT_EQ(m_camera.FreeSnapshotMemory(m_block), IsThere() ? kResultOk : kResultNoChange);
    }
    SnapshotBlock(const SnapshotBlock&) = delete;
    SnapshotBlock& operator=(const SnapshotBlock&) = delete;

    ResultCode Result() const { return m_result; }
    bool IsThere() const { return m_block != nullptr; }

    std::vector<unsigned char> Header() const { return {m_block, m_block + kHeaderSize}; }

    /// As many bytes as the header says.
    std::vector<unsigned char> Image() const {
        std::uint32_t size = 0;
        std::memcpy(&size, m_block + 32, sizeof(size));
        return {m_block + kHeaderSize, m_block + kHeaderSize + size};
    }

private:
    CKivFisheyeCamera& m_camera;
    unsigned char* m_block;
    ResultCode m_result;
};

/// The bytes of a header, field by field from the lowest byte up. All that is not named is 0.
inline std::vector<unsigned char> HeaderBytes(std::int64_t width, std::int64_t height, int bits,
                                              std::size_t imageSize) {
    std::vector<unsigned char> header(SnapshotBlock::kHeaderSize, 0);
    const auto store = [&header](std::size_t offset, std::size_t bytes, std::uint64_t value) {
        for (std::size_t i = 0; i < bytes; ++i) {
            header[offset + i] = static_cast<unsigned char>(value >> (8 * i) & 0xFF);
        }
    };
    store(0, 4, SnapshotBlock::kHeaderSize);
    store(8, 8, static_cast<std::uint64_t>(width));
    store(16, 8, static_cast<std::uint64_t>(height));
    store(24, 2, 1);
    store(26, 2, static_cast<std::uint64_t>(bits));
    store(32, 4, imageSize);
    return header;
}

#endif
