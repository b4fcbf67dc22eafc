#ifndef KIVFISHEYE_FUZZ_KERNELS_CHECK_H
#define KIVFISHEYE_FUZZ_KERNELS_CHECK_H

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include "Check.h"
#include "support/FloatBits.h"
#include "support/GuardedBuffer.h"
#include "support/KernelForm.h"
#include "support/PanoramaFrames.h"

// Runs a kernel in memory between guard pages, and ends the process where it does not leave there
// what it should.

/// A job in one of its forms, in words.
template <class Job>
struct Attempt {
    const Job& job;
    std::string form;

    friend std::ostream& operator<<(std::ostream& out, const Attempt& attempt) {
        return out << attempt.form << " of " << attempt.job;
    }
};

template <class Job>
Attempt(const Job&, std::string) -> Attempt<Job>;

/// Where a job's memory lies, and what it holds before: every job runs in both ways.
struct MemoryWay {
    GuardedBuffer::Side side;
    unsigned char fill;
};

constexpr MemoryWay kMemoryWays[] = {{GuardedBuffer::Side::EndsAtGuard, 0x5A},
                                     {GuardedBuffer::Side::StartsAtGuard, 0xC3}};

/// Whether every attempt is told on the standard error before it is made. A step out of memory ends
/// the process without a word: replayed with KIVFISHEYE_FUZZ_TELL set, the last line says of what.
inline bool TellsAttempts() {
    static const bool tells = std::getenv("KIVFISHEYE_FUZZ_TELL") != nullptr;
    return tells;
}

/// A source, or a table, that may only be read.
class ReadOnlyBytes {
public:
    ReadOnlyBytes(const void* bytes, std::size_t count, GuardedBuffer::Side side)
        : m_buffer(count, side) {
        if (count > 0) {
            std::memcpy(m_buffer.data(), bytes, count);
        }
        m_buffer.MakeReadOnly();
    }

    const unsigned char* data() const { return m_buffer.data(); }
    unsigned char* data() { return m_buffer.data(); }

private:
    GuardedBuffer m_buffer;
};

inline bool IsSame(float a, float b) {
    return IsSameFloat(a, b);
}
template <class Element>
bool IsSame(Element a, Element b) {
    return a == b;
}

/// Expects that `run(elements, side)` leaves what `expectedOf(before)` says in a list of `count`
/// elements that held `before`, whatever that was, and touches nothing around it.
template <class Element, class Run, class ExpectedOf, class Words>
void CheckStores(std::size_t count, Run&& run, ExpectedOf&& expectedOf, const Words& words) {
    for (const MemoryWay& way : kMemoryWays) {
        if (TellsAttempts()) {
            std::cerr << words << std::endl;
        }
        const std::size_t bytes = count * sizeof(Element);
        GuardedBuffer memory(bytes, way.side, way.fill);
        std::vector<Element> before(count);
        if (count > 0) {
            std::memcpy(before.data(), memory.data(), bytes);
        }
        run(reinterpret_cast<Element*>(memory.data()), way.side);
        std::vector<Element> actual(count);
        if (count > 0) {
            std::memcpy(actual.data(), memory.data(), bytes);
        }
        const std::vector<Element> expected = expectedOf(std::move(before));
        for (std::size_t i = 0; i < count; ++i) {
            Expect(IsSame(actual[i], expected.at(i)), words, ": element ", i, " of ", count, " is ",
                   +actual[i], " instead of ", +expected[i]);
        }
        Expect(memory.IsSurroundingUntouched(), words, ": wrote outside of its ", bytes, " bytes");
    }
}

/// The same of a conversion, `convert(src, dst)`. `paint(frame)` makes of a frame's bytes what the
/// conversion should leave there.
template <class Convert, class Paint, class Words>
void CheckPicture(const std::vector<unsigned char>& source, std::size_t outputBytes,
                  Convert&& convert, Paint&& paint, const Words& words) {
    CheckStores<unsigned char>(
        outputBytes,
        [&](unsigned char* dst, GuardedBuffer::Side side) {
            const ReadOnlyBytes src(source.data(), source.size(), side);
            convert(src.data(), dst);
        },
        [&](std::vector<unsigned char> frame) {
            paint(frame);
            return frame;
        },
        words);
}

/// Expects each entry to be that of a whole pixel inside the source, or that of none.
template <class Words>
void CheckEntries(const std::vector<int>& entries, const PanoramaFrames& frames, int bytesPerPixel,
                  const Words& words) {
    for (const int entry : entries) {
        const bool isPixel = entry >= 0 && frames.srcStride > 0 &&
                             entry / frames.srcStride < frames.srcHeight &&
                             entry % frames.srcStride < frames.srcWidth * bytesPerPixel &&
                             entry % frames.srcStride % bytesPerPixel == 0;
        Expect(isPixel || entry == kNoSource, words, ": entry ", entry, " is no source pixel's");
    }
}

/// The forms of pictures' kernels that this processor runs, as far as `last`.
inline std::vector<KernelForm> PictureFormsUpTo(KernelForm last) {
    std::vector<KernelForm> forms;
    for (const KernelForm form : {KernelForm::C, KernelForm::SSE41, KernelForm::AVX}) {
        if (form <= last && CanRun(form)) {
            forms.push_back(form);
        }
    }
    return forms;
}

#endif
