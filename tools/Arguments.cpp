#include "Arguments.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iomanip>
#include <sstream>

#include "Camera.h"
#include "Failure.h"
#include "Numbers.h"
#include "OutputFile.h"
#include "Picture.h"

namespace KivFisheyeTools {

namespace {

std::string WordsForRange(std::uint32_t low, std::uint32_t high) {
    return "from " + std::to_string(low) + " to " + std::to_string(high);
}

std::string ComplaintAboutWholeNumber(const std::string& text, std::uint32_t low,
                                      std::uint32_t high) {
    const auto number = WholeNumberOf(text);
    const bool isInside = number && *number >= low && *number <= high;
    return isInside ? "" : "'" + text + "' is not a whole number " + WordsForRange(low, high);
}

void NoteWhenGiven(CLI::Option* option, bool* isGiven) {
    option->each([isGiven](const std::string&) { *isGiven = true; });
}

}  // namespace

CLI::Validator NumberIn(double low, double high) {
    std::ostringstream range;
    range << std::setprecision(9) << "from " << low << " to " << high;
    const auto check = [low, high, words = range.str()](std::string& text) {
        const auto number = NumberOf(text);
        const bool isInside = number && *number >= low && *number <= high;
        return isInside ? std::string() : "'" + text + "' is not a number " + words;
    };
    return {check, range.str()};
}

CLI::Validator WholeNumberIn(std::uint32_t low, std::uint32_t high) {
    const auto check = [low, high](std::string& text) {
        std::string complaint = ComplaintAboutWholeNumber(text, low, high);
        if (complaint.empty()) {
            // The parser would take a leading 0 for the mark of an octal number.
            text = std::to_string(WholeNumberOf(text).value());
        }
        return complaint;
    };
    return {check, WordsForRange(low, high)};
}

CLI::Validator WholeNumbersIn(std::uint32_t low, std::uint32_t high) {
    const auto check = [low, high](std::string& text) {
        std::string complaint;
        for (const std::string& part : SplitAtCommas(text)) {
            complaint = complaint.empty() ? ComplaintAboutWholeNumber(part, low, high) : complaint;
        }
        return complaint;
    };
    return {check, WordsForRange(low, high)};
}

std::string ComplaintAboutNumbers(const std::string& text, std::size_t count) {
    const std::vector<double> numbers = NumbersOfText(text);
    const bool areGood =
        numbers.size() == count && std::all_of(numbers.begin(), numbers.end(), IsFinite);
    static const std::array<std::string, 3> wishes = {"a finite number",
                                                      "two numbers with a comma between them",
                                                      "three numbers with commas between them"};
    return areGood ? "" : "'" + text + "' is not " + wishes.at(count - 1);
}

CLI::Validator FiniteNumbers(std::size_t count) {
    const auto check = [count](std::string& text) { return ComplaintAboutNumbers(text, count); };
    return {check, ""};
}

CLI::Validator NameAmong(const std::string& kind, const std::vector<std::string>& names) {
    const auto check = [kind, names](std::string& text) {
        const bool isName = std::find(names.begin(), names.end(), text) != names.end();
        return isName ? std::string()
                      : "there is no " + kind + " '" + text + "': " + Listed(names, "or");
    };
    return {check, "{" + CLI::detail::join(names) + "}"};
}

CLI::Validator SizeText() {
    const auto check = [](std::string& text) {
        const std::optional<Size> size = SizeOfText(text);
        if (!size) {
            return "'" + text + "' is not a size such as 1024x768 with sides from 1 to " +
                   std::to_string(kMaximumSide);
        }
        const bool isTooLarge = std::uint64_t{size->width} * size->height > kMaximumPixels;
        return isTooLarge ? "'" + text + "' is too large: a picture has at most " +
                                std::to_string(kMaximumPixels) + " pixels"
                          : std::string();
    };
    return {check, ""};
}

CLI::Validator FileName(const std::string& role) {
    const auto check = [role](std::string& text) {
        return text.empty() ? "the name of the " + role + " is empty" : std::string();
    };
    return {check, ""};
}

CLI::Validator OutputName(const std::vector<std::string>& endings) {
    const CLI::Validator isName = FileName("output");
    const auto check = [isName, endings](std::string& text) {
        std::string complaint = isName(text);
        if (complaint.empty()) {
            CheckEnding(text, endings);
        }
        return complaint;
    };
    return {check, "{" + CLI::detail::join(endings) + "}"};
}

void AddPictureInput(CLI::App* command, std::string* input) {
    command
        ->add_option("INPUT", *input,
                     "The fisheye picture, or a video, of which the first picture counts")
        ->required()
        ->check(FileName("input"))
        ->type_name("FILE");
}

CLI::Option* AddOutput(CLI::App* command, std::string* output,
                       const std::vector<std::string>& endings, const std::string& description) {
    return command->add_option("OUTPUT", *output, description)
        ->required()
        ->check(OutputName(endings))
        ->type_name("FILE");
}

CLI::Option* AddMount(CLI::App* command, std::string* mount) {
    return command->add_option("--mount", *mount, "Where the camera hangs")
        ->check(NameAmong("mount", MountNames()))
        ->type_name("MOUNT");
}

CLI::Option* AddView(CLI::App* command, std::string* view) {
    return command
        ->add_option(
            "--view", *view,
            std::string("What the output shows: a virtual camera's flat view, ") + kPanoramasHelp)
        ->check(NameAmong("view", ViewNames()))
        ->type_name("VIEW");
}

CLI::Option* AddSize(CLI::App* command, std::string* size, const std::string& description) {
    return command->add_option("--size", *size, description)
        ->check(SizeText())
        ->type_name("WIDTHxHEIGHT");
}

CLI::Option* AddFormat(CLI::App* command, std::string* format) {
    return command->add_option("--format", *format, "Pixel format inside the library")
        ->check(NameAmong("format", {"rgb24", "rgb32"}))
        ->type_name("FORMAT");
}

void AddRadiusOptions(CLI::App* command, KivFisheyeLib::DewarpParams* lens) {
    const auto addRadius = [command](const char* name, float* radius, const char* description) {
        command->add_option(name, *radius, description)
            ->check(NumberIn(0.0, 1.0))
            ->type_name("FRACTION");
    };
    addRadius("--radius-x", &lens->radiusX, kRadiusXHelp);
    addRadius("--radius-y", &lens->radiusY, kRadiusYHelp);
}

bool HasRadii(const CLI::App& command) {
    return command.count("--radius-x") + command.count("--radius-y") > 0;
}

void AddLensOptions(CLI::App* command, KivFisheyeLib::DewarpParams* lens) {
    AddRadiusOptions(command, lens);
    command
        ->add_option("--wall-view-angle", lens->wallViewAngle,
                     "Wall panoramas alone: reach above and below the horizon, in degrees. The "
                     "recommended size shows equal angles taller than wide; equal degrees each way "
                     "need a height of width * angle / 90")
        ->check(NumberIn(10.0, 90.0))
        ->type_name("DEGREES");
    command
        ->add_option(
            "--inner-radius", lens->innerRadiusRatio,
            "Ceiling and table panoramas alone: part of the radius left out around the centre")
        ->check(NumberIn(0.0, 0.8))
        ->type_name("FRACTION");
}

void AddViewedLensOptions(CLI::App* command, ViewArguments* arguments) {
    AddLensOptions(command, &arguments->lens);
    NoteWhenGiven(command->get_option("--wall-view-angle"), &arguments->hasWallViewAngle);
    NoteWhenGiven(command->get_option("--inner-radius"), &arguments->hasInnerRadius);
}

void AddViewOptions(CLI::App* command, ViewArguments* arguments) {
    AddMount(command, &arguments->mount)->required();
    AddSize(command, &arguments->size,
            "Output size, the width a multiple of 8, the height of a video even; the recommended "
            "size by default, its height even for a video or a dual panorama");
    AddViewedLensOptions(command, arguments);
    AddFormat(command, &arguments->format);
}

void AddZoomOptions(CLI::App* command, AngleArguments* arguments) {
    CLI::Option* zoom = command->add_option(
        "--zoom", arguments->zoom,
        "Virtual camera: 1 shows all the lens sees, 2 shows 90 degrees from top to bottom, and "
        "from there on each unit takes off 10");
    CLI::Option* fieldOfView = command->add_option(
        "--fov", arguments->fieldOfView,
        "Virtual camera: the zoom, as the degrees that the view's height shows");
    zoom->check(NumberIn(1.0, 10.0))->type_name("ZOOM")->excludes(fieldOfView);
    fieldOfView->check(NumberIn(10.0, 180.0))->type_name("DEGREES");
}

void AddAngleOptions(CLI::App* command, AngleArguments* arguments) {
    CLI::Option* pan = command->add_option(
        "--pan", arguments->pan,
        "Degrees. Panoramas: turn to the right, clockwise seen from above; 0 has the lens's right "
        "at the left edge, in a ceiling camera's dual panorama the lens's left, and that of a wall "
        "camera does not turn; a dual panorama at exactly 180 is that at 0. Virtual camera: "
        "ceiling 0 looks to the picture's top and runs clockwise on it, table 0 looks to its "
        "bottom and runs anticlockwise, wall has the right positive, as far as the view stays "
        "inside the lens image: 45 degrees at a zoom of 2, 85 at 10");
    CLI::Option* tilt = command->add_option(
        "--tilt", arguments->tilt,
        "Virtual camera: degrees off the lens's axis, from a zoom of 2 on. Positive for a "
        "ceiling, negative for a table, wall with up positive; as far as the view stays inside the "
        "lens image: 45 degrees at a zoom of 2, 85 at 10");
    CLI::Option* aim = command->add_option(
        "--aim", arguments->aim,
        std::string("Virtual camera: the point of the input to look at, as ") + kAimedPointHelp);
    pan->check(FiniteNumbers(1))->type_name("DEGREES");
    tilt->check(FiniteNumbers(1))->type_name("DEGREES");
    aim->check(FiniteNumbers(2))->type_name("X,Y")->excludes(pan)->excludes(tilt);
    AddZoomOptions(command, arguments);
}

void CheckIsNoInput(const std::string& output, const std::vector<std::string>& inputs) {
    for (const std::string& input : inputs) {
        std::error_code ignored;
        if (std::filesystem::equivalent(output, input, ignored)) {
            throw UsageError("the output would replace the input " + input);
        }
    }
}

}  // namespace KivFisheyeTools
