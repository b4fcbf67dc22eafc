#ifndef KIVFISHEYE_TARGET_REGION_H
#define KIVFISHEYE_TARGET_REGION_H

// Everything defined between the two macros may use the named instructions, and nothing else of the
// file may. All includes stand before the region, so that no inline function of a library is
// compiled with instructions that the processor may lack.

#define KIVFISHEYE_PRAGMA(text) _Pragma(#text)

#if defined(__x86_64__) && defined(__clang__)
#define KIVFISHEYE_TARGET_BEGIN(features) \
    KIVFISHEYE_PRAGMA(clang attribute push(__attribute__((target(features))), apply_to = function))
#define KIVFISHEYE_TARGET_END _Pragma("clang attribute pop")
#elif defined(__x86_64__) && defined(__GNUC__)
#define KIVFISHEYE_TARGET_BEGIN(features) \
    _Pragma("GCC push_options") KIVFISHEYE_PRAGMA(GCC target(features))
#define KIVFISHEYE_TARGET_END _Pragma("GCC pop_options")
#else
#define KIVFISHEYE_TARGET_BEGIN(features)
#define KIVFISHEYE_TARGET_END
#endif

#endif
