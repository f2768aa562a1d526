#include "strings/mbs.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace brcore8::mbs {
namespace {

int Sign(int order) noexcept {
    return order < 0 ? -1 : order > 0;
}

// Eight bytes without a high bit hold eight characters: no page has a lead byte below 0x80.
bool IsPlain8(const char* p) noexcept {
    std::uint64_t word;
    std::memcpy(&word, p, sizeof word);
    return (word & 0x8080808080808080u) == 0;
}

// Both texts by characters, to their ends or n bytes, whichever comes first. As long as they are
// equal their characters are equally wide, so one count serves both.
template <class Fold>
int CompareCharacters(const CodePage& page, const char* left, const char* right, std::size_t n,
                      Fold fold) noexcept {
    const auto code = [&page](const char* p, std::size_t rest) {
        return page.IsLead(Byte(p)) && rest > 1 && p[1] != 0 ? Byte(p) * 256u + Byte(p + 1)
                                                             : unsigned{Byte(p)};
    };
    while (n > 0) {
        const unsigned l = fold(code(left, n));
        const unsigned r = fold(code(right, n));
        if (l != r) return l < r ? -1 : 1;
        if (l == 0) return 0;
        const std::size_t width = l < 256 ? 1 : 2;
        left += width;
        right += width;
        n -= width;
    }
    return 0;
}

std::size_t Length(const char* text, std::size_t limit) noexcept {
    const void* end = std::memchr(text, 0, limit);
    return end ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : limit;
}

// Up to n bytes: how many are equal before a difference or the first terminator. Looks ahead in
// growing steps, so that texts that differ early cost little.
std::size_t EqualBytes(const char* left, const char* right, std::size_t n) noexcept {
    std::size_t i = 0;
    for (std::size_t step = 32; i < n; step = std::min<std::size_t>(2 * step, 4096)) {
        const std::size_t want = std::min(step, n - i);
        const std::size_t have = std::min(Length(left + i, want), Length(right + i, want));
        const std::size_t stop = i + have;
        for (std::uint64_t l, r; stop - i >= sizeof l; i += sizeof l) {
            std::memcpy(&l, left + i, sizeof l);
            std::memcpy(&r, right + i, sizeof r);
            if (l != r) break;
        }
        while (i < stop && left[i] == right[i])
            ++i;
        if (i < stop || have < want) break;
    }
    return i;
}

// Only the character in which the first differing byte lies decides.
int CompareExact(const CodePage& page, const char* left, const char* right,
                 std::size_t n) noexcept {
    std::size_t i = EqualBytes(left, right, n);
    if (!IsBoundary(page, left, left + i)) --i;
    return CompareCharacters(page, left + i, right + i, n - i, [](unsigned code) { return code; });
}

int CompareFolded(const unsigned char* fold, const char* left, const char* right,
                  std::size_t n) noexcept {
    for (; n > 0; --n, ++left, ++right) {
        const unsigned char l = fold[Byte(left)];
        const unsigned char r = fold[Byte(right)];
        if (l != r) return l < r ? -1 : 1;
        if (l == 0) return 0;
    }
    return 0;
}

// Both texts by characters, each to its own end.
template <class Fold>
int CompareViews(const CodePage& page, std::string_view left, std::string_view right,
                 Fold fold) noexcept {
    const char* l = left.data();
    const char* r = right.data();
    const char* const leftEnd = l + left.size();
    const char* const rightEnd = r + right.size();
    while (l < leftEnd && r < rightEnd) {
        const unsigned leftCode = fold(UnsignedCodeAt(page, l, leftEnd));
        const unsigned rightCode = fold(UnsignedCodeAt(page, r, rightEnd));
        if (leftCode != rightCode) return leftCode < rightCode ? -1 : 1;
        l += CharBytes(page, l, leftEnd);
        r += CharBytes(page, r, rightEnd);
    }
    return (l < leftEnd) - (r < rightEnd);
}

}  // namespace

std::size_t CountBytes(const CodePage& page, const char* text, std::size_t bytes) noexcept {
    std::size_t count = 0;
    std::size_t i = 0;
    while (i + 1 < bytes) {
        if (bytes - i >= 8 && IsPlain8(text + i)) {
            i += 8;
            count += 8;
            continue;
        }
        // Without a branch: in mixed text it would be a guess.
        i += 1u + (unsigned{page.IsLead(Byte(text + i))} & unsigned{text[i + 1] != 0});
        ++count;
    }
    return count + (i < bytes ? 1 : 0);
}

const char* Advance(const CodePage& page, const char* p, const char* end, int n) noexcept {
    if (n <= 0) return p;
    if (!page.IsDoubleByte()) return end - p < n ? end : p + n;
    while (n > 0 && p < end) {
        if (n >= 8 && end - p >= 8 && IsPlain8(p)) {
            p += 8;
            n -= 8;
            continue;
        }
        p += CharBytes(page, p, end);
        --n;
    }
    return p;
}

int Compare(const char* left, const char* right) noexcept {
    const CodePage& page = CodePage::Ansi();
    if (!page.IsDoubleByte()) return Sign(std::strcmp(left, right));
    return CompareExact(page, left, right, SIZE_MAX);
}

int CompareBytes(const char* left, const char* right, std::size_t n) noexcept {
    const CodePage& page = CodePage::Ansi();
    if (!page.IsDoubleByte()) return Sign(std::strncmp(left, right, n));
    return CompareExact(page, left, right, n);
}

int CompareNoCase(const char* left, const char* right) noexcept {
    return CompareNoCaseBytes(left, right, SIZE_MAX);
}

int CompareWhole(std::string_view left, std::string_view right) noexcept {
    const CodePage& page = CodePage::Ansi();
    if (!page.IsDoubleByte()) return Sign(left.compare(right));
    const std::size_t limit = std::min(left.size(), right.size());
    std::size_t i = static_cast<std::size_t>(
        std::mismatch(left.begin(), left.begin() + limit, right.begin()).first - left.begin());
    if (!IsBoundary(page, left.data(), left.data() + i)) --i;
    return CompareViews(page, left.substr(i), right.substr(i), [](unsigned code) { return code; });
}

int CompareWholeNoCase(std::string_view left, std::string_view right) noexcept {
    const CodePage& page = CodePage::Ansi();
    if (page.IsDoubleByte())
        return CompareViews(page, left, right,
                            [&page](unsigned code) { return page.ToLower(code); });
    const std::size_t limit = std::min(left.size(), right.size());
    const unsigned char* const fold = page.LowerBytes();
    for (std::size_t i = 0; i < limit; ++i) {
        const int order = fold[Byte(&left[i])] - fold[Byte(&right[i])];
        if (order != 0) return Sign(order);
    }
    return (left.size() > limit) - (right.size() > limit);
}

int CompareNoCaseBytes(const char* left, const char* right, std::size_t n) noexcept {
    const CodePage& page = CodePage::Ansi();
    if (!page.IsDoubleByte()) return CompareFolded(page.LowerBytes(), left, right, n);
    return CompareCharacters(page, left, right, n,
                             [&page](unsigned code) { return page.ToLower(code); });
}

}  // namespace brcore8::mbs
