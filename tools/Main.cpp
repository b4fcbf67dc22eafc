#include <algorithm>
#include <csignal>
#include <iostream>
#include <new>
#include <string>

#include "CommandLine.h"
#include "Failure.h"
#include "Numbers.h"
#include "StopRequest.h"

namespace KivFisheyeTools {

namespace {

constexpr int kSuccess = 0;
constexpr int kFailure = 1;
constexpr int kUsage = 2;
/// As shells count the end by a signal.
constexpr int kSignal = 128;

int Complain(std::string sentence, int status) {
    const auto isControl = [](unsigned char letter) { return letter < ' ' || letter == 0x7F; };
    std::replace_if(sentence.begin(), sentence.end(), isControl, ' ');
    std::cerr << "kivfisheye: " << sentence << '\n';
    return status;
}

bool IsOption(const std::string& word) {
    return word.size() > 1 && word[0] == '-';
}

/// What the command does not take, in the order given, and which commands take its first option.
std::string ComplaintAboutExtras(const CLI::App& app, const std::string& command) {
    const std::vector<std::string> extras = app.remaining(true);
    const std::string by = command.empty() ? "" : " by " + command;
    std::string complaint = "not expected" + by + ": " + CLI::detail::join(extras, " ");
    const auto found = std::find_if(extras.begin(), extras.end(), IsOption);
    if (found == extras.end()) {
        return complaint;
    }
    const std::string option = found->substr(0, found->find('='));
    std::vector<std::string> takers;
    for (const CLI::App* other : CommandsOf(app)) {
        if (other->get_option_no_throw(option) != nullptr) {
            takers.push_back(other->get_name());
        }
    }
    return takers.empty() ? complaint
                          : complaint + "; " + option + " goes with " + Listed(takers, "and");
}

/// What is wrong with words that nothing takes.
std::string ComplaintAboutWords(const CLI::App& app) {
    const std::vector<std::string> beforeCommand = app.remaining(false);
    if (!beforeCommand.empty() && !IsOption(beforeCommand.front())) {
        return "there is no command '" + beforeCommand.front() + "'; the commands are " +
               Listed(CommandNames(app), "and");
    }
    const std::vector<CLI::App*> commands = app.get_subcommands();
    return ComplaintAboutExtras(app, commands.empty() ? "" : commands.front()->get_name());
}

/// Whether a command or an option was given that there is not.
bool HasUnknownName(const CLI::App& app) {
    const std::vector<std::string> extras = app.remaining(true);
    return !app.remaining(false).empty() || std::any_of(extras.begin(), extras.end(), IsOption);
}

std::string SentenceOf(const CLI::ArgumentMismatch& error) {
    const std::string text = error.what();
    const std::string name = text.substr(0, text.find(':'));
    const bool isMissing = text.find(" missing") != std::string::npos;
    return name + (isMissing ? " needs a value" : " is given more than once");
}

int Run(int argc, char** argv) {
    CommandLine app;
    // Whoever misspells a name wants to hear of that before what is then wrong or missing.
    const auto complain = [&](const char* sentence) {
        return Complain(HasUnknownName(app) ? ComplaintAboutWords(app) : sentence, kUsage);
    };
    try {
        app.parse(argc, argv);
        if (app.get_subcommands().empty()) {
            throw UsageError("what to do is missing: " + Listed(CommandNames(app), "or"));
        }
    } catch (const CLI::ExtrasError&) {
        return Complain(ComplaintAboutWords(app), kUsage);
    } catch (const CLI::ArgumentMismatch& error) {
        return Complain(SentenceOf(error), kUsage);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success)) {
            return complain(error.what());
        }
        app.exit(error);
    } catch (const UsageError& error) {
        return complain(error.what());
    }
    if (!std::cout.flush()) {
        return Complain("cannot write to standard output", kFailure);
    }
    return kSuccess;
}

}  // namespace

}  // namespace KivFisheyeTools

int main(int argc, char** argv) {
    using namespace KivFisheyeTools;
    // A file that grows beyond the limit is then a failed write, after which nothing is left of it.
    std::signal(SIGXFSZ, SIG_IGN);
    try {
        return Run(argc, argv);
    } catch (const Stopped& stopped) {
        return Complain(stopped.what(), kSignal + stopped.Signal());
    } catch (const std::bad_alloc&) {
        return Complain("there is not enough memory", kFailure);
    } catch (const std::exception& error) {
        return Complain(error.what(), kFailure);
    }
}
