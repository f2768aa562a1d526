// A byte for the code page and the operation, three lines of section, key and value, and the rest
// an INI file. What is changed must read back, and every other line must stay as it is.
#include <brcore8/settings/profile.h>
#include <brcore8/strings/multibyte.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz.h"
#include "platform/posix/ini_text.h"

namespace {

using namespace brcore8;

void Require(bool holds) {
    if (!holds) std::abort();
}

std::string_view TakeLine(std::string_view& rest) {
    const std::string_view line = rest.substr(0, rest.find('\n'));
    rest.remove_prefix(std::min(line.size() + 1, rest.size()));
    return line.substr(0, line.find('\0'));
}

// The texts of the lines, without their ends.
std::vector<std::string> LinesOf(std::string_view text) {
    std::vector<std::string> lines;
    IniLines walk(text);
    for (IniLine line; walk.Next(line);)
        lines.emplace_back(text.substr(line.begin, line.end - line.begin));
    return lines;
}

// By the index as by reading on, whichever key is asked for.
void CheckIndex(std::string_view text, std::string_view section, std::string_view key) {
    const IniIndex index(text);
    Require(index.Find(text, section, key) == FindIniKey(text, section, key));
    std::string_view current;
    IniLines walk(text);
    for (IniLine line; walk.Next(line);) {
        if (line.kind == IniLine::Header) current = line.name;
        if (line.kind == IniLine::Key)
            Require(index.Find(text, current, line.name) == FindIniKey(text, current, line.name));
    }
}

// One line may differ, or be missing, or be more; with a new section two more.
void CheckOthers(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    std::size_t first = 0;
    while (first < before.size() && first < after.size() && before[first] == after[first])
        ++first;
    std::size_t last = 0;
    while (last + first < before.size() && last + first < after.size() &&
           before[before.size() - 1 - last] == after[after.size() - 1 - last]) {
        ++last;
    }
    Require(before.size() - first - last <= 1 && after.size() - first - last <= 2);
}

void CheckSet(std::string_view text, const std::string& section, const std::string& key,
              const std::string& value) {
    IniEdit edit;
    SetIniKey(text, section, key, value, edit);
    const IniBytes result = edit.Apply(text);
    const auto read = FindIniKey(result.View(), section, key);
    Require(read == UnquoteIni(TrimIniBlanks(value)));
    CheckOthers(LinesOf(text), LinesOf(result.View()));
    IniEdit again;
    SetIniKey(result.View(), section, key, value, again);
    Require(TrimIniBlanks(value) != value || again.ChangesNothing(result.View()));
}

void CheckErase(std::string_view text, const std::string& section, const std::string& key) {
    std::string rest(text);
    // Of repeats one goes each time.
    for (std::size_t i = 0; FindIniKey(rest, section, key); ++i) {
        Require(i <= text.size());
        IniEdit edit;
        EraseIniKey(rest, section, key, edit);
        Require(edit.removed != 0 && edit.inserted.IsEmpty());
        rest.erase(edit.at, edit.removed);
    }
    IniEdit none;
    EraseIniKey(rest, section, key, none);
    Require(none.ChangesNothing(rest));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    _setmbcp((*data & 1) != 0 ? 932 : 1252);
    std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::string section(TakeLine(rest));
    const std::string key(TakeLine(rest));
    const std::string value(TakeLine(rest));
    const SProfile profile("", SString(std::string_view(section)), 0);
    CheckIndex(rest, section, key);
    if (profile.Accepts(SString(std::string_view(key)), SString(std::string_view(value)))) {
        CheckSet(rest, section, key, value);
        CheckErase(rest, section, key);
    }
    IniEdit edit;
    EraseIniSection(rest, section, edit);
    (void)edit.Apply(rest);
    return 0;
}
