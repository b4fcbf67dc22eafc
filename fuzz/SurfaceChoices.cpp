#include <algorithm>
#include <cstdint>

#include "SurfaceClient.h"

// What a client hands over: mostly what a careful one would, and often enough what it should not.

using namespace KivFisheyeLib;

namespace {

constexpr std::uint64_t kWrap = std::uint64_t{1} << 32;

std::uint32_t StrideOf(std::uint32_t width, int bytesPerPixel) {
    const std::uint64_t rowBytes = std::uint64_t{width} * static_cast<std::uint64_t>(bytesPerPixel);
    return static_cast<std::uint32_t>((rowBytes + 3) / 4 * 4 % kWrap);
}

/// A width whose row is a little more than one or two times what 32 bits count.
std::uint32_t WrappingWidth(FuzzInput& choices, int bytesPerPixel) {
    const auto wraps = static_cast<std::uint64_t>(choices.Between(1, bytesPerPixel - 1));
    const auto bytes = static_cast<std::uint64_t>(bytesPerPixel);
    const std::uint64_t least = (wraps * kWrap + bytes - 1) / bytes;
    return static_cast<std::uint32_t>((least + 7) / 8 * 8) +
           static_cast<std::uint32_t>(8 * choices.Between(0, 7));
}

FrameSize SmallSize(FuzzInput& choices) {
    const auto longSide = static_cast<std::uint32_t>(choices.Between(1, 600));
    const auto shortSide = static_cast<std::uint32_t>(choices.Between(1, 4));
    switch (choices.Between(0, 9)) {
        case 0:
            return {longSide, shortSide};
        case 1:
            return {shortSide, longSide};
        default:
            return {longSide % 48 + 1, static_cast<std::uint32_t>(choices.Between(1, 48))};
    }
}

/// Frames whose bytes are beyond what 32-bit offsets reach, or beyond what the record can say.
FrameSize ClaimedSize(FuzzInput& choices) {
    constexpr FrameSize kSizes[] = {{0x8000, 0x8000}, {1, 0x7FFFFFFF},     {2, 0xFFFFFFFF},
                                    {65536, 65535},   {0x10000001, 9},     {0x7FFFFFFF, 1},
                                    {0xFFFFFFFF, 1},  {0xFFFFFFF8, 64000}, {40000, 40000}};
    return choices.OneOf(kSizes);
}

FrameSize MakeSize(FuzzInput& choices, int bytesPerPixel, bool isOutput) {
    const int kind = choices.Between(0, 31);
    FrameSize size = SmallSize(choices);
    if (kind == 0) {
        size.width = WrappingWidth(choices, bytesPerPixel);
        // Rows without a byte may be countless.
        const bool isEmpty = StrideOf(size.width, bytesPerPixel) == 0;
        size.height = isEmpty && isOutput ? 0x7FFFFFFF : size.height % 16 + 1;
    } else if (kind == 1 && !isOutput) {
        return ClaimedSize(choices);
    }
    if (isOutput && kind != 2) {
        size.width = (size.width + 7) / 8 * 8;
    }
    return size;
}

void Spoil(FuzzInput& choices, VideoFrameInfo& record) {
    switch (choices.Between(0, 7)) {
        case 0:
            record.width = 0;
            break;
        case 1:
            record.height = 0;
            break;
        case 2:
            record.buffer = nullptr;
            break;
        case 3:
            record.stride = choices.Bits(4);
            break;
        case 4:
            record.width = choices.Bits(4);
            break;
        case 5:
            record.stride += 4;
            break;
        case 6:
            record.stride -= 1;
            break;
        default:
            record.width += static_cast<std::uint32_t>(choices.Between(1, 8));
            break;
    }
}

}  // namespace

/// The memory stays with the client when the record is stored: see SetInput and StoreOutput.
std::unique_ptr<GuardedBuffer> SurfaceClient::MakeFrame(PixelFormat format, bool isOutput,
                                                        VideoFrameInfo* record) {
    FuzzInput& choices = m_play.choices;
    const int bytes = BytesPerPixel(format);
    const FrameSize size = MakeSize(choices, bytes, isOutput);
    const FrameShape shape{size.width, size.height, StrideOf(size.width, bytes), bytes};
    auto memory = isOutput ? MakeGuarded(choices, shape.Bytes()) : MakeSource(choices, shape);
    *record = {shape.width, shape.height, shape.stride, memory->data()};
    if (choices.OnceIn(8)) {
        Spoil(choices, *record);
        // A record that is valid again has other memory than it claims.
        if (IsValidRecord(*record, format)) {
            record->height = 0;
        }
    }
    return memory;
}

PixelFormat SurfaceClient::MakeFormat() {
    constexpr PixelFormat kOthers[] = {PixelFormatBottomUpRGB24, PixelFormatBottomUpRGB32,
                                       static_cast<PixelFormat>(4),
                                       static_cast<PixelFormat>(0xFFFFFFFF)};
    if (m_play.choices.OnceIn(16)) {
        return m_play.choices.OneOf(kOthers);
    }
    return m_play.choices.OnceIn(2) ? PixelFormatRGB24 : PixelFormatRGB32;
}

DewarpParams SurfaceClient::MakeLens() {
    FuzzInput& choices = m_play.choices;
    switch (choices.Between(0, 3)) {
        case 0:
            return {choices.Number(0.0F, 1.0F), choices.Number(0.0F, 1.0F),
                    choices.Number(10.0F, 90.0F), choices.Number(0.0F, 0.8F)};
        case 1:
            return m_model.lens;
        case 2: {
            DewarpParams lens = m_model.lens;
            lens.radiusX = choices.Number(0.0F, 1.0F);
            return lens;
        }
        default:
            return {0.25F + 0.001F * choices.Byte(), 0.25F + 0.001F * choices.Byte(),
                    20.0F + 0.25F * choices.Byte(), 0.003F * choices.Byte()};
    }
}

MountType SurfaceClient::MakeMount() {
    FuzzInput& choices = m_play.choices;
    return static_cast<MountType>(choices.OnceIn(16) ? choices.Bits(4) : choices.Bits(1) % 3);
}

ViewType SurfaceClient::MakeView() {
    FuzzInput& choices = m_play.choices;
    return static_cast<ViewType>(choices.OnceIn(16) ? choices.Bits(4) : choices.Bits(1) % 3);
}

Aim SurfaceClient::MakeAim(bool isChange) {
    FuzzInput& choices = m_play.choices;
    if (!isChange) {
        return {choices.Number(-200.0F, 400.0F), choices.Number(-100.0F, 100.0F),
                choices.Number(0.5F, 10.5F)};
    }
    const auto change = [&](float most) {
        return choices.OnceIn(3) ? 0.0F : choices.Number(-most, most);
    };
    return {change(300.0F), change(100.0F), change(3.0F)};
}
