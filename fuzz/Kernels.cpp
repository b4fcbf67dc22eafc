#include <cstddef>

#include "Check.h"
#include "KernelsJobs.h"
#include "Outcomes.h"

// Random jobs for the kernels themselves, each run in all forms that this processor has.

namespace {

struct Job {
    const char* name;
    void (*check)(KernelsInput& input);
};

constexpr Job kJobs[] = {{"ring, direct", CheckRingDirect},
                         {"ring, table", CheckRingTable},
                         {"wall, direct", CheckWallDirect},
                         {"wall, table", CheckWallTable},
                         {"virtual camera", CheckVCam},
                         {"turned table", CheckTurnedTable},
                         {"wall, by table", CheckWallTableKernel},
                         {"ring, converters", CheckRingConverters},
                         {"wall, converters", CheckWallConverters},
                         {"ring mesh", CheckRingMesh},
                         {"wall mesh", CheckWallMesh},
                         {"ellipse", CheckEllipse},
                         {"half rings", CheckHalfRings},
                         {"wall outline", CheckWallOutline},
                         {"virtual camera outline", CheckVCamOutline}};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    constexpr int kCount = sizeof(kJobs) / sizeof(kJobs[0]);
    KernelsInput input(data, size);
    const Job& job = kJobs[input.Between(0, kCount - 1)];
    BeginOperation(job.name);
    CountOutcome(job.name, "checked");
    job.check(input);
    return 0;
}
