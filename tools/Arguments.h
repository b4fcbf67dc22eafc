#ifndef KIVFISHEYE_TOOLS_ARGUMENTS_H
#define KIVFISHEYE_TOOLS_ARGUMENTS_H

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "AngleArguments.h"

namespace KivFisheyeTools {

/// Accepts a finite number from `low` to `high`.
CLI::Validator NumberIn(double low, double high);

/// Accepts a whole number from `low` to `high` in decimal digits. For `CLI::Option::transform`.
CLI::Validator WholeNumberIn(std::uint32_t low, std::uint32_t high);

/// Accepts a size such as 1024x768 that a picture may have.
CLI::Validator SizeText();

/// Accepts such whole numbers with commas between them.
CLI::Validator WholeNumbersIn(std::uint32_t low, std::uint32_t high);

/// Accepts one of the names. `kind` is what they are names of.
CLI::Validator NameAmong(const std::string& kind, const std::vector<std::string>& names);

/// What is wrong with `text` when it is not `count` numbers that a float can hold, with commas
/// between them, or nothing. There may be up to 3.
std::string ComplaintAboutNumbers(const std::string& text, std::size_t count);

/// Accepts `count` numbers that a float can hold, with commas between them.
CLI::Validator FiniteNumbers(std::size_t count);

/// Accepts all but an empty name of a file. `role` is what it is to the command.
CLI::Validator FileName(const std::string& role);

/// Accepts the name of a file with one of these endings.
CLI::Validator OutputName(const std::vector<std::string>& endings);

/// Add what a command reads and writes.
void AddPictureInput(CLI::App* command, std::string* input);
CLI::Option* AddOutput(CLI::App* command, std::string* output,
                       const std::vector<std::string>& endings, const std::string& description);

/// Add an option that several commands have.
CLI::Option* AddMount(CLI::App* command, std::string* mount);
CLI::Option* AddView(CLI::App* command, std::string* view);
CLI::Option* AddSize(CLI::App* command, std::string* size, const std::string& description);
CLI::Option* AddFormat(CLI::App* command, std::string* format);

/// What the two panoramas are.
constexpr const char* kPanoramasHelp =
    "a dual panorama, which is two halves one above the other and which wall cameras have not, or "
    "the full panorama";

/// What the options of the lens's radii mean.
constexpr const char* kRadiusXHelp =
    "Horizontal semi-axis of the lens's ellipse, as a fraction of the frame's width; a round lens "
    "as high as the frame has 0.5 * height / width";
constexpr const char* kRadiusYHelp =
    "Vertical semi-axis of the lens's ellipse, as a fraction of the frame's height; a round lens "
    "as wide as the frame has 0.5 * width / height";

/// How a point to look at is given, and what comes of it.
constexpr const char* kAimedPointHelp =
    "fractions of its width and height from the top left; the zoom is then 2 by default. On a wall "
    "it is exact along the lens's two axes; towards its corners it is up to 4 degrees off halfway "
    "to the rim, and 25 at the rim";

/// Adds the options of the lens's radii.
void AddRadiusOptions(CLI::App* command, KivFisheyeLib::DewarpParams* lens);

/// Whether either of them was given.
bool HasRadii(const CLI::App& command);

/// Adds the options of everything that `lens` holds.
void AddLensOptions(CLI::App* command, KivFisheyeLib::DewarpParams* lens);

/// Adds the same, and keeps in mind what was given.
void AddViewedLensOptions(CLI::App* command, ViewArguments* arguments);

/// Adds the options of `ViewArguments`, all but `--view`.
void AddViewOptions(CLI::App* command, ViewArguments* arguments);

/// Adds the options of a virtual camera's zoom.
void AddZoomOptions(CLI::App* command, AngleArguments* arguments);

/// Adds the options of everything that `AngleArguments` holds.
void AddAngleOptions(CLI::App* command, AngleArguments* arguments);

/// Throws `UsageError` when the output is one of the inputs.
void CheckIsNoInput(const std::string& output, const std::vector<std::string>& inputs);

}  // namespace KivFisheyeTools

#endif
