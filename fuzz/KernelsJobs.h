#ifndef KIVFISHEYE_FUZZ_KERNELS_JOBS_H
#define KIVFISHEYE_FUZZ_KERNELS_JOBS_H

#include "KernelsInput.h"

// Each of these makes one job of the input, runs all forms of its kernel that this processor has,
// and ends the process where one does not do what it should.

// Pictures and tables.
void CheckRingDirect(KernelsInput& input);
void CheckRingTable(KernelsInput& input);
void CheckWallDirect(KernelsInput& input);
void CheckWallTable(KernelsInput& input);
void CheckVCam(KernelsInput& input);

// Conversions by tables: of any entries, turned by any pan; of the wall's pixels of 32 bits; and
// those of the exported converters.
void CheckTurnedTable(KernelsInput& input);
void CheckWallTableKernel(KernelsInput& input);
void CheckRingConverters(KernelsInput& input);
void CheckWallConverters(KernelsInput& input);

// Lists of floats.
void CheckRingMesh(KernelsInput& input);
void CheckWallMesh(KernelsInput& input);
void CheckEllipse(KernelsInput& input);
void CheckHalfRings(KernelsInput& input);
void CheckWallOutline(KernelsInput& input);
void CheckVCamOutline(KernelsInput& input);

#endif
