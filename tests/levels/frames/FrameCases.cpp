#include "FrameCases.h"

#include <KivFisheyeLib.h>

void PrintFrameDigests() {
    std::printf("level %d\n", GetCPUInstructionSet());
    PrintConverterDigests();
    PrintCameraDigests();
    PrintMeshDigests();
}
