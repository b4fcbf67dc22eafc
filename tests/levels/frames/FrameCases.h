#ifndef KIVFISHEYE_TESTS_FRAME_CASES_H
#define KIVFISHEYE_TESTS_FRAME_CASES_H

#include <cinttypes>
#include <cstdio>
#include <string>

#include "CaseGenerator.h"
#include "Digest.h"

// What the exported surface makes of some hundred frames, as a line of text for each: its name, and
// the digest of the whole output. Equal texts are equal pictures. The name's part before the slash
// is the family, whose first word is the mount and whose last one the pixel size.

/// Prints the lines of one family. A case is made by `makeCase` from a generator into a digest.
template <class MakeCase>
void PrintFamily(const std::string& family, int cases, MakeCase&& makeCase) {
    for (int i = 0; i < cases; ++i) {
        const std::string number = std::to_string(1000 + i).substr(1);
        const std::string name = family + "/" + number;
        CaseGenerator generator(name);
        Digest digest;
        makeCase(generator, digest);
        std::printf("%s %016" PRIx64 "\n", name.c_str(), digest.Value());
    }
}

/// Prints the processor's level, and the lines of all families. Where they cannot all be written,
/// says so and returns false.
bool PrintFrameDigests();

// In parts: the exported converters, the contexts with their outlines, and the meshes.
void PrintConverterDigests();
void PrintCameraDigests();
void PrintMeshDigests();

#endif
