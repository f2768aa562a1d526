#include "strings/code_page.h"

#include <brcore8/core/throw.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

#include "platform/code_pages.h"
#include "strings/ascii.h"

namespace brcore8 {
namespace {

constexpr unsigned kFallbackPage = 1252;

// Pages loaded so far, newest first. Only ever added to.
constinit std::atomic<const CodePage*> g_pages{nullptr};

unsigned ClassesOf(unsigned type) noexcept {
    unsigned classes = 0;
    if (type & kTypeAlpha) classes |= CodePage::Alpha;
    if (type & kTypeDigit) classes |= CodePage::Digit;
    if (type & kTypeLower) classes |= CodePage::Lower;
    if (type & kTypeUpper) classes |= CodePage::Upper;
    if (type & kTypeSpace) classes |= CodePage::Space;
    if (type & kTypePunct) classes |= CodePage::Punct;
    if (type & kTypeControl) classes |= CodePage::Control;
    if (type & kTypeBlank) classes |= CodePage::Blank;
    if (type & kTypeHex) classes |= CodePage::Hex;
    return classes;
}

bool IsHighSurrogate(unsigned unit) noexcept {
    return (unit & 0xFC00) == 0xD800;
}
bool IsLowSurrogate(unsigned unit) noexcept {
    return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

constinit std::atomic<const CodePage*> CodePage::ansi_{nullptr};
constinit std::atomic<const CodePage*> CodePage::oem_{nullptr};

// Fills a page from the platform's tables.
struct CodePage::Builder {
    explicit Builder(CodePage& target, CodePageTables& from) : page(target), tables(from) {}

    void Build(unsigned number) {
        page.number_ = number;
        page.doubleByte_ = !tables.pairs.empty();
        std::copy(tables.lead.begin(), tables.lead.end(), page.lead_);
        std::copy(tables.single.begin(), tables.single.end(), page.wideBytes_);
        TakeFacts();
        page.codes_ = std::move(tables.codes);
        page.plainAscii_ = true;
        for (std::uint16_t code = 0; code < 128; ++code)
            if (page.wideBytes_[code] != code || page.codes_[code] != code)
                page.plainAscii_ = false;
    }

    // Of all characters at once: the platform may have to look through those of all pages.
    void TakeFacts() {
        std::vector<std::uint16_t> units(tables.single.begin(), tables.single.end());
        for (std::size_t lead = 0; lead < 256; ++lead) {
            if (!page.lead_[lead]) continue;
            const auto row = tables.pairs.begin() + static_cast<std::ptrdiff_t>(lead * 256);
            units.insert(units.end(), row, row + 256);
        }
        const CharacterFacts facts = LoadCharacterFacts(units);
        TakeBytes(facts);
        std::size_t first = 256;
        for (unsigned lead = 0; lead < 256; ++lead) {
            if (!page.lead_[lead]) continue;
            TakePairs(lead, facts, first);
            first += 256;
        }
    }

    void TakeBytes(const CharacterFacts& facts) {
        for (unsigned byte = 0; byte < 256; ++byte) {
            // A lead byte alone is no character.
            const bool lead = page.lead_[byte];
            const unsigned lower = lead ? byte : Fold(byte, facts.lower[byte]);
            const unsigned upper = lead ? byte : Fold(byte, facts.upper[byte]);
            page.lowerBytes_[byte] = static_cast<unsigned char>(lower);
            page.upperBytes_[byte] = static_cast<unsigned char>(upper);
            page.classBytes_[byte] =
                static_cast<std::uint16_t>(lead ? 0 : ClassesOf(facts.types[byte]));
        }
    }

    // `first`: where the facts about the lead byte's characters begin.
    void TakePairs(unsigned lead, const CharacterFacts& facts, std::size_t first) {
        Pairs* pairs = page.pairs_[lead] = new Pairs;
        const std::uint16_t* wide = tables.pairs.data() + lead * 256;
        std::copy(wide, wide + 256, pairs->wide);
        for (unsigned trail = 0; trail < 256; ++trail) {
            const unsigned code = lead * 256 + trail;
            const std::size_t at = first + trail;
            pairs->lower[trail] = static_cast<std::uint16_t>(Fold(code, facts.lower[at]));
            pairs->upper[trail] = static_cast<std::uint16_t>(Fold(code, facts.upper[at]));
            pairs->classes[trail] = static_cast<std::uint16_t>(ClassesOf(facts.types[at]));
        }
    }

    std::uint16_t UnitOf(unsigned code) const {
        return code < 256 ? tables.single[code] : tables.pairs[code];
    }

    // The code of the other case when the page has it exactly and in as many bytes, else `code`.
    unsigned Fold(unsigned code, std::uint16_t unit) const {
        const unsigned folded = tables.codes[unit];
        const bool sameWidth = (folded < 256) == (code < 256);
        return unit != UnitOf(code) && sameWidth && UnitOf(folded) == unit ? folded : code;
    }

    CodePage& page;
    CodePageTables& tables;
};

CodePage::~CodePage() {
    for (Pairs* pairs : pairs_)
        delete pairs;
}

const CodePage* CodePage::Find(unsigned number) try {
    const auto findIn = [number](const CodePage* page) {
        while (page && page->number_ != number)
            page = page->next_;
        return page;
    };
    const CodePage* head = g_pages.load(std::memory_order_acquire);
    if (const CodePage* page = findIn(head)) return page;

    CodePageTables tables;
    if (!LoadCodePageTables(number, tables)) return nullptr;
    struct Destroy {
        void operator()(CodePage* page) const { delete page; }
    };
    std::unique_ptr<CodePage, Destroy> page(new CodePage);
    Builder(*page, tables).Build(number);
    // Two threads may build the same page at once; the first one's stays.
    do {
        if (const CodePage* other = findIn(head)) return other;
        page->next_ = head;
    } while (!g_pages.compare_exchange_weak(head, page.get(), std::memory_order_release,
                                            std::memory_order_acquire));
    return page.release();
} catch (const std::bad_alloc&) {
    ThrowOutOfMemory();
}

const CodePage& CodePage::LoadDefault(std::atomic<const CodePage*>& slot, bool oem) noexcept {
    const CodePage* page = Find(oem ? DefaultOemCodePage() : DefaultAnsiCodePage());
    if (!page) page = Find(kFallbackPage);
    if (!page) std::abort();
    // Another thread may have chosen a page meanwhile; its choice stands.
    const CodePage* expected = nullptr;
    return slot.compare_exchange_strong(expected, page) ? *page : *expected;
}

// Whether the page has no character for a code. Two codes may share a character; but a pair that
// gives the unit of an impossible pair, and is not that unit's own code, stands for nothing.
bool CodePage::IsUndefined(unsigned code) const noexcept {
    const std::uint16_t unit = WideOf(code);
    if (codes_[unit] == code) return false;
    constexpr unsigned ImpossibleTrail = 1;
    return code < 256 || unit == WideOf((code & 0xFF00) | ImpossibleTrail);
}

// Between two looks for a run of ASCII: as many characters one by one.
constexpr std::size_t kSingly = 8;

std::size_t CodePage::ToWide(const char* text, std::size_t bytes, std::uint16_t* out,
                             std::size_t capacity, Loss* loss) const noexcept {
    if (!out) capacity = 0;
    std::size_t units = 0;
    for (std::size_t i = 0; i < bytes;) {
        if (plainAscii_) {
            const std::size_t run =
                units < capacity
                    ? ConvertAscii(text + i, std::min(bytes - i, capacity - units), out + units)
                    : CountAscii(text + i, bytes - i);
            i += run;
            units += run;
        }
        for (const std::size_t stop = std::min(bytes, i + kSingly); i < stop; ++i, ++units) {
            const std::size_t start = i;
            unsigned code = static_cast<unsigned char>(text[i]);
            if (lead_[code] && i + 1 < bytes && text[i + 1] != 0)
                code = code * 256 + static_cast<unsigned char>(text[++i]);
            if (units < capacity) out[units] = WideOf(code);
            if (loss && IsUndefined(code) && loss->count++ == 0) loss->first = start;
        }
    }
    return units;
}

std::size_t CodePage::FromWide(const std::uint16_t* text, std::size_t units, char* out,
                               std::size_t capacity, Loss* loss) const noexcept {
    if (!out) capacity = 0;
    std::size_t bytes = 0;
    bool fits = out != nullptr;
    for (std::size_t i = 0; i < units;) {
        if (plainAscii_) {
            const std::size_t run =
                fits ? ConvertAscii(text + i, std::min(units - i, capacity - bytes), out + bytes)
                     : CountAscii(text + i, units - i);
            i += run;
            bytes += run;
        }
        for (const std::size_t stop = std::min(units, i + kSingly); i < stop; ++i) {
            const unsigned code = codes_[text[i]];
            const std::size_t width = code < 256 ? 1 : 2;
            fits = fits && bytes + width <= capacity;
            if (fits) {
                if (width == 2) out[bytes] = static_cast<char>(code >> 8);
                out[bytes + width - 1] = static_cast<char>(code & 0xFF);
            }
            bytes += width;
            if (!loss || WideOf(code) == text[i]) continue;
            const bool second = i > 0 && IsLowSurrogate(text[i]) && IsHighSurrogate(text[i - 1]);
            if (second) continue;
            if (loss->count++ == 0) loss->first = i;
        }
    }
    return bytes;
}

}  // namespace brcore8
