#include "OptionFacts.h"

#include "Numbers.h"

namespace KivFisheyeTools {

std::vector<const CLI::Option*> PositionalsOf(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<const CLI::Option*> OptionsOf(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::vector<std::string> NamesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) {
        names.push_back("-" + name);
    }
    for (const std::string& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    return names;
}

bool TakesValue(const CLI::Option& option) {
    return option.get_items_expected_max() > 0;
}

bool IsRepeated(const CLI::Option& option) {
    return option.get_expected_max() == CLI::detail::expected_max_vector_size;
}

std::string ValueName(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(':'));
}

std::string LimitsOf(const CLI::Option& option) {
    const std::string type = option.get_type_name();
    const std::size_t colon = type.find(':');
    return colon == std::string::npos ? "" : type.substr(colon + 1);
}

std::vector<std::string> ChoicesOf(const CLI::Option& option) {
    const std::string limits = LimitsOf(option);
    const std::size_t open = limits.find('{');
    const std::size_t close = limits.find('}');
    if (open == std::string::npos || close == std::string::npos) {
        return {};
    }
    return SplitAtCommas(limits.substr(open + 1, close - open - 1));
}

bool IsFile(const CLI::Option& option) {
    return ValueName(option) == "FILE";
}

}  // namespace KivFisheyeTools
