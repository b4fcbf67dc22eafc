#include <cstdio>

#include "FrameCases.h"

// Prints what the shared library makes of all cases on this processor.

int main(int argc, char**) {
    if (argc > 1) {
        std::fputs("KivFisheyeFrames takes no arguments.\n", stderr);
        return 2;
    }
    return PrintFrameDigests() ? 0 : 1;
}
