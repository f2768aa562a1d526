#include <brcore8/strings/string.h>

#include <array>
#include <cstring>

#include "strings/mbs.h"
#include "strings/text_search.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

// --- Pointers ----------------------------------------------------------------------------------

const char* SString::Find(unsigned int character) const noexcept {
    return mbs::Find(text_, character);
}

const char* SString::Find(unsigned int character, const char* from) const noexcept {
    return mbs::Find(from, character);
}

const char* SString::ReverseFind(unsigned int character) const noexcept {
    return mbs::ReverseFind(text_, character);
}

const char* SString::Find(const char* what) const noexcept {
    if (what == nullptr || *what == 0) return text_;
    if (IsLocked()) return Find(what, text_);
    mbs::ExactSearch search(CodePage::Ansi(), what, text_, End(), mbs::Zero::EndsText);
    return search.Next(text_);
}

const char* SString::Find(const char* what, const char* from) const noexcept {
    return mbs::FindText(from, what ? what : "");
}

const char* SString::FindNoCase(const char* what) const noexcept {
    return FindNoCase(what, text_);
}

const char* SString::FindNoCase(const char* what, const char* from) const noexcept {
    return what ? mbs::FindTextNoCase(from, what) : nullptr;
}

// --- Indices -----------------------------------------------------------------------------------

int SString::FindPos(unsigned int character, int start) const noexcept {
    if (start < 0 || start >= Length()) return -1;
    const CodePage& page = CodePage::Ansi();
    const char* end = End();
    const char* p = text_ + ByteOffset(start);
    if (mbs::UnsignedCodeAt(page, p) == mbs::Normalize(page, character))
        return p < end ? start : -1;
    // Past the start the first byte alone counts, taken as signed.
    const int code = static_cast<int>(character);
    for (int i = start + 1;; ++i) {
        if (*p == 0) return -1;
        p = mbs::Next(page, p);
        if (p >= end || *p == 0) return -1;
        if (static_cast<signed char>(*p) == code) return i;
    }
}

int SString::ReverseFindPos(unsigned int character, int last) const noexcept {
    if (last == -1) last = Length() - 1;
    if (last < 0 || last >= Length()) return -1;
    const CodePage& page = CodePage::Ansi();
    const unsigned int code = mbs::Normalize(page, character);
    int found = -1;
    const char* p = text_;
    for (int i = 0; i <= last && *p; ++i, p = mbs::Next(page, p))
        if (mbs::UnsignedCodeAt(page, p) == code) found = i;
    return found;
}

// --- Match -------------------------------------------------------------------------------------

namespace {

// Characters under a single-byte page: a byte each, equal where their folds are.
class Bytes {
public:
    explicit Bytes(const unsigned char* fold) : fold_(fold) {}

    unsigned At(const char* p) const { return fold_[mbs::Byte(p)]; }
    unsigned At(const char* p, const char*) const { return At(p); }
    const char* Next(const char* p) const { return p + 1; }
    const char* Next(const char* p, const char*) const { return p + 1; }

private:
    const unsigned char* fold_;
};

// Characters of one or two bytes.
class Pairs {
public:
    Pairs(const CodePage& page, bool noCase) : page_(page), noCase_(noCase) {}

    unsigned At(const char* p) const { return Fold(mbs::UnsignedCodeAt(page_, p)); }
    unsigned At(const char* p, const char* end) const {
        return Fold(mbs::UnsignedCodeAt(page_, p, end));
    }
    const char* Next(const char* p) const { return mbs::Next(page_, p); }
    const char* Next(const char* p, const char* end) const {
        return p + mbs::CharBytes(page_, p, end);
    }

private:
    unsigned Fold(unsigned code) const { return noCase_ ? page_.ToLower(code) : code; }

    const CodePage& page_;
    bool noCase_;
};

// Bytes of a pattern that stand for something else than themselves.
constexpr auto kSpecial = [] {
    std::array<bool, 256> special{};
    for (const unsigned char byte : {'\0', '*', '?', '\\'})
        special[byte] = true;
    return special;
}();

// Bytes that every text has that the pattern matches. A trail byte that looks like an escape only
// makes them fewer.
std::ptrdiff_t ShortestMatch(const char* pattern) {
    std::ptrdiff_t bytes = 0;
    for (; *pattern; ++pattern) {
        if (*pattern == '*') continue;
        if (*pattern == '\\' && *++pattern == 0) break;
        ++bytes;
    }
    return bytes;
}

// Walks pattern and text together. After a failure only the last "*" need be tried again: an
// earlier one could not reach any text that the last one cannot.
template <class Characters>
int MatchPattern(const Characters& characters, std::string_view whole, const char* pattern) {
    const char* text = whole.data();
    const char* const end = text + whole.size();
    const char* starPattern = nullptr;
    const char* starText = nullptr;  // where what follows the "*" was last tried
    for (;;) {
        while (text != end && !kSpecial[mbs::Byte(pattern)] &&
               characters.At(pattern) == characters.At(text, end)) {
            pattern = characters.Next(pattern);
            text = characters.Next(text, end);
        }
        if (*pattern == '*') {
            while (*pattern == '*')
                ++pattern;
            if (*pattern == 0) return 1;
            if (!starPattern && end - text < ShortestMatch(pattern)) return 0;
            starPattern = pattern;
            starText = text;
            continue;
        }
        const char* const taken = *pattern == '\\' ? pattern + 1 : pattern;
        if (*taken == 0 && text == end) return 1;
        // At the text's end a later start only leaves less text for the same pattern.
        if (text == end) return 0;
        if (*taken != 0 && (*pattern == '?' || characters.At(taken) == characters.At(text, end))) {
            pattern = characters.Next(taken);
            text = characters.Next(text, end);
            continue;
        }
        if (!starPattern) return 0;
        pattern = starPattern;
        do {
            starText = characters.Next(starText, end);
        } while (starText != end && !kSpecial[mbs::Byte(pattern)] &&
                 characters.At(pattern) != characters.At(starText, end));
        text = starText;
    }
}

constexpr auto kNoFold = [] {
    std::array<unsigned char, 256> same{};
    for (std::size_t byte = 0; byte < same.size(); ++byte)
        same[byte] = static_cast<unsigned char>(byte);
    return same;
}();

int MatchPattern(std::string_view whole, const char* pattern, bool noCase) {
    const CodePage& page = CodePage::Ansi();
    if (!pattern) pattern = "";
    if (page.IsDoubleByte()) return MatchPattern(Pairs(page, noCase), whole, pattern);
    return MatchPattern(Bytes(noCase ? page.LowerBytes() : kNoFold.data()), whole, pattern);
}

}  // namespace

int SString::Match(const char* pattern) const noexcept {
    return MatchPattern(View(), pattern, false);
}

int SString::MatchNoCase(const char* pattern) const noexcept {
    return MatchPattern(View(), pattern, true);
}
