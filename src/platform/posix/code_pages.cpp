#include "platform/code_pages.h"

#include <locale.h>
#include <wchar.h>

#include <cstdlib>
#include <cstring>

#include "platform/posix/code_page_decoder.h"

namespace brcore8 {
namespace {

// The user's locale for sorting, as the C library takes it from the environment. Null in the C
// locale in any encoding, and where the wanted locale is not installed. Kept for good.
locale_t UserCollation() noexcept {
    static const locale_t locale = []() -> locale_t {
        const char* name = nullptr;
        for (const char* variable : {"LC_ALL", "LC_COLLATE", "LANG"})
            if (!name || !*name) name = std::getenv(variable);
        if (!name || !*name || std::strcmp(name, "POSIX") == 0) return nullptr;
        if (name[0] == 'C' && (name[1] == 0 || name[1] == '.')) return nullptr;
        return newlocale(LC_COLLATE_MASK, "", nullptr);
    }();
    return locale;
}

// Zero-terminated wide characters of the units, in place unless the text is long.
class WideText {
public:
    explicit WideText(std::span<const std::uint16_t> units) {
        wchar_t* out = local_;
        if (units.size() >= std::size(local_)) {
            long_.resize(units.size() + 1);
            out = long_.data();
        }
        text_ = out;
        for (const std::uint16_t unit : units)
            *out++ = static_cast<wchar_t>(unit);
        *out = 0;
    }
    WideText(const WideText&) = delete;
    WideText& operator=(const WideText&) = delete;
    const wchar_t* Text() const noexcept { return text_; }

private:
    wchar_t local_[128];
    std::vector<wchar_t> long_;
    const wchar_t* text_;
};

}  // namespace

bool LoadCodePageTables(unsigned page, CodePageTables& tables) {
    return DecodeCodePage(page, tables);
}

CharacterFacts LoadCharacterFacts(std::span<const std::uint16_t> units) {
    return DecodeCharacterFacts(units);
}

unsigned DefaultAnsiCodePage() noexcept {
    return 1252;
}
unsigned DefaultOemCodePage() noexcept {
    return 437;
}

void SetRuntimeCodePage(unsigned) noexcept {}

bool HasCollation() noexcept {
    return UserCollation() != nullptr;
}

// The library folds case before it asks, so `ignoreCase` has nothing left to change here.
int CollateUnits(std::span<const std::uint16_t> left, std::span<const std::uint16_t> right, bool) {
    const int order = wcscoll_l(WideText(left).Text(), WideText(right).Text(), UserCollation());
    return order < 0 ? -1 : order > 0 ? 1 : 0;
}

}  // namespace brcore8
