#include <brcore8/strings/string.h>

#include <algorithm>
#include <cstring>

#include "strings/copy_bytes.h"
#include "strings/mbs.h"
#include "strings/string_pools.h"
#include "strings/text_writer.h"

using brcore8::CodePage;
using brcore8::CopyBytes;
namespace mbs = brcore8::mbs;

// --- Append ------------------------------------------------------------------------------------

namespace {

// Whether the text ends with a lead byte that lacks its trail byte: bytes that could be leads
// before the end pair up from the left, and an odd number of them leaves one over.
bool EndsInLead(const CodePage& page, const char* text, std::size_t bytes) {
    std::size_t run = 0;
    while (run < bytes && page.IsLead(mbs::Byte(text + bytes - 1 - run)))
        ++run;
    return run % 2 != 0;
}

}  // namespace

const char* SString::Enlarge(std::int64_t capacity, const char* source) {
    const std::ptrdiff_t offset = Owns(source) ? source - text_ : -1;
    if (IsShared() || text_ == EmptyText()) {
        char* const fresh = NewText(capacity);
        SStringData& data = *DataOf(fresh);
        data.bytes = LengthByte();
        data.characters = GetData()->characters;
        CopyBytes(fresh, text_, static_cast<std::size_t>(data.bytes) + 1);
        Adopt(fresh);
    } else {
        text_ = reinterpret_cast<char*>(brcore8::string_pools::Enlarge(GetData(), capacity) + 1);
    }
    return offset < 0 ? source : text_ + offset;
}

void SString::ConcatInPlace(std::int64_t bytes, const char* text) {
    if (bytes <= 0) return;
    const std::int64_t total = LengthByte() + bytes;
    if (IsShared() || total > GetData()->capacity) text = Enlarge(total, text);
    SStringData* const data = GetData();
    std::memmove(text_ + data->bytes, text, static_cast<std::size_t>(bytes));
    // Only the new part is counted, unless its first byte completes a character of the old one, or
    // that was never counted.
    const CodePage& page = CodePage::Ansi();
    const auto old = static_cast<std::size_t>(data->bytes);
    if ((data->characters == 0 && old != 0) ||
        (page.IsDoubleByte() && EndsInLead(page, text_, old)))
        return SetLength(static_cast<std::int32_t>(total));
    data->characters += mbs::Count(page, text_ + old, static_cast<std::size_t>(bytes));
    data->bytes = static_cast<std::int32_t>(total);
    text_[total] = 0;
}

SString& SString::operator+=(const SString& text) {
    ConcatInPlace(text.LengthByte(), text.text_);
    return *this;
}

SString& SString::operator+=(const char* text) {
    if (text) ConcatInPlace(static_cast<std::int64_t>(std::strlen(text)), text);
    return *this;
}

SString& SString::operator+=(std::string_view text) {
    ConcatInPlace(static_cast<std::int64_t>(text.size()), text.data());
    return *this;
}

SString& SString::AppendByte(char character) {
    ConcatInPlace(1, &character);
    return *this;
}

SString& SString::operator+=(unsigned int character) {
    char bytes[2];
    const std::size_t width = mbs::Put(CodePage::Ansi(), character, bytes);
    ConcatInPlace(static_cast<std::int64_t>(width), bytes);
    return *this;
}

SString SString::Join(std::string_view left, std::string_view right) {
    brcore8::TextWriter joined(static_cast<std::int64_t>(left.size()) +
                               static_cast<std::int64_t>(right.size()));
    joined.Put(left);
    joined.Put(right);
    return std::move(joined).Take();
}

namespace {

std::string_view ViewOf(const char* text) {
    return text ? std::string_view(text) : std::string_view();
}

}  // namespace

SString operator+(const SString& left, const SString& right) {
    return SString::Join(left.View(), right.View());
}

SString operator+(const SString& left, const char* right) {
    return SString::Join(left.View(), ViewOf(right));
}

SString operator+(const char* left, const SString& right) {
    return SString::Join(ViewOf(left), right.View());
}

// --- Take parts --------------------------------------------------------------------------------

int SString::ByteOffset(int index) const noexcept {
    return static_cast<int>(
        mbs::Advance(CodePage::Ansi(), text_, text_ + LengthByte(), std::max(index, 0)) - text_);
}

SString SString::Left(int count) const {
    return Mid(0, count);
}

SString SString::Right(int count) const {
    count = std::clamp(count, 0, Length());
    return Mid(Length() - count, count);
}

SString SString::Mid(int first, int count) const {
    first = std::max(first, 0);
    if (first > Length() || count <= 0) return SString();
    if (first == 0 && count >= Length()) return *this;
    count = std::min(count, Length() - first);
    const char* begin = text_ + ByteOffset(first);
    return SString(begin, mbs::Advance(CodePage::Ansi(), begin, text_ + LengthByte(), count));
}

// --- Change ------------------------------------------------------------------------------------

