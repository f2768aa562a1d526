// The debuggee of the printers' test: one variable a row of printers.cmake.
#include <brcore8/containers/dlist.h>
#include <brcore8/containers/list.h>
#include <brcore8/containers/map.h>
#include <brcore8/containers/rb_tree.h>
#include <brcore8/containers/table.h>
#include <brcore8/strings/string.h>
#include <brcore8/strings/string_map.h>
#include <brcore8/strings/string_table.h>
#include <brcore8/text/symbol_table.h>

#include <cstring>
#include <string_view>

namespace {

// A string is one pointer; these two point nowhere, as in a stack frame not yet set up.
struct Handle {
    const char* text;
};
static_assert(sizeof(Handle) == sizeof(SString));

struct Item : SDListItem {
    explicit Item(int value) : number(value) {}
    int number;
};

[[gnu::noinline]] void stop_here() {
    asm volatile("");
}

}  // namespace

int main() {
    SString text = "Hello";
    SString empty;
    SString quoted = "say \"\\\"";
    SString zero{std::string_view{"a\0b", 3}};
    SString bytes = "\xFF\x01";
    SString shared = text;
    STable<SString> table = {text, "two"};
    SList<int> list;
    list.PushBack(7);
    list.PushBack(8);
    STreeMap<SString, int> map;
    map.Add("two", 2);
    map.Add("one", 1);
    STreeMap<int, int> nothing;
    SStringTable texts;
    texts.SetFromList("b;a", ";", 0);
    SDList items;
    items.AddAtTail(new Item(1));
    items.AddAtTail(new Item(2));
    SMap<int, SString> sorted;
    sorted.Add(2, "two");
    sorted.Add(1, "one");
    SUnsortedMap<SString, int> unsorted;
    unsorted.Add("two", 2);
    unsorted.Add("one", 1);
    SStringMapNoCase folded;
    folded.AddFromList("b=1;A=2;a=3", ";", '=', 0, "", 0);
    SStringUnsortedMap settings;
    settings.AddFromList("b=1;a=2", ";", '=', 0, "", 0);
    SStringUnsortedMap unset;
    SKeywordTable keywords;
    keywords.AddKeyword("if", 7);
    SSymbolTable symbols;
    symbols.AddSymbol("A", 5, 3);
    alignas(SString) unsigned char storage[2][sizeof(SString)];
    const Handle handles[2] = {{nullptr}, {reinterpret_cast<const char*>(0x10)}};
    std::memcpy(storage, handles, sizeof storage);
    SString& null = reinterpret_cast<SString&>(storage[0]);
    SString& garbage = reinterpret_cast<SString&>(storage[1]);
    stop_here();
    return &null == &garbage;
}
