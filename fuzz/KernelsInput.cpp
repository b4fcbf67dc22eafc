#include "KernelsInput.h"

#include <algorithm>
#include <array>
#include <limits>

#include "Check.h"
#include "Outcomes.h"
#include "support/CoordinateFrame.h"

namespace {

/// Makes one of the frames empty, or a stride shorter than its rows.
void Spoil(PanoramaFrames& frames, KernelsInput& input, int bytesPerPixel, Frames which) {
    switch (input.Between(0, 31)) {
        case 31:
            frames.srcWidth = 0;
            break;
        case 30:
            frames.srcHeight = 0;
            break;
        case 29:
            frames.dstWidth = 0;
            break;
        case 28:
            frames.dstHeight = which == Frames::Any ? input.Between(-1, 0) : 0;
            break;
        case 27:
        case 26:
            frames.dstStride = input.Between(0, frames.dstWidth * bytesPerPixel);
            break;
        case 25:
            frames.srcStride -= which == Frames::Any ? input.Between(1, frames.srcStride) : 0;
            break;
        default:
            break;
    }
}

/// Counts which kind of frames the job has.
void CountKind(const PanoramaFrames& frames, int bytesPerPixel) {
    const char* const operation = PresentOperation();
    CountOutcome(operation, bytesPerPixel == 3 ? "24 bits" : "32 bits");
    if (!HasSource(frames)) {
        CountOutcome(operation, "no source");
    } else if (frames.srcStride < frames.srcWidth * bytesPerPixel) {
        CountOutcome(operation, "long rows of the source");
    }
    if (frames.dstWidth <= 0 || frames.dstHeight <= 0) {
        CountOutcome(operation, "no output");
    } else if (frames.dstStride < frames.dstWidth * bytesPerPixel) {
        CountOutcome(operation, "overlapping rows");
    } else if (frames.dstWidth > 128) {
        CountOutcome(operation, "more than a block of lanes");
    }
    CountOutcome(operation, frames.dstWidth % 8 == 0 ? "whole groups" : "part of a group");
    CountOutcome(operation, frames.dstHeight % 2 == 0 ? "even height" : "odd height");
}

}  // namespace

float KernelsInput::Value(float lowest, float highest) {
    constexpr int kSteps = 65535;
    switch (Between(0, 7)) {
        case 0:
            return lowest + 0.5F * (highest - lowest);
        case 1:
            return m_isWild ? Number(lowest, highest) : lowest;
        case 2:
            return m_isWild ? Unbounded() : highest;
        default:
            return lowest + (highest - lowest) * static_cast<float>(Between(0, kSteps)) /
                                static_cast<float>(kSteps);
    }
}

float KernelsInput::Unbounded() {
    using Limits = std::numeric_limits<float>;
    return OneOf(std::array{Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(),
                            Limits::max(), -Limits::max()});
}

int KernelsInput::Side(int highest) {
    return OnceIn(4) ? Between(1, std::min(3, highest)) : highest - Between(0, highest - 1);
}

PanoramaFrames NextFrames(KernelsInput& input, int bytesPerPixel, Frames which) {
    PanoramaFrames frames;
    frames.srcWidth = input.Side(90);
    frames.srcHeight = input.Side(90);
    frames.srcStride = frames.srcWidth * bytesPerPixel + input.Between(0, 9);
    // In lanes up to 256 pixels of a row belong together.
    const int shape = input.Between(0, 7);
    frames.dstWidth = shape == 7 ? input.Between(71, 620) : input.Side(shape == 6 ? 5 : 70);
    frames.dstHeight = shape == 6 ? input.Between(71, 300) : input.Side(shape == 7 ? 5 : 70);
    frames.dstStride =
        frames.dstWidth * bytesPerPixel + (input.OnceIn(2) ? input.Between(0, 40) : 0);
    frames.radiusX = input.Value(0.0F, 1.0F);
    frames.radiusY = input.Value(0.0F, 1.0F);
    Spoil(frames, input, bytesPerPixel, which);
    CountKind(frames, bytesPerPixel);
    return frames;
}

bool HasSource(const PanoramaFrames& frames) {
    return frames.srcWidth > 0 && frames.srcHeight > 0;
}

bool ShowsPixels(const PanoramaFrames& frames, int bytesPerPixel) {
    return HasSource(frames) && frames.dstWidth > 0 && frames.dstHeight > 0 &&
           frames.srcStride >= frames.srcWidth * bytesPerPixel;
}

std::size_t OutputBytes(const PanoramaFrames& frames) {
    return static_cast<std::size_t>(std::max(frames.dstHeight, 0)) *
           static_cast<std::size_t>(frames.dstStride);
}

std::vector<unsigned char> SourceOf(const PanoramaFrames& frames, int bytesPerPixel) {
    if (!HasSource(frames) || frames.srcStride < frames.srcWidth * bytesPerPixel) {
        return {};
    }
    return CoordinateFrame(frames.srcWidth, frames.srcHeight, frames.srcStride, bytesPerPixel);
}
