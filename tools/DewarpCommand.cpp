#include <memory>
#include <optional>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "Flattener.h"
#include "Progress.h"
#include "StopRequest.h"
#include "VideoReader.h"
#include "VideoWriter.h"

namespace KivFisheyeTools {

namespace {

struct DewarpArguments {
    std::string input;
    std::string output;
    ViewArguments view;
    std::optional<float> pan;
    std::optional<float> tilt;
    std::optional<float> zoom;
    std::string aim;
    std::optional<float> fieldOfView;
};

OutputKind KindOf(const std::string& output) {
    return IsVideoName(output) ? OutputKind::Video : OutputKind::Picture;
}

void CheckHasNoVirtualCameraOptions(const DewarpArguments& arguments) {
    std::string given;
    const auto note = [&](bool isGiven, const char* option) {
        if (isGiven) {
            given += (given.empty() ? "" : " and ") + std::string(option);
        }
    };
    note(arguments.tilt.has_value(), "--tilt");
    note(arguments.zoom.has_value(), "--zoom");
    note(!arguments.aim.empty(), "--aim");
    note(arguments.fieldOfView.has_value(), "--fov");
    if (!given.empty()) {
        throw UsageError("only --view vcam takes " + given);
    }
}

void CheckUsage(const DewarpArguments& arguments) {
    if (!IsVideoName(arguments.output) && !IsPictureName(arguments.output)) {
        throw UsageError("cannot write " + arguments.output +
                         ": it needs a name with the ending .png, .jpg, .jpeg or .mp4");
    }
    CheckIsNoInput(arguments.output, {arguments.input});
    if (ViewOfName(arguments.view.view) != KivFisheyeLib::ViewTypeVCam) {
        CheckHasNoVirtualCameraOptions(arguments);
    }
    for (const double part : NumbersOfText(arguments.aim)) {
        if (part < 0.0 || part > 1.0) {
            throw UsageError("--aim: both numbers must be from 0 to 1");
        }
    }
    CheckView(arguments.view, KindOf(arguments.output));
}

Angles AskedAngles(const DewarpArguments& arguments, const Flattener& flattener) {
    const Angles present = flattener.Present();
    if (arguments.aim.empty()) {
        const float zoom = arguments.fieldOfView ? flattener.ZoomFor(*arguments.fieldOfView)
                                                 : arguments.zoom.value_or(present.zoom);
        return {arguments.pan.value_or(present.pan), arguments.tilt.value_or(present.tilt), zoom};
    }
    const std::vector<double> point = NumbersOfText(arguments.aim);
    const float zoom = arguments.fieldOfView ? flattener.ZoomFor(*arguments.fieldOfView)
                                             : arguments.zoom.value_or(kWidestZoomThatTurns);
    return flattener.AimedAt(static_cast<float>(point.at(0)), static_cast<float>(point.at(1)),
                             zoom);
}

void Turn(const DewarpArguments& arguments, const Flattener& flattener, Progress* progress) {
    const Angles asked = AskedAngles(arguments, flattener);
    const Angles taken = flattener.Turn(asked);
    if (!IsSameView(asked, taken)) {
        progress->Say("the view " + WordsForLimit(arguments.view, asked, taken));
    }
}

void DewarpPicture(const std::string& output, const Flattener& flattener, Progress* progress) {
    progress->Show("flattening");
    flattener.Flatten();
    progress->Show("writing " + output);
    WritePicture(output, flattener.Output());
}

void DewarpVideo(const std::string& output, VideoReader* reader, Flattener* flattener,
                 Progress* progress) {
    const StopRequest stop;
    VideoWriter writer(output, flattener->Output(), reader->Shape());
    std::uint64_t frames = 0;
    do {
        flattener->Flatten();
        writer.Write(flattener->Output(), reader->Time());
        progress->ShowFrames("flattening", ++frames, reader->FrameCount());
    } while (StopRequest::Signal() == 0 && reader->Read(flattener->Input()));
    progress->Show("writing " + output);
    writer.Finish();
    CheckStopped(frames, "frame", output);
}

void Dewarp(const DewarpArguments& arguments) {
    CheckUsage(arguments);
    Progress progress;
    progress.Show("reading " + arguments.input);
    VideoReader reader(arguments.input);
    const OutputKind kind = KindOf(arguments.output);
    if (kind == OutputKind::Video && reader.IsStill()) {
        throw Failure(arguments.input +
                      " is a still picture; a video of it is made with the command sweep");
    }
    Flattener flattener(arguments.view, {reader.Width(), reader.Height()}, kind);
    Turn(arguments, flattener, &progress);
    reader.Read(flattener.Input());
    if (kind == OutputKind::Video) {
        DewarpVideo(arguments.output, &reader, &flattener, &progress);
    } else {
        DewarpPicture(arguments.output, flattener, &progress);
    }
}

void AddAngleOptions(CLI::App* command, DewarpArguments* arguments) {
    CLI::Option* pan = command->add_option(
        "--pan", arguments->pan,
        "Degrees. Panoramas: turn to the right, clockwise seen from above; 0 has the lens's right "
        "at the left edge, in a ceiling camera's dual panorama the lens's left, and that of a wall "
        "camera does not turn; a dual panorama at exactly 180 is that at 0. Virtual camera: "
        "ceiling 0 looks to the picture's top and runs clockwise on it, table 0 looks to its "
        "bottom and runs anticlockwise, wall -90 to 90 with the right positive");
    CLI::Option* tilt = command->add_option(
        "--tilt", arguments->tilt,
        "Virtual camera: degrees off the lens's axis, from a zoom of 2 on. Ceiling 0 to 90, table "
        "-90 to 0, wall -90 to 90 with up positive; the view stays inside the lens image");
    CLI::Option* zoom = command->add_option(
        "--zoom", arguments->zoom,
        "Virtual camera: 1 shows all the lens sees, 2 shows 90 degrees, each step more 10 degrees "
        "less");
    CLI::Option* aim = command->add_option(
        "--aim", arguments->aim,
        "Virtual camera: the point of the input to look at, as fractions of its width and height "
        "from the top left; the zoom is then 2 by default. On a wall it is exact along the lens's "
        "two axes; towards its corners it is up to 4 degrees off halfway to the rim, and 25 at the "
        "rim");
    CLI::Option* fieldOfView = command->add_option(
        "--fov", arguments->fieldOfView,
        "Virtual camera: the zoom, as the degrees that the view's height shows");
    pan->check(FiniteNumbers(1));
    tilt->check(FiniteNumbers(1));
    zoom->check(NumberIn(1.0, 10.0))->excludes(fieldOfView);
    aim->check(FiniteNumbers(2))->type_name("X,Y")->excludes(pan)->excludes(tilt);
    fieldOfView->check(NumberIn(10.0, 180.0));
}

}  // namespace

void AddDewarpCommand(CLI::App* app) {
    const auto arguments = std::make_shared<DewarpArguments>();
    CLI::App* command = app->add_subcommand("dewarp", "Flatten a fisheye picture or video");
    command->option_defaults()->always_capture_default();
    command->add_option("INPUT", arguments->input, "The fisheye picture or video")
        ->required()
        ->check(FileName("input"));
    command
        ->add_option("OUTPUT", arguments->output,
                     "The file to write: .png or .jpg is the first picture, .mp4 the whole video "
                     "as H.264, with square pixels, its frames at their times, and without sound")
        ->required()
        ->check(FileName("output"));
    AddView(command, &arguments->view.view)->required();
    AddAngleOptions(command, arguments.get());
    AddViewOptions(command, &arguments->view);
    command->callback([arguments] { Dewarp(*arguments); });
}

}  // namespace KivFisheyeTools
