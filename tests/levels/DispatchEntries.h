#ifndef KIVFISHEYE_TESTS_DISPATCH_ENTRIES_H
#define KIVFISHEYE_TESTS_DISPATCH_ENTRIES_H

#include <array>
#include <string>
#include <vector>

/// Where an entry writes: points, or the bytes of a picture.
struct alignas(32) EntryOutput {
    std::array<float, 4096> floats{};

    unsigned char* Picture() { return reinterpret_cast<unsigned char*>(floats.data()); }
    bool operator==(const EntryOutput& other) const;
};

/// The forms that a family takes at the levels 0 to 8.
using FormsByLevel = std::array<const char*, 9>;

/// A pointer that kernels are called through, by the names in the sources.
struct DispatchEntry {
    FormsByLevel forms;
    std::string algorithm;  ///< the namespace of pointer and kernels
    std::string pointer;    ///< with its holder
    std::string kernel;     ///< without the namespace of its form, or with `*` in its place
    void (*call)(EntryOutput& output);

    std::string Pointer() const;
    /// How the name of the kernel begins that a processor of this level takes.
    std::string Kernel(int level) const;
};

/// All there are. One that needs another's work stands behind it.
std::vector<DispatchEntry> AllDispatchEntries();

#endif
