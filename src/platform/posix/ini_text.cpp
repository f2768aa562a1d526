#include "platform/posix/ini_text.h"

#include <algorithm>

#include "strings/mbs.h"

namespace brcore8 {
namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kLineEnd = "\n";
// The last one is what old editors put at a text's end.
constexpr std::string_view kBlanks = " \t\v\f\x1A";

std::size_t MarkBytes(std::string_view text) noexcept {
    return text.starts_with(kMark) ? kMark.size() : 0;
}

// Where the last "]" stands that is no trail byte; npos without one.
std::size_t LastBracket(std::string_view text) noexcept {
    const CodePage& page = CodePage::Ansi();
    if (!page.IsDoubleByte()) return text.rfind(']');
    std::size_t last = text.npos;
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p != end; p += mbs::CharBytes(page, p, end))
        if (*p == ']') last = static_cast<std::size_t>(p - text.data());
    return last;
}

// What the line's text means.
void Interpret(std::string_view text, IniLine& line) noexcept {
    const std::string_view words = TrimIniBlanks(text.substr(line.begin, line.end - line.begin));
    if (words.empty() || words.front() == ';') return;
    if (words.front() == '[') {
        const std::size_t bracket = LastBracket(words.substr(1));
        if (bracket == words.npos) return;
        line.kind = IniLine::Header;
        line.name = TrimIniBlanks(words.substr(1, bracket));
        return;
    }
    const std::size_t equals = words.find('=');
    if (equals == words.npos) return;
    line.kind = IniLine::Key;
    line.name = TrimIniBlanks(words.substr(0, equals));
    line.value = TrimIniBlanks(words.substr(equals + 1));
    // An empty one stands where a value would: behind all blanks of the line.
    if (line.value.empty()) line.value = text.substr(line.end, 0);
}

}  // namespace

