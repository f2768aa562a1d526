#include <brcore8/strings/string.h>

#include <brcore8/containers/table.h>
#include <brcore8/core/throw.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

#include "strings/copy_bytes.h"
#include "strings/mbs.h"
#include "strings/text_search.h"

using brcore8::CodePage;
using brcore8::CopyBytes;
namespace mbs = brcore8::mbs;

namespace {

std::string_view ViewOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

// Finds one text, which is not empty, again and again in another.
class Finder {
public:
    Finder(const char* text, std::string_view what, bool noCase)
        : text_(text),
          end_(text + std::strlen(text)),
          what_(what),
          noCase_(noCase),
          exact_(CodePage::Ansi(), what, text, end_, mbs::Zero::IsText) {}

    // The first place at or behind `from`, which lies behind the place before.
    const char* Next(const char* from) {
        if (known_ < places_.GetCount()) return text_ + places_[known_++];
        return Search(exact_, from);
    }
    // How often Next will find something. Remembers the first places, so that few texts are
    // searched twice.
    int Count() {
        constexpr int kMost = 1 << 16;
        mbs::ExactSearch exact = exact_;
        int count = 0;
        for (const char* p = text_; (p = Search(exact, p)) != nullptr; p += what_.size())
            if (++count <= kMost) places_.Add(static_cast<std::int32_t>(p - text_));
        return count;
    }

private:
    const char* Search(mbs::ExactSearch& exact, const char* from) {
        if (!noCase_) return exact.Next(from);
        return mbs::FindTextNoCase(from, static_cast<std::size_t>(end_ - from), what_.data(),
                                   what_.size());
    }

    const char* text_;
    const char* end_;
    std::string_view what_;
    bool noCase_;
    mbs::ExactSearch exact_;
    STable<std::int32_t> places_;
    int known_ = 0;
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

// What does not grow is replaced in one pass, and in place where nobody shares the text nor do the
// arguments lie in it. Otherwise the occurrences are counted first, so that the result is built
// once.
int SString::ReplaceEvery(const char* from, const char* to, bool noCase) {
    const std::string_view old = ViewOf(from);
    const std::string_view fresh = ViewOf(to);
    if (old.empty()) return 0;
    Finder finder(text_, old, noCase);
    const bool grows = fresh.size() > old.size();
    const int count = grows ? finder.Count() : 0;
    const char* found = finder.Next(text_);
    if (!found) return 0;
    const bool inPlace = !grows && !IsShared() && !Owns(from) && !(to && Owns(to));
    SString result;
    if (grows) {
        const auto growth = static_cast<std::int64_t>(fresh.size() - old.size());
        result.AllocBuffer(LengthByte() + growth * count);
    } else if (!inPlace) {
        result.AllocBuffer(LengthByte());
    }
    char* const begin = inPlace ? text_ : result.text_;
    char* out = begin;
    const char* rest = text_;
    const auto keep = [&](const char* end) {
        const auto bytes = static_cast<std::size_t>(end - rest);
        if (out != rest) CopyBytes(out, rest, bytes);
        out += bytes;
    };
    for (; found; found = finder.Next(rest)) {
        keep(found);
        CopyBytes(out, fresh.data(), fresh.size());
        out += fresh.size();
        rest = found + old.size();
    }
    keep(End());
    const auto bytes = static_cast<std::int32_t>(out - begin);
    if (inPlace) {
        SetLength(bytes);
    } else {
        result.SetLength(bytes);
        *this = std::move(result);
    }
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

namespace {

// Without a branch, so that compilers take many bytes a step.
void ReplaceBytes(char* begin, char* end, char from, char to) {
    for (char* p = begin; p != end; ++p)
        *p = *p == from ? to : *p;
}

}  // namespace

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
    if (all && !noCase && !page.IsDoubleByte()) {
        ReplaceBytes(text_ + first, text_ + std::strlen(text_), *old, *fresh);
        return 1;
    }
    Finder finder(text_, {old, width}, noCase);
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
