#include "FrameCases.h"

// Prints what the shared library makes of all cases on this processor.

int main() {
    PrintFrameDigests();
    return 0;
}