bool SString::Owns(const char* text) const noexcept {
    return !std::less<const char*>()(text, text_) &&
           !std::less<const char*>()(text_ + LengthByte(), text);
}

void SString::Splice(std::int64_t offset, std::int64_t removed, std::string_view inserted) {
    const auto added = static_cast<std::int64_t>(inserted.size());
    const std::int64_t total = LengthByte() - removed + added;
    const char* tail = text_ + offset + removed;
    const auto tailBytes = static_cast<std::size_t>(LengthByte() - offset - removed);
    if (text_ == EmptyText() || IsShared() || total > GetData()->capacity ||
        (added != 0 && Owns(inserted.data()))) {
        char* fresh = NewText(total);
        if (offset != 0) std::memcpy(fresh, text_, static_cast<std::size_t>(offset));
        if (added != 0) std::memcpy(fresh + offset, inserted.data(), inserted.size());
        if (tailBytes != 0) std::memcpy(fresh + offset + added, tail, tailBytes);
        Adopt(fresh);
    } else {
        std::memmove(text_ + offset + added, tail, tailBytes);
        if (added != 0) std::memcpy(text_ + offset, inserted.data(), inserted.size());
    }
    SetLength(static_cast<std::int32_t>(total));
}

void SString::Insert(const char* text, int index) {
    const std::string_view inserted = ViewOf(text);
    if (inserted.empty()) return;
    const int offset = index >= Length() ? LengthByte() : ByteOffset(index);
    Splice(offset, 0, inserted);
}

void SString::Delete(int index, int count) {
    if (count == 0 || index < 0 || index >= Length()) return;
    const int begin = ByteOffset(index);
    const char* end = text_ + LengthByte();
    if (count > 0 && count < Length() - index)
        end = mbs::Advance(CodePage::Ansi(), text_ + begin, end, count);
    Splice(begin, end - (text_ + begin), {});
}

void SString::SetAt(int index, unsigned int character) {
    if (index < 0 || index >= Length()) return;
    const CodePage& page = CodePage::Ansi();
    const int offset = ByteOffset(index);
    if (offset >= LengthByte()) return;
    char bytes[2];
    const std::size_t width = mbs::Put(page, character, bytes);
    const std::size_t old = mbs::CharBytes(page, text_ + offset);
    if (width == 1 && old == 1 && !page.IsDoubleByte()) {
        CopyBeforeWrite();
        text_[offset] = bytes[0];
    } else {
        Splice(offset, static_cast<std::int64_t>(old), {bytes, width});
    }
}

// --- Trim --------------------------------------------------------------------------------------

namespace {

// A character or a set of them, as the trimming operations ask for it.
class Trimmed {
public:
    explicit Trimmed(unsigned int character)
        : page_(CodePage::Ansi()), character_(mbs::Normalize(page_, character)) {}
    explicit Trimmed(const char* set) : page_(CodePage::Ansi()), set_(set ? set : "") {}

    const char* Leading(const char* text, const char* end) const {
        while (text < end && *text && Has(text))
            text += mbs::CharBytes(page_, text);
        return text;
    }

    // The end of what remains: walked from the front, for only that tells characters apart.
    const char* Trailing(const char* text, const char* end) const {
        if (!page_.IsDoubleByte()) {
            while (end > text && Has(end - 1))
                --end;
            return end;
        }
        const char* kept = text;
        while (text < end) {
            const bool has = *text && Has(text);
            text = mbs::Advance(page_, text, end, 1);
            if (!has) kept = text;
        }
        return kept;
    }

private:
    bool Has(const char* text) const {
        const unsigned code = mbs::UnsignedCodeAt(page_, text);
        return code != 0 && (set_ ? mbs::Find(set_, code) != nullptr : code == character_);
    }

    const CodePage& page_;
    const char* set_ = nullptr;
    unsigned int character_ = 0;
};

}  // namespace

void SString::Keep(const char* begin, const char* end) {
    if (begin != text_ || end != End()) AssignCopy(end - begin, begin);
}

void SString::TrimLeft(unsigned int character) {
    Keep(Trimmed(character).Leading(text_, End()), End());
}

void SString::TrimLeft(const char* set) {
    Keep(Trimmed(set).Leading(text_, End()), End());
}

void SString::TrimRight(unsigned int character) {
    Keep(text_, Trimmed(character).Trailing(text_, End()));
}

void SString::TrimRight(const char* set) {
    Keep(text_, Trimmed(set).Trailing(text_, End()));
}

void SString::Trim(unsigned int character) {
    const Trimmed trimmed(character);
    const char* begin = trimmed.Leading(text_, End());
    Keep(begin, trimmed.Trailing(begin, End()));
}

void SString::Trim(const char* set) {
    const Trimmed trimmed(set);
    const char* begin = trimmed.Leading(text_, End());
    Keep(begin, trimmed.Trailing(begin, End()));
}
