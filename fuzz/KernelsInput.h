#ifndef KIVFISHEYE_FUZZ_KERNELS_INPUT_H
#define KIVFISHEYE_FUZZ_KERNELS_INPUT_H

#include <cstddef>
#include <vector>

#include "FuzzInput.h"
#include "support/PanoramaFrames.h"

/// The fuzzer's bytes as the choices of one job. Zeros stand for what is usual.
class KernelsInput : public FuzzInput {
public:
    using FuzzInput::FuzzInput;

    /// From now on `Value` may leave its range.
    void SetWild(bool isWild) { m_isWild = isWild; }
    /// Between the bounds, often one of them or their middle. A wild one may be any float.
    float Value(float lowest, float highest);

    int BytesPerPixel() { return Between(3, 4); }
    /// A side of a frame: one in four is below 4.
    int Side(int highest);

private:
    /// NaN, or beyond all bounds.
    float Unbounded();

    bool m_isWild = false;
};

/// Which frames a job copes with.
enum class Frames {
    Usable,  ///< a source whose rows fit in its stride; sides may be 0
    Any      ///< rows of the source longer than its stride, and an output height below 0 too
};

/// Frames of all shapes, mostly small, and the lens's radii. Strides of the output may be shorter
/// than its rows.
PanoramaFrames NextFrames(KernelsInput& input, int bytesPerPixel, Frames which);

/// A source with pixels that may be read, and an output that has some.
bool ShowsPixels(const PanoramaFrames& frames, int bytesPerPixel);
bool HasSource(const PanoramaFrames& frames);

/// Stride times height, 0 for heights below.
std::size_t OutputBytes(const PanoramaFrames& frames);

/// The bytes of a source whose pixels tell their places; none where nothing may be read.
std::vector<unsigned char> SourceOf(const PanoramaFrames& frames, int bytesPerPixel);

#endif
