// What the library asks the platform about code pages and characters: whole tables at once, so
// that no loop over text ever calls the platform. windows/code_pages.cpp asks the system,
// posix/code_pages.cpp expands tables recorded from it; a test holds the two equal.
// Everything here may be called from any thread.
#ifndef BRCORE8_PLATFORM_CODE_PAGES_H
#define BRCORE8_PLATFORM_CODE_PAGES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace brcore8 {

struct CodePageTables {
    std::array<bool, 256> lead{};
    std::array<std::uint16_t, 256> single{};  // UTF-16 unit of a byte that stands alone
    std::vector<std::uint16_t> pairs;  // unit of lead * 256 + trail; empty on a single-byte page
    std::vector<std::uint16_t>
        codes;  // for each of the 65,536 units its byte, or lead * 256 + trail
};

// False, and nothing changes, when this platform has no such single- or double-byte page.
bool LoadCodePageTables(unsigned page, CodePageTables& tables);

// Character type bits as the platform counts them (CT_CTYPE1).
enum CharacterType : unsigned {
    kTypeUpper = 0x1,
    kTypeLower = 0x2,
    kTypeDigit = 0x4,
    kTypeSpace = 0x8,
    kTypePunct = 0x10,
    kTypeControl = 0x20,
    kTypeBlank = 0x40,
    kTypeHex = 0x80,
    kTypeAlpha = 0x100
};

struct CharacterFacts {
    std::vector<std::uint16_t> lower, upper, types;  // one a unit asked for
};

// Case mappings without regard to any language, and types, of the given UTF-16 units.
CharacterFacts LoadCharacterFacts(std::span<const std::uint16_t> units);

unsigned DefaultAnsiCodePage() noexcept;  // GetACP; 1252 where the system has no such notion
unsigned DefaultOemCodePage() noexcept;   // GetOEMCP; 437 likewise

// Hands the page to the C run-time, where that keeps a code page of its own.
void SetRuntimeCodePage(unsigned page) noexcept;

// Whether texts sort by the user's locale; otherwise they sort by their bytes.
bool HasCollation() noexcept;

// Order of two texts without embedded zeros in the user's locale: negative, 0 or positive.
int CollateUnits(std::span<const std::uint16_t> left, std::span<const std::uint16_t> right,
                 bool ignoreCase);

}  // namespace brcore8

#endif
