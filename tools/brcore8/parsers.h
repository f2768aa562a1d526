// What the parsers of the commands tell about themselves, for the manual page and the completion.
#ifndef BRCORE8_TOOLS_PARSERS_H
#define BRCORE8_TOOLS_PARSERS_H

#include <brcore8/strings/multibyte.h>

#include <CLI/CLI.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace tool {

// The commands of the program, or those that a command is made of, in the order of their table.
inline std::vector<const CLI::App*> PartsOf(const CLI::App& parser) {
    return parser.get_subcommands([](const CLI::App*) { return true; });
}

// Its options without --help, which every parser has; or its positional arguments.
enum class Kind { Option, Positional };
inline std::vector<const CLI::Option*> OptionsOf(const CLI::App& parser, Kind kind) {
    return parser.get_options([&](const CLI::Option* option) {
        return option->get_positional() == (kind == Kind::Positional) &&
               option != parser.get_help_ptr();
    });
}

// "-o" and "--output".
inline std::vector<std::string> NamesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames())
        names.push_back("-" + name);
    for (const std::string& name : option.get_lnames())
        names.push_back("--" + name);
    return names;
}

inline bool MayRepeat(const CLI::Option& option) {
    return option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
}

// What stands for its value in the help; nothing for a flag.
inline std::string ValueName(const CLI::Option& option) {
    if (option.get_positional()) return option.get_name(true);
    const std::string type = option.get_type_name();
    return type.substr(0, type.find(':'));
}

inline bool TakesValue(const CLI::Option& option) {
    return !ValueName(option).empty();
}

// The values among which one must be chosen; none when any value will do.
inline std::vector<std::string> ChoicesOf(const CLI::Option& option) {
    if (ValueName(option) == "PAGE") {
        std::vector<std::string> pages;
        for (const int page : SSupportedCodePages())
            pages.push_back(std::to_string(page));
        return pages;
    }
    const std::string type = option.get_type_name();
    const std::size_t start = type.find(":{");
    if (start == type.npos) return {};
    return CLI::detail::split(type.substr(start + 2, type.find('}', start) - start - 2), ',');
}

}  // namespace tool

#endif
