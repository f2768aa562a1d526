#include <brcore8/core/throw.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <span>
#include <vector>

#include "platform/code_pages.h"
#include "strings/mbs.h"

namespace brcore8::mbs {
namespace {

// The units of a text, in lower case if wanted; in place unless the text is long.
class Units {
public:
    Units(const CodePage& page, const char* text, std::size_t bytes, bool fold) {
        std::uint16_t* out = local_;
        if (bytes > std::size(local_)) {
            long_.resize(bytes);
            out = long_.data();
        }
        begin_ = out;
        for (const char* const end = text + bytes; text < end;) {
            const unsigned code = UnsignedCodeAt(page, text, end);
            *out++ = page.WideOf(fold ? page.ToLower(code) : code);
            text += code < 256 ? 1 : 2;
        }
        count_ = static_cast<std::size_t>(out - begin_);
    }
    Units(const Units&) = delete;
    Units& operator=(const Units&) = delete;
    operator std::span<const std::uint16_t>() const noexcept { return {begin_, count_}; }

private:
    std::uint16_t local_[256];
    std::vector<std::uint16_t> long_;
    const std::uint16_t* begin_;
    std::size_t count_;
};

std::size_t Length(const char* text, std::size_t limit) noexcept {
    if (limit == SIZE_MAX) return std::strlen(text);
    const void* end = std::memchr(text, 0, limit);
    return end ? static_cast<std::size_t>(static_cast<const char*>(end) - text) : limit;
}

int Order(const char* left, const char* right, std::size_t n, bool fold) try {
    const CodePage& page = CodePage::Ansi();
    return CollateUnits(Units(page, left, Length(left, n), fold),
                        Units(page, right, Length(right, n), fold), fold);
} catch (const std::bad_alloc&) {
    ThrowOutOfMemory();
}

}  // namespace

int Collate(const char* left, const char* right) {
    return HasCollation() ? Order(left, right, SIZE_MAX, false) : Compare(left, right);
}

int CollateNoCase(const char* left, const char* right) {
    return HasCollation() ? Order(left, right, SIZE_MAX, true) : CompareNoCase(left, right);
}

int CollateBytes(const char* left, const char* right, std::size_t n) {
    return HasCollation() ? Order(left, right, n, false) : CompareBytes(left, right, n);
}

int CollateNoCaseBytes(const char* left, const char* right, std::size_t n) {
    return HasCollation() ? Order(left, right, n, true) : CompareNoCaseBytes(left, right, n);
}

}  // namespace brcore8::mbs
