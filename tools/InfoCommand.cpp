#include <KivFisheyeVersion.h>

#include <array>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>

#include "Arguments.h"
#include "Camera.h"
#include "Commands.h"
#include "Failure.h"

namespace KivFisheyeTools {

namespace {

struct InfoArguments {
    std::string input;
    KivFisheyeLib::DewarpParams lens = kUsualLens;
    bool hasRadii = false;
};

std::string InstructionSetName() {
    constexpr std::array<const char*, 9> kNames = {"none",   "SSE",    "SSE2", "SSE3", "SSSE3",
                                                   "SSE4.1", "SSE4.2", "AVX",  "AVX2"};
    const int level = GetCPUInstructionSet();
    if (level < 0 || static_cast<std::size_t>(level) >= kNames.size()) {
        return "unknown";
    }
    return kNames[static_cast<std::size_t>(level)];
}

void PrintRow(const std::string& mount, const std::string& view, const std::string& size,
              const std::string& ratio) {
    std::cout << std::left << std::setw(8) << mount << ' ' << std::setw(5) << view << ' '
              << std::setw(18) << size << ' ' << ratio << '\n';
}

std::string WordsFor(float ratio) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(3) << ratio;
    return text.str();
}

void PrintView(Picture* input, const KivFisheyeLib::DewarpParams& lens,
               KivFisheyeLib::MountType mount, KivFisheyeLib::ViewType view) {
    const Camera camera;
    camera->SetMountAndViewType(mount, view);
    camera->SetDewarpParams(lens);
    camera->SetInputVideoParams(FrameOf(input), PixelFormatOf(*input));
    const auto [width, height] = camera.RecommendedSize();
    float ratio = 0.0F;
    if (camera->GetRecommendOutputVideoRatio(&ratio) != kResultOk) {
        throw Failure("the library recommends no output ratio for this picture");
    }
    const bool isSize = HasExtent(lens) && width > 0 && height > 0;
    PrintRow(NameOf(mount), NameOf(view),
             isSize ? std::to_string(width) + "x" + std::to_string(height) : "none",
             isSize ? WordsFor(ratio) : "-");
}

void PrintInfo(const InfoArguments& arguments) {
    if (arguments.input.empty()) {
        std::cout << "version: " << KIVFISHEYE_VERSION << '\n'
                  << "instruction set: " << InstructionSetName() << '\n';
        return;
    }
    Picture input = ReadPicture(arguments.input, 4);
    std::cout << "version: " << KIVFISHEYE_VERSION << '\n'
              << "instruction set: " << InstructionSetName() << '\n'
              << "input: " << input.width << 'x' << input.height << "\n\n";
    PrintRow("mount", "view", "recommended size", "ratio");
    for (const std::string& mountName : MountNames()) {
        for (const std::string& viewName : ViewNames()) {
            const auto mount = MountOfName(mountName);
            const auto view = ViewOfName(viewName);
            if (IsViewOfMount(mount, view)) {
                PrintView(&input, arguments.lens, mount, view);
            }
        }
    }
    const std::string hint = WordsForRoundLens({input.width, input.height});
    if (!arguments.hasRadii && !hint.empty()) {
        std::cout << '\n' << hint << " here and in the other commands.\n";
    }
}

}  // namespace

void AddInfoCommand(CLI::App* app) {
    const auto arguments = std::make_shared<InfoArguments>();
    CLI::App* command = app->add_subcommand(
        "info", "Tell about the library, and which output sizes suit a picture or video");
    command->option_defaults()->always_capture_default();
    command->add_option("INPUT", arguments->input, "A fisheye picture or video")
        ->check(FileName("input"))
        ->type_name("FILE");
    AddLensOptions(command, &arguments->lens);
    command->callback([arguments, command] {
        arguments->hasRadii = HasRadii(*command);
        PrintInfo(*arguments);
    });
}

}  // namespace KivFisheyeTools
