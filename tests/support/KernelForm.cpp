#include "support/KernelForm.h"

#include <algorithm>
#include <cmath>

#include "instrset_detect.h"
#include "support/VectorMathModel.h"

namespace {

constexpr int kLevelOfAvx = 7;
constexpr int kLevelOfSse41 = 5;

int IndexAt(KernelForm form, float position) {
    if (form == KernelForm::SSE41) {
        return model::Round(position);
    }
    return static_cast<int>(form == KernelForm::AVX ? position + 0.5F : position);
}

}  // namespace

std::string NameOf(KernelForm form) {
    const std::string names[] = {"C", "SSE41", "AVX"};
    return names[static_cast<int>(form)];
}

bool CanRun(KernelForm form) {
    const int needed =
        form == KernelForm::AVX ? kLevelOfAvx : (form == KernelForm::SSE41 ? kLevelOfSse41 : 0);
    return GetCpuInstructionSet() >= needed;
}

KernelForm FormOfLevel(int level) {
    return level >= kLevelOfAvx ? KernelForm::AVX : DirectFormOfLevel(level);
}

KernelForm DirectFormOfLevel(int level) {
    return level >= kLevelOfSse41 ? KernelForm::SSE41 : KernelForm::C;
}

KernelForm FormOfTables() {
    return FormOfLevel(GetCpuInstructionSet());
}

KernelForm FormOfDirectConversions() {
    return DirectFormOfLevel(GetCpuInstructionSet());
}

// From 2^23 pixels on, single precision may not tell the last pixel from what lies beyond it.
int PixelAt(KernelForm form, float position, int count) {
    return std::min(IndexAt(form, position), count - 1);
}

int PixelShownAt(KernelForm form, double position) {
    return static_cast<int>(form == KernelForm::C ? std::floor(position) : std::round(position));
}
