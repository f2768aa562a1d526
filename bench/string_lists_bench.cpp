// Tables of strings beside vectors and lists: sorted, split out of a list, joined to one.
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_table.h>

#include <absl/strings/str_join.h>
#include <absl/strings/str_split.h>

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "bench.h"
#include "texts.h"

namespace {

using bench::Compete;
using bench::Make;

// Half as many pages as texts, so that some are equal.
template <class Text>
std::vector<Text> Pages() {
    std::vector<Text> pages;
    for (int i = 0; i < 100000; ++i)
        pages.push_back(Make<Text>("page" + std::to_string(i * 7919 % 50000) + " of a book"));
    return pages;
}
template <void (SStringTable::*Order)(int)>
void Sort(benchmark::State& state) {
    SStringTable table;
    for (const SString& page : Pages<SString>())
        table.Add(page);
    for (auto _ : state) {
        SStringTable copy(table);
        (copy.*Order)(1);
        benchmark::DoNotOptimize(copy);
    }
}
template <class Text, class Less>
void SortVector(benchmark::State& state) {
    const std::vector<Text> pages = Pages<Text>();
    for (auto _ : state) {
        std::vector<Text> copy(pages);
        std::sort(copy.begin(), copy.end(), Less());
        benchmark::DoNotOptimize(copy);
    }
}
struct VersionLess {
    bool operator()(const std::string& left, const std::string& right) const {
        return strverscmp(left.c_str(), right.c_str()) < 0;
    }
};

std::string List() {
    std::string list;
    for (int i = 0; list.size() < 1 << 20; ++i)
        list += "item " + std::to_string(i) + ';';
    return list;
}
void Split(benchmark::State& state) {
    const SString list{std::string_view(List())};
    for (auto _ : state) {
        SStringTable items;
        items.SetFromList(list, ";", '\\');
        benchmark::DoNotOptimize(items);
    }
}
void SplitAbsl(benchmark::State& state) {
    const std::string list = List();
    for (auto _ : state) {
        std::vector<std::string> items = absl::StrSplit(list, ';', absl::SkipEmpty());
        benchmark::DoNotOptimize(items);
    }
}
void SplitQt(benchmark::State& state) {
    const QString list = Make<QString>(List());
    for (auto _ : state) {
        QStringList items = list.split(';', Qt::SkipEmptyParts);
        benchmark::DoNotOptimize(items);
    }
}
void Join(benchmark::State& state) {
    SStringTable items;
    items.SetFromList(SString(std::string_view(List())), ";", 0);
    for (auto _ : state) {
        SString list = items.GetAsList(';', '\\');
        benchmark::DoNotOptimize(list);
    }
}
void JoinAbsl(benchmark::State& state) {
    const std::vector<std::string> items = absl::StrSplit(List(), ';');
    for (auto _ : state) {
        std::string list = absl::StrJoin(items, ";");
        benchmark::DoNotOptimize(list);
    }
}
void JoinQt(benchmark::State& state) {
    const QStringList items = Make<QString>(List()).split(';');
    for (auto _ : state) {
        QString list = items.join(';');
        benchmark::DoNotOptimize(list);
    }
}

[[maybe_unused]] const bool tables[] = {
    Compete("strings/sort_numeric_100k", {{"brcore8", Sort<&SStringTable::SortNumbered>},
                                          {"strverscmp", SortVector<std::string, VersionLess>}}),
    Compete("strings/sort_plain_100k", {{"brcore8", Sort<&SStringTable::Sort>},
                                        {"std", SortVector<std::string, std::less<>>},
                                        {"QString", SortVector<QString, std::less<>>}}),
    Compete("strings/split_list_1m",
            {{"brcore8", Split}, {"Abseil", SplitAbsl}, {"QString", SplitQt}}),
    Compete("strings/join_list_1m", {{"brcore8", Join}, {"Abseil", JoinAbsl}, {"QString", JoinQt}}),
};

}  // namespace
