#ifndef KIVFISHEYE_TESTS_FOREIGN_CLIENT_H
#define KIVFISHEYE_TESTS_FOREIGN_CLIENT_H

#include <cstdint>
#include <vector>

// A client that was built without the library's headers. Objects go in as bare addresses.

/// Call every operation of an interface once, in the order of declaration, each with arguments that
/// no other call has. Pointers and references lead to elements of `places`. The results come back.
std::vector<std::int64_t> CallCameraOperations(void* camera, float* places);
std::vector<std::int64_t> CallOutlineOperations(void* outlines, float* places);
std::vector<std::int64_t> CallBoundaryOperations(void* boundaries, float* places);

void DeleteCamera(void* camera);
void DeleteOutlines(void* outlines);
void DeleteBoundaries(void* boundaries);

#endif
