#include <brcore8/strings/string_buffer.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "strings/mbs.h"

using brcore8::CodePage;
namespace mbs = brcore8::mbs;

namespace {

constexpr unsigned int kDefaultNumerator = 5;
constexpr unsigned int kDefaultDenominator = 3;
// The largest multiple of the step by which large buffers are rounded up.
constexpr std::int64_t kLargestBuffer = 0x7FFFFC00;

// value * numerator / denominator, rounded to the nearest; -1 when that is no 31-bit number.
std::int64_t Scale(std::int64_t value, std::int32_t numerator, std::int32_t denominator) noexcept {
    if (numerator <= 0 || denominator <= 0 || value > 0x7FFFFFFF) return -1;
    const std::int64_t scaled = (value * numerator + denominator / 2) / denominator;
    return scaled > 0x7FFFFFFF ? -1 : scaled;
}

}  // namespace

SStringBuffer::SStringBuffer(const SStringBuffer& other)
    : SString(),
      initial_(other.initial_),
      numerator_(other.numerator_),
      denominator_(other.denominator_) {
    if (other.IsEmpty()) return;
    AllocBuffer(other.LengthByte());
    std::memcpy(text_, other.text_, static_cast<std::size_t>(other.LengthByte()) + 1);
    GetData()->characters = other.GetData()->characters;
}

SStringBuffer& SStringBuffer::operator=(const SStringBuffer& other) {
    if (this == &other) return *this;
    SStringBuffer copy(other);
    std::swap(text_, copy.text_);
    initial_ = other.initial_;
    numerator_ = other.numerator_;
    denominator_ = other.denominator_;
    return *this;
}

void SStringBuffer::Reset(unsigned int initial) noexcept {
    Reset(initial, static_cast<unsigned>(numerator_), static_cast<unsigned>(denominator_));
}

void SStringBuffer::Reset(unsigned int numerator, unsigned int denominator) noexcept {
    Reset(initial_, numerator, denominator);
}

void SStringBuffer::Reset(unsigned int initial, unsigned int numerator,
                          unsigned int denominator) noexcept {
    Done();
    initial_ = initial ? initial : DefaultInitialSize;
    numerator_ = static_cast<std::int32_t>(numerator ? numerator : kDefaultNumerator);
    denominator_ = static_cast<std::int32_t>(denominator ? denominator : kDefaultDenominator);
    if (Scale(initial_, numerator_, denominator_) <= std::int64_t{initial_}) {
        numerator_ = kDefaultNumerator;
        denominator_ = kDefaultDenominator;
    }
}

SStringBuffer& SStringBuffer::operator+=(unsigned int character) {
    char bytes[2];
    return Append({bytes, mbs::Put(CodePage::Ansi(), character, bytes)});
}

void SStringBuffer::Concat(const char* begin, const char* end) {
    if (begin && end && begin < end) Append({begin, static_cast<std::size_t>(end - begin)});
}

void SStringBuffer::Concat(const char* text, int bytes) {
    if (text && bytes > 0) Append({text, static_cast<std::size_t>(bytes)});
}

void SStringBuffer::Clear() noexcept {
    // Somebody may hold a share, taken through a reference to the base class.
    if (IsShared()) Release();
    if (!IsEmpty()) SetLength(0);
}

SStringBuffer& SStringBuffer::Assign(std::string_view text) {
    if (text.empty()) {
        Clear();
        return *this;
    }
    const auto bytes = static_cast<std::int64_t>(text.size());
    if (IsShared() || bytes > GetData()->capacity) {
        SStringBuffer grown(initial_, static_cast<unsigned>(numerator_),
                            static_cast<unsigned>(denominator_));
        grown.Append(text);
        std::swap(text_, grown.text_);
        return *this;
    }
    std::memmove(text_, text.data(), text.size());
    SetLength(static_cast<std::int32_t>(bytes));
    GetData()->characters = 0;
    return *this;
}

SStringBuffer& SStringBuffer::Append(std::string_view text) {
    if (text.empty()) return *this;
    const std::int64_t bytes = LengthByte() + static_cast<std::int64_t>(text.size());
    const std::int32_t capacity = GetData()->capacity;
    const char* source = text.data();
    if (capacity == 0 || IsShared() || bytes > capacity)
        source = Enlarge(Grown(capacity ? capacity : initial_, bytes), source);
    std::memmove(text_ + LengthByte(), source, text.size());
    text_[bytes] = 0;
    GetData()->bytes = static_cast<std::int32_t>(bytes);
    GetData()->characters = 0;
    return *this;
}

SStringBuffer& SStringBuffer::AppendByte(char character) {
    return Append({&character, 1});
}

// The first capacity that the factor reaches and that is enough; near the limit, what is possible.
std::int64_t SStringBuffer::Grown(std::int64_t capacity, std::int64_t needed) const noexcept {
    while (capacity < needed) {
        const std::int64_t next = Scale(capacity, numerator_, denominator_);
        if (next <= capacity || next > kLargestBuffer) return std::max(kLargestBuffer, needed);
        capacity = next;
    }
    return capacity;
}
