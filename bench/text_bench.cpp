// Text on its way through the library: code pages, line ends, directives.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <unordered_map>

#include "bench.h"
#include "scan_flex.h"

namespace {

std::string Source(std::int64_t bytes) {
    std::string text;
    for (int line = 0; static_cast<std::int64_t>(text.size()) < bytes; ++line) {
        text += line % 10 == 0 ? "#ifdef FEATURE\n" : "";
        text += "int value_" + std::to_string(line) + " = call(argument, 42);\n";
        text += line % 10 == 9 ? "#endif\n" : "";
    }
    return text;
}

void Preprocess(benchmark::State& state) {
    const SString text(std::string_view(Source(state.range(0) << 20)));
    SSymbolTable symbols;
    symbols.AddSymbol("FEATURE", 1, -1);
    SPreprocessor preprocessor('#');
    for (auto _ : state)
        benchmark::DoNotOptimize(preprocessor.Preprocess(text, &symbols));
    state.SetBytesProcessed(state.iterations() * (state.range(0) << 20));
}
BENCHMARK(Preprocess)->Name("text/preprocess_50m:brcore8")->Arg(50);
BENCHMARK(Preprocess)->Name("growth/text_preprocess:brcore8")->Arg(1)->Arg(7)->Arg(50);

// The limit: words found byte by byte, and copied without a look at them.
void CutAndCopy(benchmark::State& state) {
    const std::string text = Source(50 << 20);
    bool separates[256] = {};
    for (const char byte : std::string_view(" \t\r\n()=,;#"))
        separates[static_cast<unsigned char>(byte)] = true;
    for (auto _ : state) {
        std::string copy;
        copy.reserve(text.size());
        for (std::size_t at = 0; at < text.size();) {
            std::size_t end = at + 1;
            while (end < text.size() && !separates[static_cast<unsigned char>(text[end])])
                ++end;
            copy.append(text, at, end - at);
            at = end;
        }
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(CutAndCopy)->Name("text/preprocess_50m:cutting and copying");

void ForcedAnsi(benchmark::State& state) {
    const std::string text = Source(state.range(0));
    for (auto _ : state) {
        SInputBuffer source(text.data(), static_cast<int>(text.size()));
        SInputForcedANSIStream stream(source, 0, SInputMultiFormat::FormatUtf8, SKnownFormat());
        benchmark::DoNotOptimize(SReadAll(stream));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ForcedAnsi)
    ->Name("growth/utf8_to_1252_ascii:brcore8")
    ->Arg(1 << 14)
    ->Arg(1 << 18)
    ->Arg(1 << 22);

// Paragraphs as an editor writes them: runs of attributes, characters of other pages, a list.
std::string Document(std::int64_t bytes) {
    std::string rtf =
        "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset0 Arial;}"
        "{\\f1\\fswiss\\fcharset204 Arial Cyr;}}\\pard\\f0\\fs20 ";
    while (static_cast<std::int64_t>(rtf.size()) < bytes)
        rtf +=
            "\\pard\\plain\\sb120\\f0\\fs20 The {\\b north} wing of the caf\\'e9, {\\i 3\\~m} "
            "wide, "
            "\\f1\\lang1049\\'ea\\'e0\\'f4\\'e5\\f0\\lang1033 , \\u8220?as drawn\\u8221?.\\par\r\n";
    return rtf + '}';
}

void RtfToText(benchmark::State& state) {
    SString rtf(std::string_view(Document(state.range(0))));
    SRtfDocument converter;
    for (auto _ : state) {
        SString text;
        benchmark::DoNotOptimize(converter.RtfToText(&text, rtf));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(RtfToText)->Name("growth/rtf_to_text:brcore8")->Arg(1 << 19)->Arg(1 << 21)->Arg(1 << 23);

// ---- The scanner: keywords, and the runs of text between them -----------------------------------

constexpr const char* kKeywords[] = {"select", "from",  "where",  "and",    "or",
                                     "order",  "group", "insert", "update", "delete"};

std::string Statements(std::int64_t megabytes) {
    return bench::ReadWhole(bench::DataFile("scan_" + std::to_string(megabytes) + "m.txt"));
}

ScanResult ScanWithUs(const SString& text) {
    SKeywordTable keywords;
    for (long id = 0; id < std::ssize(kKeywords); ++id)
        keywords.AddKeyword(kKeywords[id], id + 1);
    ScanResult result;
    SScanner scanner(text, &keywords);
    while (scanner.NextTokenID() != SScanner::NoID || !scanner.token.IsEmpty()) {
        ++(scanner.tokenID == SScanner::NoID ? result.runs : result.keywords);
        result.bytes += static_cast<std::size_t>(scanner.token.LengthByte());
    }
    return result;
}

// What a program would write by hand: a hash table of the keywords, asked for every word.
ScanResult ScanByHand(std::string_view text) {
    const std::unordered_map<std::string, int> keywords = [] {
        std::unordered_map<std::string, int> made;
        for (const char* keyword : kKeywords)
            made.emplace(keyword, 1);
        return made;
    }();
    ScanCounter counter;
    std::string folded;
    constexpr std::string_view blanks = " \t\r\n";
    bool cuts[256] = {};
    for (const std::string_view set : {blanks, kScanDelimiters})
        for (const char byte : set)
            cuts[static_cast<unsigned char>(byte)] = true;
    for (std::size_t at = 0; (at = text.find_first_not_of(blanks, at)) != text.npos;) {
        std::size_t end = at + 1;
        if (!cuts[static_cast<unsigned char>(text[at])])
            while (end < text.size() && !cuts[static_cast<unsigned char>(text[end])])
                ++end;
        const std::string_view word = text.substr(at, end - at);
        folded.assign(word);
        std::transform(word.begin(), word.end(), folded.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        keywords.contains(folded) ? counter.Keyword(word) : counter.Word(word);
        at = end;
    }
    return counter.Result();
}

template <class Text, ScanResult (*Scan)(Text)>
void Scanning(benchmark::State& state) {
    const std::string bytes = Statements(state.range(0));
    const std::string_view view(bytes);
    const std::remove_cvref_t<Text> text(view);
    static const ScanResult expected = FlexScan(Statements(16));
    for (auto _ : state) {
        const ScanResult result = Scan(text);
        bench::Expect(state.range(0) != 16 || result == expected, "tokens");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes.size()));
}
BENCHMARK(Scanning<const SString&, ScanWithUs>)->Name("text/scan_16m:brcore8")->Arg(16);
BENCHMARK(Scanning<std::string_view, FlexScan>)->Name("text/scan_16m:flex")->Arg(16);
BENCHMARK(Scanning<std::string_view, ScanByHand>)->Name("text/scan_16m:by hand")->Arg(16);
BENCHMARK(Scanning<const SString&, ScanWithUs>)
    ->Name("growth/text_scan:brcore8")
    ->Arg(1)
    ->Arg(4)
    ->Arg(16);

}  // namespace
