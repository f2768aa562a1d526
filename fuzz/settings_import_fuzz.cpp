// The text form of settings. What is accepted is written to the store, read back as text, and
// must then come back the same from its own text; what is refused must change nothing.
#include <brcore8/settings/registry.h>

#include <cstdlib>
#include <string_view>

#include "fuzz.h"

namespace {

constexpr char kKey[] = "Fuzz of settings";

SString Export(const SRegistry& key) {
    SString text;
    if (key.ExportText(&text) < 0) std::abort();
    return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const SString text(std::string_view(reinterpret_cast<const char*>(data), size));
    long line = 0;
    const bool accepted = SRegistry::CheckText(text, &line) >= 0;
    if (accepted != (line == 0) && size != 0) std::abort();

    const SRegistry root(SRegistry::CurrentUser(), SRegistry::ApplicationRoot(), 1);
    root.DeleteTree(kKey);
    SRegistry key(root.GetKey(), kKey, 1);
    const SString before = Export(key);
    if (key.ImportText(text) < 0) {
        // Names may still be too long for the store.
        if (!accepted && Export(key) != before) std::abort();
    } else {
        if (!accepted) std::abort();
        const SString first = Export(key);
        root.DeleteTree(kKey);
        key.Done();
        key.Init(root.GetKey(), kKey, 1);
        if (key.ImportText(first) < 0 || Export(key) != first) std::abort();
    }
    root.DeleteTree(kKey);
    return 0;
}
