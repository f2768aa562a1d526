#include "platform/posix/code_page_decoder.h"

#include <algorithm>
#include <numeric>

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
            if (repeat_ == 0) NextRun();
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

    // Passes over `count` values and returns the last of them; the one before when there are none.
    std::uint16_t Skip(std::size_t count) {
        while (count > 0) {
            if (repeat_ == 0) NextRun();
            const std::size_t run = std::min<std::size_t>(repeat_, count);
            repeat_ -= static_cast<unsigned>(run);
            last_ = static_cast<std::uint16_t>(last_ + run * step_);
            count -= run;
        }
        return last_;
    }

private:
    void NextRun() {
        const unsigned number = Number();
        if (number & 1) {
            repeat_ = number >> 1;
        } else {
            const unsigned zigzag = number >> 1;
            step_ = static_cast<std::uint16_t>(zigzag & 1 ? ~(zigzag >> 1) : zigzag >> 1);
            repeat_ = 1;
        }
    }
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

}  // namespace

void DeriveCodes(CodePageTables& tables) {
    constexpr std::uint16_t kNone = '?';  // also its own code, on every page
    UnitCodes codes = UnitCodes::Blank();
    const auto take = [&codes](std::uint16_t unit, std::size_t code) {
        if (unit != kNone && codes[unit] == kNone) codes.Set(unit, static_cast<unsigned>(code));
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
    UnitCodes& codes = result.codes;
    const auto add = [&codes](std::size_t i, unsigned v) { codes.Set(i, codes[i] + v); };
    SequenceReader(data->codes).Read(kUnits, add, 0);
    tables = std::move(result);
    return true;
}

// In ascending order, so that one walk through each sequence passes all units.
CharacterFacts DecodeCharacterFacts(std::span<const std::uint16_t> units) {
    std::vector<std::size_t> ascending(units.size());
    std::iota(ascending.begin(), ascending.end(), std::size_t{0});
    std::sort(ascending.begin(), ascending.end(),
              [units](std::size_t left, std::size_t right) { return units[left] < units[right]; });
    const auto walk = [&](const char* digits, bool relative) {
        std::vector<std::uint16_t> facts(units.size());
        SequenceReader reader(digits);
        std::size_t passed = 0;
        for (const std::size_t i : ascending) {
            const std::size_t end = units[i] + std::size_t{1};
            const unsigned fact = reader.Skip(end - passed);
            passed = end;
            facts[i] = static_cast<std::uint16_t>(relative ? fact + units[i] : fact);
        }
        return facts;
    };
    return {walk(kCharacterData.lower, true), walk(kCharacterData.upper, true),
            walk(kCharacterData.types, false)};
}

}  // namespace brcore8
