// Text on its way through the library: code pages, line ends, directives.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>

#include <string>

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

}  // namespace
