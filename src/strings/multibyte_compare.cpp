// The numeric-aware comparisons.
#include <brcore8/strings/multibyte.h>

#include <cstdint>

#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

namespace {

// One text being walked. Its end is the terminator or the end of its allowance of bytes.
class Side {
public:
    Side(const CodePage& page, const char* text, const char* end, bool fold)
        : page_(page), p_(text ? text : ""), end_(text ? end : nullptr), fold_(fold) {}

    bool AtEnd() const { return p_ == end_ || *p_ == 0; }
    bool AtDigit() const { return !AtEnd() && *p_ >= '0' && *p_ <= '9'; }

    // The character, 0 at the end: a signed byte, or a code with a signed lead byte.
    int Character() const {
        if (AtEnd()) return 0;
        const unsigned code = Code();
        const unsigned folded = fold_ ? page_.ToLower(code) : code;
        if (!page_.IsDoubleByte()) return static_cast<signed char>(folded);
        return static_cast<int>(folded) - (folded < 256 ? 0 : 0x10000);
    }
    void Step() { p_ += Code() < 256 ? 1 : 2; }

    // Zeros count in 16 bits, numbers in 32; both wrap.
    std::uint16_t SkipZeros() {
        std::uint16_t zeros = 0;
        for (; !AtEnd() && *p_ == '0'; ++p_)
            ++zeros;
        return zeros;
    }
    std::uint32_t ReadNumber() {
        std::uint32_t number = 0;
        for (; AtDigit(); ++p_)
            number = number * 10 + static_cast<std::uint32_t>(*p_ - '0');
        return number;
    }

private:
    unsigned Code() const {
        return end_ ? mbs::UnsignedCodeAt(page_, p_, end_) : mbs::UnsignedCodeAt(page_, p_);
    }

    const CodePage& page_;
    const char* p_;
    const char* end_;  // null when only the terminator ends the text
    bool fold_;
};

int Difference(std::uint32_t left, std::uint32_t right) {
    return static_cast<std::int32_t>(left - right);
}

int CompareNumeric(Side left, Side right) {
    while (!left.AtEnd() && !right.AtEnd()) {
        if (!left.AtDigit()) {
            const int difference = left.Character() - right.Character();
            if (difference != 0) return difference;
            left.Step();
            right.Step();
            continue;
        }
        if (!right.AtDigit()) return left.Character() - right.Character();
        const int zeros = left.SkipZeros();
        const int rightZeros = right.SkipZeros();
        if (!left.AtDigit() && !right.AtDigit()) {
            if (zeros != rightZeros) return zeros - rightZeros;
            if (left.AtEnd()) return -right.Character();
            // A left text that goes on after the same zeros counts as equal all the same.
            if (right.AtEnd()) return 0;
            const int difference = left.Character() - right.Character();
            if (difference != 0) return difference;
            left.Step();
            right.Step();
            continue;
        }
        const std::uint32_t number = left.ReadNumber();
        const std::uint32_t rightNumber = right.ReadNumber();
        if (number != rightNumber) return Difference(number, rightNumber);
        if (zeros != rightZeros) return zeros - rightZeros;
    }
    return left.AtEnd() ? -right.Character() : left.Character();
}

int CompareWhole(const char* left, const char* right, bool fold) {
    const CodePage& page = CodePage::Ansi();
    return CompareNumeric({page, left, nullptr, fold}, {page, right, nullptr, fold});
}

// The end of an allowance may lie beyond the terminator, so it is found without stepping there.
const char* Limit(const char* text, int bytes) {
    const char* end = text;
    while (text && bytes-- > 0 && *end)
        ++end;
    return end;
}

int CompareCounted(const char* left, const char* right, int bytes, bool fold) {
    if (bytes < 1) return 0;
    const CodePage& page = CodePage::Ansi();
    return CompareNumeric({page, left, Limit(left, bytes), fold},
                          {page, right, Limit(right, bytes), fold});
}

// A key being walked, character by character or number by number.
class Key {
public:
    Key(const CodePage& page, std::string_view text, bool fold)
        : page_(page), p_(text.data()), end_(text.data() + text.size()), fold_(fold) {}

    bool AtEnd() const { return p_ == end_; }
    bool AtDigit() const { return !AtEnd() && *p_ >= '0' && *p_ <= '9'; }

    int TakeCharacter() {
        const unsigned code = mbs::UnsignedCodeAt(page_, p_, end_);
        p_ += code < 256 ? 1 : 2;
        return static_cast<int>(fold_ ? page_.ToLower(code) : code);
    }
    std::size_t SkipZeros() {
        const char* const start = p_;
        while (!AtEnd() && *p_ == '0')
            ++p_;
        return static_cast<std::size_t>(p_ - start);
    }
    std::string_view TakeDigits() {
        const char* const start = p_;
        while (AtDigit())
            ++p_;
        return {start, static_cast<std::size_t>(p_ - start)};
    }

private:
    const CodePage& page_;
    const char* p_;
    const char* end_;
    bool fold_;
};

int CompareKeys(Key left, Key right) {
    int byZeros = 0;
    while (!left.AtEnd() && !right.AtEnd()) {
        int order = 0;
        if (left.AtDigit() && right.AtDigit()) {
            const std::size_t zeros = left.SkipZeros(), rightZeros = right.SkipZeros();
            const std::string_view digits = left.TakeDigits(), rightDigits = right.TakeDigits();
            order = digits.size() != rightDigits.size()
                        ? (digits.size() < rightDigits.size() ? -1 : 1)
                        : digits.compare(rightDigits);
            if (byZeros == 0) byZeros = zeros == rightZeros ? 0 : zeros < rightZeros ? -1 : 1;
        } else {
            const int character = left.TakeCharacter();
            order = character - right.TakeCharacter();
        }
        if (order != 0) return order;
    }
    if (!left.AtEnd()) return 1;
    return right.AtEnd() ? byZeros : -1;
}

}  // namespace

int SCompareNumbered(std::string_view left, std::string_view right) {
    const CodePage& page = CodePage::Ansi();
    return CompareKeys({page, left, false}, {page, right, false});
}

int SCompareNumberedNoCase(std::string_view left, std::string_view right) {
    const CodePage& page = CodePage::Ansi();
    return CompareKeys({page, left, true}, {page, right, true});
}

int _tcscmpi(const char* left, const char* right) {
    return CompareWhole(left, right, false);
}

int _tcsicmpi(const char* left, const char* right) {
    return CompareWhole(left, right, true);
}

int _tcsncmpi(const char* left, const char* right, int bytes) {
    return CompareCounted(left, right, bytes, false);
}

int _tcsnicmpi(const char* left, const char* right, int bytes) {
    return CompareCounted(left, right, bytes, true);
}
