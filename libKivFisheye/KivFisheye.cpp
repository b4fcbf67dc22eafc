#include "KivFisheye.h"

#include <cstdio>

class KivFisheyePriv {
public:
    void HelloWorldPriv(const char* text);
};

void KivFisheye::HelloWorld(const char* text) {
    KivFisheyePriv().HelloWorldPriv(text);
}

// <iostream> would run an initialiser whenever the library is loaded.
void KivFisheyePriv::HelloWorldPriv(const char* text) {
    std::puts(text);
}
