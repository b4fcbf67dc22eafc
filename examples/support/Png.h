#ifndef EXAMPLES_PNG_H
#define EXAMPLES_PNG_H

#include <string>

#include "Picture.h"

// Both functions throw `std::runtime_error`.

Picture ReadPng(const std::string& path);
/// Leaves no half of a file behind.
void WritePng(const std::string& path, const Picture& picture);

#endif
