#include <brcore8/text/rtf_document.h>

#include <brcore8/strings/string_buffer.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <iterator>
#include <utility>

#include "strings/mbs.h"
#include "text/rtf_renumber.h"
#include "text/rtf_scan.h"

using brcore8::rtf::Scanner;
using brcore8::rtf::Token;

// ---- Take apart -------------------------------------------------------------------------------

namespace {

const char* EndOf(const SString& text) {
    return text.View().data() + text.View().size();
}

bool IsHeaderWord(const Token& token) {
    if (token.kind != Token::Word) return false;
    if (token.name == "rtf") return token.digits == "1";
    if (token.name == "deff") return token.digits == "0";
    return (token.name == "ansi" && token.digits.empty()) || token.name.starts_with("ansicpg") ||
           token.name.starts_with("deflang");
}

// `part` last: it may be the same string.
void Deliver(SString& part, SString taken, SString& rtf, SString rest, int remove) {
    if (remove) rtf = std::move(rest);
    part = std::move(taken);
}

int ExtractGroup(std::string_view word, SString& part, SString& rtf, int remove) {
    const SString source = rtf;
    Scanner scan(source.View());
    for (Token token = scan.Next(); token.kind != Token::End; token = scan.Next()) {
        if (token.kind != Token::Open || !Scanner(scan).Next().Is(word)) continue;
        scan.SkipTo(token.begin);
        scan.SkipGroup();
        const SString taken(token.begin, scan.At());
        const SString before(source, token.begin);
        Deliver(part, taken, rtf, before + SString(scan.At(), EndOf(source)), remove);
        return 1;
    }
    part = SString();
    return 1;
}

}  // namespace

int SRtfDocument::ExtractHeader(SString& header, SString& rtf, int remove) {
    const SString source = rtf;
    SStringBuffer taken(64);
    SStringBuffer rest(static_cast<unsigned>(source.LengthByte()) + 1);
    if (source.IsRtf()) {
        Scanner scan(source.View());
        taken += scan.Next().View();
        const char* mark = scan.At();
        for (int words = 0; words < 6; ++words) {
            scan.SkipSpace();
            const Token token = scan.Next();
            if (!IsHeaderWord(token)) break;
            rest.Concat(mark, token.begin);
            taken += token.View();
            mark = token.end;
        }
        rest.Concat(mark, EndOf(source));
    }
    Deliver(header, taken, rtf, source.IsRtf() ? SString(rest) : source, remove);
    return 1;
}

int SRtfDocument::ExtractFontTable(SString& table, SString& rtf, int remove) {
    return ExtractGroup("fonttbl", table, rtf, remove);
}

int SRtfDocument::ExtractColorTable(SString& table, SString& rtf, int remove) {
    return ExtractGroup("colortbl", table, rtf, remove);
}

int SRtfDocument::ExtractStyleTable(SString& table, SString& rtf, int remove) {
    return ExtractGroup("stylesheet", table, rtf, remove);
}

// ---- Renumber ---------------------------------------------------------------------------------

namespace brcore8::rtf {

SString Renumber(const SString& body, std::span<const Reference> references,
                 const SMap<int, int>& fonts, const SMap<int, int>& colors) {
    SStringBuffer result(static_cast<unsigned>(body.LengthByte()) + 1);
    Scanner scan(body.View());
    const char* copied = body;
    for (Token token = scan.Next(); token.kind != Token::End; token = scan.Next()) {
        if (token.digits.empty() || !std::in_range<int>(token.value)) continue;
        for (const Reference& reference : references) {
            if (token.name != reference.word) continue;
            const SMap<int, int>& map = reference.to == Reference::Font ? fonts : colors;
            const int* const number = map.Retrieve(static_cast<int>(token.value));
            if (number == nullptr) break;
            char digits[16];
            const char* const end = std::to_chars(digits, std::end(digits), *number).ptr;
            result.Concat(copied, token.digits.data());
            result.Concat(digits, end);
            copied = token.digits.data() + token.digits.size();
            break;
        }
    }
    result.Concat(copied, EndOf(body));
    return result;
}

}  // namespace brcore8::rtf

int SRtfDocument::ChangeFontAndColor(const SString& body, SString& result,
                                     const SMap<int, int>& fontMap,
                                     const SMap<int, int>& colorMap) {
    using brcore8::rtf::Reference;
    constexpr Reference references[] = {{"f", Reference::Font},
                                        {"cf", Reference::Color},
                                        {"cb", Reference::Color},
                                        {"highlight", Reference::Color}};
    result = brcore8::rtf::Renumber(body, references, fontMap, colorMap);
    return 1;
}

// ---- Tags -------------------------------------------------------------------------------------

namespace {

// Of a tag that begins with a backslash.
const char* ControlEnd(const char* backslash) {
    const brcore8::CodePage& page = brcore8::CodePage::Ansi();
    for (const char* p = backslash + 1;; p += brcore8::mbs::CharBytes(page, p)) {
        if (*p == ' ' || *p == '\t') return p + 1;
        if (*p == 0 || std::strchr("\\{}\r\n", *p)) return p;
    }
}

}  // namespace

int SRtfDocument::GetNextTag(char** start, long* length, char* position, int wholeGroup) {
    if (start == nullptr || length == nullptr || !SkipSpace(&position)) return 0;
    const char* end = position;
    if (*position == '{' && wholeGroup) {
        Scanner scan(position, nullptr);
        scan.SkipGroup();
        end = scan.At();
    } else if (*position == '{' || *position == '}') {
        end = position + 1;
    } else if (*position == '\\') {
        end = ControlEnd(position);
    } else {
        end = Scanner(position, nullptr).TextEnd(position);
    }
    *start = position;
    *length = static_cast<long>(end - position);
    return *length > 0;
}

int SRtfDocument::SkipSpace(char** position) {
    if (position == nullptr || *position == nullptr) return 0;
    *position += std::strspn(*position, " \t\r\n");
    return 1;
}

int SRtfDocument::RemoveTag(char* position, long length) {
    if (position == nullptr || length < 1) return 0;
    const std::size_t text = std::strlen(position);
    const std::size_t removed = std::min(text, static_cast<std::size_t>(length));
    std::memmove(position, position + removed, text - removed + 1);
    return 1;
}