std::string_view TrimIniBlanks(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == text.npos) return text.substr(text.size());
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view UnquoteIni(std::string_view value) noexcept {
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

bool SameIniName(std::string_view left, std::string_view right) noexcept {
    if (left.size() != right.size()) return false;
    const CodePage& page = CodePage::Ansi();
    const char* const end = left.data() + left.size();
    const char* q = right.data();
    for (const char* p = left.data(); p != end;) {
        const std::size_t bytes = mbs::CharBytes(page, p, end);
        if (page.ToLower(mbs::UnsignedCodeAt(page, p, end)) !=
            page.ToLower(mbs::UnsignedCodeAt(page, q, right.data() + right.size()))) {
            return false;
        }
        p += bytes;
        q += bytes;
    }
    return true;
}

bool IsIniUtf16(std::string_view text) noexcept {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

// --- lines ---------------------------------------------------------------------------------------

IniLine IniLineAt(std::string_view text, std::size_t begin) noexcept {
    IniLine line;
    line.begin = line.end = begin;
    while (line.end != text.size() && text[line.end] != '\n' && text[line.end] != '\r')
        ++line.end;
    const std::string_view rest = text.substr(line.end);
    line.next = line.end + (rest.starts_with("\r\n") ? 2 : rest.empty() ? 0 : 1);
    Interpret(text, line);
    return line;
}

IniLines::IniLines(std::string_view text) noexcept : text_(text), at_(MarkBytes(text)) {}

bool IniLines::Next(IniLine& line) noexcept {
    if (at_ == text_.size()) return false;
    line = IniLineAt(text_, at_);
    at_ = line.next;
    return true;
}

// --- change --------------------------------------------------------------------------------------

namespace {

// Where a key stands, or would.
struct Place {
    bool hasSection = false;
    bool hasKey = false;
    IniLine first;  // of the section: its header, or without one its first key
    IniLine last;   // the key, or the section's last key, or its header
};

Place Locate(std::string_view text, std::string_view section, std::string_view key) noexcept {
    Place place;
    place.last.begin = place.last.end = place.last.next = MarkBytes(text);
    place.first = place.last;
    place.hasSection = section.empty();
    IniLines lines(text);
    for (IniLine line; lines.Next(line);) {
        if (line.kind == IniLine::Header) {
            if (place.hasSection) return place;
            if (!SameIniName(line.name, section)) continue;
            place.hasSection = true;
            place.first = place.last = line;
        } else if (line.kind == IniLine::Key && place.hasSection) {
            if (place.first.next == MarkBytes(text)) place.first = line;
            place.last = line;
            place.hasKey = !key.empty() && SameIniName(line.name, key);
            if (place.hasKey) return place;
        }
    }
    return place;
}

// From there to the line's end. Where what follows would become the text's first bytes and look
// like a mark, an empty line stays before it.
void EraseLines(std::string_view text, std::size_t begin, const IniLine& last,
                IniEdit& edit) noexcept {
    const std::string_view rest = text.substr(last.next);
    const bool looksMarked = begin == 0 && (MarkBytes(rest) != 0 || IsIniUtf16(rest));
    edit.at = begin;
    edit.removed = (looksMarked ? last.end : last.next) - begin;
}

// The line end of the text's first line, or ours.
std::string_view LineEndOf(std::string_view text) noexcept {
    IniLine line;
    if (!IniLines(text).Next(line) || line.next == line.end) return kLineEnd;
    return text.substr(line.end, line.next - line.end);
}

void InsertLines(std::string_view text, std::size_t at, std::string_view lineEnd,
                 std::string_view header, std::string_view key, std::string_view value,
                 IniEdit& edit) {
    edit.at = at;
    // A last line without its end gets one; the new last line then has none either.
    const bool isOpen = at != MarkBytes(text) && text[at - 1] != '\n' && text[at - 1] != '\r';
    if (isOpen) edit.inserted += lineEnd;
    if (!header.empty()) (((edit.inserted += "[") += header) += "]") += lineEnd;
    ((edit.inserted += key) += "=") += value;
    if (!isOpen) edit.inserted += lineEnd;
}

}  // namespace

bool IniEdit::ChangesNothing(std::string_view text) const noexcept {
    return text.substr(at, removed) == inserted.View();
}

IniBytes IniEdit::Apply(std::string_view text) const {
    const std::string_view added = inserted.View();
    const std::string_view rest = text.substr(at + removed);
    IniBytes result(at + added.size() + rest.size());
    char* const out = std::copy_n(text.data(), at, result.Data());
    std::copy_n(rest.data(), rest.size(), std::copy_n(added.data(), added.size(), out));
    return result;
}

void SetIniKey(std::string_view text, std::string_view section, std::string_view key,
               std::string_view value, IniEdit& edit) {
    section = TrimIniBlanks(section);
    key = TrimIniBlanks(key);
    const Place place = Locate(text, section, key);
    const IniLine& line = place.last;
    if (place.hasKey) {
        edit.at = static_cast<std::size_t>(line.value.data() - text.data());
        edit.removed = line.value.size();
        edit.inserted += value;
    } else if (place.hasSection) {
        const bool ended = line.next != line.end;
        InsertLines(text, line.next,
                    ended ? text.substr(line.end, line.next - line.end) : LineEndOf(text), {}, key,
                    value, edit);
    } else {
        InsertLines(text, text.size(), LineEndOf(text), section, key, value, edit);
    }
}

void EraseIniKey(std::string_view text, std::string_view section, std::string_view key,
                 IniEdit& edit) noexcept {
    const Place place = Locate(text, TrimIniBlanks(section), TrimIniBlanks(key));
    if (place.hasKey) EraseLines(text, place.last.begin, place.last, edit);
}

void EraseIniSection(std::string_view text, std::string_view section, IniEdit& edit) noexcept {
    const Place place = Locate(text, TrimIniBlanks(section), {});
    if (place.hasSection) EraseLines(text, place.first.begin, place.last, edit);
}

std::optional<std::string_view> FindIniKey(std::string_view text, std::string_view section,
                                           std::string_view key) noexcept {
    const Place place = Locate(text, TrimIniBlanks(section), TrimIniBlanks(key));
    if (!place.hasKey) return std::nullopt;
    return UnquoteIni(place.last.value);
}

}  // namespace brcore8
