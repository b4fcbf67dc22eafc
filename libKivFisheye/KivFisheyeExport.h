#ifndef KIVFISHEYE_EXPORT_H
#define KIVFISHEYE_EXPORT_H

/// Marks what the shared library offers to its clients; everything else stays hidden inside it.
#if defined(__GNUC__)
#define KIVFISHEYE_API __attribute__((visibility("default")))
#else
#define KIVFISHEYE_API
#endif

#endif
