// SString beside std::string: what programs do most with texts of everyday lengths.
#include <brcore8/brcore8.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

namespace {

template <typename Text>
void CopyDestroy(benchmark::State& state) {
    const std::string bytes(static_cast<std::size_t>(state.range(0)), 'x');
    const Text text(bytes.c_str());
    for (auto _ : state) {
        Text copy(text);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(CopyDestroy<SString>)->Name("strings/copy_destroy/SString")->Arg(12)->Arg(200);
BENCHMARK(CopyDestroy<std::string>)->Name("strings/copy_destroy/std")->Arg(12)->Arg(200);

template <typename Text>
void Construct(benchmark::State& state) {
    const std::string bytes(static_cast<std::size_t>(state.range(0)), 'x');
    for (auto _ : state) {
        Text text(bytes.c_str());
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(Construct<SString>)
    ->Name("strings/construct/SString")
    ->Arg(12)
    ->Arg(40)
    ->Arg(200)
    ->Arg(4000);
BENCHMARK(Construct<std::string>)
    ->Name("strings/construct/std")
    ->Arg(12)
    ->Arg(40)
    ->Arg(200)
    ->Arg(4000);

// Three sizes show that building by appends costs the same a byte.
template <typename Builder>
void Build(benchmark::State& state) {
    for (auto _ : state) {
        Builder text;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            text += 'x';
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Build<SStringBuffer>)->Name("strings/build/SStringBuffer")->Range(1 << 14, 1 << 20);
BENCHMARK(Build<std::string>)->Name("strings/build/std")->Range(1 << 14, 1 << 20);

std::string Prose(std::int64_t bytes) {
    std::string text;
    for (int word = 0; static_cast<std::int64_t>(text.size()) < bytes; ++word)
        text += "word" + std::to_string(word * 7919 % 1000) + ' ';
    return text;
}

// Where a search ends: at a text whose first byte is nowhere else, or at one that looks like the
// rest.
const char* const kRare =
    "\x7F"
    "end";
const char* const kCommon = "word997 word!";

template <const char* const& What>
void FindOurs(benchmark::State& state) {
    const SString text{Prose(state.range(0)) + What};
    for (auto _ : state)
        benchmark::DoNotOptimize(text.Find(What));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

template <const char* const& What>
void FindTheirs(benchmark::State& state) {
    const std::string text = Prose(state.range(0)) + What;
    for (auto _ : state)
        benchmark::DoNotOptimize(text.find(What));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(FindOurs<kRare>)->Name("strings/find_rare/SString")->Range(1 << 14, 1 << 20);
BENCHMARK(FindTheirs<kRare>)->Name("strings/find_rare/std")->Range(1 << 14, 1 << 20);
BENCHMARK(FindOurs<kCommon>)->Name("strings/find_text/SString")->Range(1 << 14, 1 << 20);
BENCHMARK(FindTheirs<kCommon>)->Name("strings/find_text/std")->Range(1 << 14, 1 << 20);

void FindNoCase(benchmark::State& state) {
    const SString text{Prose(state.range(0)) + kCommon};
    for (auto _ : state)
        benchmark::DoNotOptimize(text.FindNoCase("WORD997 Word!"));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(FindNoCase)->Name("strings/find_nocase/SString")->Range(1 << 14, 1 << 20);

// The peer: the C library's search without case.
void FindNoCaseC(benchmark::State& state) {
    const std::string text = Prose(state.range(0)) + kCommon;
    for (auto _ : state)
        benchmark::DoNotOptimize(strcasestr(text.c_str(), "WORD997 Word!"));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(FindNoCaseC)->Name("strings/find_nocase/strcasestr")->Range(1 << 14, 1 << 20);

void ReplaceAll(benchmark::State& state) {
    const SString text(std::string_view(Prose(state.range(0))));
    for (auto _ : state) {
        SString copy(text);
        copy.ReplaceAll("word1", "another1");
        benchmark::DoNotOptimize(copy);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReplaceAll)->Name("strings/replace_grow/SString")->Range(1 << 14, 1 << 20);

void ReplaceAllStd(benchmark::State& state) {
    const std::string text = Prose(state.range(0));
    const std::string_view from = "word1", to = "another1";
    for (auto _ : state) {
        std::string copy;
        std::size_t start = 0;
        for (std::size_t hit; (hit = text.find(from, start)) != std::string::npos;) {
            copy.append(text, start, hit - start).append(to);
            start = hit + from.size();
        }
        copy.append(text, start);
        benchmark::DoNotOptimize(copy);
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ReplaceAllStd)->Name("strings/replace_grow/std")->Range(1 << 14, 1 << 20);

void FormatMixed(benchmark::State& state) {
    SString text;
    for (auto _ : state) {
        text.Format("%s %d %5.2f", "name", 12345, 3.25);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(FormatMixed)->Name("strings/format_mixed/SString");

void FormatMixedPrintf(benchmark::State& state) {
    char text[64];
    for (auto _ : state) {
        std::snprintf(text, sizeof text, "%s %d %5.2f", "name", 12345, 3.25);
        benchmark::DoNotOptimize(text);
    }
}
BENCHMARK(FormatMixedPrintf)->Name("strings/format_mixed/snprintf");

void SortNumbered(benchmark::State& state) {
    SStringTable table;
    for (std::int64_t i = 0; i < state.range(0); ++i)
        table.Add(SString(std::string_view("page" + std::to_string(i * 7919 % state.range(0)))));
    for (auto _ : state) {
        SStringTable copy(table);
        copy.SortNumbered(1);
        benchmark::DoNotOptimize(copy);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(SortNumbered)->Name("strings/sort_numeric/SStringTable")->Range(1000, 100000);

}  // namespace
