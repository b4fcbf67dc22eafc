#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <exception>
#include <iostream>
#include <list>
#include <sstream>
#include <stdexcept>

#include "memory/ContextMemory.h"
#include "memory/MemoryDocument.h"
#include "soak/ProcessUse.h"

// Measures what contexts take of the heap, and writes a page about it to standard output.

using namespace KivFisheyeLib;

namespace {

MemoryFigures Measure(const MountedView& view, std::uint32_t side) {
    MeasuredContext context(view, PixelFormatRGB32, side, side);
    const VideoFrameInfo& output = context.Output().record;
    MemoryFigures figures{};
    figures.view = view;
    figures.srcSide = side;
    figures.dstWidth = output.width;
    figures.dstHeight = output.height;
    figures.held = context.Held();
    figures.whileSet = context.MostWhileSet();
    figures.forProcess = context.ForProcess();
    figures.forSnapshot = context.ForSnapshot();
    figures.snapshot = sizeof(SnapshotHeader) + std::size_t{output.stride} * output.height;
    return figures;
}

/// In between there are blocks of anyone's, here of a few bytes each.
ResidentFigures MeasureResident() {
    constexpr std::uint32_t kSide = kSourceSides.back();
    const ClientFrame input = ClientFrame::OfCoordinates(kSide, kSide, PixelFormatRGB32);
    ClientFrame output(2 * kSide, kSide / 2, PixelFormatRGB32);
    output.Fill(1);
    std::list<int> others;
    const std::size_t before = ProcessInUse().residentBytes;
    const auto gain = [before] { return std::max(ProcessInUse().residentBytes, before) - before; };
    ResidentFigures figures{};
    void* const context = CreateKivFisheyeCameraContext();
    IKivFisheyeCamera* const camera = GetCameraAPI(context);
    camera->SetMountAndViewType(MountTypeCeiling, ViewTypeFullPanorama);
    camera->SetInputVideoParams(input.record, PixelFormatRGB32);
    camera->SetOutputVideoParams(output.record);
    figures.whenSet = gain();
    for (int i = 0; i < kRebuilds; ++i) {
        others.push_back(i);
        camera->SetOutputVideoParams(output.record);
    }
    figures.afterRebuilds = gain();
    DeleteKivFisheyeCameraContext(context);
    figures.afterDeletion = gain();
    return figures;
}

/// The same in a process of its own, whose heap has no holes yet. With a threshold, blocks from
/// that size on are always mapped by themselves.
ResidentFigures MeasureResidentApart(int mapThreshold) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe can be made.");
    }
    const pid_t child = fork();
    if (child == 0) {
        if (mapThreshold != 0) {
            mallopt(M_MMAP_THRESHOLD, mapThreshold);
        }
        const ResidentFigures figures = MeasureResident();
        const bool isWritten = write(ends[1], &figures, sizeof(figures)) == sizeof(figures);
        _exit(isWritten ? 0 : 1);
    }
    close(ends[1]);
    ResidentFigures figures{};
    const bool isRead =
        child > 0 && read(ends[0], &figures, sizeof(figures)) == ssize_t{sizeof(figures)};
    close(ends[0]);
    int status = 0;
    if (!isRead || waitpid(child, &status, 0) != child || status != 0) {
        throw std::runtime_error("what a process of its own measures did not arrive.");
    }
    return figures;
}

MemoryMeasurements MeasureAll() {
    constexpr int kMapThreshold = 128 * 1024;
    MemoryMeasurements measured{};
    measured.resident = MeasureResidentApart(0);
    measured.residentMapped = MeasureResidentApart(kMapThreshold);
    for (const std::uint32_t side : kSourceSides) {
        for (const MountedView& view : kMountedViews) {
            measured.contexts.push_back(Measure(view, side));
        }
    }
    return measured;
}

}  // namespace

int main(int argc, char**) {
    if (argc > 1) {
        std::cerr << "KivFisheyeMemory: there is nothing to tell it; it writes a page about what "
                     "contexts take of the heap.\n";
        return 2;
    }
    std::ostringstream page;
    try {
        WriteMemoryDocument(MeasureAll(), page);
    } catch (const std::exception& error) {
        std::cerr << "KivFisheyeMemory: " << error.what() << "\n";
        return 1;
    }
    std::cout << page.str() << std::flush;
    return std::cout ? 0 : 1;
}
