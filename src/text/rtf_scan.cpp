#include "text/rtf_scan.h"

#include <limits>

#include "strings/mbs.h"

namespace brcore8::rtf {
namespace {

bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool IsMark(char c) {
    return c == '\\' || c == '{' || c == '}';
}

}  // namespace

std::string_view TrimRight(std::string_view text, std::string_view set) {
    const std::size_t last = text.find_last_not_of(set);
    return text.substr(0, last == text.npos ? 0 : last + 1);
}

void Scanner::SkipSpace() {
    while (!Ends() && IsSpace(*at_))
        ++at_;
}

// The second byte of a raw double-byte character may look like a backslash or a brace.
const char* Scanner::TextEnd(const char* position) const {
    const CodePage& page = CodePage::Ansi();
    if (!page.IsDoubleByte()) {
        while (!Ends(position) && !IsMark(*position))
            ++position;
        return position;
    }
    while (!Ends(position) && !IsMark(*position))
        position += page.IsLead(mbs::Byte(position)) && !Ends(position + 1) ? 2 : 1;
    return position;
}

// Up to `count` bytes on.
const char* Scanner::Ahead(const char* position, std::int64_t count) const {
    if (end_ != nullptr) return end_ - position < count ? end_ : position + count;
    while (count > 0 && *position != 0) {
        ++position;
        --count;
    }
    return position;
}

void Scanner::ReadNumber(Token& token) {
    const char* p = at_;
    const bool negative = !Ends(p) && *p == '-';
    if (negative) ++p;
    if (Ends(p) || !IsDigit(*p)) return;
    constexpr std::int64_t enough = std::numeric_limits<std::int64_t>::max() / 10 - 1;
    std::int64_t value = 0;
    for (; !Ends(p) && IsDigit(*p); ++p)
        if (value <= enough) value = value * 10 + (*p - '0');
    token.digits = {at_, static_cast<std::size_t>(p - at_)};
    token.value = negative ? -value : value;
    at_ = p;
}

// At the backslash.
void Scanner::ReadControl(Token& token) {
    const char* const word = ++at_;
    while (!Ends() && IsLetter(*at_))
        ++at_;
    if (at_ == word) {
        token.kind = Token::Symbol;
        if (!Ends()) ++at_;
        if (at_[-1] == '\'')
            for (int digits = 0; digits < 2 && !Ends() && IsHexDigit(*at_); ++digits)
                ++at_;
        return;
    }
    token.kind = Token::Word;
    token.name = {word, static_cast<std::size_t>(at_ - word)};
    ReadNumber(token);
    if (!Ends() && (*at_ == ' ' || *at_ == '\t')) ++at_;
    if (token.name == "bin" && token.value > 0) at_ = Ahead(at_, token.value);
}

Token Scanner::Next() {
    Token token;
    token.begin = at_;
    if (Ends()) {
        token.kind = Token::End;
    } else if (*at_ == '\\') {
        ReadControl(token);
    } else if (IsMark(*at_)) {
        token.kind = *at_++ == '{' ? Token::Open : Token::Close;
    } else {
        token.kind = Token::Text;
        at_ = TextEnd(at_);
    }
    token.end = at_;
    return token;
}

void Scanner::SkipGroup() {
    std::int64_t depth = 0;
    do {
        const Token token = Next();
        if (token.kind == Token::End) return;
        if (token.kind == Token::Open) ++depth;
        if (token.kind == Token::Close) --depth;
    } while (depth > 0);
}

}  // namespace brcore8::rtf
