#ifndef KIVFISHEYE_FISHEYE_ALGO_COMMON_SSE2_H
#define KIVFISHEYE_FISHEYE_ALGO_COMMON_SSE2_H

#include <algorithm>
#include <cstddef>

#include "Degrees.h"
#include "FisheyeAlgoCommon.h"
#include "RunningAngle.h"
#include "sse/sseMath.h"
#include "sse/sseUtil.h"

/// Angles and outlines in four lanes: lane k starts k steps from the first angle and all go on by
/// four steps at once. Lists have room for whole groups of four points. Bits differ from the scalar
/// form's, as roundings add up along other ways.
namespace SSE2 {

/// Four angles in radians, one step apart, and the four steps that lead to the next ones.
struct SteppedAngles {
    SteppedAngles(float start, float step) : fourSteps((step + step) + (step + step)) {
        const float twoStepsOn = (step + step) + start;
        const float lanes[4] = {start, start + step, twoStepsOn, step + twoStepsOn};
        angles = sse::sse4Floats::Load(lanes);
    }

    void Advance() { angles = angles + fourSteps; }

    sse::sse4Floats angles;
    sse::sse4Floats fourSteps;
};

/// Sines and cosines of evenly spaced angles.
struct CSinAndCosThetaTable {
    /// Fills both tables with `count` entries, whose angles run evenly from `start` to `end`, both
    /// of them included, in radians. They come from the lanes' polynomial, not from the C library.
    static void CalculateSinAndCosThetaTable(float* sinTable, float* cosTable, unsigned long count,
                                             float start, float end) {
        using sse::sse4Floats;
        constexpr unsigned long kLanes = sse4Floats::kLanes;
        SteppedAngles theta(start, (end - start) / static_cast<float>(count - 1));
        const unsigned long whole = count / kLanes * kLanes;
        for (unsigned long i = 0; i < whole; i += kLanes) {
            sseSin(theta.angles).Store(sinTable + i);
            sseCos(theta.angles).Store(cosTable + i);
            theta.Advance();
        }
        if (whole < count) {
            float sines[kLanes];
            float cosines[kLanes];
            sseSin(theta.angles).Store(sines);
            sseCos(theta.angles).Store(cosines);
            std::copy_n(sines, count - whole, sinTable + whole);
            std::copy_n(cosines, count - whole, cosTable + whole);
        }
    }
};

/// Four angles, one step apart, that go on by four steps at once.
struct RotatedAngles {
    RotatedAngles(float start, float step) {
        float cosines[4];
        float sines[4];
        const auto oneStep = AngleOf(step);
        auto angle = AngleOf(start);
        for (int lane = 0; lane < 4; ++lane) {
            cosines[lane] = angle.cosine;
            sines[lane] = angle.sine;
            angle.Advance(oneStep);
        }
        const auto four = AngleOf(step * 4.0F);
        angles = {sse::sse4Floats::Load(cosines), sse::sse4Floats::Load(sines)};
        fourSteps = {sse::sse4Floats(four.cosine), sse::sse4Floats(four.sine)};
    }

    void Advance() { angles.Advance(fourSteps); }

    RunningAngle<sse::sse4Floats> angles;
    RunningAngle<sse::sse4Floats> fourSteps;
};

template <CoordinateOrientationType orientation>
void CalculateEllipseCoordinate(float centerX, float centerY, float radiusX, float radiusY,
                                float* points, int count) {
    using sse::sse4Floats;
    RotatedAngles lanes(0.0F, kFullTurn / static_cast<float>(count));
    for (std::ptrdiff_t i = 0; i < count; i += sse4Floats::kLanes) {
        const sse4Floats x = sse4Floats(centerX) + sse4Floats(radiusX) * lanes.angles.cosine;
        const sse4Floats up = sse4Floats(radiusY) * lanes.angles.sine;
        sse::StoreInterleaved(x, TowardsTop<orientation>(sse4Floats(centerY), up), points + 2 * i);
        lanes.Advance();
    }
}

}  // namespace SSE2

#endif
