#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <list>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "memory/HeapUse.h"
#include "soak/ProcessUse.h"
#include "soak/SoakCamera.h"

// Drives a few contexts at random for many frames and finds whatever grows meanwhile: bytes and
// blocks of the heap, resident memory, file descriptors, threads.

namespace {

constexpr int kContexts = 3;
constexpr int kLooks = 10;
constexpr int kFramesBetweenComparisons = 100;
// Pages of the heap that the first frames had not touched yet.
constexpr std::size_t kResidentNoise = std::size_t{2} << 20;
constexpr int kFrames = 100000;
constexpr int kMostFrames = 1000000000;
constexpr const char* kUsage =
    "Usage: KivFisheyeSoak [--lose-snapshot] [FRAMES]\n"
    "Drives camera contexts at random for FRAMES frames, 100000 unless told otherwise, and fails\n"
    "when memory, file descriptors or threads grow, or when a context answers what it should not.\n"
    "With --lose-snapshot it keeps a snapshot, so that it must fail.\n";

struct Orders {
    int frames = kFrames;
    bool losesSnapshot = false;
};

/// What the process has when every context is in the same state.
struct Look {
    HeapUse heap;
    ProcessUse process;
};

void RequireSame(const char* what, std::size_t before, std::size_t after) {
    if (before != after) {
        throw std::runtime_error(std::string("the ") + what + " went from " +
                                 std::to_string(before) + " to " + std::to_string(after) + ".");
    }
}

class Soak {
public:
    explicit Soak(const Orders& orders) : m_orders(orders) {
        for (int i = 0; i < kContexts; ++i) {
            m_cameras.emplace_back(m_engine);
        }
        m_picture = m_cameras.front().Output();
    }

    /// Throws `std::runtime_error` when anything is wrong.
    void Run() {
        int frame = 0;
        for (int look = 1; look <= kLooks; ++look) {
            const auto end = static_cast<int>(std::int64_t{m_orders.frames} * look / kLooks);
            for (; frame < end; ++frame) {
                NextFrame(frame % kFramesBetweenComparisons == 0);
            }
            TakeLook(look == 1);
        }
    }

    const Look& First() const { return m_first; }
    const Look& Last() const { return m_last; }

private:
    void NextFrame(bool isCompared) {
        for (SoakCamera& camera : m_cameras) {
            camera.NextFrame();
            if (isCompared) {
                camera.CompareWithNewContext();
            }
        }
    }

    void TakeLook(bool isFirst) {
        for (SoakCamera& camera : m_cameras) {
            camera.Settle();
        }
        const std::vector<unsigned char>& picture = m_cameras.front().Output();
        m_last.process = ProcessInUse();
        m_last.heap = HeapInUse();
        if (!isFirst) {
            Compare(picture);
            return;
        }
        m_first = m_last;
        std::copy(picture.begin(), picture.end(), m_picture.begin());
        if (m_orders.losesSnapshot) {
            m_cameras.front().LoseSnapshot();
        }
    }

    void Compare(const std::vector<unsigned char>& picture) const {
        RequireSame("bytes of the heap", m_first.heap.bytes, m_last.heap.bytes);
        RequireSame("blocks of the heap", m_first.heap.blocks, m_last.heap.blocks);
        RequireSame("file descriptors", m_first.process.descriptors, m_last.process.descriptors);
        RequireSame("threads", m_first.process.threads, m_last.process.threads);
        if (picture != m_picture) {
            throw std::runtime_error("the same frame in the same state gives another picture.");
        }
        // A sanitizer keeps what is given back for a while.
        const std::size_t resident = m_first.process.residentBytes;
        if (CountsHeap() && m_last.process.residentBytes > resident + kResidentNoise) {
            RequireSame("bytes of resident memory", resident, m_last.process.residentBytes);
        }
    }

    Orders m_orders;
    std::mt19937 m_engine{1};
    std::list<SoakCamera> m_cameras;
    std::vector<unsigned char> m_picture;
    Look m_first{};
    Look m_last{};
};

void Run(const Orders& orders) {
    const HeapUse before = HeapInUse();
    Look first;
    Look last;
    {
        Soak soak(orders);
        soak.Run();
        first = soak.First();
        last = soak.Last();
    }
    RequireSame("bytes that contexts leave behind", 0, HeapInUse().bytes - before.bytes);
    std::cout << orders.frames << " frames of each of " << kContexts << " contexts: ";
    if (CountsHeap()) {
        std::cout << last.heap.bytes << " bytes of the heap in " << last.heap.blocks
                  << " blocks at each of " << kLooks << " looks; resident memory went from "
                  << first.process.residentBytes / 1024 << " to "
                  << last.process.residentBytes / 1024 << " KiB; ";
    } else {
        std::cout << "memory is left to the sanitizer; ";
    }
    std::cout << "file descriptors " << last.process.descriptors << " and threads "
              << last.process.threads << " throughout.\n";
}

/// The number that the text is, from `kLooks` up.
std::optional<int> CountOf(const std::string& text) {
    char* end = nullptr;
    const long count = std::strtol(text.c_str(), &end, 10);
    const bool isNumber = !text.empty() && text[0] >= '0' && text[0] <= '9' && *end == '\0';
    return isNumber && count >= kLooks && count <= kMostFrames
               ? std::optional<int>(static_cast<int>(count))
               : std::nullopt;
}

std::optional<Orders> OrdersOf(const std::vector<std::string>& arguments) {
    Orders orders;
    auto argument = arguments.begin();
    if (argument != arguments.end() && *argument == "--lose-snapshot") {
        orders.losesSnapshot = true;
        ++argument;
    }
    if (argument != arguments.end()) {
        const std::optional<int> frames = CountOf(*argument++);
        if (!frames) {
            return std::nullopt;
        }
        orders.frames = *frames;
    }
    return argument == arguments.end() ? std::optional<Orders>(orders) : std::nullopt;
}

int Fail(const std::string& sentence, int status) {
    std::cerr << "KivFisheyeSoak: " << sentence << "\n";
    return status;
}

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        std::cout << kUsage;
        return 0;
    }
    const std::optional<Orders> orders = OrdersOf(arguments);
    if (!orders) {
        return Fail("give a number of frames from 10 to 1000000000, or nothing.", 2);
    }
    try {
        Run(*orders);
    } catch (const std::exception& error) {
        return Fail(error.what(), 1);
    }
    return 0;
}
