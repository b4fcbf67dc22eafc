#include <Arguments.h>
#include <Camera.h>
#include <KivFisheyeLib.h>
#include <Png.h>
#include <dlfcn.h>

#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

using namespace KivFisheyeLib;

namespace {

/// The library, found while the program runs, and closed when this goes. Nothing here is linked
/// with it: from its header come the interfaces and the types of its six functions alone. These
/// have C linkage, so their names are plain. The interfaces behind them are C++ classes with
/// virtual functions: a program in C can make a context, delete it and ask for the instruction set,
/// and no more.
class Library {
public:
    explicit Library(const std::string& path) : m_handle(dlopen(path.c_str(), RTLD_NOW), &Close) {
        if (m_handle == nullptr) {
            throw std::runtime_error(dlerror());
        }
        Find(createContext, "CreateKivFisheyeCameraContext");
        Find(deleteContext, "DeleteKivFisheyeCameraContext");
        Find(getCamera, "GetCameraAPI");
        Find(getRoi, "GetROIAPI");
        Find(getBoundary, "GetDewarpBoundaryAPI");
        Find(getInstructionSet, "GetCPUInstructionSet");
    }

    decltype(&CreateKivFisheyeCameraContext) createContext = nullptr;
    decltype(&DeleteKivFisheyeCameraContext) deleteContext = nullptr;
    decltype(&GetCameraAPI) getCamera = nullptr;
    decltype(&GetROIAPI) getRoi = nullptr;
    decltype(&GetDewarpBoundaryAPI) getBoundary = nullptr;
    decltype(&GetCPUInstructionSet) getInstructionSet = nullptr;

private:
    static void Close(void* handle) { dlclose(handle); }

    template <class Function>
    void Find(Function& function, const char* name) {
        function = reinterpret_cast<Function>(dlsym(m_handle.get(), name));
        if (function == nullptr) {
            throw std::runtime_error(dlerror());
        }
    }

    std::unique_ptr<void, void (*)(void*)> m_handle;
};

void Run(const Arguments& arguments) {
    const MountType mount = MountOf(arguments[1]);
    Picture fisheye = ReadPng(arguments[2]);
    const Library library(arguments[0]);
    // Declared after the library, so that the context goes before it.
    const Context context(library.createContext(), library.deleteContext);

    IKivFisheyeCamera& camera = *library.getCamera(context.get());
    SetUp(camera, mount, ViewTypeFullPanorama, fisheye);
    Picture panorama = RecommendedPicture(camera);
    Require(camera.SetOutputVideoParams(FrameOf(panorama)), "SetOutputVideoParams");
    Require(camera.Process(0), "Process");
    WritePng(arguments[3], panorama);

    // Outlines of views come from the other two interfaces.
    alignas(16) float viewOutline[2 * 16];
    Require(library.getRoi(context.get())->GetVCamROI(viewOutline, 16), "GetVCamROI");
    alignas(16) float panoramaOutline[2 * 16];
    Require(library.getBoundary(context.get())
                ->CalculateWallPanoramaBoundary(nullptr, panoramaOutline, 16),
            "CalculateWallPanoramaBoundary");
    std::cout << "six functions found; this processor has instruction set "
              << library.getInstructionSet() << '\n';
}

}  // namespace

/// Makes a panorama with a library that is found at run time.
int main(int argc, char** argv) {
    const Example example{
        "load-at-run-time", "LIBRARY.so wall|ceiling|table INPUT.png OUTPUT.png", {4}};
    return RunExample(example, argc, argv, Run);
}
