#ifndef KIVFISHEYE_TESTS_MEMORY_MODEL_H
#define KIVFISHEYE_TESTS_MEMORY_MODEL_H

#include <cstddef>

#include "memory/ContextMemory.h"

// What a context should take of the heap beside its objects, in bytes, reckoned from its sizes and
// its picture.

constexpr std::size_t kLineBytes = 64;
constexpr std::size_t kBytesPerEntry = 4;
/// Lines are looked for in every fourth column.
constexpr std::size_t kSparse = 4;

std::size_t Pixels(const ClientFrame& frame);
std::size_t Bytes(const ClientFrame& frame);

/// How many rows the output has when it is cut into tiles.
std::size_t TileRows(const ClientFrame& output);

/// How many cache lines of the input are met by every fourth column of the output, the next row
/// beginning one column further to the right. The picture tells, since input pixels tell their
/// places; so the context converts a frame.
std::size_t LinesMet(MeasuredContext& context, int bytesPerPixel);

/// The table of a panorama and its list of lines, between frames.
std::size_t TableBytes(MeasuredContext& context, int bytesPerPixel);

/// What listing the lines takes for a while: a byte for each line, and room for as many as the list
/// may get.
std::size_t ListingBytes(const MeasuredContext& context);

/// What filling the table takes for a while: the sine and the cosine of each column, and in scalar
/// arithmetic the offset of each input row.
std::size_t FillingBytes(const MeasuredContext& context);

/// What one frame of a virtual camera takes.
std::size_t FrameBytes(const MeasuredContext& context);

#endif
