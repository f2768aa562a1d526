// A byte for the code page, an assignment character, a separator, an escape character, a line with
// the key format, a list. Whatever is read must leave the four maps whole and alike, and a map
// that a list can express must come back from its list as it was.
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string_map.h>
#include <brcore8/strings/string_views.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

struct Characters {
    unsigned char assign, separator, escape;

    template <class Map>
    void Read(Map& map, const SString& list, const SString& format) const {
        map.AddFromList(list, SString(static_cast<char>(separator), 1), assign, escape, format,
                        0x7FFFFFFE);
        Require(map.AssertValid());
        for (const auto& [key, value] : map) {
            Require(key.AssertValid() && value.AssertValid());
            Require(map.Retrieve(key.View()) == &value);
        }
    }
    bool AreFitForAll() const {
        return assign != separator && assign != escape && separator != escape &&
               std::min({assign, separator, escape}) > 0 &&
               std::max({assign, separator, escape}) < 0x80;
    }
};

bool IsWhole(std::string_view text) {
    return !SIsDoubleByteCodePage() ||
           std::all_of(text.begin(), text.end(), [](char byte) { return byte > 0; });
}

template <class Map>
void CheckRestored(const Map& map, const Characters& characters) {
    Map listable;
    for (const auto& [key, value] : map)
        if (IsWhole(key.View()) && IsWhole(value.View()) &&
            key.View().find(static_cast<char>(characters.separator)) == std::string_view::npos)
            listable.Add(key, value);
    Map restored;
    characters.Read(restored,
                    listable.GetAsList(characters.assign, characters.separator, characters.escape),
                    "%d");
    Require(restored == listable && listable == restored);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 4) return 0;
    _setmbcp(data[0] & 1 ? 932 : 1252);
    const Characters characters{data[1], data[2], data[3]};
    const std::string_view rest(reinterpret_cast<const char*>(data) + 4, size - 4);
    const std::size_t line = std::min(rest.find('\n'), rest.size());
    const SString format(rest.substr(0, line));
    const SString list(rest.substr(std::min(line + 1, rest.size())));
    Require(!SIsIndexFormat(format) || format.View().find('%') != std::string_view::npos);

    SStringMap sorted;
    SStringMapNoCase folded;
    SStringUnsortedMap unsorted;
    SStringUnsortedMapNoCase unsortedFolded;
    characters.Read(sorted, list, format);
    characters.Read(folded, list, format);
    characters.Read(unsorted, list, format);
    characters.Read(unsortedFolded, list, format);
    Require(sorted.GetCount() == unsorted.GetCount());
    Require(folded.GetCount() == unsortedFolded.GetCount());
    for (const auto& [key, value] : unsorted)
        Require(sorted[key].View() == value.View());
    if (characters.AreFitForAll()) {
        CheckRestored(sorted, characters);
        CheckRestored(unsorted, characters);
    }
    folded += sorted;
    unsortedFolded += unsorted;
    Require(folded.AssertValid() && unsortedFolded.AssertValid());
    while (!unsorted.IsEmpty())
        Require(unsorted.Remove(unsorted.begin()->key));
    return 0;
}
