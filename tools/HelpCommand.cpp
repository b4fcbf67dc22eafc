#include <iostream>
#include <memory>

#include "Arguments.h"
#include "CommandLine.h"
#include "Commands.h"

namespace KivFisheyeTools {

void AddHelpCommand(CLI::App* app) {
    const auto name = std::make_shared<std::string>();
    CLI::App* command =
        app->add_subcommand("help", "Tell about the commands, or about one of them");
    std::vector<std::string> names = CommandNames(*app);
    command
        ->add_option("COMMAND", *name,
                     "The command to tell all about; without it the commands are listed")
        ->check(NameAmong("command", names))
        ->type_name("NAME");
    command->callback([name, app] {
        // The program's own help() would be that of the command that is being run.
        std::cout << (name->empty() ? app->get_formatter()->make_help(app, app->get_name(),
                                                                      CLI::AppFormatMode::Normal)
                                    : app->get_subcommand(*name)->help(app->get_name()));
    });
}

}  // namespace KivFisheyeTools
