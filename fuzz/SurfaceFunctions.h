#ifndef KIVFISHEYE_FUZZ_SURFACE_FUNCTIONS_H
#define KIVFISHEYE_FUZZ_SURFACE_FUNCTIONS_H

#include "SurfaceClient.h"

// What clients call without a context.

void ConvertByConverter(Play& play);
void FitSizes(Play& play);
void FitRectangle(Play& play);
void LayMesh(Play& play);
void CalculateInThreeDimensions(Play& play);
void AskForInstructionSet(Play& play);

#endif
