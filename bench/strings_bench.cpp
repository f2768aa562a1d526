// SString beside std::string, Qt, Abseil and the C library: what programs do most with texts.
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/strings/string_table.h>

#include <absl/strings/str_cat.h>
#include <absl/strings/str_format.h>
#include <absl/strings/str_replace.h>

#include <fnmatch.h>
#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <algorithm>
#include <atomic>
#include <boost/algorithm/string/find.hpp>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "bench.h"
#include "texts.h"

namespace {

using bench::Compete;
using bench::Make;
using bench::SecondThread;

// ---- Copies -------------------------------------------------------------------------------------

template <class Text, std::size_t Size>
void Copy(benchmark::State& state) {
    const Text text = Make<Text>(std::string(Size, 'x'));
    for (auto _ : state) {
        Text copy(text);
        benchmark::DoNotOptimize(copy);
    }
}
template <class Text, std::size_t Size>
void CopyThreaded(benchmark::State& state) {
    const SecondThread thread;
    Copy<Text, Size>(state);
}
void AddAndSubtract(benchmark::State& state) {
    std::atomic<int> count = 1;
    for (auto _ : state) {
        count.fetch_add(1, std::memory_order_relaxed);
        benchmark::DoNotOptimize(count);
        count.fetch_sub(1, std::memory_order_acq_rel);
    }
}

template <class Table>
Table TenThousand() {
    Table table;
    for (int i = 0; i < 10000; ++i) {
        const std::string text = "a name of some length " + std::to_string(i);
        if constexpr (std::is_same_v<Table, SStringTable>)
            table.Add(SString(std::string_view(text)));
        else
            table.push_back(Make<typename Table::value_type>(text));
    }
    return table;
}
template <class Table>
void CopyTable(benchmark::State& state) {
    const Table table = TenThousand<Table>();
    // Each element is copied: a list that shares itself whole answers another question.
    for (auto _ : state) {
        Table copy;
        if constexpr (std::is_same_v<Table, SStringTable>) {
            copy = table;
        } else {
            copy.reserve(table.size());
            for (const auto& text : table)
                copy.push_back(text);
        }
        benchmark::DoNotOptimize(copy);
    }
}
template <class Table>
void CopyTableThreaded(benchmark::State& state) {
    const SecondThread thread;
    CopyTable<Table>(state);
}

[[maybe_unused]] const bool copies[] = {
    Compete("strings/copy_destroy_12", {{"brcore8", Copy<SString, 12>},
                                        {"std", Copy<std::string, 12>},
                                        {"QString", Copy<QString, 12>},
                                        {"QByteArray", Copy<QByteArray, 12>}}),
    Compete("strings/copy_destroy_200", {{"brcore8", Copy<SString, 200>},
                                         {"std", Copy<std::string, 200>},
                                         {"QString", Copy<QString, 200>},
                                         {"QByteArray", Copy<QByteArray, 200>}}),
    Compete("strings/copy_destroy_200_threaded", {{"brcore8", CopyThreaded<SString, 200>},
                                                  {"atomics", AddAndSubtract},
                                                  {"std", CopyThreaded<std::string, 200>},
                                                  {"QString", CopyThreaded<QString, 200>}}),
    Compete("strings/copy_table_10k", {{"brcore8", CopyTable<SStringTable>},
                                       {"std", CopyTable<std::vector<std::string>>},
                                       {"QStringList", CopyTable<QStringList>}}),
    Compete("strings/copy_table_10k_threaded",
            {{"brcore8", CopyTableThreaded<SStringTable>},
             {"std", CopyTableThreaded<std::vector<std::string>>},
             {"QStringList", CopyTableThreaded<QStringList>}}),
};

// ---- Construction -------------------------------------------------------------------------------

template <class Text, std::size_t Size>
void Construct(benchmark::State& state) {
    const std::string bytes(Size, 'x');
    const char* text = bytes.c_str();
    for (auto _ : state) {
        benchmark::DoNotOptimize(text);
        Text made(text);
        benchmark::DoNotOptimize(made);
    }
}
template <class Text, std::size_t Size>
void ConstructThreaded(benchmark::State& state) {
    const SecondThread thread;
    Construct<Text, Size>(state);
}
template <std::size_t Size>
bool CompeteConstruct(const char* workload) {
    return Compete(workload, {{"brcore8", Construct<SString, Size>},
                              {"std", Construct<std::string, Size>},
                              {"QString", Construct<QString, Size>},
                              {"QByteArray", Construct<QByteArray, Size>}});
}

[[maybe_unused]] const bool constructions[] = {
    CompeteConstruct<12>("strings/construct_12"),
    CompeteConstruct<40>("strings/construct_40"),
    CompeteConstruct<200>("strings/construct_200"),
    CompeteConstruct<4000>("strings/construct_4000"),
    Compete("strings/construct_40_threaded", {{"brcore8", ConstructThreaded<SString, 40>},
                                              {"std", ConstructThreaded<std::string, 40>},
                                              {"QByteArray", ConstructThreaded<QByteArray, 40>}}),
};

// ---- Building -----------------------------------------------------------------------------------

template <class Text, int Bytes>
void Build(benchmark::State& state) {
    for (auto _ : state) {
        Text text;
        for (int i = 0; i < Bytes; ++i)
            text += 'x';
        if constexpr (std::is_same_v<Text, SStringBuffer>) {
            const SString result(text);
            benchmark::DoNotOptimize(result);
        }
        benchmark::DoNotOptimize(text);
    }
    state.SetBytesProcessed(state.iterations() * Bytes);
}

void Concat(benchmark::State& state) {
    const SString a = "the first part", b = " and the second", c = " and a third one";
    for (auto _ : state) {
        SString text = a + b + c;
        benchmark::DoNotOptimize(text);
    }
}
void ConcatStd(benchmark::State& state) {
    const std::string a = "the first part", b = " and the second", c = " and a third one";
    for (auto _ : state) {
        std::string text = a + b + c;
        benchmark::DoNotOptimize(text);
    }
}
void ConcatAbsl(benchmark::State& state) {
    const std::string a = "the first part", b = " and the second", c = " and a third one";
    for (auto _ : state) {
        std::string text = absl::StrCat(a, b, c);
        benchmark::DoNotOptimize(text);
    }
}
void ConcatQt(benchmark::State& state) {
    const QString a = "the first part", b = " and the second", c = " and a third one";
    for (auto _ : state) {
        QString text = a + b + c;
        benchmark::DoNotOptimize(text);
    }
}

[[maybe_unused]] const bool buildings[] = {
    Compete("strings/append_bytes_1k", {{"brcore8", Build<SString, 1000>},
                                        {"std", Build<std::string, 1000>},
                                        {"QByteArray", Build<QByteArray, 1000>}}),
    Compete("strings/build_1m", {{"brcore8", Build<SStringBuffer, 1 << 20>},
                                 {"std", Build<std::string, 1 << 20>},
                                 {"QByteArray", Build<QByteArray, 1 << 20>}}),
    Compete(
        "strings/concat3",
        {{"brcore8", Concat}, {"std", ConcatStd}, {"Abseil", ConcatAbsl}, {"QString", ConcatQt}}),
};

// ---- Search -------------------------------------------------------------------------------------

std::string Prose(std::size_t bytes) {
    std::string text;
    for (int word = 0; text.size() < bytes; ++word)
        text += "word" + std::to_string(word * 7919 % 1000) + ' ';
    return text;
}

// What is sought: a text whose first byte is nowhere else, one that looks like the rest, and that
// without case.
struct Sought {
    const char* text;
    std::size_t prose;
};
constexpr Sought kRare = {"\x7F end", 1 << 20};
constexpr Sought kCommon = {"word997 word!", 1 << 20};
constexpr Sought kShort = {"red", 24};

template <const Sought& What, class Text, class Search>
void Searching(benchmark::State& state, Search search) {
    const std::string bytes = Prose(What.prose) + What.text;
    const Text text = Make<Text>(bytes);
    for (auto _ : state) {
        benchmark::DoNotOptimize(&text);
        const auto found = search(text);
        bench::Expect(static_cast<std::size_t>(found) == bytes.size() - std::strlen(What.text),
                      "the place of the text");
    }
}
template <const Sought& What>
void Find(benchmark::State& state) {
    Searching<What, SString>(
        state, [](const SString& text) { return text.Find(What.text) - text.View().data(); });
}
template <const Sought& What>
void FindStd(benchmark::State& state) {
    Searching<What, std::string>(state, [](const auto& text) { return text.find(What.text); });
}
template <const Sought& What>
void FindMemmem(benchmark::State& state) {
    Searching<What, std::string>(state, [](const auto& text) {
        const void* const at = memmem(text.data(), text.size(), What.text, std::strlen(What.text));
        return static_cast<const char*>(at) - text.data();
    });
}
template <const Sought& What>
void FindQt(benchmark::State& state) {
    const QByteArray what(What.text);
    Searching<What, QByteArray>(state, [&](const auto& text) { return text.indexOf(what); });
}
void FindMemchr(benchmark::State& state) {
    Searching<kRare, std::string>(state, [](const auto& text) {
        const void* const at = std::memchr(text.data(), *kRare.text, text.size());
        return static_cast<const char*>(at) - text.data();
    });
}

constexpr const char* kOtherCase = "WORD997 Word!";
void FindNoCase(benchmark::State& state) {
    Searching<kCommon, SString>(state, [](const SString& text) {
        return text.FindNoCase(kOtherCase) - text.View().data();
    });
}
void FindNoCaseC(benchmark::State& state) {
    Searching<kCommon, std::string>(state, [](const auto& text) {
        return strcasestr(text.c_str(), kOtherCase) - text.c_str();
    });
}
void FindNoCaseQt(benchmark::State& state) {
    const QString what(kOtherCase);
    Searching<kCommon, QString>(
        state, [&](const auto& text) { return text.indexOf(what, 0, Qt::CaseInsensitive); });
}
void FindNoCaseBoost(benchmark::State& state) {
    Searching<kCommon, std::string>(state, [](const auto& text) {
        return boost::algorithm::ifind_first(text, kOtherCase).begin() - text.begin();
    });
}

[[maybe_unused]] const bool searches[] = {
    Compete("strings/find_rare_1m", {{"brcore8", Find<kRare>},
                                     {"memchr", FindMemchr},
                                     {"std", FindStd<kRare>},
                                     {"QByteArray", FindQt<kRare>}}),
    Compete("strings/find_text_1m", {{"brcore8", Find<kCommon>},
                                     {"std", FindStd<kCommon>},
                                     {"memmem", FindMemmem<kCommon>},
                                     {"QByteArray", FindQt<kCommon>}}),
    Compete("strings/find_short", {{"brcore8", Find<kShort>},
                                   {"std", FindStd<kShort>},
                                   {"memmem", FindMemmem<kShort>},
                                   {"QByteArray", FindQt<kShort>}}),
    Compete("strings/find_nocase_1m", {{"brcore8", FindNoCase},
                                       {"strcasestr", FindNoCaseC},
                                       {"QString", FindNoCaseQt},
                                       {"Boost", FindNoCaseBoost}}),
};

// ---- Replace ------------------------------------------------------------------------------------

struct Exchange {
    const char* from;
    const char* to;
};
constexpr Exchange kSame = {"word1", "WORD2"};
constexpr Exchange kGrow = {"word1", "another1"};
constexpr Exchange kShrink = {"word1", "w"};

template <class Text, class Change>
void Replacing(benchmark::State& state, Change change) {
    const Text text = Make<Text>(Prose(1 << 20));
    for (auto _ : state) {
        Text copy(text);
        change(copy);
        benchmark::DoNotOptimize(copy);
    }
}
template <const Exchange& What>
void Replace(benchmark::State& state) {
    Replacing<SString>(state, [](SString& text) { text.ReplaceAll(What.from, What.to); });
}
template <const Exchange& What>
void ReplaceStd(benchmark::State& state) {
    const std::string_view from = What.from, to = What.to;
    Replacing<std::string>(state, [&](std::string& text) {
        std::string made;
        std::size_t start = 0;
        for (std::size_t hit; (hit = text.find(from, start)) != text.npos;) {
            made.append(text, start, hit - start).append(to);
            start = hit + from.size();
        }
        text = made.append(text, start);
    });
}
template <const Exchange& What>
void ReplaceAbsl(benchmark::State& state) {
    Replacing<std::string>(state, [](std::string& text) {
        absl::StrReplaceAll({{What.from, What.to}}, &text);
    });
}
template <const Exchange& What>
void ReplaceQt(benchmark::State& state) {
    Replacing<QByteArray>(state, [](QByteArray& text) { text.replace(What.from, What.to); });
}
template <const Exchange& What>
bool CompeteReplace(const char* workload) {
    return Compete(workload, {{"brcore8", Replace<What>},
                              {"std", ReplaceStd<What>},
                              {"Abseil", ReplaceAbsl<What>},
                              {"QByteArray", ReplaceQt<What>}});
}
void ReplaceChar(benchmark::State& state) {
    Replacing<SString>(state, [](SString& text) { text.ReplaceAll(unsigned{'w'}, unsigned{'W'}); });
}
void ReplaceCharStd(benchmark::State& state) {
    Replacing<std::string>(
        state, [](std::string& text) { std::replace(text.begin(), text.end(), 'w', 'W'); });
}
void ReplaceCharQt(benchmark::State& state) {
    Replacing<QByteArray>(state, [](QByteArray& text) { text.replace('w', 'W'); });
}

[[maybe_unused]] const bool replacements[] = {
    CompeteReplace<kSame>("strings/replace_same_1m"),
    CompeteReplace<kGrow>("strings/replace_grow_1m"),
    CompeteReplace<kShrink>("strings/replace_shrink_1m"),
    Compete("strings/replace_char_1m",
            {{"brcore8", ReplaceChar}, {"std", ReplaceCharStd}, {"QByteArray", ReplaceCharQt}}),
};

// ---- Match --------------------------------------------------------------------------------------

const std::vector<std::string>& FileNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> made;
        for (int i = 0; i < 100000; ++i)
            made.push_back("model_" + std::to_string(i * 7919 % 100000) +
                           (i % 3 ? ".brn" : ".backup.brn"));
        return made;
    }();
    return names;
}
constexpr const char* kNamePattern = "model_*5?.backup.b*";

