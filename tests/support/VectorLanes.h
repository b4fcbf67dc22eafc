#ifndef KIVFISHEYE_TESTS_VECTOR_LANES_H
#define KIVFISHEYE_TESTS_VECTOR_LANES_H

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "TargetRegion.h"
#include "instrset_detect.h"
#include "sse/avxMath.h"
#include "sse/sseMath.h"
#include "sse/sseUtil.h"
#include "support/VectorMathModel.h"

namespace fourLanes {

using Floats = sse::sse4Floats;
using Mask = sse::sseMask;
using sse::LaneGroups;
using sse::LaneIndices;
using sse::sseAcos;
using sse::sseAtan;
using sse::sseAtan2;
using sse::sseCos;
using sse::sseSin;

#include "support/LaneCalls.inl"

}  // namespace fourLanes

KIVFISHEYE_TARGET_BEGIN("avx")
namespace eightLanes {

using Floats = sse::AVX::avx8Floats;
using Mask = sse::AVX::avx8Mask;
using sse::AVX::LaneGroups;
using sse::AVX::LaneIndices;
using sse::AVX::sseAcos;
using sse::AVX::sseAtan;
using sse::AVX::sseAtan2;
using sse::AVX::sseCos;
using sse::AVX::sseSin;

#include "support/LaneCalls.inl"

/// The ones that only these lanes have.
inline void Truncate(const float* a, int* result) {
    TruncateToInts(Floats::Load(a)).Store(result);
}

}  // namespace eightLanes
KIVFISHEYE_TARGET_END

/// The lowest processor level that has the lanes.
template <class Lanes>
constexpr int kLevelOfLanes = Lanes::kCount == 8 ? 7 : 2;

/// A function of one row of lanes.
using RowFunction = void (*)(const float* x, float* result);

/// A test of one width of lanes. It does not run where the processor lacks them.
template <class Lanes>
class LanesTest : public testing::Test {
protected:
    static constexpr std::size_t kCount = Lanes::kCount;
    using Row = std::array<float, kCount>;

    static Row RowOf(float value) {
        Row row;
        row.fill(value);
        return row;
    }

    /// The function's result for one number in every lane.
    static float Of(RowFunction function, float x) {
        const Row in = RowOf(x);
        Row out{};
        function(in.data(), out.data());
        EXPECT_TRUE(std::all_of(out.begin(), out.end(),
                                [&](float value) { return IsSameFloat(value, out[0]); }));
        return out[0];
    }

    void SetUp() override {
        if (GetCpuInstructionSet() < kLevelOfLanes<Lanes>) {
            GTEST_SKIP() << "this processor has no vectors of " << Lanes::kCount << " lanes";
        }
    }
};

using LaneWidths = testing::Types<fourLanes::Lanes, eightLanes::Lanes>;

#endif
