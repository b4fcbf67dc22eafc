#ifndef KIVFISHEYE_TESTS_KERNEL_FORM_H
#define KIVFISHEYE_TESTS_KERNEL_FORM_H

#include <string>

// The forms of the kernels that make pictures and tables, and what the models of all views ask of
// them.

enum class KernelForm { C, SSE41, AVX };

std::string NameOf(KernelForm form);

/// How many pixels a form takes at once.
constexpr int LanesOf(KernelForm form) {
    return form == KernelForm::C ? 1 : (form == KernelForm::SSE41 ? 4 : 8);
}

/// Whether this processor has the instructions.
bool CanRun(KernelForm form);

/// The form that a processor of this level runs: of virtual cameras and of the builders of
/// panoramas' tables, and of panoramas' direct conversions, which take no more than four lanes.
KernelForm FormOfLevel(int level);
KernelForm DirectFormOfLevel(int level);

/// The form that a panorama's converters take on this processor.
KernelForm FormOfTables();
KernelForm FormOfDirectConversions();

/// The pixel that a form takes for a position on a side of `count` pixels.
int PixelAt(KernelForm form, float position, int count);

/// The pixel that a form shows for an exact position, which lies away from where the next pixel
/// begins to be taken: the pixel that holds it, or the nearest one.
int PixelShownAt(KernelForm form, double position);

#endif
