#include <iostream>
#include <memory>

#include "Arguments.h"
#include "Commands.h"
#include "Progress.h"
#include "TextFile.h"

namespace KivFisheyeTools {

namespace {

struct AimArguments {
    ViewArguments view;
    AngleArguments angles;
};

/// The angles that look at the point, even where the library would limit them: they then look there
/// again when more zoom is given. That they would be limited is said beside them.
void PrintAim(const AimArguments& arguments) {
    CheckAngles(arguments.angles, KivFisheyeLib::ViewTypeVCam, "POINT");
    Progress progress;
    const ViewCamera camera(arguments.view);
    const Angles asked = AskedAngles(arguments.angles, camera);
    for (const std::string& note : NotesOnAngles(arguments.angles, arguments.view, asked,
                                                 camera.Turn(asked), "a view with these angles")) {
        progress.Say(note);
    }
    // Every digit of the floats, so that these angles give the very picture that --aim gives.
    std::cout << DigitsOf(asked.pan) << ' ' << DigitsOf(asked.tilt) << ' ' << DigitsOf(asked.zoom)
              << '\n';
}

}  // namespace

void AddAimCommand(CLI::App* app) {
    const auto arguments = std::make_shared<AimArguments>();
    arguments->view.view = NameOf(KivFisheyeLib::ViewTypeVCam);
    CLI::App* command = app->add_subcommand(
        "aim", "Print the pan, tilt and zoom with which a virtual camera looks at a point");
    command->option_defaults()->always_capture_default();
    command
        ->add_option("POINT", arguments->angles.aim,
                     std::string("The point of the fisheye picture, as ") + kAimedPointHelp)
        ->required()
        ->check(FiniteNumbers(2))
        ->type_name("X,Y");
    AddMount(command, &arguments->view.mount)->required();
    AddZoomOptions(command, &arguments->angles);
    AddRadiusOptions(command, &arguments->view.lens);
    command->callback([arguments] { PrintAim(*arguments); });
}

}  // namespace KivFisheyeTools