void MatchNames(benchmark::State& state) {
    std::vector<SString> names;
    for (const std::string& name : FileNames())
        names.emplace_back(std::string_view(name));
    for (auto _ : state) {
        int matches = 0;
        for (const SString& name : names)
            matches += name.Match(kNamePattern);
        benchmark::DoNotOptimize(matches);
    }
}
void MatchNamesC(benchmark::State& state) {
    const std::vector<std::string>& names = FileNames();
    for (auto _ : state) {
        int matches = 0;
        for (const std::string& name : names)
            matches += fnmatch(kNamePattern, name.c_str(), 0) == 0;
        benchmark::DoNotOptimize(matches);
    }
}

// So many times "*a", and a "b" that no text of "a" has.
template <int Stars, int Length>
void MatchPathological(benchmark::State& state) {
    std::string pattern;
    for (int i = 0; i < Stars; ++i)
        pattern += "*a";
    pattern += "*b";
    const SString text('a', Length);
    for (auto _ : state)
        bench::Expect(!text.Match(pattern.c_str()), "no match");
}
template <int Stars, int Length>
void MatchPathologicalC(benchmark::State& state) {
    std::string pattern;
    for (int i = 0; i < Stars; ++i)
        pattern += "*a";
    pattern += "*b";
    const std::string text(Length, 'a');
    for (auto _ : state)
        bench::Expect(fnmatch(pattern.c_str(), text.c_str(), 0) != 0, "no match");
}

