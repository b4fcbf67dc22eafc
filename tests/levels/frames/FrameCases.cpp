#include "FrameCases.h"

#include <KivFisheyeLib.h>

bool PrintFrameDigests() {
    std::printf("level %d\n", GetCPUInstructionSet());
    PrintConverterDigests();
    PrintCameraDigests();
    PrintMeshDigests();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        std::fputs("The digests of the frames cannot be written.\n", stderr);
        return false;
    }
    return true;
}
