#include <brcore8/strings/string.h>

#include <brcore8/strings/string_buffer.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ostream>

#include "strings/copy_bytes.h"
#include "strings/mbs.h"
#include "strings/string_pools.h"

using brcore8::CodePage;
using brcore8::CopyBytes;
namespace mbs = brcore8::mbs;

constinit SString::EmptyBuffer SString::empty_ = {{-1, 0, 0, 0}, {}};

// --- Buffers -----------------------------------------------------------------------------------

char* SString::NewText(std::int64_t bytes) {
    if (bytes <= 0) return EmptyText();
    return reinterpret_cast<char*>(brcore8::string_pools::Take(bytes) + 1);
}

void SString::FreeData(SStringData* data) noexcept {
    if (data->capacity != 0) brcore8::string_pools::Give(data);
}

void SString::DeleteEmptyStrings() noexcept {
    brcore8::string_pools::FreeUnused();
}

void SString::Adopt(char* text) noexcept {
    if (IsLocked()) {
        if (text == EmptyText()) return SetLength(0);
        DataOf(text)->references = -1;
    }
    char* old = std::exchange(text_, text);
    if (old != EmptyText()) Drop(old);
}

void SString::Release() noexcept {
    char* old = std::exchange(text_, EmptyText());
    if (old != EmptyText()) Drop(old);
}

void SString::Done() noexcept {
    if (IsLocked())
        SetLength(0);
    else
        Release();
}

void SString::SetLength(std::int32_t bytes) noexcept {
    if (text_ == EmptyText()) return;
    SStringData* data = GetData();
    data->bytes = std::clamp(bytes, 0, data->capacity);
    text_[data->bytes] = 0;
    data->characters = CountCharacters();
}

int SString::CountCharacters() const noexcept {
    return mbs::Count(CodePage::Ansi(), text_, static_cast<std::size_t>(LengthByte()));
}

void SString::AllocBeforeWrite(std::int64_t bytes) {
    if (text_ == EmptyText() || IsShared() || GetData()->capacity < bytes) Adopt(NewText(bytes));
}

void SString::CopyBeforeWrite() {
    if (!IsShared()) return;
    const SStringData* old = GetData();
    char* text = NewText(old->bytes);
    if (text != EmptyText()) {
        std::memcpy(text, text_, static_cast<std::size_t>(old->bytes) + 1);
        DataOf(text)->characters = old->characters;
    }
    Adopt(text);
}

void SString::AssignCopy(std::int64_t bytes, const char* text) {
    if (bytes <= 0) return Done();
    if (text_ == EmptyText() || IsShared() || GetData()->capacity < bytes) {
        Adopt(CopyText(bytes, text));
    } else {
        CopyBytes(text_, text, static_cast<std::size_t>(bytes));
        SetLength(static_cast<std::int32_t>(bytes));
    }
}

namespace {

// A short ASCII text has as many characters as bytes in every page: a program that only has such
// ones starts without tables.
std::int32_t CountFirst(const char* text, std::size_t size) {
    constexpr std::size_t kShort = 64;
    const bool isPlain = size <= kShort && std::all_of(text, text + size, [](unsigned char byte) {
                             return byte < 0x80;
                         });
    return isPlain ? static_cast<std::int32_t>(size) : mbs::Count(CodePage::Ansi(), text, size);
}

}  // namespace

char* SString::CopyText(std::int64_t bytes, const char* text) {
    char* const copy = NewText(bytes);
    if (bytes <= 0) return copy;
    const auto size = static_cast<std::size_t>(bytes);
    CopyBytes(copy, text, size);
    const CodePage* const page = CodePage::AnsiIfLoaded();
    DataOf(copy)->characters =
        page != nullptr ? mbs::Count(*page, copy, size) : CountFirst(copy, size);
    return copy;
}

