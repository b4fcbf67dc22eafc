#ifndef KIVFISHEYE_INSTRSET_DETECT_H
#define KIVFISHEYE_INSTRSET_DETECT_H

/// The instruction set of this processor, as the level that `GetCPUInstructionSet` gives clients.
/// AVX counts only when the operating system saves its registers. Read from the processor on the
/// first call; a processor that is not x86 gives 0. Any thread may call it.
int instrset_detect();

/// The level that kernels are chosen by; the same for the life of the process.
int GetCpuInstructionSet();

/// 1 when the processor has the extension and the system supports AVX, else 0.
int hasFMA3();
int hasFMA4();
int hasXOP();

#endif
