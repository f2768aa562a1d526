// preprocess: a text through its directives.

#include "command.h"
#include "output.h"
#include "progress.h"
#include "text_input.h"

#include <brcore8/core/exception.h>
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/text/preprocessor.h>
#include <brcore8/text/symbol_table.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace tool {
namespace {

// The category that `define` directives write.
constexpr long DefinitionCategory = -1;

struct PreprocessOptions {
    std::string directive = "#";
    std::vector<std::string> definitions;
    std::string output = "-";
    std::string input = "-";
};

// What a `define` directive would do: a value that begins with a digit is a number.
void Define(SSymbolTable& symbols, const std::string& definition) {
    const std::size_t assign = definition.find('=');
    const SString name{std::string_view(definition).substr(0, assign)};
    const SString value{assign == std::string::npos
                            ? std::string_view()
                            : std::string_view(definition).substr(assign + 1)};
    if (value.IsDigit(0))
        symbols.AddSymbol(name, static_cast<long>(value), DefinitionCategory);
    else
        symbols.AddSymbol(name, value, DefinitionCategory);
}

// 8-bit text as the library's own reader delivers it, every line end as CR LF.
SString ReadKnownAnsi(std::string_view bytes) {
    if (bytes.size() > SString::MaxBytes) throw SEOutOfMemory();
    SInputBuffer source(bytes.data(), static_cast<int>(bytes.size()));
    SInputForcedANSIStream text(source, 0, SInputMultiFormat::FormatAnsi, SKnownFormat());
    return SString(std::string_view(SReadAll(text)));
}

SString ReadText(const std::string& path, const Settings& settings) {
    const TextInput input(path, settings);
    if (input.Format() == TextFormat::Ansi) return ReadKnownAnsi(input.Bytes());
    const std::string_view lineEnd = "\r\n";
    const std::string lines = input.Text(TextFormat::Ansi, lineEnd);
    return SString(
        std::string_view(lines).substr(0, lines.size() - (input.EndsOpen() ? lineEnd.size() : 0)));
}

int Preprocess(const PreprocessOptions& options, const Settings& settings) {
    SSymbolTable symbols;
    for (const std::string& definition : options.definitions)
        Define(symbols, definition);

    SPreprocessor preprocessor(options.directive.front());
    const SString text = ReadText(options.input, settings);
    BeginStep(1);
    const SString result = preprocessor.Preprocess(text, &symbols);

    Output output(options.output);
    output.Write(result.View());
    output.Finish();
    return Done;
}

std::string OneByte(const std::string& text) {
    return text.size() == 1 ? "" : "the directive character is one byte";
}

std::string HasName(const std::string& text) {
    return text.empty() || text.front() == '=' ? "a definition begins with its name" : "";
}

}  // namespace

Action PreparePreprocess(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<PreprocessOptions>();
    parser.add_option("-c,--char", options->directive, "The directive character (#)")
        ->type_name("CHAR")
        ->check(CLI::Validator(OneByte, ""));
    parser.add_option("-D,--define", options->definitions, "A symbol, as 'define' makes it")
        ->type_name("NAME[=VALUE]")
        ->allow_extra_args(false)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(CLI::Validator(HasName, ""));
    parser.add_option("-o,--output", options->output, "Write there, when the content differs")
        ->type_name("OUTPUT");
    parser.add_option("INPUT", options->input, "A text file; standard input when missing or -");
    parser.footer(
        "Directives: define NAME VALUE, undef NAME, ifdef NAME, ifndef NAME, else, endif,\n"
        "error \"TEXT\", message \"TEXT\", comments between /* and */ or from // on.\n"
        "A directive character that is none of # + = - / * \\ \" stands apart: @ define NAME "
        "VALUE.");
    return [options, &settings] { return Preprocess(*options, settings); };
}

}  // namespace tool