void SString::CopyLocked() {
    const char* source = std::exchange(text_, EmptyText());
    text_ = CopyText(reinterpret_cast<const SStringData*>(source)[-1].bytes, source);
}

// --- Life --------------------------------------------------------------------------------------

namespace {

constexpr std::uintptr_t kFirstAddress = 0x10000;

std::int64_t Bytes(const char* text) {
    return static_cast<std::int64_t>(std::strlen(text));
}

// The units up to the terminator, at most `limit`.
std::size_t WideLength(const unsigned short* text, std::size_t limit) {
    std::size_t units = 0;
    while (units < limit && text[units] != 0)
        ++units;
    return units;
}

}  // namespace

SString::SString(const char* text) : SString() {
    const auto address = reinterpret_cast<std::uintptr_t>(text);
    if (address >= kFirstAddress)
        text_ = CopyText(Bytes(text), text);
    else if (text)
        LoadString(static_cast<unsigned int>(address));
}

SString::SString(const char* begin, const char* end) : SString() {
    if (begin && end && begin < end) text_ = CopyText(end - begin, begin);
}

SString::SString(const char* text, int count) : SString() {
    if (!text || count < 1) return;
    const CodePage& page = CodePage::Ansi();
    const char* end = text;
    if (!page.IsDoubleByte())
        end += strnlen(text, static_cast<std::size_t>(count));
    else
        for (int i = 0; i < count && *end; ++i)
            end = mbs::Next(page, end);
    text_ = CopyText(end - text, text);
}

SString::SString(std::string_view text)
    : text_(CopyText(static_cast<std::int64_t>(text.size()), text.data())) {}

SString::SString(const unsigned short* text) : SString() {
    *this = text;
}

SString::SString(const unsigned short* text, int count) : SString() {
    if (text && count > 0) AssignWide(text, WideLength(text, static_cast<std::size_t>(count)));
}

SString::SString(const SStringBuffer& buffer) : SString(buffer.View()) {}

SString::SString(unsigned int character, int repeat) : SString() {
    if (repeat < 1) return;
    char bytes[2];
    const std::size_t width = mbs::Put(CodePage::Ansi(), character, bytes);
    const std::int64_t size = static_cast<std::int64_t>(width) * repeat;
    text_ = NewText(size);
    if (width == 1)
        std::memset(text_, static_cast<unsigned char>(bytes[0]), static_cast<std::size_t>(size));
    else
        for (std::int64_t i = 0; i < size; ++i)
            text_[i] = bytes[i & 1];
    SetLength(static_cast<std::int32_t>(size));
}

SString::SString(char character, int repeat) : SString() {
    if (repeat < 1) return;
    text_ = NewText(repeat);
    std::memset(text_, static_cast<unsigned char>(character), static_cast<std::size_t>(repeat));
    SetLength(repeat);
}

SString::SString(int truth) : SString(truth ? "Yes" : "No") {}

SString::SString(long value) : SString() {
    Format("%ld", value);
}

SString::SString(unsigned long value) : SString() {
    Format("%lu", value);
}

SString::SString(double value) : SString() {
    Format("%g", value);
}

SString::SString(HINSTANCE module, unsigned int id) : SString() {
    LoadString(id, module);
}

// --- Assignment --------------------------------------------------------------------------------

SString& SString::operator=(const SString& other) {
    if (text_ == other.text_) return *this;
    if (other.text_ == EmptyText()) {
        Done();
    } else if (IsLocked() || !other.AddReference()) {
        AssignCopy(other.LengthByte(), other.text_);
    } else {
        Adopt(other.text_);
    }
    return *this;
}

SString& SString::operator=(SString&& other) {
    if (this == &other) return *this;
    if (IsLocked() || other.IsLocked()) return *this = static_cast<const SString&>(other);
    char* old = std::exchange(text_, std::exchange(other.text_, EmptyText()));
    if (old != EmptyText()) Drop(old);
    return *this;
}

