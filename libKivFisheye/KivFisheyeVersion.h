#ifndef KIVFISHEYE_VERSION_H
#define KIVFISHEYE_VERSION_H

/// The version of the headers, and of the library that they were installed with.
#define KIVFISHEYE_VERSION_MAJOR 1
#define KIVFISHEYE_VERSION_MINOR 0
#define KIVFISHEYE_VERSION_PATCH 0
#define KIVFISHEYE_VERSION "1.0.0"

#endif
