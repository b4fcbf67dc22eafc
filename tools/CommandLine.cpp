#include "CommandLine.h"

#include <KivFisheyeVersion.h>

#include <memory>
#include <sstream>

#include "CommandTexts.h"
#include "Commands.h"
#include "WrappedText.h"

namespace KivFisheyeTools {

namespace {

constexpr std::size_t kLineWidth = 90;

/// Breaks lines where the usual formatter lets them run on.
class HelpFormatter : public CLI::Formatter {
public:
    std::string make_option_desc(const CLI::Option* option) const override {
        return WrappedText(CLI::Formatter::make_option_desc(option),
                           kLineWidth - get_column_width());
    }

    std::string make_subcommand(const CLI::App* command) const override {
        std::ostringstream line;
        CLI::detail::format_help(
            line, command->get_name(),
            WrappedText(command->get_description(), kLineWidth - get_column_width()),
            get_column_width());
        return line.str();
    }
};

std::string Footer(const CommandText& text) {
    std::string footer;
    for (const std::string& note : text.notes) {
        footer += WrappedText(note, kLineWidth) + "\n\n";
    }
    footer += "Examples:";
    for (const Example& example : text.examples) {
        footer += "\n  " + example.purpose + ":\n    " + example.line;
    }
    return footer;
}

std::string FooterAboutExitStatuses() {
    constexpr std::size_t kNumberWidth = 10;
    std::string footer = "\n\nExit status:";
    for (const ExitStatus& status : ExitStatuses()) {
        std::string line = "\n  " + status.number;
        line.resize(kNumberWidth + 1, ' ');
        const std::string meaning = WrappedText(status.meaning, kLineWidth - kNumberWidth);
        footer += line + CLI::detail::find_and_replace(meaning, "\n",
                                                       "\n" + std::string(kNumberWidth, ' '));
    }
    return footer;
}

}  // namespace

CommandLine::CommandLine()
    : CLI::App("Flatten pictures and videos of fisheye cameras", "kivfisheye") {
    formatter(std::make_shared<HelpFormatter>());
    set_version_flag("--version", "kivfisheye " KIVFISHEYE_VERSION, "Print the version and exit");
    require_subcommand(0, 1);
    AddAimCommand(this);
    AddDewarpCommand(this);
    AddInfoCommand(this);
    AddMeshCommand(this);
    AddOutlineCommand(this);
    AddSceneCommand(this);
    AddSheetCommand(this);
    AddSnapshotCommand(this);
    AddSweepCommand(this);
    AddHelpCommand(this);
    for (CLI::App* command : get_subcommands(nullptr)) {
        command->footer(Footer(TextOf(command->get_name())));
    }
    footer(Footer(TextOf(get_name())) + FooterAboutExitStatuses());
}

std::vector<const CLI::App*> CommandsOf(const CLI::App& program) {
    return program.get_subcommands([](const CLI::App*) { return true; });
}

std::vector<std::string> CommandNames(const CLI::App& program) {
    std::vector<std::string> names;
    for (const CLI::App* command : CommandsOf(program)) {
        names.push_back(command->get_name());
    }
    return names;
}

}  // namespace KivFisheyeTools
