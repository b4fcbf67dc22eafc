#include <cmath>
#include <filesystem>
#include <memory>
#include <optional>

#include "Arguments.h"
#include "Commands.h"
#include "ContactSheet.h"
#include "Failure.h"
#include "Numbers.h"
#include "OutputFile.h"
#include "Progress.h"

namespace KivFisheyeTools {

namespace {

struct SheetArguments {
    std::string output;
    std::vector<std::string> inputs;
    std::string captions;
    std::string columns;
    std::uint32_t width = 1600;
    std::optional<std::uint32_t> quality;
};

std::vector<std::string> Captions(const SheetArguments& arguments) {
    std::vector<std::string> captions;
    if (!arguments.captions.empty()) {
        captions = SplitAtCommas(arguments.captions);
    } else {
        for (const std::string& input : arguments.inputs) {
            captions.push_back(std::filesystem::path(input).stem().string());
        }
    }
    if (captions.size() != arguments.inputs.size()) {
        throw UsageError("--captions: the number of captions is " +
                         std::to_string(captions.size()) + " but that of pictures is " +
                         std::to_string(arguments.inputs.size()));
    }
    return captions;
}

/// How many pictures each row has.
std::vector<std::uint32_t> Columns(const SheetArguments& arguments) {
    if (arguments.columns.empty()) {
        return {static_cast<std::uint32_t>(std::ceil(std::sqrt(arguments.inputs.size())))};
    }
    std::vector<std::uint32_t> columns;
    for (const std::string& part : SplitAtCommas(arguments.columns)) {
        columns.push_back(WholeNumberOf(part).value());
    }
    return columns;
}

void MakeSheet(const SheetArguments& arguments) {
    if (arguments.quality && EndingOf(arguments.output) == ".png") {
        throw UsageError("--quality goes with a JPEG file: a PNG file loses nothing");
    }
    CheckIsNoInput(arguments.output, arguments.inputs);
    const std::vector<std::string> captions = Captions(arguments);
    ContactSheet sheet(arguments.width, Columns(arguments));
    Progress progress;
    for (std::size_t i = 0; i < arguments.inputs.size(); ++i) {
        progress.Show("reading " + arguments.inputs[i]);
        sheet.Add(ReadPicture(arguments.inputs[i], 3), captions[i]);
    }
    progress.Show("writing " + arguments.output);
    WritePicture(arguments.output, sheet.Drawn(), arguments.quality.value_or(kBestQuality));
}

}  // namespace

void AddSheetCommand(CLI::App* app) {
    const auto arguments = std::make_shared<SheetArguments>();
    CLI::App* command = app->add_subcommand("sheet", "Arrange pictures in a grid with captions");
    command->add_option("INPUT", arguments->inputs, "The pictures, row by row")
        ->required()
        ->check(FileName("input"))
        ->type_name("FILE");
    command->add_option("-o,--output", arguments->output, "The file to write")
        ->required()
        ->check(OutputName(PictureEndings()))
        ->type_name("FILE");
    command
        ->add_option("--columns", arguments->columns,
                     "Pictures in a row, or in the first row, the second and so on with commas "
                     "between the numbers, the last of which holds for all further rows; a square "
                     "by default")
        ->check(WholeNumbersIn(1, 1000))
        ->type_name("COUNTS");
    command->add_option("--width", arguments->width, "Width of the sheet")
        ->transform(WholeNumberIn(64, kMaximumSide))
        ->type_name("PIXELS")
        ->capture_default_str();
    command
        ->add_option("--quality", arguments->quality,
                     "JPEG alone: from 1, the smallest file, to 100, the finest picture; 100 by "
                     "default")
        ->transform(WholeNumberIn(1, kBestQuality))
        ->type_name("QUALITY");
    command
        ->add_option("--captions", arguments->captions,
                     "Captions with commas between them; the files' names by default")
        ->type_name("TEXTS");
    command->callback([arguments] { MakeSheet(*arguments); });
}

}  // namespace KivFisheyeTools
