#include <memory>

#include "Arguments.h"
#include "Commands.h"
#include "Failure.h"
#include "Flattener.h"
#include "OutlineDrawing.h"
#include "OutlineFiles.h"
#include "OutputFile.h"
#include "Progress.h"

namespace KivFisheyeTools {

namespace {

constexpr std::uint32_t kUsualPoints = 512;
constexpr std::uint32_t kMostPoints = 1000000;

struct OutlineArguments {
    std::string input;
    std::string output;
    ViewArguments view;
    AngleArguments angles;
    std::uint32_t points = kUsualPoints;
};

void CheckUsage(const OutlineArguments& arguments) {
    CheckIsNoInput(arguments.output, {arguments.input});
    CheckAngles(arguments.angles, ViewOfName(arguments.view.view));
    if (!IsVirtualCamera(arguments.view) && !arguments.view.size.empty()) {
        throw UsageError("--size goes with --view vcam alone: the outline of a panorama has none");
    }
    CheckView(arguments.view, OutputKind::Picture);
    CheckPointCount(arguments.view, arguments.points);
}

OutlinedView Outlined(const OutlineArguments& arguments, const Size& input, Progress* progress) {
    const auto turned = [&](const ViewCamera& camera,
                            const std::optional<Size>& output) -> OutlinedView {
        const Angles angles = Turn(arguments.angles, arguments.view, camera, progress);
        return {angles, output, OutlinesOf(camera, arguments.view, arguments.points)};
    };
    // Only a virtual camera's outline depends on the output, and only a panorama makes much of it.
    if (!IsVirtualCamera(arguments.view)) {
        return turned(ViewCamera(arguments.view), std::nullopt);
    }
    const Flattener flattener(arguments.view, input, OutputKind::Picture);
    return turned(flattener, Size{flattener.Output().width, flattener.Output().height});
}

void DrawOutline(const OutlineArguments& arguments) {
    CheckUsage(arguments);
    Progress progress;
    progress.Show("reading " + arguments.input);
    Picture picture = ReadPicture(arguments.input, 3);
    if (!HasExtent(arguments.view.lens)) {
        throw Failure("the lens image is too small to outline a view in it");
    }
    const Size size{picture.width, picture.height};
    const OutlinedView shown = Outlined(arguments, size, &progress);
    progress.Show("writing " + arguments.output);
    if (EndingOf(arguments.output) == ".svg") {
        WriteOutlineSvg(arguments.output, shown.outlines, size);
    } else if (EndingOf(arguments.output) == ".json") {
        WriteOutlineJson(arguments.output, arguments.view, shown, size);
    } else {
        DrawOutlines(shown.outlines, &picture);
        WritePicture(arguments.output, picture);
    }
}

}  // namespace

void AddOutlineCommand(CLI::App* app) {
    const auto arguments = std::make_shared<OutlineArguments>();
    CLI::App* command = app->add_subcommand(
        "outline", "Draw on a fisheye picture what a view shows of it, or write the outline down");
    command->option_defaults()->always_capture_default();
    AddPictureInput(command, &arguments->input);
    std::vector<std::string> endings = PictureEndings();
    endings.insert(endings.end(), {".svg", ".json"});
    AddOutput(
        command, &arguments->output, endings,
        "The file to write: .png or .jpg is the picture with the outlines drawn in, .svg the "
        "outlines alone as polygons in pixels, .json as fractions of the frame. The lens's rim "
        "is white, the outline of the view yellow, that of a dual panorama's lower half cyan");
    AddView(command, &arguments->view.view)->required();
    AddAngleOptions(command, &arguments->angles);
    AddMount(command, &arguments->view.mount)->required();
    AddSize(command, &arguments->view.size,
            "Virtual camera: the size of the view, whose shape it has, the width a multiple of 8; "
            "the recommended size by default");
    AddViewedLensOptions(command, &arguments->view);
    command
        ->add_option("--points", arguments->points,
                     "Points of each outline, less those that have no place: of a virtual camera "
                     "and a wall camera a multiple of 16, of a dual panorama of 8, of a full one "
                     "of 4")
        ->transform(WholeNumberIn(4, kMostPoints))
        ->type_name("COUNT");
    command->callback([arguments] { DrawOutline(*arguments); });
}

}  // namespace KivFisheyeTools
