// Walks RTF from token to token, forwards only and without memory.
#ifndef BRCORE8_SRC_TEXT_RTF_SCAN_H
#define BRCORE8_SRC_TEXT_RTF_SCAN_H

#include <cstdint>
#include <string_view>

namespace brcore8::rtf {

struct Token {
    enum Kind {
        End,
        Open,    // {
        Close,   // }
        Word,    // \word, \wordN, with the blank that ends it; \binN with its data
        Symbol,  // a backslash and any other byte, if one follows; \'hh with its digits
        Text,    // all else, up to a backslash or brace
    };

    Kind kind = End;
    const char* begin = nullptr;
    const char* end = nullptr;
    // Of a word: its letters, its number as it stands, and that number or, of one with too many
    // digits, some number beyond 2^53.
    std::string_view name;
    std::string_view digits;
    std::int64_t value = 0;

    std::string_view View() const { return {begin, static_cast<std::size_t>(end - begin)}; }
    bool Is(std::string_view word) const { return kind == Word && name == word; }
};

inline bool IsSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}
std::string_view TrimRight(std::string_view text, std::string_view set = " \t\r\n");

// The text ends after its bytes, or with `end` null at its zero byte: then nothing behind what is
// asked for is looked at.
class Scanner {
public:
    Scanner(const char* begin, const char* end) : at_(begin), end_(end) {}
    explicit Scanner(std::string_view text) : Scanner(text.data(), text.data() + text.size()) {}

    Token Next();
    // From the "{" where it stands to behind its "}", or to the end of the text.
    void SkipGroup();
    void SkipSpace();
    void SkipTo(const char* position) { at_ = position; }

    const char* At() const { return at_; }
    bool Ends() const { return Ends(at_); }
    // Where the run of text at the position ends.
    const char* TextEnd(const char* position) const;

private:
    bool Ends(const char* position) const {
        return end_ == nullptr ? *position == 0 : position == end_;
    }
    const char* Ahead(const char* position, std::int64_t count) const;
    void ReadControl(Token& token);
    void ReadNumber(Token& token);

    const char* at_;
    const char* end_;
};

}  // namespace brcore8::rtf

#endif
