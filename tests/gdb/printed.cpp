// The debuggee of the printers' test: one variable a row of printers.cmake.
#include <brcore8/containers/list.h>
#include <brcore8/containers/rb_tree.h>
#include <brcore8/containers/table.h>
#include <brcore8/strings/string.h>

#include <cstring>
#include <string_view>

namespace {

// A string is one pointer; these two point nowhere, as in a stack frame not yet set up.
struct Handle {
    const char* text;
};
static_assert(sizeof(Handle) == sizeof(SString));

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
    alignas(SString) unsigned char storage[2][sizeof(SString)];
    const Handle handles[2] = {{nullptr}, {reinterpret_cast<const char*>(0x10)}};
    std::memcpy(storage, handles, sizeof storage);
    SString& null = reinterpret_cast<SString&>(storage[0]);
    SString& garbage = reinterpret_cast<SString&>(storage[1]);
    stop_here();
    return &null == &garbage;
}
