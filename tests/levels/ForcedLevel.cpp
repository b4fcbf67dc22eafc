#include "ForcedLevel.h"

#include "instrset_detect.h"

int forcedLevel = 0;

int instrset_detect() {
    return forcedLevel;
}

int GetCpuInstructionSet() {
    return forcedLevel;
}

int hasFMA3() {
    return 0;
}
int hasFMA4() {
    return 0;
}
int hasXOP() {
    return 0;
}
