#include <brcore8/strings/string.h>

#include <brcore8/core/throw.h>

#include <cstring>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

namespace {

std::string_view ViewOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

// Finds one text again and again in another, whose length is taken once.
class Finder {
public:
    Finder(const char* text, std::string_view what, bool noCase)
        : end_(text + std::strlen(text)), what_(what), noCase_(noCase) {}

    const char* Next(const char* from) const {
        const auto bytes = static_cast<std::size_t>(end_ - from);
        return noCase_ ? mbs::FindTextNoCase(from, bytes, what_.data(), what_.size())
                       : mbs::FindText(from, bytes, what_.data(), what_.size());
    }

private:
    const char* end_;
    std::string_view what_;
    bool noCase_;
};

}  // namespace

// --- Texts -------------------------------------------------------------------------------------

int SString::ReplaceFirst(const char* from, const char* to, bool noCase) {
    const std::string_view old = ViewOf(from);
    if (old.empty()) return 0;
    const char* found = Finder(text_, old, noCase).Next(text_);
    if (!found) return 0;
    Splice(found - text_, static_cast<std::int64_t>(old.size()), ViewOf(to));
    return 1;
}

// The occurrences are counted first, so that the result is built once and in a buffer of its
// own: both arguments may lie in the old text.
int SString::ReplaceEvery(const char* from, const char* to, bool noCase) {
    const std::string_view old = ViewOf(from);
    const std::string_view fresh = ViewOf(to);
    if (old.empty()) return 0;
    const Finder finder(text_, old, noCase);
    std::int64_t count = 0;
    for (const char* p = text_; (p = finder.Next(p)) != nullptr; p += old.size())
        ++count;
    if (count == 0) return 0;
    const std::int64_t total = LengthByte() + count * (static_cast<std::int64_t>(fresh.size()) -
                                                       static_cast<std::int64_t>(old.size()));
    SString result;
    result.AllocBuffer(total);
    char* out = result.text_;
    const char* rest = text_;
    for (; count > 0; --count) {
        const char* found = finder.Next(rest);
        std::memcpy(out, rest, static_cast<std::size_t>(found - rest));
        out += found - rest;
        if (!fresh.empty()) std::memcpy(out, fresh.data(), fresh.size());
        out += fresh.size();
        rest = found + old.size();
    }
    if (rest != End()) std::memcpy(out, rest, static_cast<std::size_t>(End() - rest));
    result.SetLength(static_cast<std::int32_t>(total));
    *this = std::move(result);
    return 1;
}

int SString::Replace(const char* from, const char* to) {
    return ReplaceFirst(from, to, false);
}

int SString::ReplaceNoCase(const char* from, const char* to) {
    return ReplaceFirst(from, to, true);
}

int SString::ReplaceAll(const char* from, const char* to) {
    return ReplaceEvery(from, to, false);
}

int SString::ReplaceAllNoCase(const char* from, const char* to) {
    return ReplaceEvery(from, to, true);
}

// --- Characters --------------------------------------------------------------------------------

int SString::ReplaceCharacters(unsigned int from, unsigned int to, bool noCase, bool all) {
    const CodePage& page = CodePage::Ansi();
    char old[3] = {};
    char fresh[3] = {};
    const std::size_t width = mbs::Put(page, from, old);
    if (old[0] == 0) return 0;
    if (mbs::Put(page, to, fresh) != width)
        return all ? ReplaceEvery(old, fresh, noCase) : ReplaceFirst(old, fresh, noCase);
    const char* found = Finder(text_, {old, width}, noCase).Next(text_);
    if (!found) return 0;
    const std::ptrdiff_t first = found - text_;
    CopyBeforeWrite();
    const Finder finder(text_, {old, width}, noCase);
    for (const char* p = text_ + first; p; p = all ? finder.Next(p + width) : nullptr)
        std::memcpy(text_ + (p - text_), fresh, width);
    // A lead byte or a zero byte in place of a plain one changes how the text reads.
    SetLength(LengthByte());
    return 1;
}

int SString::Replace(unsigned int from, unsigned int to) {
    return ReplaceCharacters(from, to, false, false);
}

int SString::ReplaceNoCase(unsigned int from, unsigned int to) {
    return ReplaceCharacters(from, to, true, false);
}

int SString::ReplaceAll(unsigned int from, unsigned int to) {
    return ReplaceCharacters(from, to, false, true);
}

int SString::ReplaceAllNoCase(unsigned int from, unsigned int to) {
    return ReplaceCharacters(from, to, true, true);
}

// --- Pairs of characters -----------------------------------------------------------------------

namespace {

using Outcomes = std::unordered_map<unsigned, unsigned>;

// Where a character ends after one pass for each pair: taken from the last pass backwards, each
// pass leads to the outcome of the character that it writes.
Outcomes OutcomesOf(const CodePage& page, const char* from, const char* to) try {
    std::vector<std::pair<unsigned, unsigned>> passes;
    for (; *from && *to; from = mbs::Next(page, from), to = mbs::Next(page, to))
        passes.emplace_back(mbs::UnsignedCodeAt(page, from), mbs::UnsignedCodeAt(page, to));
    Outcomes outcomes;
    for (auto pass = passes.rbegin(); pass != passes.rend(); ++pass) {
        const auto later = outcomes.find(pass->second);
        outcomes[pass->first] = later == outcomes.end() ? pass->second : later->second;
    }
    return outcomes;
} catch (const std::bad_alloc&) {
    brcore8::ThrowOutOfMemory();
}

}  // namespace

int SString::Translate(const char* from, const char* to) {
    if (!from || !to) return 0;
    const CodePage& page = CodePage::Ansi();
    const Outcomes outcomes = OutcomesOf(page, from, to);
    bool any = false;
    const auto translated = [&](const char* p) {
        const unsigned code = mbs::UnsignedCodeAt(page, p);
        const auto found = outcomes.find(code);
        if (found == outcomes.end()) return code;
        any = true;
        return found->second;
    };
    char scratch[2];
    std::size_t total = 0;
    const char* p = text_;
    for (; *p; p = mbs::Next(page, p))
        total += mbs::Put(page, translated(p), scratch);
    if (!any) return 0;
    const auto rest = static_cast<std::size_t>(End() - p);  // from the first zero byte on
    SString result;
    result.AllocBuffer(static_cast<std::int64_t>(total + rest));
    char* out = result.text_;
    for (p = text_; *p; p = mbs::Next(page, p))
        out += mbs::Put(page, translated(p), out);
    if (rest != 0) std::memcpy(out, p, rest);
    result.SetLength(result.LengthByte());
    *this = std::move(result);
    return 1;
}
