#include <brcore8/text/rtf_tables.h>

#include <brcore8/strings/string_buffer.h>

namespace {

template <class Entry>
SString WholeTable(const char* opening, const STable<Entry>& entries,
                   SString (Entry::*text)() const) {
    SStringBuffer table(64);
    table += opening;
    for (const Entry& entry : entries)
        (table += (entry.*text)()) += "\r\n";
    table += "}\r\n";
    return table;
}

}  // namespace

// ---- Fonts ------------------------------------------------------------------------------------

SString SRtfFontEntry::GetFontEntry() const {
    return "{\\f" + SString(number) + controls + " " + name + ";}";
}

int SRtfFontEntry::operator==(const SRtfFontEntry& other) const noexcept {
    return number == other.number && name == other.name && controls == other.controls;
}

SString SRtfFontTable::GetFontTable() const {
    return WholeTable("{\\fonttbl\r\n", *this, &SRtfFontEntry::GetFontEntry);
}

// ---- Colours ----------------------------------------------------------------------------------

SString SRtfColorEntry::GetColorEntry() const {
    return specification + ";";
}

int SRtfColorEntry::SetColorEntry(const SString& text) {
    SString rest = text;
    if (rest.View().ends_with(';')) rest = SString(rest.View().substr(0, rest.View().size() - 1));
    rest.TrimRight();
    number = 0;
    specification = std::move(rest);
    return 1;
}

int SRtfColorEntry::operator==(const SRtfColorEntry& other) const noexcept {
    return number == other.number && specification == other.specification;
}

SString SRtfColorTable::GetColorTable() const {
    return WholeTable("{\\colortbl\r\n", *this, &SRtfColorEntry::GetColorEntry);
}
