#include <cstdint>
#include <cstring>
#include <memory>
#include <new>

#include "platform/byte_search.h"
#include "strings/mbs.h"
#include "strings/text_search.h"

namespace brcore8::mbs {
namespace {

struct Pattern {
    const CodePage& page;
    const char* begin;
    const char* end;
    bool fold;

    unsigned Code(const char* p, const char* limit) const noexcept {
        const unsigned code = UnsignedCodeAt(page, p, limit);
        return fold ? page.ToLower(code) : code;
    }
    static std::size_t Width(unsigned code) noexcept { return code < 256 ? 1 : 2; }
};

// Direct search may compare this often without success before the linear one takes over.
bool IsTooMuch(std::size_t spent, std::size_t walked) noexcept {
    return spent > 1024 + 4 * walked;
}
struct Effort {
    std::size_t spent = 0;
    bool limited = true;
    bool Exceeds(std::size_t walked) const noexcept { return limited && IsTooMuch(spent, walked); }
};

// Linear in the worst case: at a difference the table tells how much of the pattern still
// matches. False when there is no memory for the table.
bool SearchWithTable(const Pattern& what, const char* text, const char* end,
                     const char*& found) noexcept {
    const auto bytes = static_cast<std::size_t>(what.end - what.begin);
    std::unique_ptr<std::uint16_t[]> codes(new (std::nothrow) std::uint16_t[bytes]);
    std::unique_ptr<std::size_t[]> border(new (std::nothrow) std::size_t[bytes + 1]);
    if (!codes || !border) return false;

    std::size_t count = 0;
    border[0] = 0;
    for (const char* p = what.begin; p < what.end; ++count) {
        const unsigned code = what.Code(p, what.end);
        codes[count] = static_cast<std::uint16_t>(code);
        p += Pattern::Width(code);
        std::size_t match = count > 0 ? border[count] : 0;
        while (match > 0 && codes[match] != code)
            match = border[match];
        border[count + 1] = count > 0 && codes[match] == code ? match + 1 : 0;
    }
    std::size_t match = 0;
    found = nullptr;
    for (const char* p = text; p < end;) {
        const unsigned code = what.Code(p, end);
        p += Pattern::Width(code);
        while (match > 0 && codes[match] != code)
            match = border[match];
        if (codes[match] == code) ++match;
        if (match < count) continue;
        found = p - bytes;  // a fold never changes a width
        break;
    }
    return true;
}

// A zero byte never joins with the lead byte before it.
bool IsWholeBefore(const CodePage& page, const char* known, const char* p) noexcept {
    return *p == 0 || IsBoundary(page, known, p);
}

// A lead byte that ends the pattern stands alone, so it only matches one that does, too.
bool EndsInLoneLead(const CodePage& page, std::string_view what) noexcept {
    const char* const last = &what.back();
    return page.IsLead(Byte(last)) && IsBoundary(page, what.data(), last);
}

// The bytes whose lower case is that of `byte`: two at most in every page but for oddities, which
// give false.
bool CasesOf(const unsigned char* lower, unsigned char byte, ByteChoice& cases) noexcept {
    int count = 0;
    for (unsigned other = 0; other < 256; ++other) {
        if (lower[other] != lower[byte]) continue;
        (count == 0 ? cases.one : cases.other) = static_cast<unsigned char>(other);
        if (++count > 2) return false;
    }
    if (count == 1) cases.other = cases.one;
    return true;
}

// Under a single-byte page: both ends of the pattern in both cases at once.
const char* SearchFoldedBytes(const Pattern& what, ByteChoice first, ByteChoice lastOf,
                              const char* text, const char* end) noexcept {
    const unsigned char* const lower = what.page.LowerBytes();
    const auto bytes = static_cast<std::size_t>(what.end - what.begin);
    const char* const last = end - bytes;
    Effort effort;
    for (const char* p = text;
         p <= last && (p = FindBytePair(p, last, first, bytes - 1, lastOf)) != nullptr; ++p) {
        std::size_t same = 1;
        while (same < bytes && lower[Byte(p + same)] == lower[Byte(what.begin + same)])
            ++same;
        if (same == bytes) return p;
        effort.spent += same;
        if (!effort.Exceeds(static_cast<std::size_t>(p - text))) continue;
        const char* found = nullptr;
        if (SearchWithTable(what, p, end, found)) return found;
        effort.limited = false;
    }
    return nullptr;
}

// Character by character, as double-byte pages need it and short texts are served best.
const char* SearchFoldedCharacters(const Pattern& what, const char* text,
                                   const char* end) noexcept {
    const unsigned first = what.Code(what.begin, what.end);
    const unsigned char* const lower = what.page.LowerBytes();
    const bool doubleByte = what.page.IsDoubleByte();
    Effort effort;
    for (const char* p = text; p < end;) {
        while (!doubleByte && p < end && lower[Byte(p)] != first)
            ++p;
        if (p == end) break;
        const unsigned code = what.Code(p, end);
        if (code == first) {
            const char* t = p;
            const char* w = what.begin;
            while (w < what.end && t < end) {
                const unsigned next = what.Code(w, what.end);
                if (next != what.Code(t, end)) break;
                w += Pattern::Width(next);
                t += Pattern::Width(next);
            }
            if (w == what.end) return p;
            effort.spent += static_cast<std::size_t>(w - what.begin);
            const char* found = nullptr;
            if (effort.Exceeds(static_cast<std::size_t>(p - text))) {
                if (SearchWithTable(what, p, end, found)) return found;
                effort.limited = false;
            }
        }
        p += Pattern::Width(code);
    }
    return nullptr;
}

const char* SearchFolded(const Pattern& what, const char* text, const char* end) noexcept {
    if (end - text < what.end - what.begin) return nullptr;
    constexpr std::ptrdiff_t kShort = 256;  // not worth the look at the page's letters
    ByteChoice first{}, last{};
    const unsigned char* const lower = what.page.LowerBytes();
    if (end - text < kShort || what.page.IsDoubleByte() ||
        !CasesOf(lower, Byte(what.begin), first) || !CasesOf(lower, Byte(what.end - 1), last))
        return SearchFoldedCharacters(what, text, end);
    return SearchFoldedBytes(what, first, last, text, end);
}

}  // namespace

inline const char* ExactSearch::Candidate(const char* p, const char* last) noexcept {
    const auto first = static_cast<unsigned char>(what_.front());
    const auto second = static_cast<unsigned char>(what_.back());
    const bool rare = tries_ * kRare <= static_cast<std::size_t>(p - text_);
    if (!rare && what_.size() > 1)
        return FindBytePair(p, last, ByteIs{first}, what_.size() - 1, ByteIs{second});
    ++tries_;
    if (!endsAtZero_)
        return static_cast<const char*>(
            std::memchr(p, first, static_cast<std::size_t>(last - p) + 1));
    const char* const hit = std::strchr(p, first);
    if (hit == nullptr || hit > last) return nullptr;
    if (p <= clean_ + 1) clean_ = hit;
    return hit;
}

inline const char* ExactSearch::Confirmed(const char* found) const noexcept {
    if (!endsAtZero_ || found == nullptr || found <= clean_) return found;
    return std::memchr(clean_, 0, static_cast<std::size_t>(found - clean_)) ? nullptr : found;
}

const char* ExactSearch::Next(const char* from) noexcept {
    const std::size_t bytes = what_.size();
    if (static_cast<std::size_t>(end_ - from) < bytes) return nullptr;
    const bool doubleByte = page_.IsDoubleByte();
    const bool loneLead = doubleByte && EndsInLoneLead(page_, what_);
    const char* const last = end_ - bytes;  // where the last match could begin
    const char* known = from;
    for (const char* p = from; p <= last && (p = Candidate(p, last)) != nullptr; ++p) {
        std::size_t same = 1;
        while (same < bytes && p[same] == what_[same])
            ++same;
        const bool boundary = !doubleByte || IsWholeBefore(page_, known, p);
        if (same == bytes && boundary && (!loneLead || p + bytes == end_ || p[bytes] == 0))
            return Confirmed(p);
        known = boundary ? p : p + 1;
        spent_ += same;
        if (!limited_ || !IsTooMuch(spent_, static_cast<std::size_t>(p - text_))) continue;
        const char* found = nullptr;
        if (SearchWithTable({page_, what_.data(), what_.data() + bytes, false}, known, end_, found))
            return Confirmed(found);
        limited_ = false;
    }
    return nullptr;
}

const char* Find(const char* text, unsigned code) noexcept {
    const CodePage& page = CodePage::Ansi();
    const unsigned plain = Normalize(page, code);
    const unsigned first = plain < 256 ? plain : plain >> 8;
    if (!page.IsDoubleByte() || plain == 0) return std::strchr(text, static_cast<int>(first));
    const char* known = text;
    for (const char* p = text; (p = std::strchr(p, static_cast<int>(first))) != nullptr; ++p) {
        const bool boundary = IsBoundary(page, known, p);
        if (boundary && UnsignedCodeAt(page, p) == plain) return p;
        known = boundary ? p : p + 1;
    }
    return nullptr;
}

const char* ReverseFind(const char* text, unsigned code) noexcept {
    const CodePage& page = CodePage::Ansi();
    const unsigned plain = Normalize(page, code);
    if (!page.IsDoubleByte() || plain == 0) return std::strrchr(text, static_cast<int>(plain));
    const char* last = nullptr;
    for (const char* p = text; (p = Find(p, plain)) != nullptr; p = Next(page, p))
        last = p;
    return last;
}

const char* FindText(const char* text, const char* what) noexcept {
    return FindText(text, std::strlen(text), what, std::strlen(what));
}

const char* FindText(const char* text, std::size_t bytes, const char* what,
                     std::size_t whatBytes) noexcept {
    if (whatBytes == 0) return text;
    return ExactSearch(CodePage::Ansi(), {what, whatBytes}, text, text + bytes, Zero::IsText)
        .Next(text);
}

const char* FindTextNoCase(const char* text, const char* what) noexcept {
    return FindTextNoCase(text, std::strlen(text), what, std::strlen(what));
}

const char* FindTextNoCase(const char* text, std::size_t bytes, const char* what,
                           std::size_t whatBytes) noexcept {
    if (whatBytes == 0) return text;
    return SearchFolded({CodePage::Ansi(), what, what + whatBytes, true}, text, text + bytes);
}

}  // namespace brcore8::mbs
