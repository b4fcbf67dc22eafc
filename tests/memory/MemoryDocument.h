#ifndef KIVFISHEYE_TESTS_MEMORY_DOCUMENT_H
#define KIVFISHEYE_TESTS_MEMORY_DOCUMENT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <vector>

#include "memory/ContextMemory.h"

constexpr std::array<std::uint32_t, 2> kSourceSides = {1024, 2880};

/// One context with frames of 32 bits and an output of the recommended size, in bytes.
struct MemoryFigures {
    MountedView view;
    std::uint32_t srcSide;
    std::uint32_t dstWidth;
    std::uint32_t dstHeight;
    std::size_t held;
    std::size_t whileSet;
    std::size_t forProcess;
    std::size_t forSnapshot;
    std::size_t snapshot;
};

/// What a process gains of resident memory by the context with the largest table, in bytes.
struct ResidentFigures {
    std::size_t whenSet;
    std::size_t afterRebuilds;
    std::size_t afterDeletion;
};

struct MemoryMeasurements {
    std::vector<MemoryFigures> contexts;
    ResidentFigures resident;
    ResidentFigures residentMapped;
};

constexpr int kRebuilds = 20;

/// Writes the page in Markdown.
void WriteMemoryDocument(const MemoryMeasurements& measured, std::ostream& out);

#endif
