// completion: how a shell completes the command line, from the one table of commands.

#include "command.h"
#include "parsers.h"

#include <algorithm>
#include <memory>
#include <set>

namespace tool {
namespace {

constexpr char Files[] = "@files";
constexpr char Folders[] = "@folders";

std::string Joined(const std::vector<std::string>& words, const char* separator = " ") {
    return CLI::detail::join(words, separator);
}

// The words that may stand for a value; Files or Folders, or "" when nobody knows.
std::string Offered(const CLI::Option& value) {
    static const std::set<std::string> files = {"ARCHIVE",  "FILE",   "FIRST",   "INPUT",
                                                "KEYWORDS", "OUTPUT", "PROGRAM", "SECOND"};
    const std::string name = ValueName(value);
    if (files.count(name) != 0) return Files;
    if (name == "DIR") return Folders;
    return Joined(ChoicesOf(value));
}

// Calls for a parser and all below it, with the words that lead there: "", "rtf", "rtf merge".
template <typename Call>
void ForEachParser(const CLI::App& parser, const std::string& path, const Call& call) {
    call(parser, path);
    for (const CLI::App* part : PartsOf(parser))
        ForEachParser(*part, path + (path.empty() ? "" : " ") + part->get_name(), call);
}

std::string Quoted(std::string text) {
    for (std::size_t at = 0; (at = text.find('\'', at)) != text.npos; at += 4)
        text.replace(at, 1, "'\\''");
    return "'" + text + "'";
}

// ---- bash ---------------------------------------------------------------------------------------

constexpr char BashBeginning[] = R"(# bash completion, as "brcore8 completion bash" prints it
_brcore8() {
    local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # "--to=utf8" arrives as three words.
    [[ $current == = ]] && current=
    [[ $option == = ]] && option=${COMP_WORDS[COMP_CWORD - 2]}
)";

constexpr char BashCommand[] = R"(
    # The command, and of one that is made of several, which.
    local command= word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD - 1}"; do
        word=${command:+$command }$word
        [[ $commands == *"|$word|"* ]] && command=$word
    done
)";

constexpr char BashEnd[] = R"(    [[ $current == -* ]] && offered=$options
    _brcore8_offer "$offered"
}
# Names may hold blanks.
_brcore8_offer() {
    case $1 in
        @files) mapfile -t COMPREPLY < <(compgen -f -- "$current") ;;
        @folders) mapfile -t COMPREPLY < <(compgen -d -- "$current") ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current") ;;
    esac
}
complete -o filenames -F _brcore8 brcore8
)";

// The first thing that can be offered for the words of a command which are no options.
std::string OfferedWords(const CLI::App& parser) {
    std::vector<std::string> words;
    for (const CLI::App* part : PartsOf(parser))
        words.push_back(part->get_name());
    for (const CLI::Option* value : OptionsOf(parser, Kind::Positional)) {
        if (words.empty() && !Offered(*value).empty()) words.push_back(Offered(*value));
    }
    return Joined(words);
}

std::string LongNames(const CLI::App& parser) {
    std::string names;
    for (const CLI::Option* option : OptionsOf(parser, Kind::Option))
        names += " " + NamesOf(*option).back();
    return names;
}

std::string Bash(const CLI::App& program) {
    std::string paths, values, commands;
    ForEachParser(program, "", [&](const CLI::App& parser, const std::string& path) {
        paths += path + "|";
        for (const CLI::Option* option : OptionsOf(parser, Kind::Option)) {
            if (!TakesValue(*option)) continue;
            std::vector<std::string> patterns;
            for (const std::string& name : NamesOf(*option))
                patterns.push_back((path.empty() ? "*" : "") + Quoted(path + " " + name));
            values += "        " + Joined(patterns, " | ") + ") _brcore8_offer " +
                      Quoted(Offered(*option)) + "; return ;;\n";
        }
        if (path.empty()) return;  // its options may stand anywhere
        commands += "        " + Quoted(path) + ") options+=" + Quoted(LongNames(parser)) +
                    " offered=" + Quoted(OfferedWords(parser)) + " ;;\n";
    });
    return BashBeginning + ("    local commands=" + Quoted(paths)) + BashCommand +
           "    case \"$command $option\" in\n" + values + "    esac\n" +
           "    local options=" + Quoted("--help" + LongNames(program)) +
           " offered=" + Quoted(OfferedWords(program)) + "\n" + "    case $command in\n" +
           commands + "    esac\n" + BashEnd;
}

