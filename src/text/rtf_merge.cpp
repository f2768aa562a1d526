// One document of two: the tables merged, the bodies renumbered, each in a group of its own.

#include <brcore8/strings/string_buffer.h>
#include <brcore8/text/rtf_document.h>

#include <optional>
#include <utility>

#include "strings/mbs.h"
#include "text/rtf_fonts.h"
#include "text/rtf_renumber.h"
#include "text/rtf_scan.h"

namespace {

using brcore8::rtf::Reference;
using brcore8::rtf::Scanner;
using brcore8::rtf::Token;

// Every control word whose number refers to the font or colour table: those of characters,
// paragraphs, table cells and rows, bullets, borders and the document itself.
constexpr Reference References[] = {
    {"f", Reference::Font},           {"af", Reference::Font},
    {"deff", Reference::Font},        {"adeff", Reference::Font},
    {"pnf", Reference::Font},         {"stshfdbch", Reference::Font},
    {"stshfloch", Reference::Font},   {"stshfhich", Reference::Font},
    {"stshfbi", Reference::Font},     {"cf", Reference::Color},
    {"cb", Reference::Color},         {"highlight", Reference::Color},
    {"ulc", Reference::Color},        {"chcfpat", Reference::Color},
    {"chcbpat", Reference::Color},    {"cfpat", Reference::Color},
    {"cbpat", Reference::Color},      {"clcfpat", Reference::Color},
    {"clcbpat", Reference::Color},    {"clcfpatraw", Reference::Color},
    {"clcbpatraw", Reference::Color}, {"trcfpat", Reference::Color},
    {"trcbpat", Reference::Color},    {"brdrcf", Reference::Color},
    {"pncf", Reference::Color},
};

// ---- Code pages and character sets ------------------------------------------------------------

// The \fcharset that stands for a code page, or -1.
int CharsetOf(int codePage) {
    constexpr int known[][2] = {{1252, 0},   {10000, 77}, {932, 128},  {949, 129},  {1361, 130},
                                {936, 134},  {950, 136},  {1253, 161}, {1254, 162}, {1258, 163},
                                {1255, 177}, {1256, 178}, {1257, 186}, {1251, 204}, {874, 222},
                                {1250, 238}, {437, 254}};
    for (const auto& [page, charset] : known)
        if (page == codePage) return charset;
    return -1;
}

// The first such word in a run of control words, which blanks may part and a brace may begin.
std::optional<Token> FindWord(std::string_view words, std::string_view name) {
    Scanner scan(words.starts_with('{') ? words.substr(1) : words);
    for (scan.SkipSpace(); !scan.Ends(); scan.SkipSpace()) {
        const Token token = scan.Next();
        if (token.Is(name)) return token;
        if (token.kind != Token::Word) break;
    }
    return std::nullopt;
}

int ValueOr(const std::optional<Token>& word, int otherwise) {
    return word && std::in_range<int>(word->value) ? static_cast<int>(word->value) : otherwise;
}

// Bytes in a font's text mean characters of its character set or, when it names none, of the
// document's code page. Fonts that read bytes differently are never the same, and one that leaves
// another document's code page behind must name its character set.
class FontsOfDocument : public brcore8::rtf::FontRule {
public:
    FontsOfDocument(int codePage, int mergedCodePage)
        : charset_(CharsetOf(codePage)), mergedCharset_(CharsetOf(mergedCodePage)) {}

