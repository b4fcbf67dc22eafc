#ifndef KIVFISHEYE_LIB_TEST_H
#define KIVFISHEYE_LIB_TEST_H

#include "KivFisheyeTypes.h"

/// The parts of the timing program. It times the conversions of all pixel formats, mounts and views
/// and needs nothing but the library's public surface and aligned memory.

/// Bytes of a row of `width` pixels, padding included.
unsigned int CalculateStride(unsigned int width, KivFisheyeLib::PixelFormat format);

/// What processors call a level of `GetCPUInstructionSet`, 0 to 8; other levels must not be given.
const char* GetCPUInstructionSetName(int level);

/// Converts a frame of `width` times `height` pixels 30 times to the recommended output size, and
/// prints both sizes and the milliseconds of processor time that one conversion took. What the
/// pictures show is never looked at, and nor are results: a run that could not be set up prints a
/// time near zero.
void Test(unsigned int width, unsigned int height, KivFisheyeLib::PixelFormat format,
          KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view);

#endif
