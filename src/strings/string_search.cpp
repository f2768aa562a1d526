#include <brcore8/strings/string.h>

#include <cstring>

#include "strings/mbs.h"

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
    if (what == nullptr || IsLocked()) return Find(what, text_);
    const auto bytes = static_cast<std::size_t>(LengthByte());
    const char* const found = mbs::FindText(text_, bytes, what, std::strlen(what));
    if (found == nullptr) return nullptr;
    // The text ends at its first zero byte; only what stands before the find has to be asked.
    const void* const zero = std::memchr(text_, 0, static_cast<std::size_t>(found - text_));
    return zero == nullptr ? found : nullptr;
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

// Walks pattern and text together. After a failure only the last "*" need be tried again: an
// earlier one could not reach any text that the last one cannot.
int MatchPattern(std::string_view whole, const char* pattern, bool noCase) {
    const CodePage& page = CodePage::Ansi();
    const char* text = whole.data();
    const char* const end = text + whole.size();
    const char* starPattern = nullptr;
    const char* starText = nullptr;
    for (;;) {
        if (*pattern == '*') {
            while (*pattern == '*')
                ++pattern;
            if (*pattern == 0) return 1;
            starPattern = pattern;
            starText = text;
            continue;
        }
        const char* taken = *pattern == '\\' ? pattern + 1 : pattern;
        const bool ended = text == end;
        bool equal;
        if (*pattern == '?' || *taken == 0) {
            equal = (*taken == 0) == ended;
        } else {
            const unsigned wanted = mbs::UnsignedCodeAt(page, taken);
            const unsigned code = mbs::UnsignedCodeAt(page, text, end);
            equal = !ended &&
                    (wanted == code || (noCase && page.ToLower(wanted) == page.ToLower(code)));
        }
        if (equal && ended) return 1;
        // At the text's end a later start only leaves less text for the same pattern.
        if (ended || (!equal && !starPattern)) return 0;
        if (equal) {
            pattern = mbs::Next(page, taken);
            text += mbs::CharBytes(page, text, end);
        } else {
            starText += mbs::CharBytes(page, starText, end);
            text = starText;
            pattern = starPattern;
        }
    }
}

}  // namespace

int SString::Match(const char* pattern) const noexcept {
    return MatchPattern(View(), pattern ? pattern : "", false);
}

int SString::MatchNoCase(const char* pattern) const noexcept {
    return MatchPattern(View(), pattern ? pattern : "", true);
}
