#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>

#include "accuracy/AccuracyTables.h"
#include "accuracy/Document.h"
#include "accuracy/PictureAccuracy.h"

// Measures how far the forms of every kernel lie from each other and from exact geometry, and
// writes a page about it to standard output.

namespace {

constexpr int kGeometries = 250;
constexpr const char* kUsage =
    "Usage: KivFisheyeAccuracy [--geometries N]\n"
    "Writes how accurate the forms of every kernel are, measured on N random geometries of each\n"
    "family and source size, 250 unless told otherwise.\n";

/// Counts on a terminal, and is silent elsewhere.
class Progress {
public:
    explicit Progress(int steps) : m_steps(steps) {}
    ~Progress() {
        if (m_isShown) {
            std::fputs("\r\033[K", stderr);
        }
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Step() {
        ++m_done;
        if (m_isShown) {
            std::fprintf(stderr, "\r%d of %d geometries", m_done, m_steps);
        }
    }

private:
    int m_steps;
    int m_done = 0;
    bool m_isShown = isatty(STDERR_FILENO) != 0;
};

Measurements Measure(int geometries) {
    Measurements measured;
    measured.geometries = geometries;
    Progress progress(3 * geometries);
    for (const int side : kSourceSides) {
        const CoordinateSource source(side);
        GeometryGenerator rings(101);
        GeometryGenerator walls(102);
        GeometryGenerator cameras(103);
        for (int i = 0; i < geometries; ++i) {
            AddRing(rings, source, measured.pictures);
            AddWall(walls, source, measured.pictures);
            AddVCam(cameras, source, measured.pictures);
            progress.Step();
        }
    }
    GeometryGenerator lists(104);
    for (int i = 0; i < geometries; ++i) {
        AddLists(lists, measured.lists);
        progress.Step();
    }
    return measured;
}

/// The number that the text is, from 1 to 100000.
std::optional<int> CountOf(const std::string& text) {
    char* end = nullptr;
    const long count = std::strtol(text.c_str(), &end, 10);
    const bool isNumber = !text.empty() && text[0] >= '0' && text[0] <= '9' && *end == '\0';
    return isNumber && count >= 1 && count <= 100000 ? std::optional<int>(static_cast<int>(count))
                                                     : std::nullopt;
}

int Fail(const std::string& sentence, int status) {
    std::cerr << "KivFisheyeAccuracy: " << sentence << "\n";
    return status;
}

/// Writes the page when all of it is known.
int Run(int geometries) {
    if (!CanRun(KernelForm::AVX)) {
        return Fail("this processor lacks AVX, without which not every form can be measured.", 1);
    }
    std::ostringstream page;
    try {
        WriteDocument(Measure(geometries), page);
    } catch (const std::exception& error) {
        return Fail(error.what(), 1);
    }
    std::cout << page.str() << std::flush;
    return std::cout ? 0 : Fail("the page cannot be written.", 1);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string option = argc > 1 ? argv[1] : "";
    if (argc == 2 && (option == "--help" || option == "-h")) {
        std::cout << kUsage;
        return 0;
    }
    std::optional<int> geometries = argc == 1 ? std::optional<int>(kGeometries) : std::nullopt;
    if (argc == 3 && option == "--geometries") {
        geometries = CountOf(argv[2]);
    }
    return geometries ? Run(*geometries)
                      : Fail("give nothing, or --geometries and a number from 1 to 100000.", 2);
}
