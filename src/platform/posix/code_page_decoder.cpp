#include "platform/posix/code_page_decoder.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace brcore8 {
namespace {

constexpr std::size_t kUnits = 0x10000;

constexpr std::array<unsigned char, 128> kDigitValues = [] {
    std::array<unsigned char, 128> values{};
    unsigned char next = 0;
    for (char c = '0'; c <= '9'; ++c)
        values[static_cast<std::size_t>(c)] = next++;
    for (char c = 'A'; c <= 'Z'; ++c)
        values[static_cast<std::size_t>(c)] = next++;
    for (char c = 'a'; c <= 'z'; ++c)
        values[static_cast<std::size_t>(c)] = next++;
    values['_'] = next++;
    values['~'] = next++;
    return values;
}();

class SequenceReader {
public:
    explicit SequenceReader(const char* digits) : digits_(digits) {}

    // Calls store(index, value) for the next `count` values, but not for repetitions of `usual`.
    template <class Store>
    void Read(std::size_t count, Store store, int usual = -1) {
        for (std::size_t i = 0; i < count;) {
            if (repeat_ == 0) {
                const unsigned number = Number();
                if (number & 1) {
                    repeat_ = number >> 1;
                } else {
                    const unsigned zigzag = number >> 1;
                    step_ = static_cast<std::uint16_t>(zigzag & 1 ? ~(zigzag >> 1) : zigzag >> 1);
                    repeat_ = 1;
                }
            }
            const std::size_t run = std::min<std::size_t>(repeat_, count - i);
            repeat_ -= static_cast<unsigned>(run);
            if (step_ == 0 && last_ == usual) {
                i += run;
                continue;
            }
            for (std::size_t end = i + run; i < end; ++i) {
                last_ = static_cast<std::uint16_t>(last_ + step_);
                store(i, last_);
            }
        }
    }

private:
    unsigned Number() {
        unsigned number = 0;
        for (unsigned shift = 0;; shift += 5) {
            const unsigned digit = kDigitValues[static_cast<unsigned char>(*digits_++)];
            number |= (digit & 0x1F) << shift;
            if (digit < 0x20) return number;
        }
    }

    const char* digits_;
    unsigned repeat_ = 0;
    std::uint16_t last_ = 0;
    std::uint16_t step_ = 0;
};

// A table of all units whose usual value is 0, so that the larger part of its memory is never
// touched. Never freed: a page may be asked for after static objects are gone.
std::uint16_t* SparseTable() {
    void* table = std::calloc(kUnits, sizeof(std::uint16_t));
    if (!table) throw std::bad_alloc();
    return static_cast<std::uint16_t*>(table);
}

// What is recorded of the first `count` units, in tables of zeros.
struct CharacterTables {
    std::uint16_t* lower;  // minus the unit
    std::uint16_t* upper;  // minus the unit
    std::uint16_t* types;  // with the bit of letters, which most are, inverted

    void Expand(std::size_t count) const {
        ExpandOne(kCharacterData.lower, lower, 0, count);
        ExpandOne(kCharacterData.upper, upper, 0, count);
        ExpandOne(kCharacterData.types, types, kTypeAlpha, count);
    }
    CharacterFacts FactsOf(std::span<const std::uint16_t> units) const {
        CharacterFacts facts;
        for (auto* each : {&facts.lower, &facts.upper, &facts.types})
            each->resize(units.size());
        for (std::size_t i = 0; i < units.size(); ++i) {
            const unsigned unit = units[i];
            facts.lower[i] = static_cast<std::uint16_t>(unit + lower[unit]);
            facts.upper[i] = static_cast<std::uint16_t>(unit + upper[unit]);
            facts.types[i] = static_cast<std::uint16_t>(types[unit] ^ kTypeAlpha);
        }
        return facts;
    }

private:
    static void ExpandOne(const char* digits, std::uint16_t* table, unsigned usual,
                          std::size_t count) {
        const auto store = [=](std::size_t i, unsigned value) {
            table[i] = static_cast<std::uint16_t>(value ^ usual);
        };
        SequenceReader(digits).Read(count, store, static_cast<int>(usual));
    }
};

}  // namespace

void DeriveCodes(CodePageTables& tables) {
    constexpr std::uint16_t kNone = '?';  // also its own code, on every page
    std::vector<std::uint16_t> codes(kUnits, kNone);
    const auto take = [&codes](std::uint16_t unit, std::size_t code) {
        if (codes[unit] == kNone && unit != kNone) codes[unit] = static_cast<std::uint16_t>(code);
    };
    for (std::size_t byte = 0; byte < 256; ++byte)
        if (!tables.lead[byte]) take(tables.single[byte], byte);
    for (std::size_t lead = 0; lead < 256 && !tables.pairs.empty(); ++lead)
        for (std::size_t code = lead * 256 + 1; tables.lead[lead] && code < lead * 256 + 256;
             ++code)
            take(tables.pairs[code], code);
    tables.codes = std::move(codes);
}

bool DecodeCodePage(unsigned page, CodePageTables& tables) {
    const CodePageData* end = kCodePageData + kCodePageDataCount;
    const CodePageData* data =
        std::find_if(kCodePageData, end, [page](const auto& each) { return each.page == page; });
    if (data == end) return false;

    CodePageTables result;
    SequenceReader(data->leads).Read(256, [&](std::size_t i, unsigned v) {
        result.lead[i] = v != 0;
    });
    SequenceReader wide(data->wide);
    wide.Read(256, [&](std::size_t i, std::uint16_t v) { result.single[i] = v; });
    for (std::size_t lead = 0; lead < 256; ++lead) {
        if (!result.lead[lead]) continue;
        if (result.pairs.empty()) result.pairs.resize(kUnits);
        std::uint16_t* row = result.pairs.data() + lead * 256;
        wide.Read(256, [row](std::size_t i, std::uint16_t v) { row[i] = v; });
    }
    DeriveCodes(result);
    std::uint16_t* codes = result.codes.data();
    const auto add = [codes](std::size_t i, unsigned v) {
        codes[i] = static_cast<std::uint16_t>(codes[i] + v);
    };
    SequenceReader(data->codes).Read(kUnits, add, 0);
    tables = std::move(result);
    return true;
}

// Every process asks about the 256 bytes of a page as it starts, whose units are early ones but on
// double-byte pages: for those nothing is expanded that would stay.
CharacterFacts DecodeCharacterFacts(std::span<const std::uint16_t> units) {
    constexpr std::size_t kFew = 0x3000;
    const std::size_t count =
        units.empty() ? 0 : *std::max_element(units.begin(), units.end()) + std::size_t{1};
    if (count <= kFew) {
        std::vector<std::uint16_t> tables(3 * count);
        const CharacterTables few{tables.data(), tables.data() + count, tables.data() + 2 * count};
        few.Expand(count);
        return few.FactsOf(units);
    }
    static const CharacterTables all = [] {
        const CharacterTables whole{SparseTable(), SparseTable(), SparseTable()};
        whole.Expand(kUnits);
        return whole;
    }();
    return all.FactsOf(units);
}

}  // namespace brcore8
