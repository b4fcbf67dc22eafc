#include "ManualPages.h"

#include <KivFisheyeVersion.h>

#include <algorithm>
#include <cctype>

#include "CommandLine.h"
#include "CommandTexts.h"
#include "Numbers.h"
#include "OptionFacts.h"
#include "RoffText.h"

namespace KivFisheyeTools {

namespace {

std::string Line(const std::string& text) {
    return text + "\n";
}

std::string Section(const std::string& title) {
    return Line(".SH " + title);
}

std::string Paragraph(const std::string& text) {
    return Line(".PP") + Line(text);
}

/// A title at the margin and what belongs to it indented.
std::string Item(const std::string& title, const std::string& text) {
    return Line(".TP") + Line(title) + Line(text);
}

std::string Capital(std::string text) {
    text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
    return text;
}

std::string Small(std::string text) {
    text[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(text[0])));
    return text;
}

std::string Head(const std::string& name, const std::string& summary) {
    std::string title = name;
    std::transform(title.begin(), title.end(), title.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    // No date: it would change with every build.
    return Line(".TH " + RoffCode(title) +
                " 1 \"\" \"kivfisheye " KIVFISHEYE_VERSION "\" \"User Commands\"") +
           Line(".nh") + Line(".ad l") + Section("NAME") +
           Line(RoffCode(name) + " \\- " +
                RoffProse(Small(summary.substr(0, summary.find_last_not_of('.') + 1))));
}

std::string UsageOf(const CLI::Option& positional) {
    const std::string name =
        RoffItalic(positional.get_name()) + (IsRepeated(positional) ? "..." : "");
    return positional.get_required() ? name : "[" + name + "]";
}

std::string Synopsis(const CLI::App& program, const CLI::App& command) {
    std::string line = RoffBold(program.get_name() + " " + command.get_name());
    for (const CLI::Option* positional : PositionalsOf(command)) {
        line += " " + UsageOf(*positional);
    }
    for (const CLI::Option* option : OptionsOf(command)) {
        if (option->get_required()) {
            line += " " + RoffBold(NamesOf(*option).back()) + " " + RoffItalic(ValueName(*option));
        }
    }
    return Section("SYNOPSIS") + Line(line + " [" + RoffItalic("OPTION") + "]...");
}

/// Sentences about what an option takes, besides its description.
std::string Conditions(const CLI::Option& option) {
    std::string conditions = option.get_required() ? " Required." : "";
    const std::vector<std::string> choices = ChoicesOf(option);
    const std::string limits = LimitsOf(option);
    if (!choices.empty() && limits.front() == '{') {
        conditions += choices[0].front() == '.' ? " The name ends with " : " One of ";
        conditions += Listed(choices, "or") + ".";
    } else if (choices.empty() && !limits.empty()) {
        conditions += " " + Capital(limits) + ".";
    }
    if (!option.get_default_str().empty()) {
        conditions += " Default: " + option.get_default_str() + ".";
    }
    std::vector<std::string> excluded;
    for (const CLI::Option* other : option.get_excludes()) {
        excluded.push_back(NamesOf(*other).back());
    }
    std::sort(excluded.begin(), excluded.end());
    return excluded.empty() ? conditions
                            : conditions + " Not together with " + Listed(excluded, "and") + ".";
}

std::string OptionItem(const CLI::Option& option) {
    std::string title;
    for (const std::string& name : NamesOf(option)) {
        title += (title.empty() ? "" : ", ") + RoffBold(name);
    }
    if (option.get_positional()) {
        title = RoffItalic(option.get_name());
    } else if (TakesValue(option)) {
        title += " " + RoffItalic(ValueName(option));
    }
    return Item(title, RoffProse(option.get_description() + "." + Conditions(option)));
}

std::string OptionsSection(const CLI::App& command) {
    std::string section = Section("OPTIONS");
    for (const CLI::Option* positional : PositionalsOf(command)) {
        section += OptionItem(*positional);
    }
    for (const CLI::Option* option : OptionsOf(command)) {
        section += OptionItem(*option);
    }
    return section;
}

std::string Description(const CLI::App& app) {
    std::string summary = app.get_description();
    summary += summary.back() == '.' ? "" : ".";
    std::string section = Section("DESCRIPTION") + Line(RoffProse(summary));
    for (const std::string& note : TextOf(app.get_name()).notes) {
        section += Paragraph(RoffProse(note));
    }
    return section;
}

std::string Examples(const std::string& command) {
    std::string section = Section("EXAMPLES");
    for (const Example& example : TextOf(command).examples) {
        section += Paragraph(RoffProse(example.purpose + ":")) + Line(".PP") + Line(".RS 4") +
                   Line(".nf") + Line(RoffCode(example.line)) + Line(".fi") + Line(".RE");
    }
    return section;
}

std::string ExitStatusSection() {
    std::string section = Section("EXIT STATUS");
    for (const ExitStatus& status : ExitStatuses()) {
        section += Item(RoffBold(status.number), RoffProse(status.meaning));
    }
    return section;
}

std::string SeeAlso(const std::vector<std::string>& pages) {
    std::string section = Section("SEE ALSO");
    for (std::size_t i = 0; i < pages.size(); ++i) {
        section += Line(".BR " + RoffCode(pages[i]) + " (1)" + (i + 1 < pages.size() ? "," : ""));
    }
    return section;
}

}  // namespace

std::string PageName(const CLI::App& program, const CLI::App& command) {
    return program.get_name() + "-" + command.get_name();
}

std::string ProgramPage(const CLI::App& program) {
    std::string page = Head(program.get_name(), program.get_description()) + Section("SYNOPSIS") +
                       Line(RoffBold(program.get_name()) + " " + RoffItalic("COMMAND") + " [" +
                            RoffItalic("ARGUMENT") + "]...") +
                       Description(program) + Section("COMMANDS");
    std::vector<std::string> pages;
    for (const CLI::App* command : CommandsOf(program)) {
        page += Item(RoffBold(command->get_name()), RoffProse(command->get_description() + "."));
        pages.push_back(PageName(program, *command));
    }
    return page + OptionsSection(program) + Examples(program.get_name()) + ExitStatusSection() +
           SeeAlso(pages);
}

std::string CommandPage(const CLI::App& program, const CLI::App& command) {
    std::vector<std::string> pages = {program.get_name()};
    for (const CLI::App* other : CommandsOf(program)) {
        if (other != &command) {
            pages.push_back(PageName(program, *other));
        }
    }
    return Head(PageName(program, command), command.get_description()) +
           Synopsis(program, command) + Description(command) + OptionsSection(command) +
           Examples(command.get_name()) + ExitStatusSection() + SeeAlso(pages);
}

}  // namespace KivFisheyeTools