    SString Key(const SRtfFontEntry& entry) const override {
        const int charset = ValueOr(FindWord(entry.controls, "fcharset"), mergedCharset_);
        return SString(static_cast<long>(charset)) + " " + entry.name;
    }
    void Complete(SRtfFontEntry& entry) const override {
        if (charset_ == mergedCharset_ || charset_ < 0) return;
        if (!FindWord(entry.controls, "fcharset"))
            entry.controls += "\\fcharset" + SString(static_cast<long>(charset_));
    }

private:
    int charset_;
    int mergedCharset_;
};

// ---- Bodies -----------------------------------------------------------------------------------

// Whether the token is less than it announces, so that a brace behind it would be part of it.
bool IsCutShort(const Token& token) {
    if (token.kind == Token::Text)
        return !brcore8::mbs::IsBoundary(brcore8::CodePage::Ansi(), token.begin, token.end);
    if (token.kind == Token::Symbol) {
        const std::string_view text = token.View();
        return text.size() < 2 || (text[1] == '\'' && text.size() < 4);
    }
    const auto bytes = token.end - (token.digits.data() + token.digits.size());
    return token.Is("bin") && token.value > 0 && bytes <= token.value;
}

// What stands before a brace that closes more than was opened; groups that are open at the end are
// closed.
SString Balanced(const SString& rest) {
    Scanner scan(rest.View());
    int depth = 0;
    const char* end = rest;
    for (Token token = scan.Next(); token.kind != Token::End; token = scan.Next()) {
        if (token.kind == Token::Close && --depth < 0) return SString(rest, token.begin);
        if (token.kind == Token::Open) ++depth;
        end = scan.Ends() && IsCutShort(token) ? token.begin : token.end;
    }
    return SString(rest, end) + SString('}', depth);
}

bool IsDestinationWithoutText(Scanner scan) {
    const Token token = scan.Next();
    return (token.kind == Token::Symbol && token.View() == "\\*") || token.Is("info") ||
           token.name.starts_with("header") || token.name.starts_with("footer");
}

bool EndsParagraph(const Token& token) {
    return token.Is("par") || token.Is("sect") || token.Is("row") || token.Is("nestrow") ||
           (token.kind == Token::Symbol && token.View().find_first_of("\r\n") == 1);
}

bool Shows(const Token& token) {
    if (token.kind == Token::Text)
        return token.View().find_first_not_of("\r\n") < token.View().size();
    return (token.kind == Token::Symbol && token.View() != "\\*") || token.Is("u") ||
           token.Is("tab") || token.Is("line") || token.Is("pict");
}

// Whether text stands behind the last paragraph mark.
bool LeavesParagraphOpen(const SString& body) {
    Scanner scan(body.View());
    bool open = false;
    for (Token token = scan.Next(); token.kind != Token::End; token = scan.Next()) {
        if (token.kind == Token::Open && IsDestinationWithoutText(scan)) {
            scan.SkipTo(token.begin);
            scan.SkipGroup();
        } else if (EndsParagraph(token)) {
            open = false;
        } else if (Shows(token)) {
            open = true;
        }
    }
    return open;
}

// ---- Documents --------------------------------------------------------------------------------

struct Parts {
    explicit Parts(SString rtf) {
        SRtfDocument::ExtractHeader(header, rtf, 1);
        if (header == "{") TakeFirstWord(rtf);
        SRtfDocument::ExtractFontTable(fonts, rtf, 1);
        SRtfDocument::ExtractColorTable(colors, rtf, 1);
        SRtfDocument::ExtractStyleTable(styles, rtf, 1);
        styles = Balanced(styles);
        body = Balanced(rtf);
    }
    // Of \urtf1 or \rtf, which is none of the header's words.
    void TakeFirstWord(SString& rtf) {
        const Token word = Scanner(rtf.View()).Next();
        header += word.View();
        rtf = SString(rtf.View().substr(word.View().size()));
    }
    // The number of a word about the whole document, in the header or at the body's beginning.
    int NumberOf(std::string_view word, int otherwise) const {
        const auto found = FindWord(header, word);
        return ValueOr(found ? found : FindWord(body, word), otherwise);
    }
    int CodePage() const { return NumberOf("ansicpg", 1252); }

    SString header;
    SString fonts;
    SString colors;
    SString styles;
    SString body;
};

struct Maps {
    SString Apply(const SString& text) const {
        return brcore8::rtf::Renumber(text, References, fonts, colors);
    }
    // The document's default font, or null where the table has none such.
    const int* DefaultFont(const Parts& parts) const {
        return fonts.Retrieve(parts.NumberOf("deff", 0));
    }

    SMap<int, int> fonts;
    SMap<int, int> colors;
};

// The header, with the words for a whole document that some writers put elsewhere.
SString HeaderOf(const Parts& parts, const Maps& maps) {
    SString header = parts.header;
    for (const char* const name : {"ansi", "mac", "pc", "pca", "ansicpg", "deff"}) {
        const auto word = FindWord(parts.body, name);
        if (word && !FindWord(header, name)) ((header += "\\") += word->name) += word->digits;
    }
    return maps.Apply(header);
}

}  // namespace

int SRtfDocument::Merge(const SString& first, const SString& second, SString& result) {
    if (!first.IsRtf() || !second.IsRtf()) return 0;
    const Parts parts[] = {Parts(first), Parts(second)};
    SRtfFontTable fonts;
    SRtfColorTable colors;
    Maps maps[2];
    for (int i = 0; i < 2; ++i) {
        const FontsOfDocument rule(parts[i].CodePage(), parts[0].CodePage());
        maps[i].fonts = brcore8::rtf::AddFonts(fonts, parts[i].fonts, rule);
        maps[i].colors = colors.AddColorTable(parts[i].colors);
    }
    SStringBuffer merged(static_cast<unsigned>(first.LengthByte()) + 1);
    merged += HeaderOf(parts[0], maps[0]);
    if (!fonts.IsEmpty()) merged += fonts.GetFontTable();
    if (!colors.IsEmpty()) merged += colors.GetColorTable();
    merged += maps[0].Apply(parts[0].styles);
    ((merged += "{") += maps[0].Apply(parts[0].body)) += "}";
    merged += LeavesParagraphOpen(parts[0].body) ? "\\par\r\n{" : "{";
    const int* const before = maps[0].DefaultFont(parts[0]);
    const int* const font = maps[1].DefaultFont(parts[1]);
    if (font && !(before && *before == *font))
        ((merged += "\\f") += SString(static_cast<long>(*font))) += " ";
    (merged += maps[1].Apply(parts[1].body)) += "}}";
    result = merged;
    return 1;
}