SString& SString::operator=(const SStringBuffer& buffer) {
    return *this = buffer.View();
}

SString& SString::operator=(const char* text) {
    AssignCopy(text ? Bytes(text) : 0, text);
    return *this;
}

SString& SString::operator=(std::string_view text) {
    AssignCopy(static_cast<std::int64_t>(text.size()), text.data());
    return *this;
}

SString& SString::operator=(const unsigned short* text) {
    AssignWide(text, text ? WideLength(text, SIZE_MAX) : 0);
    return *this;
}

void SString::AssignWide(const unsigned short* text, std::size_t units) {
    const CodePage& page = CodePage::Ansi();
    const std::size_t bytes = page.FromWide(text, units, nullptr, 0);
    SString converted;
    converted.AllocBuffer(static_cast<std::int64_t>(bytes));
    page.FromWide(text, units, converted.text_, bytes);
    converted.SetLength(converted.LengthByte());
    *this = std::move(converted);
}

SString& SString::operator=(unsigned int character) {
    char bytes[2];
    const std::size_t width = mbs::Put(CodePage::Ansi(), character, bytes);
    AssignCopy(static_cast<std::int64_t>(width), bytes);
    return *this;
}

SString& SString::operator=(char character) {
    AssignCopy(1, &character);
    return *this;
}

// --- Write into the buffer ---------------------------------------------------------------------

char* SString::LockBytes(std::int64_t capacity) {
    if (IsShared() || GetData()->capacity < capacity) {
        char* fresh = NewText(capacity);
        const auto kept = static_cast<std::int32_t>(
            std::min<std::int64_t>(LengthByte(), DataOf(fresh)->capacity));
        std::memcpy(fresh, text_, static_cast<std::size_t>(kept));
        Adopt(fresh);
        SetLength(kept);
    }
    return text_;
}

char* SString::Lock(int characters) {
    const std::int64_t width = CodePage::Ansi().IsDoubleByte() ? 2 : 1;
    return LockBytes(std::max(characters, 1) * width);
}

void SString::Unlock(int characters) {
    CopyBeforeWrite();
    const std::int32_t capacity = GetData()->capacity;
    const char* end = text_ + capacity;
    if (characters < 0)
        end = text_ + strnlen(text_, static_cast<std::size_t>(capacity));
    else
        end = mbs::Advance(CodePage::Ansi(), text_, end, characters);
    SetLength(static_cast<std::int32_t>(end - text_));
}

char* SString::GetBufferSetLength(int characters) {
    Lock(characters);
    const std::int32_t old = LengthByte();
    characters = std::max(characters, 0);
    const std::int32_t bytes = CodePage::Ansi().IsDoubleByte() ? 2 * characters : characters;
    if (bytes > old) std::memset(text_ + old, 0, static_cast<std::size_t>(bytes - old));
    SetLength(bytes);
    GetData()->characters = characters;
    return text_;
}

char* SString::LockBuffer() {
    const std::int64_t width = CodePage::Ansi().IsDoubleByte() ? 2 : 1;
    // A count made under another page may be too small for the text.
    LockBytes(std::max<std::int64_t>({1, LengthByte(), Length() * width}));
    GetData()->references = -1;
    return text_;
}

void SString::UnlockBuffer() noexcept {
    if (IsLocked()) GetData()->references = 1;
}

int SString::AssertValid() const noexcept {
    const SStringData& data = *GetData();
    if (text_ == EmptyText())
        return data.references == -1 && data.bytes == 0 && data.capacity == 0 &&
               data.characters == 0 && *text_ == 0;
    return (data.references > 0 || data.references == -1) && data.bytes >= 0 &&
           data.bytes <= data.capacity && data.capacity <= MaxBytes && text_[data.bytes] == 0 &&
           (data.characters == 0 || data.characters == CountCharacters());
}

std::ostream& operator<<(std::ostream& stream, const SString& text) {
    return stream << text.View();
}
