#include <memory>
#include <optional>

#include "Arguments.h"
#include "Camera.h"
#include "Commands.h"
#include "Failure.h"
#include "Progress.h"

namespace KivFisheyeTools {

namespace {

constexpr std::uint32_t kWidthStep = 8;

struct DewarpArguments {
    std::string input;
    std::string output;
    std::string mount;
    std::string view;
    std::string size;
    std::string format = "rgb32";
    KivFisheyeLib::DewarpParams lens = kUsualLens;
    std::optional<float> pan;
    std::optional<float> tilt;
    std::optional<float> zoom;
};

std::string WordsFor(KivFisheyeLib::ViewType view) {
    switch (view) {
        case KivFisheyeLib::ViewTypeDualPanorama:
            return "dual panorama";
        case KivFisheyeLib::ViewTypeFullPanorama:
            return "full panorama";
        case KivFisheyeLib::ViewTypeVCam:
            break;
    }
    return "virtual camera";
}

void Expect(ResultCode result, const std::string& sentence) {
    if (result != kResultOk && result != kResultNoChange) {
        throw Failure(sentence);
    }
}

void CheckUsage(const DewarpArguments& arguments) {
    CheckOutput(arguments.output, {arguments.input});
    const auto mount = MountOfName(arguments.mount);
    const auto view = ViewOfName(arguments.view);
    if (!IsViewOfMount(mount, view)) {
        throw UsageError("a " + NameOf(mount) + " camera has no " + WordsFor(view));
    }
    if (!arguments.size.empty() && SizeOfText(arguments.size).width % kWidthStep != 0) {
        throw UsageError("--size: the width must be a multiple of " + std::to_string(kWidthStep));
    }
    if (!CanShow(mount, view)) {
        throw Failure("this version cannot show the " + WordsFor(view) + " of a " + NameOf(mount) +
                      " camera yet");
    }
}

Size OutputSize(const Camera& camera, const DewarpArguments& arguments) {
    if (!arguments.size.empty()) {
        return SizeOfText(arguments.size);
    }
    Size size{0, 0};
    Expect(camera->GetRecommendOutputVideoSize(&size.width, &size.height),
           "the library recommends no output size for this picture");
    if (size.width == 0 || size.height == 0) {
        throw Failure("the lens image is too small for any output size; give one with --size");
    }
    return size;
}

void Turn(const Camera& camera, const DewarpArguments& arguments) {
    if (!arguments.pan && !arguments.tilt && !arguments.zoom) {
        return;
    }
    float pan = 0.0F;
    float tilt = 0.0F;
    float zoom = 1.0F;
    Expect(camera->GetPTZ(&pan, &tilt, &zoom), "the library does not tell how the view is turned");
    Expect(camera->SetAbsolutePTZ(arguments.pan.value_or(pan), arguments.tilt.value_or(tilt),
                                  arguments.zoom.value_or(zoom)),
           "the library refuses to turn the view");
}

void Dewarp(const DewarpArguments& arguments) {
    CheckUsage(arguments);
    Progress progress;
    progress.Show("reading " + arguments.input);
    Picture input = ReadPicture(arguments.input, arguments.format == "rgb24" ? 3 : 4);

    const Camera camera;
    Expect(camera->SetMountAndViewType(MountOfName(arguments.mount), ViewOfName(arguments.view)),
           "the library refuses the mount and view");
    Expect(camera->SetDewarpParams(arguments.lens), "the library refuses the lens parameters");
    Expect(camera->SetInputVideoParams(FrameOf(&input), PixelFormatOf(input)),
           "the library refuses the input picture");
    const Size size = OutputSize(camera, arguments);
    Picture output(size.width, size.height, input.bytesPerPixel);
    Expect(camera->SetOutputVideoParams(FrameOf(&output)), "the library refuses the output size");
    Turn(camera, arguments);
    progress.Show("flattening");
    Expect(camera->Process(0), "the library cannot convert the picture");

    progress.Show("writing " + arguments.output);
    WritePicture(arguments.output, output);
}

}  // namespace

void AddDewarpCommand(CLI::App* app) {
    const auto arguments = std::make_shared<DewarpArguments>();
    CLI::App* command = app->add_subcommand("dewarp", "Flatten a fisheye picture");
    command->option_defaults()->always_capture_default();
    command->add_option("INPUT", arguments->input, "The fisheye picture")->required();
    command->add_option("OUTPUT", arguments->output, "The PNG or JPEG file to write")->required();
    AddMount(command, &arguments->mount)->required();
    command->add_option("--view", arguments->view, "What the output shows")
        ->required()
        ->check(CLI::IsMember(ViewNames()));
    command
        ->add_option("--pan", arguments->pan,
                     "Turn to the right, in degrees, clockwise seen from above")
        ->check(FiniteNumber());
    command->add_option("--tilt", arguments->tilt, "Virtual camera: turn up or down, in degrees")
        ->check(FiniteNumber());
    command->add_option("--zoom", arguments->zoom, "Virtual camera: factor of enlargement")
        ->check(NumberIn(1.0, 10.0));
    AddSize(command, &arguments->size,
            "Output size, the width a multiple of 8; the recommended size by default");
    AddLensOptions(command, &arguments->lens);
    command->add_option("--format", arguments->format, "Pixel format inside the library")
        ->check(CLI::IsMember({"rgb24", "rgb32"}));
    command->callback([arguments] { Dewarp(*arguments); });
}

}  // namespace KivFisheyeTools
