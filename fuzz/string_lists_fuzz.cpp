// A byte for the code page, a separator, an escape character, a text. A list written must read
// back as it was, iterators and views must cut alike, and sorting must keep every string.
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/string_table.h>
#include <brcore8/strings/string_views.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

// Of the strings, those that a list can express.
SStringTable Listable(std::string_view text) {
    SStringTable table;
    for (std::string_view line : SLines(text)) {
        bool whole = !line.empty();
        for (int code : SCharacters(line))
            whole = whole && (code < 0x80 || !SIsDoubleByteCodePage());
        if (whole) table.Add(SString(line));
    }
    return table;
}

void CheckLists(const SString& text, unsigned char separator, unsigned char escape) {
    SStringTable parsed;
    parsed.AddFromList(text, SString(static_cast<char>(separator), 1), escape);
    for (const SString& item : parsed)
        Require(item.AssertValid());
    if (escape == 0 || escape == separator || separator >= 0x80 || escape >= 0x80) return;
    const SStringTable table = Listable(text);
    SStringTable restored;
    restored.AddFromList(table.GetAsList(separator, escape),
                         SString(static_cast<char>(separator), 1), escape);
    Require(restored == table);
}

void CheckOrders(SStringTable table) {
    std::size_t bytes = 0;
    for (const SString& text : table)
        bytes += text.View().size();
    table.SortNumbered();
    table.SortNumberedNoCase(0);
    table.SortNoCase();
    table.Sort(0);
    for (int i = 1; i < table.GetCount(); ++i)
        Require(table[i - 1] >= table[i]);
    for (const SString& text : table)
        bytes -= text.View().size();
    Require(bytes == 0);
}

template <class Iterator, class View>
void CheckCut(Iterator it, const View& view) {
    for (std::string_view item : view) {
        Require(it && (*it).View() == item);
        ++it;
    }
    Require(!it);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    _setmbcp(data[0] & 1 ? 932 : 1252);
    const SString text(std::string_view(reinterpret_cast<const char*>(data) + 3, size - 3));
    CheckLists(text, data[1], data[2]);
    CheckCut(SString::line_iterator(text), SLines(text));
    CheckCut(SString::word_iterator(text), SWords(text));
    CheckCut(SString::parts_iterator(text, data[1]), SParts(text, unsigned{data[1]}));
    SStringTable words;
    for (std::string_view word : SWords(text))
        words.Add(SString(word));
    CheckOrders(words);
    return 0;
}
