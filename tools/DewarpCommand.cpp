#include <iostream>
#include <memory>

#include "Arguments.h"
#include "Commands.h"
#include "Explanation.h"
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
    bool isExplained = false;
};

OutputKind KindOf(const std::string& output) {
    return IsVideoName(output) ? OutputKind::Video : OutputKind::Picture;
}

void CheckUsage(const DewarpArguments& arguments) {
    if (arguments.output.empty() && !arguments.isExplained) {
        throw UsageError("OUTPUT is required; only --explain goes without it");
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

void CheckHasFrames(const DewarpArguments& arguments, const VideoReader& reader) {
    if (KindOf(arguments.output) == OutputKind::Video && reader.IsStill()) {
        throw Failure(arguments.input +
                      " is a still picture; a video of it is made with the command sweep");
    }
}

std::string Explanation(const DewarpArguments& arguments) {
    Progress progress;
    progress.Show("reading " + arguments.input);
    VideoReader reader(arguments.input);
    CheckHasFrames(arguments, reader);
    const ViewFacts facts =
        FactsOf(arguments.view, arguments.angles, KindOf(arguments.output), &reader);
    return "input: " + arguments.input + (reader.IsStill() ? ", a picture\n" : ", a video\n") +
           Explained(facts);
}

void Dewarp(const DewarpArguments& arguments) {
    Progress progress;
    progress.Show("reading " + arguments.input);
    VideoReader reader(arguments.input);
    CheckHasFrames(arguments, reader);
    const OutputKind kind = KindOf(arguments.output);
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
        ->check(FileName("input"))
        ->type_name("FILE");
    std::vector<std::string> endings = PictureEndings();
    endings.emplace_back(".mp4");
    AddOutput(command, &arguments->output, endings,
              "The file to write: .png or .jpg is the first picture, .mp4 the whole video "
              "as H.264, with square pixels, its frames at their times, and without sound")
        ->required(false);
    AddView(command, &arguments->view.view)->required();
    AddAngleOptions(command, &arguments->angles);
    AddViewOptions(command, &arguments->view);
    command->add_flag("--explain", arguments->isExplained,
                      "Tell in words and numbers what the command would show, and write nothing; "
                      "OUTPUT may then be left out. Places are counted in pixels from the frame's "
                      "top left corner, so that the centre of 1024 pixels is 512");
    command->callback([arguments, command] {
        arguments->view.hasRadii = HasRadii(*command);
        CheckUsage(*arguments);
        if (arguments->isExplained) {
            std::cout << Explanation(*arguments);
        } else {
            Dewarp(*arguments);
        }
    });
}

}  // namespace KivFisheyeTools
