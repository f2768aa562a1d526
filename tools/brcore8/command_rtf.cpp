// rtf: the parts of an RTF document, and two documents as one.

#include "command.h"
#include "output.h"
#include "text_input.h"

#include <brcore8/text/rtf_document.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace tool {
namespace {

SString ReadRtf(const std::string& file, const Settings& settings) {
    const TextInput input(file, settings, TextFormat::Ansi);
    const SString rtf(input.Bytes());
    if (!rtf.IsRtf()) throw Failure{file == "-" ? "standard input" : file, "it is no RTF document"};
    return rtf;
}

// ---- One part ---------------------------------------------------------------------------------

using Extract = int(SString& part, SString& rtf, int remove);

std::string Whole(const SString& part) {
    return std::string(part.View());
}

std::string Fonts(const SString& part) {
    SRtfFontTable table;
    table.AddFontTable(part);
    std::string rows;
    for (const SRtfFontEntry& font : table)
        rows += Row({std::to_string(font.number), font.name, font.controls});
    return rows;
}

std::string Colors(const SString& part) {
    SRtfColorTable table;
    table.AddColorTable(part);
    std::string rows;
    for (const SRtfColorEntry& color : table)
        rows += Row({std::to_string(color.number), color.specification});
    return rows;
}

template <Extract* Take, std::string (*Show)(const SString& part)>
Action PreparePart(CLI::App& parser, const Settings& settings) {
    auto file = std::make_shared<std::string>();
    parser.add_option("FILE", *file, "An RTF document; - is standard input")->required();
    return [file, &settings] {
        SString rtf = ReadRtf(*file, settings);
        SString part;
        Take(part, rtf, 0);
        return Print(Show(part));
    };
}

// ---- Two documents ----------------------------------------------------------------------------

struct MergeOptions {
    std::string first;
    std::string second;
    std::string output;
};

int Merge(const MergeOptions& options, const Settings& settings) {
    SString merged = ReadRtf(options.first, settings);
    SRtfDocument::Merge(merged, ReadRtf(options.second, settings), merged);
    Output output(options.output);
    output.Write(merged.View());
    output.Finish();
    return Done;
}

Action PrepareMerge(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<MergeOptions>();
    parser.add_option("FIRST", options->first, "An RTF document; - is standard input")->required();
    parser.add_option("SECOND", options->second, "The one to follow it")->required();
    parser.add_option("-o,--output", options->output, "Write there, when the content differs")
        ->type_name("OUTPUT")
        ->required();
    return [options, &settings] { return Merge(*options, settings); };
}

constexpr Command Parts[] = {
    {"header", "Print a document's header", PreparePart<SRtfDocument::ExtractHeader, Whole>},
    {"fonts", "Print its fonts", PreparePart<SRtfDocument::ExtractFontTable, Fonts>},
    {"colors", "Print its colours", PreparePart<SRtfDocument::ExtractColorTable, Colors>},
    {"styles", "Print its style sheet", PreparePart<SRtfDocument::ExtractStyleTable, Whole>},
    {"merge", "Make one document of two", PrepareMerge},
};

}  // namespace

Action PrepareRtf(CLI::App& parser, const Settings& settings) {
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
