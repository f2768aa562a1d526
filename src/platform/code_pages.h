// What the library asks the platform about code pages and characters: whole tables at once, so
// that no loop over text ever calls the platform. windows/code_pages.cpp asks the system,
// posix/code_pages.cpp expands tables recorded from it; a test holds the two equal.
// Everything here may be called from any thread.
#ifndef BRCORE8_PLATFORM_CODE_PAGES_H
#define BRCORE8_PLATFORM_CODE_PAGES_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <new>
#include <span>
#include <vector>

namespace brcore8 {

// The code of each of the 65,536 units: a byte, or lead * 256 + trail. Memory is touched only where
// a code was set that is not '?', the one that most units have: every program has such a table.
class UnitCodes {
public:
    UnitCodes() = default;  // no table yet: nothing can be asked
    // '?' for every unit. Throws std::bad_alloc.
    static UnitCodes Blank() {
        UnitCodes codes;
        codes.table_.reset(static_cast<std::uint16_t*>(std::calloc(kUnits, sizeof(std::uint16_t))));
        if (!codes.table_) throw std::bad_alloc();
        return codes;
    }
    std::uint16_t operator[](std::size_t unit) const noexcept {
        return static_cast<std::uint16_t>(table_[unit] ^ kUsual);
    }
    void Set(std::size_t unit, unsigned code) noexcept {
        table_[unit] = static_cast<std::uint16_t>(code ^ kUsual);
    }

private:
    static constexpr std::size_t kUnits = 0x10000;
    static constexpr std::uint16_t kUsual = '?';
    struct Release {
        void operator()(std::uint16_t* table) const noexcept { std::free(table); }
    };
    std::unique_ptr<std::uint16_t[], Release> table_;
};

struct CodePageTables {
    std::array<bool, 256> lead{};
    std::array<std::uint16_t, 256> single{};  // UTF-16 unit of a byte that stands alone
    std::vector<std::uint16_t> pairs;  // unit of lead * 256 + trail; empty on a single-byte page
    UnitCodes codes;
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