// ---- zsh ----------------------------------------------------------------------------------------

constexpr char ZshBeginning[] = R"(#compdef brcore8
# zsh completion, as "brcore8 completion zsh" prints it
)";

constexpr char ZshEnd[] = R"(if [[ ${funcstack[1]} == _brcore8 ]]; then
    _brcore8 "$@"
else
    compdef _brcore8 brcore8
fi
)";

// Text within a specification of _arguments.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char byte : text) {
        if (std::string_view("[]:\\").find(byte) != std::string_view::npos) escaped += '\\';
        escaped += byte;
    }
    return escaped;
}

// ":NAME:ACTION", what _arguments offers for a value.
std::string ZshValue(const CLI::Option& value) {
    const std::string offered = Offered(value);
    std::string action = " ";
    if (offered == Files || offered == Folders)
        action = offered == Files ? "_files" : "_files -/";
    else if (!offered.empty())
        action = "(" + offered + ")";
    return ":" + Escaped(ValueName(value)) + ":" + action;
}

std::string ZshOptions(const CLI::App& parser) {
    std::string specifications;
    for (const CLI::Option* option : OptionsOf(parser, Kind::Option)) {
        const std::string value = TakesValue(*option) ? ZshValue(*option) : "";
        const std::string all = Joined(NamesOf(*option));
        for (const std::string& name : NamesOf(*option)) {
            const std::string sign = value.empty() ? "" : name[1] == '-' ? "=" : "+";
            specifications += " \\\n        " +
                              Quoted((MayRepeat(*option) ? "*" : "(" + all + ")") + name + sign +
                                     "[" + Escaped(option->get_description()) + "]" + value);
        }
    }
    return specifications;
}

// A function a parser: of one with parts, offers these and hands on to the function of that given.
std::string ZshFunction(const CLI::App& parser, const std::string& path) {
    std::string name = "_brcore8" + (path.empty() ? "" : "_" + path);
    std::replace(name.begin(), name.end(), ' ', '_');
    std::string function =
        name +
        "() {\n    local curcontext=$curcontext state line\n    _arguments -C -s $_brcore8_shared";
    if (!path.empty()) function += ZshOptions(parser);
    if (PartsOf(parser).empty()) {
        for (const CLI::Option* value : OptionsOf(parser, Kind::Positional))
            function += " \\\n        " + Quoted((MayRepeat(*value) ? "*" : "") + ZshValue(*value));
        return function + "\n}\n";
    }
    function += " \\\n        ':command:->command' '*::argument:->argument'\n    local -a parts=(";
    for (const CLI::App* part : PartsOf(parser))
        function +=
            "\n        " + Quoted(part->get_name() + ":" + Escaped(part->get_description()));
    return function + ")\n    case $state in\n        command) _describe command parts ;;\n" +
           "        argument) _call_function ret " + name + "_$line[1] ;;\n    esac\n}\n";
}

std::string Zsh(const CLI::App& program) {
    std::string functions;
    ForEachParser(program, "", [&](const CLI::App& parser, const std::string& path) {
        functions += ZshFunction(parser, path);
    });
    return ZshBeginning +
           ("typeset -ga _brcore8_shared=('(-h --help)'{-h,--help}'[Show help]'" +
            ZshOptions(program)) +
           ")\n" + functions + ZshEnd;
}

}  // namespace

Action PrepareCompletion(CLI::App& parser, const Settings&) {
    auto shell = std::make_shared<std::string>();
    parser.add_option("SHELL", *shell, "bash or zsh")
        ->required()
        ->check(CLI::IsMember(std::vector<std::string>{"bash", "zsh"}));
    parser.footer(
        "Installed with the program; elsewhere\n"
        "source <(brcore8 completion bash)\n"
        "completes in the shell in use.");
    return [&parser, shell] {
        const CLI::App& program = *parser.get_parent();
        return Print(*shell == "bash" ? Bash(program) : Zsh(program));
    };
}

}  // namespace tool
