#include <brcore8/strings/string_views.h>

#include "strings/mbs.h"

namespace brcore8 {
namespace {

// The first character from `p` on whose code the predicate accepts, or the end.
template <class Predicate>
const char* FindFirst(const char* p, const char* end, Predicate accepts) noexcept {
    const CodePage& page = CodePage::Ansi();
    while (p < end) {
        const unsigned code = mbs::UnsignedCodeAt(page, p, end);
        if (accepts(page, code)) break;
        p += code < 256 ? 1 : 2;
    }
    return p;
}

bool IsLineEnd(const CodePage&, unsigned code) noexcept {
    return code == '\r' || code == '\n';
}

bool IsSpace(const CodePage& page, unsigned code) noexcept {
    return (page.Classes(code) & CodePage::Space) != 0;
}

}  // namespace

const char* LineCut::EndOf(const char* p, const char* end) noexcept {
    return FindFirst(p, end, IsLineEnd);
}

const char* LineCut::After(const char* p, const char* end) noexcept {
    if (p < end && *p == '\r') ++p;
    if (p < end && *p == '\n') ++p;
    return p;
}

const char* WordCut::EndOf(const char* p, const char* end) noexcept {
    return FindFirst(p, end, IsSpace);
}

const char* WordCut::After(const char* p, const char* end) noexcept {
    return FindFirst(
        p, end, [](const CodePage& page, unsigned code) noexcept { return !IsSpace(page, code); });
}

const char* PartCut::EndOf(const char* p, const char* end) const noexcept {
    const unsigned wanted = mbs::Normalize(CodePage::Ansi(), separator);
    return FindFirst(p, end,
                     [wanted](const CodePage&, unsigned code) noexcept { return code == wanted; });
}

const char* PartCut::After(const char* p, const char* end) const noexcept {
    return p < end ? p + mbs::CharBytes(CodePage::Ansi(), p, end) : p;
}

}  // namespace brcore8

int SCharacters::iterator::operator*() const noexcept {
    const unsigned code = brcore8::mbs::UnsignedCodeAt(brcore8::CodePage::Ansi(), position_, end_);
    return code < 256 ? static_cast<int>(code) : static_cast<int>(code) - 0x10000;
}

SCharacters::iterator& SCharacters::iterator::operator++() noexcept {
    position_ += brcore8::mbs::CharBytes(brcore8::CodePage::Ansi(), position_, end_);
    return *this;
}
