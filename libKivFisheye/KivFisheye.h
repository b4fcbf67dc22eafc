#ifndef KIVFISHEYE_H
#define KIVFISHEYE_H

#include "KivFisheyeExport.h"

/// A first thing to call when trying whether a program finds the library.
class KivFisheye {
public:
    /// Prints `text`, which must not be null, and a newline on standard output.
    KIVFISHEYE_API void HelloWorld(const char* text);
};

#endif
