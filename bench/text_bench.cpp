// Text on its way through the library: code pages, line ends, directives.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <unordered_map>

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
    const SString text(std::string_view(Source(state.range(0))));
    SSymbolTable symbols;
    symbols.AddSymbol("FEATURE", 1, -1);
    SPreprocessor preprocessor('#');
    for (auto _ : state)
        benchmark::DoNotOptimize(preprocessor.Preprocess(text, &symbols));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Preprocess)->Name("text/preprocess")->Range(1 << 14, 1 << 22);

// The limit that the preprocessor is measured against: the same copy without a look at it.
void CopyText(benchmark::State& state) {
    const std::string text = Source(state.range(0));
    for (auto _ : state) {
        std::string copy(text);
        benchmark::DoNotOptimize(copy);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(CopyText)->Name("text/copy")->Range(1 << 14, 1 << 22);

void ForcedAnsi(benchmark::State& state) {
    const std::string text = Source(state.range(0));
    for (auto _ : state) {
        SInputBuffer source(text.data(), static_cast<int>(text.size()));
        SInputForcedANSIStream stream(source, 0, SInputMultiFormat::FormatUtf8, SKnownFormat());
        benchmark::DoNotOptimize(SReadAll(stream));
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ForcedAnsi)->Name("streams/utf8_to_1252_ascii")->Range(1 << 14, 1 << 22);

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
BENCHMARK(RtfToText)->Name("text/rtf_to_text")->Arg(1 << 19)->Arg(1 << 21)->Arg(1 << 23);

constexpr const char* Keywords[] = {
    "auto",   "break",  "case",   "char",   "const",    "continue", "default",  "do",
    "double", "else",   "enum",   "extern", "float",    "for",      "goto",     "if",
    "ifdef",  "endif",  "int",    "long",   "register", "return",   "short",    "signed",
    "sizeof", "static", "struct", "switch", "typedef",  "union",    "unsigned", "void",
};

void Scan(benchmark::State& state) {
    const SString text(std::string_view(Source(state.range(0))));
    SKeywordTable keywords;
    for (const char* word : Keywords)
        keywords.AddKeyword(word, keywords.GetCount() + 1);
    std::size_t bytes = 0;
    for (auto _ : state) {
        SScanner scanner(text, &keywords);
        while (scanner.NextTokenID() != SScanner::NoID || !scanner.token.IsEmpty())
            bytes += scanner.token.View().size();
    }
    benchmark::DoNotOptimize(bytes);
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Scan)->Name("text/scan_16m/SScanner")->Arg(1 << 20)->Arg(1 << 22)->Arg(1 << 24);

// The same tokens from a loop written by hand.
class PlainScanner {
public:
    PlainScanner(std::string_view text, const std::unordered_map<std::string, long>& keywords)
        : text_(text), keywords_(keywords) {
        for (const char byte : gSN_Delimiters.View())
            delimiter_[static_cast<unsigned char>(byte)] = true;
    }

    // The id of the next keyword, or -1 for a run; an empty token at the end.
    long Next(std::string& token) {
        token.clear();
        for (std::string_view word; NextWord(word); at_ += word.size()) {
            folded_.assign(word);
            for (char& byte : folded_)
                byte = static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
            const auto keyword = keywords_.find(folded_);
            if (keyword == keywords_.end()) {
                token += word;
            } else if (Trim(token)) {
                return -1;
            } else {
                token = word;
                at_ += word.size();
                return keyword->second;
            }
        }
        Trim(token);
        return -1;
    }

private:
    static bool IsSpace(char byte) {
        return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
    }
    bool Cuts(char byte) const {
        return IsSpace(byte) || delimiter_[static_cast<unsigned char>(byte)];
    }
    bool NextWord(std::string_view& word) {
        while (at_ < text_.size() && IsSpace(text_[at_]))
            ++at_;
        std::size_t end = at_;
        while (end < text_.size() && !Cuts(text_[end]))
            ++end;
        if (end == at_ && end < text_.size()) ++end;
        word = text_.substr(at_, end - at_);
        return !word.empty();
    }
    // Returns whether anything is left.
    bool Trim(std::string& token) const {
        const auto cut = [this](char byte) {
            return !delimiter_[static_cast<unsigned char>(byte)];
        };
        token.erase(std::find_if(token.rbegin(), token.rend(), cut).base(), token.end());
        token.erase(token.begin(), std::find_if(token.begin(), token.end(), cut));
        return !token.empty();
    }

    std::string_view text_;
    const std::unordered_map<std::string, long>& keywords_;
    bool delimiter_[256] = {};
    std::size_t at_ = 0;
    std::string folded_;
};

void ScanPlainly(benchmark::State& state) {
    const std::string text = Source(state.range(0));
    std::unordered_map<std::string, long> keywords;
    for (const char* word : Keywords)
        keywords.emplace(word, static_cast<long>(keywords.size()) + 1);
    std::size_t bytes = 0;
    for (auto _ : state) {
        PlainScanner scanner(text, keywords);
        std::string token;
        while (scanner.Next(token) != -1 || !token.empty())
            bytes += token.size();
    }
    benchmark::DoNotOptimize(bytes);
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ScanPlainly)->Name("text/scan_16m/std")->Arg(1 << 20)->Arg(1 << 22)->Arg(1 << 24);

}  // namespace