[[maybe_unused]] const bool matches[] = {
    Compete("strings/match_names_100k", {{"brcore8", MatchNames}, {"fnmatch", MatchNamesC}}),
    Compete("strings/match_pathological_6x40",
            {{"brcore8", MatchPathological<6, 40>}, {"fnmatch", MatchPathologicalC<6, 40>}}),
    Compete("strings/match_pathological_20x1000",
            {{"brcore8", MatchPathological<20, 1000>}, {"fnmatch", MatchPathologicalC<20, 1000>}}),
};

// ---- Format -------------------------------------------------------------------------------------

void FormatMixed(benchmark::State& state) {
    SString text;
    for (auto _ : state) {
        text.Format("%s %d %g", "name", 12345, 3.25);
        benchmark::DoNotOptimize(text);
    }
}
void FormatMixedC(benchmark::State& state) {
    for (auto _ : state) {
        char buffer[256];
        const int length = std::snprintf(buffer, sizeof buffer, "%s %d %g", "name", 12345, 3.25);
        std::string text(buffer, static_cast<std::size_t>(length));
        benchmark::DoNotOptimize(text);
    }
}
void FormatMixedAbsl(benchmark::State& state) {
    for (auto _ : state) {
        std::string text = absl::StrFormat("%s %d %g", "name", 12345, 3.25);
        benchmark::DoNotOptimize(text);
    }
}
void FormatMixedQt(benchmark::State& state) {
    for (auto _ : state) {
        QString text = QString::asprintf("%s %d %g", "name", 12345, 3.25);
        benchmark::DoNotOptimize(text);
    }
}
void FormatInt(benchmark::State& state) {
    SString text;
    for (auto _ : state) {
        text.Format("%d", 12345678);
        benchmark::DoNotOptimize(text);
    }
}
void FormatIntC(benchmark::State& state) {
    for (auto _ : state) {
        char buffer[64];
        const int length = std::snprintf(buffer, sizeof buffer, "%d", 12345678);
        std::string text(buffer, static_cast<std::size_t>(length));
        benchmark::DoNotOptimize(text);
    }
}
void FormatIntAbsl(benchmark::State& state) {
    for (auto _ : state) {
        std::string text = absl::StrFormat("%d", 12345678);
        benchmark::DoNotOptimize(text);
    }
}

[[maybe_unused]] const bool formats[] = {
    Compete("strings/format_mixed", {{"brcore8", FormatMixed},
                                     {"snprintf", FormatMixedC},
                                     {"Abseil", FormatMixedAbsl},
                                     {"QString", FormatMixedQt}}),
    Compete("strings/format_int",
            {{"brcore8", FormatInt}, {"snprintf", FormatIntC}, {"Abseil", FormatIntAbsl}}),
};

}  // namespace
