#include "platform/code_pages.h"

#include "platform/platform.h"

namespace brcore8 {
namespace {

constexpr std::size_t kUnits = 0x10000;
static_assert(sizeof(WCHAR) == sizeof(std::uint16_t));

const WCHAR* Wide(const std::uint16_t* units) {
    return reinterpret_cast<const WCHAR*>(units);
}
WCHAR* Wide(std::uint16_t* units) {
    return reinterpret_cast<WCHAR*>(units);
}

// The unit of one or two bytes, whatever the platform makes of them.
std::uint16_t UnitOf(unsigned page, const char* bytes, int count) {
    WCHAR wide[2] = {};
    MultiByteToWideChar(page, 0, bytes, count, wide, 2);
    return static_cast<std::uint16_t>(wide[0]);
}

// All units go through one call: no character of these pages is a surrogate, the platform
// converts each unit by itself, and lead bytes tell where each answer ends.
bool AskCodes(unsigned page, CodePageTables& tables) {
    std::vector<std::uint16_t> units(kUnits);
    for (std::size_t i = 0; i < kUnits; ++i)
        units[i] = static_cast<std::uint16_t>(i);
    std::vector<char> bytes(2 * kUnits);
    const int count =
        WideCharToMultiByte(page, 0, Wide(units.data()), static_cast<int>(kUnits), bytes.data(),
                            static_cast<int>(bytes.size()), nullptr, nullptr);
    UnitCodes codes = UnitCodes::Blank();
    const char* p = bytes.data();
    const char* const end = p + count;
    std::size_t unit = 0;
    for (; unit < kUnits && p < end; ++unit) {
        const auto byte = static_cast<unsigned char>(*p++);
        if (!tables.lead[byte]) {
            codes.Set(unit, byte);
        } else if (p < end) {
            codes.Set(unit, byte * 256u + static_cast<unsigned char>(*p++));
        }
    }
    if (unit != kUnits || p != end) return false;
    tables.codes = std::move(codes);
    return true;
}

}  // namespace

bool LoadCodePageTables(unsigned page, CodePageTables& tables) {
    // The numbers below the first real page stand for others that may change.
    constexpr unsigned kFirstPage = 37;
    CPINFO info;
    if (page < kFirstPage || page == CP_SYMBOL || !GetCPInfo(page, &info) || info.MaxCharSize > 2)
        return false;
    CodePageTables result;
    for (int byte = 0; byte < 256; ++byte) {
        const auto at = static_cast<std::size_t>(byte);
        const char bytes[1] = {static_cast<char>(byte)};
        result.lead[at] = IsDBCSLeadByteEx(page, static_cast<BYTE>(byte)) != 0;
        result.single[at] = UnitOf(page, bytes, 1);
        // All text of this library is ASCII in its lower half, and no lead byte is there.
        if (byte < 0x80 && (result.lead[at] || result.single[at] != byte)) return false;
        if (!result.lead[at]) continue;
        if (result.pairs.empty()) result.pairs.resize(kUnits);
        // A lead byte never joins with a zero byte, so that entry only keeps the row regular.
        result.pairs[at * 256] = result.single[at];
        for (int trail = 1; trail < 256; ++trail) {
            const char pair[2] = {static_cast<char>(byte), static_cast<char>(trail)};
            result.pairs[at * 256 + static_cast<std::size_t>(trail)] = UnitOf(page, pair, 2);
        }
    }
    if (!AskCodes(page, result)) return false;
    tables = std::move(result);
    return true;
}

CharacterFacts LoadCharacterFacts(std::span<const std::uint16_t> units) {
    const int count = static_cast<int>(units.size());
    CharacterFacts facts{std::vector<std::uint16_t>(units.begin(), units.end()),
                         std::vector<std::uint16_t>(units.begin(), units.end()),
                         std::vector<std::uint16_t>(units.size())};
    if (count == 0) return facts;
    LCMapStringW(LOCALE_INVARIANT, LCMAP_LOWERCASE, Wide(units.data()), count,
                 Wide(facts.lower.data()), count);
    LCMapStringW(LOCALE_INVARIANT, LCMAP_UPPERCASE, Wide(units.data()), count,
                 Wide(facts.upper.data()), count);
    GetStringTypeW(CT_CTYPE1, Wide(units.data()), count, facts.types.data());
    constexpr unsigned kKnown = 0x1FF;
    for (std::uint16_t& type : facts.types)
        type = static_cast<std::uint16_t>(type & kKnown);
    return facts;
}

unsigned DefaultAnsiCodePage() noexcept {
    return GetACP();
}
unsigned DefaultOemCodePage() noexcept {
    return GetOEMCP();
}

void SetRuntimeCodePage(unsigned page) noexcept {
    // By name at run time: this library's own function of that name hides the import.
    using Function = int(__cdecl*)(int);
    const HMODULE runtime = GetModuleHandleA("msvcrt.dll");
    if (!runtime) return;
    const FARPROC address = GetProcAddress(runtime, "_setmbcp");
    if (address)
        reinterpret_cast<Function>(reinterpret_cast<void*>(address))(static_cast<int>(page));
}

bool HasCollation() noexcept {
    return true;
}

int CollateUnits(std::span<const std::uint16_t> left, std::span<const std::uint16_t> right,
                 bool ignoreCase) {
    const DWORD flags = SORT_STRINGSORT | (ignoreCase ? NORM_IGNORECASE : 0);
    return CompareStringW(LOCALE_USER_DEFAULT, flags, Wide(left.data()),
                          static_cast<int>(left.size()), Wide(right.data()),
                          static_cast<int>(right.size())) -
           CSTR_EQUAL;
}

}  // namespace brcore8
