#include <memory>

#include "Arguments.h"
#include "Camera.h"
#include "Commands.h"
#include "Numbers.h"
#include "Progress.h"
#include "RoomScene.h"

namespace KivFisheyeTools {

namespace {

constexpr double kSmallestRadius = 0.01;

struct SceneArguments {
    std::string output;
    std::string mount = "ceiling";
    std::string size = "1024x1024";
    double radiusX = 0.5;
    double radiusY = 0.5;
};

void RenderScene(const SceneArguments& arguments) {
    const Size size = SizeOfText(arguments.size).value();
    const Lens lens{size.width, size.height, arguments.radiusX, arguments.radiusY};
    Progress progress;
    const Picture scene = RenderRoomScene(lens, MountOfName(arguments.mount), [&](double part) {
        progress.ShowPart("rendering", part);
    });
    progress.Show("writing " + arguments.output);
    WritePicture(arguments.output, scene);
}

}  // namespace

void AddSceneCommand(CLI::App* app) {
    const auto arguments = std::make_shared<SceneArguments>();
    CLI::App* command =
        app->add_subcommand("scene", "Render a room as a fisheye camera in it sees it");
    command->option_defaults()->always_capture_default();
    AddOutput(command, &arguments->output, PictureEndings(), "The file to write");
    AddMount(command, &arguments->mount);
    AddSize(command, &arguments->size, "Size of the picture");
    command->add_option("--radius-x", arguments->radiusX, kRadiusXHelp)
        ->check(NumberIn(kSmallestRadius, 1.0))
        ->type_name("FRACTION");
    command->add_option("--radius-y", arguments->radiusY, kRadiusYHelp)
        ->check(NumberIn(kSmallestRadius, 1.0))
        ->type_name("FRACTION");
    command->callback([arguments] { RenderScene(*arguments); });
}

}  // namespace KivFisheyeTools
