// rtf: the parts of an RTF document, two documents as one, and plain text and back.

#include "command.h"
#include "output.h"
#include "progress.h"
#include "text_input.h"

#include <brcore8/strings/multibyte.h>
#include <brcore8/text/rtf_document.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace tool {
namespace {

std::string NameOf(const std::string& file) {
    return file == "-" ? "standard input" : file;
}

SString ReadRtf(const std::string& file, const Settings& settings) {
    const TextInput input(file, settings, TextFormat::Ansi);
    const SString rtf(input.Bytes());
    if (!rtf.IsRtf()) throw Failure{NameOf(file), "it is no RTF document"};
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
    parser.footer("Tables are merged, both bodies renumbered, each in a group of its own.");
    return [options, &settings] { return Merge(*options, settings); };
}

// ---- Plain text -------------------------------------------------------------------------------

struct ConvertOptions {
    std::string file;
    std::string output = "-";
};

// Of nothing, the result says whether the system lets us convert at all.
void RequireConverter(SRtfDocument& converter) {
    SString nothing, result;
    if (!converter.RtfToText(&result, nothing))
        throw Failure{"rtf", "the system refuses its rich-edit control"};
}

int ToText(const ConvertOptions& options, const Settings& settings) {
    const SString rtf = ReadRtf(options.file, settings);
    BeginStep(1);
    SRtfDocument converter;
    RequireConverter(converter);
    std::u16string wide;
    converter.RtfToUtf16(&wide, rtf.View());
    std::erase(wide, u'\r');  // all lines end with CR LF
    SConversionLoss loss;
    const std::string text = STextFromUtf16(wide, &loss);
    if (loss.count > 0) {
        const std::u16string_view before = std::u16string_view(wide).substr(0, loss.first);
        const std::string at = std::to_string(STextFromUtf16(before).size());
        ReportLoss(NameOf(options.file), loss.count, "at byte " + at + " of the text", settings);
    }
    Output output(options.output);
    output.Write(text);
    output.Finish();
    return Done;
}

// UTF-16, with LF between the lines.
std::u16string ReadLines(const std::string& file, const Settings& settings) {
    using namespace std::string_view_literals;
    const TextInput input(file, settings);
    const std::string bytes = input.Text(TextFormat::Utf16, "\n\0"sv);
    std::u16string lines(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto low = static_cast<unsigned char>(bytes[2 * i]);
        const auto high = static_cast<unsigned char>(bytes[2 * i + 1]);
        lines[i] = static_cast<char16_t>(high << 8 | low);
    }
    if (input.EndsOpen()) lines.pop_back();
    if (lines.find(u'\0') != std::u16string::npos)
        throw Failure{NameOf(file), "it holds a zero byte, which RTF cannot"};
    return lines;
}

int FromText(const ConvertOptions& options, const Settings& settings) {
    const std::u16string lines = ReadLines(options.file, settings);
    BeginStep(1);
    SRtfDocument converter;
    RequireConverter(converter);
    SString rtf;
    converter.Utf16ToRtf(&rtf, lines);
    Output output(options.output);
    output.Write(rtf.View());
    output.Finish();
    return Done;
}

template <int (*Convert)(const ConvertOptions& options, const Settings& settings)>
Action PrepareConversion(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<ConvertOptions>();
    parser.add_option("FILE", options->file, "A document, or a text; - is standard input")
        ->required();
    parser.add_option("-o,--output", options->output, "Write there, when the content differs")
        ->type_name("OUTPUT");
    return [options, &settings] { return Convert(*options, settings); };
}

constexpr Command Parts[] = {
    {"header", "Print a document's header", PreparePart<SRtfDocument::ExtractHeader, Whole>},
    {"fonts", "Print its fonts", PreparePart<SRtfDocument::ExtractFontTable, Fonts>},
    {"colors", "Print its colours", PreparePart<SRtfDocument::ExtractColorTable, Colors>},
    {"styles", "Print its style sheet", PreparePart<SRtfDocument::ExtractStyleTable, Whole>},
    {"merge", "Make one document of two", PrepareMerge},
    {"text", "Print a document's plain text", PrepareConversion<ToText>},
    {"from-text", "Make a document of a text", PrepareConversion<FromText>},
};

}  // namespace

Action PrepareRtf(CLI::App& parser, const Settings& settings) {
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
