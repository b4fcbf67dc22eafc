#include "support/RingKernelSet.h"

#include "DownwardFisheyeAlgo_C.h"
#include "UpwardFisheyeAlgo_C.h"
#if defined(__x86_64__)
#include "DownwardFisheyeAlgo_AVX.h"
#include "DownwardFisheyeAlgo_SSE41.h"
#include "UpwardFisheyeAlgo_AVX.h"
#include "UpwardFisheyeAlgo_SSE41.h"
#endif

namespace {

namespace scalar_table {
namespace kernels = UpwardFisheyeAlgoNS::C;
#include "support/RingKernelSet.inl"
}  // namespace scalar_table

namespace scalar_ceiling {
namespace kernels = DownwardFisheyeAlgoNS::C;
#include "support/RingKernelSet.inl"
}  // namespace scalar_ceiling

#if defined(__x86_64__)
namespace sse41_table {
namespace kernels = UpwardFisheyeAlgoNS::SSE41;
#include "support/RingKernelSet.inl"
}  // namespace sse41_table

namespace sse41_ceiling {
namespace kernels = DownwardFisheyeAlgoNS::SSE41;
#include "support/RingKernelSet.inl"
}  // namespace sse41_ceiling

namespace avx_table {
namespace kernels = UpwardFisheyeAlgoNS::AVX;
#include "support/RingBuilderSet.inl"
}  // namespace avx_table

namespace avx_ceiling {
namespace kernels = DownwardFisheyeAlgoNS::AVX;
#include "support/RingBuilderSet.inl"
}  // namespace avx_ceiling
#endif

template <int bits>
RingKernelSet KernelsOf(Mount mount, [[maybe_unused]] KernelForm form) {
    const bool isTable = mount == Mount::Table;
#if defined(__x86_64__)
    if (form == KernelForm::SSE41) {
        return isTable ? sse41_table::Converting<bits>() : sse41_ceiling::Converting<bits>();
    }
    if (form == KernelForm::AVX) {
        return isTable ? avx_table::Building<bits>() : avx_ceiling::Building<bits>();
    }
#endif
    return isTable ? scalar_table::Converting<bits>() : scalar_ceiling::Converting<bits>();
}

}  // namespace

RingKernelSet RingKernelsOf(Mount mount, KernelForm form, int bitsPerPixel) {
    return bitsPerPixel == 24 ? KernelsOf<24>(mount, form) : KernelsOf<32>(mount, form);
}
