#include "memory/MemoryDocument.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace {

/// "4 398 232": by thousands.
std::string Bytes(std::size_t bytes) {
    std::string digits = std::to_string(bytes);
    for (std::size_t end = digits.size(); end > 3;) {
        end -= 3;
        digits.insert(end, " ");
    }
    return digits;
}

/// In MiB with one digit.
std::string Mebibytes(std::size_t bytes) {
    constexpr std::size_t kMebi = std::size_t{1} << 20;
    const std::size_t tenths = (bytes * 10 + kMebi / 2) / kMebi;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10);
}

void WriteContexts(const MemoryMeasurements& measured, std::uint32_t side, std::ostream& out) {
    out << "\nSource " << side << "x" << side << ":\n\n"
        << "| Mount and view | Output | Held | While set | For `Process` | For `Snapshot` | Its "
           "block |\n|---|---|---:|---:|---:|---:|---:|\n";
    for (const MemoryFigures& context : measured.contexts) {
        if (context.srcSide == side) {
            out << "| " << NameOf(context.view) << " | " << context.dstWidth << "x"
                << context.dstHeight << " | " << Bytes(context.held) << " | "
                << Bytes(context.whileSet) << " | " << Bytes(context.forProcess) << " | "
                << Bytes(context.forSnapshot) << " | " << Bytes(context.snapshot) << " |\n";
        }
    }
}

/// The share of panoramas' tables that their lists add, in tenths of a percent, rounded up.
std::string LargestShareOfLists(const MemoryMeasurements& measured) {
    std::size_t largest = 0;
    for (const MemoryFigures& context : measured.contexts) {
        const std::size_t table = std::size_t{4} * context.dstWidth * context.dstHeight;
        if (context.view.IsPanorama()) {
            largest = std::max(largest, ((context.held - table) * 1000 + table - 1) / table);
        }
    }
    return std::to_string(largest / 10) + "." + std::to_string(largest % 10) + " %";
}

void WriteRule(const MemoryMeasurements& measured, std::ostream& out) {
    out << R"(# How much memory a context takes

The client's frames are its own and do not count here. All of the rest is on the heap of the
process:

- **A virtual camera** holds its objects, a few hundred bytes, whatever the sizes. `Process` takes
  one block for the time of the call: 12 bytes for each pixel of an output row with AVX, nothing
  with SSE4.1, and 4 bytes for each input row below that and on Arm.
- **A panorama** holds an address table of 4 bytes for each output pixel, and a list of the cache
  lines of the input that the table leads to. The list has 4 bytes for each line, of which there is
  at most one for each 64 bytes of input and one for each 4 pixels of output. It has 4 more for each
  output row and each 2048 columns of it, or 256 columns in panoramas of more than 4 Mi pixels. In
  the recommended size it adds up to )"
        << LargestShareOfLists(measured) << R"(. `Process` takes nothing.
- **A setter** that builds an address table lets go of the old one first. Until it returns it takes,
  beside what it leaves behind, 1 byte for each 64 bytes of input and a second list, as long as the
  first might have become; or where that is more, 8 bytes for each output column, and 4 for each
  input row in scalar form.
- **`Snapshot`** takes two pictures of the recommended size, of which one is the block that it hands
  out with its 64 bytes of header. A panorama takes an address table of its own too, built as by a
  setter, and a virtual camera what `Process` takes. Everything but the block is given back at once.

Contexts share nothing, so several take the sum. In the recommended size reckon a panorama as 4.25
bytes for each output pixel and, while it is set, 5 bytes more for each 64 bytes of input.
)";
}

void WriteResident(const MemoryMeasurements& measured, std::ostream& out) {
    const auto row = [&out](const char* name, const ResidentFigures& figures) {
        out << "| " << name << " | " << Mebibytes(figures.whenSet) << " | "
            << Mebibytes(figures.afterRebuilds) << " | " << Mebibytes(figures.afterDeletion)
            << " |\n";
    };
    out << "\n## What stays with the process\n\n"
           "The C library may keep memory that was given back. glibc maps large blocks by "
           "themselves at first, but\nonce one of up to 32 MiB was freed, blocks of that size come "
           "from its common heap, where small blocks of\nanyone's may pin what lies below them. A "
           "program that sets panoramas again and again, and wants the memory\nback, calls "
           "`mallopt(M_MMAP_THRESHOLD, 128 * 1024)` once at its start. A context for a full "
           "panorama of a\nceiling camera, with the largest source above, added to a process, in "
           "MiB:\n\n"
        << "| | When set | After " << kRebuilds
        << " times more | After the context's end |\n|---|---:|---:|---:|\n";
    row("glibc as it is", measured.resident);
    row("with that call", measured.residentMapped);
    out << "\nThe first row depends on what else the process has on its heap: runs of the same "
           "program gave 98 to 128.\n";
}

}  // namespace

void WriteMemoryDocument(const MemoryMeasurements& measured, std::ostream& out) {
    WriteRule(measured, out);
    out << "\n## Measured\n\n"
           "Bytes of the heap that one context takes with frames of 32 bits and an output of the "
           "recommended size:\n*held* between frames, *while set* the most while it was made and "
           "set, held bytes included; for `Process`\nand for `Snapshot` the most during the call "
           "beyond what is held, the block included. The\nprocessor was of level "
        << GetCPUInstructionSet() << ", as `GetCPUInstructionSet` tells; 7 and 8 have AVX.\n";
    for (const std::uint32_t side : kSourceSides) {
        WriteContexts(measured, side, out);
    }
    WriteResident(measured, out);
    out << "\n`scripts/memory` measures anew and writes this page. Tests hold the rules above to "
           "the byte:\n`tests/memory/ContextMemoryTest.cpp`.\n";
}
