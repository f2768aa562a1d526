// convert: a text's lines in another format.

#include "command.h"
#include "output.h"
#include "text_input.h"

#include <CLI/CLI.hpp>

#include <map>
#include <memory>

namespace tool {
namespace {

const std::map<std::string, TextFormat> FormatNames = {{"ansi", TextFormat::Ansi},
                                                       {"oem", TextFormat::Oem},
                                                       {"utf16", TextFormat::Utf16},
                                                       {"utf8", TextFormat::Utf8}};

struct ConvertOptions {
    std::string from;
    std::string to;
    std::string output = "-";
    std::string input = "-";
};

int Convert(const ConvertOptions& options, const Settings& settings) {
    std::optional<TextFormat> from;
    if (!options.from.empty()) from = FormatNames.at(options.from);
    const TextFormat to = FormatNames.at(options.to);
    using namespace std::string_view_literals;
    const std::string_view lineEnd = to == TextFormat::Utf16 ? "\r\0\n\0"sv : "\r\n"sv;
    const std::string text = TextInput(options.input, settings, from).Text(to, lineEnd);

    Output output(options.output);
    output.Write(text);
    output.Finish();
    return Done;
}

}  // namespace

Action PrepareConvert(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<ConvertOptions>();
    const CLI::IsMember known(std::vector<std::string>{"ansi", "oem", "utf16", "utf8"});
    parser.add_option("--from", options->from, "The input's format, whatever its mark says")
        ->type_name("F")
        ->check(known);
    parser.add_option("--to", options->to, "The output's format; no mark is written")
        ->type_name("F")
        ->required()
        ->check(known);
    parser.add_option("-o,--output", options->output, "Write there, when the content differs")
        ->type_name("OUTPUT");
    parser.add_option("INPUT", options->input, "A text file; standard input when missing or -");
    parser.footer(
        "utf16 has its low byte first. Every line of the output ends with CR LF.\n"
        "Without --from a mark decides, and without a mark the text is ansi.");
    return [options, &settings] { return Convert(*options, settings); };
}

}  // namespace tool
