#include <brcore8/text/rtf_tables.h>

#include <brcore8/containers/rb_tree.h>
#include <brcore8/strings/string_buffer.h>

#include <algorithm>
#include <climits>
#include <cstdint>
#include <utility>

#include "text/rtf_fonts.h"
#include "text/rtf_scan.h"

using brcore8::rtf::Scanner;
using brcore8::rtf::Token;

namespace {

struct ByText {
    int operator()(const SString& left, const SString& right) const noexcept {
        return left.View().compare(right.View());
    }
};

struct ByTextNoCase {
    int operator()(const SString& left, const SString& right) const noexcept {
        return left.CompareNoCase(right);
    }
};

// Merges entries into a table. Until Settle, which cannot fail once there is room, the table is
// left as it was.
template <class Entry, class Order>
class Merger {
public:
    explicit Merger(STable<Entry>& table) : table_(table) {}

    // The number of the first entry with that key, which is `entry`'s; else `entry` is added.
    // Entries of the table itself, in its order, come by Know.
    void Know(const SString& key, long number) {
        if (!index_.Contains(key)) index_.Add(key, number);
    }
    long Merge(const SString& key, Entry entry) {
        if (const long* const known = index_.Find(key)) return *known;
        entry.number = table_.GetCount() + added_.GetCount();
        index_.Add(key, entry.number);
        return added_.Add(std::move(entry)).number;
    }
    void Settle() {
        table_.GrowTo(table_.GetCount() + added_.GetCount());
        for (Entry& entry : added_)
            table_.Add(std::move(entry));
    }

private:
    STable<Entry>& table_;
    STable<Entry> added_;
    STreeMap<SString, long, Order> index_;
};

// Skips "{\word"; false when the text begins otherwise.
bool Enter(Scanner& scan, std::string_view word) {
    scan.SkipSpace();
    return scan.Next().kind == Token::Open && scan.Next().Is(word);
}

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

namespace {

// \'hh, \uN and escaped characters are letters of a name too.
bool IsOfName(const Token& token) {
    if (token.kind == Token::Symbol) return token.View().size() > 1 && token.View() != "\\*";
    return token.kind == Token::Text || (token.Is("u") && !token.digits.empty());
}

// From the token on. Behind a name that ends the group stands its ";"; behind one that a group
// follows, the ";" comes later.
std::string_view ReadName(Scanner& scan, const Token& first) {
    Token last = first;
    Token token = scan.Next();
    for (; IsOfName(token); token = scan.Next())
        last = token;
    std::string_view raw(first.begin, static_cast<std::size_t>(last.end - first.begin));
    if (token.kind != Token::Open && last.kind == Token::Text) raw.remove_suffix(1);
    return brcore8::rtf::TrimRight(raw, " \t\r\n;");
}

}  // namespace

int SRtfFontEntry::SetFontEntry(const SString& text) {
    const SString source = text;
    SRtfFontEntry entry;
    SStringBuffer words(64);
    bool numbered = false;
    Scanner scan(source.View());
    scan.SkipSpace();
    scan.Next();
    for (scan.SkipSpace(); entry.name.IsEmpty(); scan.SkipSpace()) {
        const Token token = scan.Next();
        if (token.kind == Token::End || token.kind == Token::Close) break;
        if (token.kind == Token::Open) {
            scan.SkipTo(token.begin);
            scan.SkipGroup();
        } else if (IsOfName(token)) {
            entry.name = ReadName(scan, token);
            break;
        } else if (token.Is("f") && !numbered) {
            entry.number =
                static_cast<long>(std::clamp<std::int64_t>(token.value, INT_MIN, INT_MAX));
            numbered = true;
        } else if (!token.Is("bin")) {
            words += brcore8::rtf::TrimRight(token.View());
        }
    }
    entry.controls = words;
    *this = std::move(entry);
    return !name.IsEmpty();
}

namespace {

// The next entry of a table as a group; empty at the table's end.
SString NextEntry(Scanner& scan, bool braces) {
    scan.SkipSpace();
    const char* const begin = scan.At();
    Token token = scan.Next();
    if (braces && token.kind == Token::Open) {
        scan.SkipTo(begin);
        scan.SkipGroup();
        return SString(begin, scan.At());
    }
    if (braces) return SString();
    for (; token.kind != Token::End && token.kind != Token::Close; token = scan.Next()) {
        const std::size_t semicolon = token.View().find(';');
        if (token.kind != Token::Text || semicolon == std::string_view::npos) continue;
        scan.SkipTo(token.begin + semicolon + 1);
        return "{" + SString(begin, scan.At()) + "}";
    }
    return SString();
}

}  // namespace

SMap<int, int> brcore8::rtf::AddFonts(SRtfFontTable& table, const SString& text,
                                      const FontRule& rule) {
    SMap<int, int> numbers;
    const SString source = text;
    Scanner scan(source.View());
    if (!Enter(scan, "fonttbl")) return numbers;
    Merger<SRtfFontEntry, ByTextNoCase> merger(table);
    for (const SRtfFontEntry& entry : table)
        merger.Know(rule.Key(entry), entry.number);
    scan.SkipSpace();
    const bool braces = !Scanner(scan).Next().Is("f");
    for (;;) {
        const SString group = NextEntry(scan, braces);
        if (group.IsEmpty()) break;
        SRtfFontEntry entry;
        if (!entry.SetFontEntry(group)) continue;
        rule.Complete(entry);
        const int number = static_cast<int>(entry.number);
        const SString key = rule.Key(entry);
        numbers.Add(number, static_cast<int>(merger.Merge(key, std::move(entry))));
    }
    merger.Settle();
    return numbers;
}

SMap<int, int> SRtfFontTable::AddFontTable(const SString& fontTableText) {
    return brcore8::rtf::AddFonts(*this, fontTableText, {});
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

namespace {

// The next piece, less its ";", in `specification`, and whether there is one. What ends the table
// without a ";" is a piece unless it is empty. Groups and binary data inside are left out.
bool NextPiece(Scanner& scan, SString& specification) {
    SStringBuffer piece(64);
    for (;;) {
        if (piece.IsEmpty()) scan.SkipSpace();
        const Token token = scan.Next();
        const bool data = token.Is("bin");
        const std::size_t semicolon = data ? std::string_view::npos : token.View().find(';');
        if (token.kind == Token::End || token.kind == Token::Close) break;
        if (token.kind == Token::Open) {
            scan.SkipTo(token.begin);
            scan.SkipGroup();
        } else if (!data) {
            piece += token.View().substr(0, semicolon);
        }
        if (semicolon == std::string_view::npos) continue;
        scan.SkipTo(token.begin + semicolon + 1);
        specification = piece;
        return true;
    }
    specification = piece;
    return !specification.IsEmpty();
}

}  // namespace

SMap<int, int> SRtfColorTable::AddColorTable(const SString& colorTableText) {
    SMap<int, int> numbers;
    const SString source = colorTableText;
    std::string_view text = source.View();
    if (text.ends_with(';')) text.remove_suffix(1);
    Scanner scan(text);
    if (!Enter(scan, "colortbl")) return numbers;
    Merger<SRtfColorEntry, ByText> merger(*this);
    for (const SRtfColorEntry& entry : *this)
        merger.Know(entry.specification, entry.number);
    if (IsEmpty()) merger.Merge(SString(), SRtfColorEntry());
    SString piece;
    for (int position = 0; NextPiece(scan, piece); ++position) {
        SRtfColorEntry entry;
        entry.SetColorEntry(piece);
        const SString key = entry.specification;
        numbers.Add(position, static_cast<int>(merger.Merge(key, std::move(entry))));
    }
    merger.Settle();
    return numbers;
}

SString SRtfColorTable::GetColorTable() const {
    return WholeTable("{\\colortbl\r\n", *this, &SRtfColorEntry::GetColorEntry);
}
