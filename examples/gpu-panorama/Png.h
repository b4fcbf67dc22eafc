#ifndef GPU_PANORAMA_PNG_H
#define GPU_PANORAMA_PNG_H

#include <string>

#include "Picture.h"

// Both functions throw `std::runtime_error`.

Picture ReadPng(const std::string& path);
void WritePng(const std::string& path, const Picture& picture);

#endif
