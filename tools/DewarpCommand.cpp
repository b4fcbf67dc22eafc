#include <memory>

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
    AngleArguments angles;
};

OutputKind KindOf(const std::string& output) {
    return IsVideoName(output) ? OutputKind::Video : OutputKind::Picture;
}

void CheckUsage(const DewarpArguments& arguments) {
    if (!IsVideoName(arguments.output) && !IsPictureName(arguments.output)) {
        throw UsageError("cannot write " + arguments.output +
                         ": it needs a name with the ending .png, .jpg, .jpeg or .mp4");
    }
    CheckIsNoInput(arguments.output, {arguments.input});
    CheckAngles(arguments.angles, ViewOfName(arguments.view.view));
    CheckView(arguments.view, KindOf(arguments.output));
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
    Turn(arguments.angles, arguments.view, flattener, &progress);
    reader.Read(flattener.Input());
    if (kind == OutputKind::Video) {
        DewarpVideo(arguments.output, &reader, &flattener, &progress);
    } else {
        DewarpPicture(arguments.output, flattener, &progress);
    }
}

}  // namespace

void AddDewarpCommand(CLI::App* app) {
    const auto arguments = std::make_shared<DewarpArguments>();
    CLI::App* command = app->add_subcommand("dewarp", "Flatten a fisheye picture or video");
    command->option_defaults()->always_capture_default();
    command->add_option("INPUT", arguments->input, "The fisheye picture or video")
        ->required()
        ->check(FileName("input"));
    AddOutput(command, &arguments->output,
              "The file to write: .png or .jpg is the first picture, .mp4 the whole video "
              "as H.264, with square pixels, its frames at their times, and without sound");
    AddView(command, &arguments->view.view)->required();
    AddAngleOptions(command, &arguments->angles);
    AddViewOptions(command, &arguments->view);
    command->callback([arguments] { Dewarp(*arguments); });
}

}  // namespace KivFisheyeTools
