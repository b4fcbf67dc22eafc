#include "BashCompletion.h"

#include "CommandLine.h"
#include "OptionFacts.h"

namespace KivFisheyeTools {

namespace {

/// Everything of the script that is the same for every program. A kind is what may stand in a
/// place: "names" and the names, "files" and the endings of files, or "nothing".
constexpr const char* kScript = R"(
# Names of folders, and of files with one of the endings.
_kivfisheye_matches() (
    word=$1
    shift
    shopt -s nocasematch
    compgen -f -- "$word" | while IFS= read -r name; do
        for ending in "$@"; do
            if [[ $name == *"$ending" || -d ${name/#\~\//$HOME/} ]]; then
                printf '%s\n' "$name"
                break
            fi
        done
    done
)

_kivfisheye_files() {
    local name names
    names=$(_kivfisheye_matches "$@")
    # There are more kinds of files than endings are known.
    [[ -n $names ]] || names=$(compgen -f -- "$1")
    compopt -o filenames 2>/dev/null
    while IFS= read -r name; do
        [[ -z $name ]] || COMPREPLY+=("$name")
    done <<<"$names"
}

_kivfisheye_offer() {
    local word=$1 kind=$2
    shift 2
    case $kind in
        names) COMPREPLY=($(compgen -W "$*" -- "$word")) ;;
        files) _kivfisheye_files "$word" "$@" ;;
    esac
}

_kivfisheye() {
    local word=${COMP_WORDS[COMP_CWORD]} command=${COMP_WORDS[1]}
    local part option='' place=0 i
    local options flags positionals repeated
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        _kivfisheye_describe ''
        [[ $word == -* ]] && positionals=("names $options")
        _kivfisheye_offer "$word" ${positionals[0]}
        return
    fi
    _kivfisheye_describe "$command"
    for ((i = 2; i < COMP_CWORD; ++i)); do
        part=${COMP_WORDS[i]}
        if [[ -n $option ]]; then
            # An equals sign between an option and its value is a word of its own.
            [[ $part == '=' ]] || option=''
        elif [[ $part == -* ]]; then
            [[ " $flags " == *" $part "* ]] || option=$part
        else
            ((++place))
        fi
    done
    if [[ -n $option ]]; then
        [[ $word == '=' ]] && word=''
        _kivfisheye_offer "$word" $(_kivfisheye_value "$command $option")
    elif [[ $word == -* || -z ${positionals[place]-$repeated} ]]; then
        _kivfisheye_offer "$word" names $options
    else
        _kivfisheye_offer "$word" ${positionals[place]-$repeated}
    fi
}

complete -F _kivfisheye kivfisheye
)";

/// What cameras and recorders write, and what they are made into.
constexpr const char* kReadableFiles =
    "files .png .jpg .jpeg .bmp .tif .tiff .webp .gif .mp4 .mkv .mov .avi .m4v .ts .webm .mpg "
    ".mpeg .h264 .h265";

std::string Quoted(const std::string& text) {
    return "'" + text + "'";
}

std::string KindOf(const CLI::Option& option) {
    const std::vector<std::string> choices = ChoicesOf(option);
    if (choices.empty()) {
        return IsFile(option) ? kReadableFiles : "nothing";
    }
    return (IsFile(option) ? "files " : "names ") + CLI::detail::join(choices, " ");
}

/// The part of a `case` that sets what is known of a command.
std::string DescriptionOf(const std::string& name, const CLI::App& command,
                          const std::string& positionals, const std::string& repeated) {
    std::string options;
    std::string flags;
    for (const CLI::Option* option : OptionsOf(command)) {
        for (const std::string& optionName : NamesOf(*option)) {
            options += (options.empty() ? "" : " ") + optionName;
            if (!TakesValue(*option)) {
                flags += (flags.empty() ? "" : " ") + optionName;
            }
        }
    }
    return "        " + name + ")\n            options=" + Quoted(options) +
           "\n            flags=" + Quoted(flags) + "\n            positionals=(" + positionals +
           ")\n            repeated=" + Quoted(repeated) + "\n            ;;\n";
}

std::string DescriptionOf(const CLI::App& command) {
    std::string positionals;
    std::string repeated;
    for (const CLI::Option* positional : PositionalsOf(command)) {
        const std::string kind = KindOf(*positional);
        positionals += (positionals.empty() ? "" : " ") + Quoted(kind);
        repeated = IsRepeated(*positional) ? kind : "";
    }
    return DescriptionOf(command.get_name(), command, positionals, repeated);
}

std::string ValuesOf(const CLI::App& command) {
    std::string values;
    for (const CLI::Option* option : OptionsOf(command)) {
        const std::string kind = KindOf(*option);
        for (const std::string& name : NamesOf(*option)) {
            if (TakesValue(*option) && kind != "nothing") {
                values += "        " + Quoted(command.get_name() + " " + name) + ") echo " +
                          Quoted(kind) + " ;;\n";
            }
        }
    }
    return values;
}

}  // namespace

std::string BashCompletion(const CLI::App& program) {
    std::string commands = "names " + CLI::detail::join(CommandNames(program), " ");
    std::string descriptions = DescriptionOf("''", program, Quoted(commands), "");
    std::string values;
    for (const CLI::App* command : CommandsOf(program)) {
        descriptions += DescriptionOf(*command);
        values += ValuesOf(*command);
    }
    return "# Completion of bash for kivfisheye.\n\n"
           "_kivfisheye_describe() {\n    case $1 in\n" +
           descriptions +
           "        *)\n            options='' flags='' positionals=() repeated=''\n"
           "            ;;\n    esac\n}\n\n"
           "_kivfisheye_value() {\n    case $1 in\n" +
           values + "        *) echo nothing ;;\n    esac\n}\n" + kScript;
}

}  // namespace KivFisheyeTools
